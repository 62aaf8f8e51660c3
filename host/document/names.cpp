#include "document/names.h"

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

} // namespace shading
