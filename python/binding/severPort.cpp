#include "binding/severPort.h"

namespace zelpython {

void sever(ZEL::Port& port)
{
    ZEL::PortList& connections = port.connectedTo();
    if (connections.size() == 0)
        return;
    port.onParentNodeDeleted();
    while (connections.size() > 0)
        connections.onPortDeleted(connections[connections.size() - 1].get());
}

void beforeRelease(ZEL::Port& port)
{
    if (port.getRefCount() == 1)
        sever(port);
}

void beforeRelease(ZEL::PortList& list)
{
    if (list.getRefCount() > 1)
        return;
    for (ZEL::Port* const port : list)
        beforeRelease(*port);
}

} // namespace zelpython
