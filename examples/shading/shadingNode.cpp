#include "shadingNode.h"

namespace shading {

ZEL::AddRefWrapper<Node> Node::createNew(ZEL::Container* container, const char* name)
{
    ZEL::AddRefWrapper<Node> node(new Node(container));
    node->setName(name);
    return node;
}

Node::Node(ZEL::Container* container) : ZEL::Node(container) {}

bool Node::onPortListPortRemoved(const ZEL::PortList& /*list*/,
                                 const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    return disconnect(port);
}

bool disconnect(const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    port->removeAllConnections();
    return !port->isConnected();
}

} // namespace shading
