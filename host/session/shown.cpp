#include "session/shown.h"

#include "document/node.h"

namespace shading {

bool isTelling(ZEL::Node& node, ZEL::Port& port)
{
    auto* const own = dynamic_cast<Node*>(&node);
    if (!own || !own->definition() || own->isInDocument(port))
        return true;
    for (const PortDescription& described : own->definition()->record().inputs) {
        if (described.name == port.getName())
            return described.value != port.getPortDefaultValue();
    }
    return true;
}

} // namespace shading
