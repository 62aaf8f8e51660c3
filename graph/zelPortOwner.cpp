// The one place where ports look up at what owns them.

#include "zelCompound.h"
#include "zelNode.h"
#include "zelPort.h"

namespace ZEL {

bool Port::isCompoundInternalPort()
{
    return dynamic_cast<Compound*>(m_parent) != nullptr;
}

AddRefWrapper<Node> Port::getParentNode()
{
    if (auto* const node = dynamic_cast<Node*>(m_parent))
        return node;
    if (auto* const compound = dynamic_cast<Compound*>(m_parent))
        return compound->getAsNode();
    return nullptr;
}

AddRefWrapper<Compound> Port::getParentCompound()
{
    return dynamic_cast<Compound*>(m_parent);
}

} // namespace ZEL
