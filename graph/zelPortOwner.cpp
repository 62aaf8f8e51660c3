// The one place where ports look up at what owns them.

#include "zelCompound.h"
#include "zelNode.h"
#include "zelPortParent.h"

namespace ZEL {

ParentKinds findParentKinds(PortNotification* parent)
{
    const bool isNode = dynamic_cast<Node*>(parent) != nullptr;
    const bool isCompound = dynamic_cast<Compound*>(parent) != nullptr;
    return static_cast<ParentKinds>((isNode ? kParentIsNode : 0) |
                                    (isCompound ? kParentIsCompound : 0));
}

AddRefWrapper<Node> Port::getParentNode()
{
    if ((m_parentKinds & kParentIsNode) != 0)
        return static_cast<Node*>(m_parent);
    if ((m_parentKinds & kParentIsCompound) != 0)
        return static_cast<Compound*>(m_parent)->getAsNode();
    return nullptr;
}

AddRefWrapper<Compound> Port::getParentCompound()
{
    return isCompoundInternalPort() ? static_cast<Compound*>(m_parent) : nullptr;
}

} // namespace ZEL
