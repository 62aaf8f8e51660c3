#include "session/shown.h"

#include "document/definedNode.h"

namespace shading {

bool isTelling(ZEL::Node& node, ZEL::Port& port)
{
    auto* const own = dynamic_cast<Node*>(&node);
    if (!own || !own->definition() || own->isInDocument(port))
        return true;
    const PortDescription* const description = descriptionOf(port);
    return !description || description->value != port.getPortDefaultValue();
}

bool isUnknown(ZEL::Node& node)
{
    auto* const own = dynamic_cast<Node*>(&node);
    return own && !own->isCompound() && !own->definition();
}

} // namespace shading
