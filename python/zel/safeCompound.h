#pragma once

#include "binding/shared.h"
#include "zel.h"

namespace zelpython {

/// What a compound made in Python is apart from its Python half. As SafeNode: what goes is
/// disconnected, and a node lies in one list.
class SafeCompound : public ZEL::Compound {
public:
    explicit SafeCompound(const ZEL::AddRefWrapper<ZEL::Node>& owner);
    ~SafeCompound() override;

    bool onPortListPortRemoved(const ZEL::PortList& list,
                               const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    bool onNodeAdd(const ZEL::AddRefWrapper<ZEL::Node>& node) override;
    bool onNodeRemove(const ZEL::AddRefWrapper<ZEL::Node>& node) override;

protected:
    /// The node comes, after everybody has agreed.
    void onAgreedToAdd(ZEL::Node& node);
    /// The node goes, after everybody has agreed. False when a disconnection is refused.
    bool onAgreedToRemove(ZEL::Node& node);

private:
    LiveCount m_live;
};

/// True while a compound is asked whether the node may come.
bool isComing(const ZEL::Node& node);

/// Why the node cannot be added to that compound whatever anybody answers: it lies in another
/// list, or the compound lies in it. Null when it can.
const char* whyNotAdded(ZEL::Compound& compound, ZEL::Node& node);

} // namespace zelpython
