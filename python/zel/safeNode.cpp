#include "zel/safeNode.h"

#include "binding/half.h"
#include "zel/sever.h"

namespace zelpython {

SafeNode::SafeNode(ZEL::Container* container, PyRef containerHalf)
    : Node(container),
      m_containerHalf(std::move(containerHalf)),
      m_live("zel.Node")
{
}

SafeNode::~SafeNode()
{
    sever(*this);
}

void SafeNode::deleteThis()
{
    // Held until the node is gone, so that the library takes the node off it: Python may hold it.
    ZEL::AddRefWrapper<ZEL::Compound> survivor = Node::getAsCompound();
    if (auto* const half = dynamic_cast<CountedHalf*>(survivor.get())) {
        addRef();
        half->finalizeUnheld();
        if (getRefCount() > 1) { // The finalizer took hold of this node.
            survivor = nullptr;
            release();
            return;
        }
    } else {
        survivor = nullptr;
    }
    Node::deleteThis();
}

bool SafeNode::onPortListPortRemoved(const ZEL::PortList& list,
                                     const ZEL::AddRefWrapper<ZEL::Port>& port)
{
    return letGo(list, *port, *this, true);
}

void SafeNode::onThisNodeDeleted()
{
    sever(*this);
    if (m_home)
        return;
    // It leaves its last list.
    setParentCompound(nullptr);
}

void SafeNode::enter(ZEL::Compound& home)
{
    m_home = &home;
    ++m_places;
}

void SafeNode::leave()
{
    if (--m_places == 0)
        m_home = nullptr;
}

void SafeNode::loseHome()
{
    m_home = nullptr;
    m_places = 0;
}

bool letGo(const ZEL::PortList& list, ZEL::Port& port, ZEL::PortNotification& parent, bool isAgreed)
{
    auto& present = const_cast<ZEL::PortList&>(list);
    if (present.findPort(&port) < 0)
        return isAgreed;
    const bool isFree = isAgreed && disconnect(port);
    // A listener may have taken it out meanwhile. What stays may have lost its parent.
    if (present.findPort(&port) >= 0)
        port.setParent(isFree ? nullptr : &parent);
    return isFree;
}

} // namespace zelpython
