#include "document.h"

AddRefWrapper<ZEL::Node> HostCompound::createNodeFromPreset(const char* preset)
{
    AddRefWrapper<ZEL::Node> node = new HostNode(getAsNode()->getContainer());
    node->setName(preset);
    node->inputs().addPort("In", nullptr);
    node->outputs().addPort("Out", nullptr);
    nodes().add(node);
    return node;
}

AddRefWrapper<ZEL::Compound> HostCompound::createNewCompound(const char* name)
{
    const AddRefWrapper<ZEL::Node> node = new HostNode(getAsNode()->getContainer());
    node->setName(name);
    return nodes().add(node) ? new HostCompound(node) : nullptr;
}

Document::Document(ZEL::Runtime* runtime) : m_root(new HostNode(this)), m_runtime(runtime)
{
    m_root->setName("Top");
    new HostCompound(m_root);
}
