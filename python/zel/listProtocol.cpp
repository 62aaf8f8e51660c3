#include "zel/listProtocol.h"

#include "binding/severPort.h"

namespace zelpython {

bool isListed(ZEL::Port& port)
{
    const ZEL::AddRefWrapper<ZEL::Port> held(&port);
    if (const auto compound = port.getParentCompound())
        return compound->Compound::innerInputs().findPort(held) >= 0 ||
               compound->Compound::innerOutputs().findPort(held) >= 0;
    const auto node = port.getParentNode();
    return node && (node->inputs().findPort(held) >= 0 || node->outputs().findPort(held) >= 0);
}

bool comesIn(const ZEL::PortList& list,
             ZEL::Port& port,
             ZEL::PortNotification& parent,
             bool isAgreed)
{
    const bool isElsewhere = const_cast<ZEL::PortList&>(list).findPort(&port) < 0 && isListed(port);
    if (isAgreed && !isElsewhere) {
        // The library knows what a parent is that it has set itself.
        if (port.getParent() != &parent)
            port.setParent(&parent);
        return true;
    }
    if (!isListed(port)) {
        sever(port);
        port.setParent(nullptr);
    }
    return false;
}

int placeOf(ZEL::NodeList& list, const ZEL::Node& node)
{
    int place = 0;
    for (const ZEL::Node* const entry : list) {
        if (entry == &node)
            return place;
        ++place;
    }
    return -1;
}

} // namespace zelpython
