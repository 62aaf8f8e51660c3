#include "document/release.h"

#include "base/progress.h"

namespace shading {

void Release::add(const NodePtr& node, Progress& progress)
{
    if (!node)
        return;
    progress.step();
    m_nodes.push_back(node);
    const CompoundPtr compound = node->getAsCompound();
    for (int i = 0; compound && i < compound->nodes().size(); ++i)
        add(compound->nodes()[i], progress);
}

void Release::run(Progress& progress)
{
    for (NodePtr& node : m_nodes) {
        node = nullptr;
        progress.step();
    }
    m_nodes.clear();
}

} // namespace shading
