#pragma once

#include "zelCore.h"

#include <cstdint>

namespace ZEL {

class Compound;
class HostEditorNotifier;
class Node;
class Port;
struct HostEditorImpl;
struct HostEditorNotifierImpl;

// The library passes the three enumerations through without reading them: a host may carry values
// of its own.

enum ECnxChangeType : std::int32_t {
    eCnxAdded = 0,
    eCnxRemoved = 1,
};

enum ENodeChangeType : std::int32_t {
    eNodeAdded = 0,
    eNodeRemoved = 1,
    eNodeRenamed = 2,
    eNodeChanged = 3,
};

enum ECompoundPortChangeType : std::int32_t {
    eCompoundPortAdded = 0,
    eCompoundPortRemoved = 1,
    eCompoundPortRenamed = 2,
    eCompoundPortMoved = 3,
};

/// An observer of nodes: a host derives from it and overrides the callbacks it cares about. Editors
/// and notifiers know each other by plain pointers and own nothing of each other; whichever dies
/// first detaches itself from the other side, without a callback.
class ZEL_API HostEditor {
public:
    HostEditor();
    HostEditor(const HostEditor&) = delete;
    HostEditor& operator=(const HostEditor&) = delete;

    // Virtual operations: the order is binary contract. The callbacks do nothing by default. A
    // callback may register and unregister editors, destroy its own editor, others and the
    // notifier, notify, edit the network and close documents. It throws nothing.
    virtual ~HostEditor();
    /// The output end comes first when the notification named an input first.
    virtual void zel_onConnectionChange(ECnxChangeType type,
                                        const AddRefWrapper<Port>& first,
                                        const AddRefWrapper<Port>& second);
    /// The compound-internal port comes first when the notification named one second.
    virtual void zel_onCompoundConnectionChange(ECnxChangeType type,
                                                const AddRefWrapper<Port>& first,
                                                const AddRefWrapper<Port>& second);
    /// The wrapper is the notifying caller's own: it must not be destroyed.
    virtual void zel_onCompoundPortChange(ECompoundPortChangeType type,
                                          const AddRefWrapper<Port>& port);
    /// The wrappers as above.
    virtual void zel_onNodeChange(ENodeChangeType type,
                                  const AddRefWrapper<Compound>& compound,
                                  const AddRefWrapper<Node>& node);

private:
    friend struct HostEditorNotifierImpl;

    HostEditorImpl* m_impl; ///< Owned, never null.
};

/// The subject that editors observe; every Node is one. The library raises no notification itself:
/// the host calls the notify operations after it has changed the network.
///
/// A notification reaches the registered editors in the order of registration.
/// Contract: the number of editors is read again after each callback: an editor registered in a
/// callback is reached in the same pass; when one is unregistered, the one that followed it may
/// move into a place already passed and miss that notification. A notifier that dies in a callback
/// ends the pass.
class ZEL_API HostEditorNotifier {
public:
    HostEditorNotifier();
    HostEditorNotifier(const HostEditorNotifier&) = delete;
    HostEditorNotifier& operator=(const HostEditorNotifier&) = delete;
    virtual ~HostEditorNotifier();

    /// Adds the editor at the end; one that is registered stays where it is, and null is ignored.
    void registerEditor(HostEditor* editor);
    /// Takes the editor out; nothing happens when it is not registered, or null.
    void unregisterEditor(HostEditor* editor);

    /// Calls zel_onConnectionChange. Both ports are held during the pass. When a, which must not be
    /// empty, is an input, the two are exchanged. Contract: b is not looked at, so two inputs are
    /// exchanged as well.
    void notifyConnectionChange(ECnxChangeType type,
                                const AddRefWrapper<Port>& a,
                                const AddRefWrapper<Port>& b);
    /// Calls zel_onCompoundConnectionChange. Both ports are held during the pass. When b, which
    /// must not be empty, is a compound-internal port, the two are exchanged. Contract: a is not
    /// looked at, so two compound-internal ports are exchanged as well. Not the test of the above.
    void notifyCompoundConnectionChange(ECnxChangeType type,
                                        const AddRefWrapper<Port>& a,
                                        const AddRefWrapper<Port>& b);
    /// Calls zel_onNodeChange with the caller's own wrappers, which must stay valid during the
    /// pass.
    void notifyNodeChange(ENodeChangeType type,
                          const AddRefWrapper<Compound>& compound,
                          const AddRefWrapper<Node>& node);
    /// Calls zel_onCompoundPortChange with the caller's own wrapper, as above.
    void notifyCompoundPortChange(ECompoundPortChangeType type, const AddRefWrapper<Port>& port);

private:
    friend struct HostEditorImpl;

    HostEditorNotifierImpl* m_impl = nullptr; ///< Owned. Null: no editor was ever registered.
};

} // namespace ZEL
