#include "document/names.h"

#include "document/document.h"
#include "document/origins.h"
#include "document/pointers.h"
#include "format/format.h"

namespace shading {

std::string pathOf(ZEL::Node& node)
{
    return node.getFullPathName().getName();
}

std::string pathOf(ZEL::Port& port)
{
    return port.getFullPathName().getName();
}

std::string typeNameOf(ZEL::Port& port)
{
    const ZEL::AddRefWrapper<ZEL::PortDataType> type = port.getDataType();
    return type && *type->getName() != '\0' ? type->getName() : kNoType;
}

std::string hiddenSourceOf(ZEL::Port& port)
{
    const NodePtr node = port.isConnected() ? nullptr : port.getParentNode();
    auto* const document = dynamic_cast<Document*>(node ? node->getContainer() : nullptr);
    const std::string name = document ? document->origins().hiddenSourceOf(port) : "";
    return name.empty() ? "" : "(" + name + ")";
}

} // namespace shading
