#include "document/change.h"

#include "document/rules.h"

namespace shading {

void ChangeCollector::addNode(const CompoundPtr& compound, const NodePtr& node, bool isAdded)
{
    touch(node);
    m_additions[node.get()] += isAdded ? 1 : -1;
    show(compound);
}

void ChangeCollector::changeNode(const NodePtr& node)
{
    touch(node);
    show(node->getParentCompound());
}

void ChangeCollector::changePort(ZEL::Port& port)
{
    const NodePtr node = port.getParentNode();
    if (!node)
        return;
    changeNode(node);
    show(node->getAsCompound());
}

void ChangeCollector::changeEnd(ZEL::Port& port)
{
    if (const NodePtr node = port.getParentNode())
        touch(node);
    show(levelOf(port));
}

void ChangeCollector::finish()
{
    for (const NodePtr& node : m_nodes) {
        const int additions = m_additions[node.get()];
        std::vector<NodePtr>& nodes = additions > 0   ? m_change.added
                                      : additions < 0 ? m_change.removed
                                                      : m_change.changed;
        nodes.push_back(node);
    }
}

void ChangeCollector::touch(const NodePtr& node)
{
    if (m_additions.emplace(node.get(), 0).second)
        m_nodes.push_back(node);
}

void ChangeCollector::show(const CompoundPtr& compound)
{
    if (compound && m_shown.insert(compound.get()).second)
        m_change.compounds.push_back(compound);
}

} // namespace shading
