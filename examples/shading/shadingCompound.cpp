#include "shadingCompound.h"

#include "shadingNode.h"

namespace shading {

ZEL::AddRefWrapper<Compound> Compound::createNew(const ZEL::AddRefWrapper<ZEL::Node>& owner)
{
    return ZEL::AddRefWrapper<Compound>(new Compound(owner));
}

Compound::Compound(const ZEL::AddRefWrapper<ZEL::Node>& owner) : ZEL::Compound(owner) {}

bool Compound::onPortListPortRemoved(const ZEL::PortList& /*list*/,
                                     const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    return disconnect(port);
}

const char* Compound::onPortGetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    const ZEL::AddRefWrapper<ZEL::Port> mirror = getReversePort(port);
    return mirror ? mirror->getPortDefaultValue() : nullptr;
}

ZEL::AddRefWrapper<ZEL::Compound> Compound::createNewCompound(const char* name)
{
    const ZEL::AddRefWrapper<Node> node = Node::createNew(getAsNode()->getContainer(), name);
    node->setNodeTypeName(getSpecializedCompoundTypeName());
    ZEL::AddRefWrapper<Compound> compound = createNew(node);
    if (!nodes().add(node))
        return nullptr;
    return compound;
}

const char* Compound::getSpecializedCompoundTypeName()
{
    return "nodegraph";
}

} // namespace shading
