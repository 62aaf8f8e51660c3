#pragma once

#include "binding/interpreter.h"
#include "binding/shared.h"
#include "zel.h"

namespace zelpython {

/// What a node made in Python is apart from its Python half. It keeps what
/// docs/caller-guarantees.md asks of a host: it disconnects what goes, and holds the Python object
/// of its container.
class SafeNode : public ZEL::Node {
public:
    /// The container is the one of the Python object; both are null for a node without one.
    SafeNode(ZEL::Container* container, PyRef containerHalf);
    ~SafeNode() override;

    /// A compound with a Python half, which may live on, loses this node as its owner.
    void deleteThis() override;

    bool onPortListPortRemoved(const ZEL::PortList& list,
                               const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    void onThisNodeDeleted() override;

    /// Borrowed; null without one.
    PyObject* containerHalf() const { return m_containerHalf.get(); }

    /// The safe compound whose list holds the node; null: none.
    ZEL::Compound* home() const { return m_home; }
    /// The node gets one place more in the list of that compound.
    void enter(ZEL::Compound& home);
    /// The node loses one place there.
    void leave();
    /// The compound dies.
    void loseHome();

    /// A question whether the node may come into a compound. Meanwhile it goes nowhere: whatever
    /// the answer, the library then sets its parent.
    class Coming {
    public:
        explicit Coming(ZEL::Node& node) : m_node(dynamic_cast<SafeNode*>(&node))
        {
            if (m_node)
                m_node->m_isComing = true;
        }
        Coming(const Coming&) = delete;
        Coming& operator=(const Coming&) = delete;
        ~Coming()
        {
            if (m_node)
                m_node->m_isComing = false;
        }

    private:
        SafeNode* m_node; ///< Not owned. Null: a node of C++.
    };
    bool isComing() const { return m_isComing; }

private:
    PyRef m_containerHalf;
    ZEL::Compound* m_home = nullptr; ///< Not owned. The compound clears it when it dies.
    int m_places = 0;                ///< In the list of that compound.
    bool m_isComing = false;
    LiveCount m_live;
};

/// A port that leaves the list of that parent, if everybody agrees: it is disconnected and loses
/// its parent. False when it stays, also because somebody refused the disconnection. One that a
/// listener took out already is left alone.
bool letGo(const ZEL::PortList& list,
           ZEL::Port& port,
           ZEL::PortNotification& parent,
           bool isAgreed);

} // namespace zelpython
