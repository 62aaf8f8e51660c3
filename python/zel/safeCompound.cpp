#include "zel/safeCompound.h"

#include "zel/safeNode.h"
#include "zel/sever.h"

namespace zelpython {

SafeCompound::SafeCompound(const ZEL::AddRefWrapper<ZEL::Node>& owner)
    : Compound(owner),
      m_live("zel.Compound")
{
}

SafeCompound::~SafeCompound()
{
    severInnerPorts(*this);
    for (ZEL::Node* const node : Compound::nodes()) {
        auto* const safe = dynamic_cast<SafeNode*>(node);
        if (safe && safe->home() == this)
            safe->loseHome();
    }
}

bool SafeCompound::onPortListPortRemoved(const ZEL::PortList& list,
                                         const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    return letGo(list, *port, *this, true);
}

bool SafeCompound::onNodeAdd(const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    if (whyNotAdded(*this, *node))
        return false;
    onAgreedToAdd(*node);
    return true;
}

bool SafeCompound::onNodeRemove(const ZEL::AddRefWrapper<ZEL::Node>& node)
{
    return onAgreedToRemove(*node);
}

void SafeCompound::onAgreedToAdd(ZEL::Node& node)
{
    if (auto* const safe = dynamic_cast<SafeNode*>(&node))
        safe->enter(*this);
}

bool SafeCompound::onAgreedToRemove(ZEL::Node& node)
{
    if (isComing(node) || !disconnect(node))
        return false;
    auto* const safe = dynamic_cast<SafeNode*>(&node);
    if (safe && safe->home() == this)
        safe->leave();
    return true;
}

bool isComing(const ZEL::Node& node)
{
    const auto* const safe = dynamic_cast<const SafeNode*>(&node);
    return safe && safe->isComing();
}

const char* whyNotAdded(ZEL::Compound& compound, ZEL::Node& node)
{
    // Asked by the compound, the node has it as its parent: the way up ends at the node.
    for (ZEL::AddRefWrapper<ZEL::Node> owner = compound.getAsNode(); owner;) {
        if (owner == &node)
            return "the node would lie in itself";
        const ZEL::AddRefWrapper<ZEL::Compound> outer = owner->getParentCompound();
        owner = outer ? outer->getAsNode() : nullptr;
    }
    const auto* const safe = dynamic_cast<const SafeNode*>(&node);
    if (safe && safe->home() && safe->home() != &compound)
        return "the node lies in another compound";
    return nullptr;
}

} // namespace zelpython
