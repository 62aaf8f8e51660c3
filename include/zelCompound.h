#pragma once

#include "zelPort.h"

namespace ZEL {

class Node;
class NodeList;

/// The sub-network of a compound node: the nodes inside, and two lists of inner ports that mirror
/// the owning node's inputs and outputs by position, with crossed directions. The owning node holds
/// the compound; the compound holds its three lists; its pointer back to the node owns nothing and
/// is reset when the node dies holding the compound. Without an owner the name is empty, and what
/// concerns the owner's ports finds and changes nothing. Contract: a compound that its node has let
/// go, or that took its owner by assignment, keeps the pointer: it must not be used longer than
/// that node lives.
///
/// Only createCompoundPort and deleteCompoundPort keep the inner lists in step with the node's.
class ZEL_API Compound : public ReferenceCounted, public Namable, public PortNotification {
public:
    /// A new compound of that node, held by the node, which lets go of the one before, and by the
    /// wrapper. A name that is not null renames the node.
    static AddRefWrapper<Compound> createNew(const AddRefWrapper<Node>& owner, const char* name);
    /// Makes the lists and becomes the owner's compound. Make compounds on the heap only: the owner
    /// holds a reference from here on.
    explicit Compound(const AddRefWrapper<Node>& owner);
    Compound(const Compound&) = delete;
    /// Releases the nodes, the inner outputs and the inner inputs; what dies with them still finds
    /// this compound, its owner and their paths, as for a node. What lives on, held by others,
    /// loses its link to this compound afterwards. The owner is not touched.
    ~Compound() override;

    // Virtual operations: the order is binary contract.
    /// The three lists live as long as the compound, unless an assignment replaces them.
    virtual NodeList& nodes();
    /// Mirrors the owner's inputs; the ports have the direction PortOutput.
    virtual PortList& innerInputs();
    /// Mirrors the owner's outputs; the ports have the direction PortInput.
    virtual PortList& innerOutputs();
    // A derived class hides this one by the assignment that it has implicitly: not worth a warning.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
    /// Assigns the name, which renames the owner, then shares the other's lists and takes its
    /// owner. Contract: the lists are shared, not copied: a change through either compound shows in
    /// both, and the lists keep the compound that made them as their parent.
    virtual Compound& operator=(const Compound& other);
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

    // Questions of the inner ports and lists: every change is agreed to; no default value is given.
    bool onPortAddConnection(const AddRefWrapper<Port>& port,
                             const AddRefWrapper<Port>& other) override;
    bool onPortRemoveConnection(const AddRefWrapper<Port>& port,
                                const AddRefWrapper<Port>& other) override;
    bool onPortSetDataType(const AddRefWrapper<Port>& port,
                           const AddRefWrapper<PortDataType>& type) override;
    bool onPortListPortAdded(const PortList& list, const AddRefWrapper<Port>& port) override;
    bool onPortListPortRemoved(const PortList& list, const AddRefWrapper<Port>& port) override;
    bool onPortListPortMove(const PortList& list, int from, int to) override;
    void onPortListPortMoved(const PortList& list, int from, int to) override;
    const char* onPortGetDefaultValue(const AddRefWrapper<Port>& port) override;
    bool onPortSetDefaultValue(const AddRefWrapper<Port>& port, const char* value) override;
    bool onPortSetName(const AddRefWrapper<Port>& port, const char* name) override;
    /// The owner's virtual getFullPathName.
    Namable onGetParentFullPathName() override;

    // Questions of the node list, for a host to override: every change is agreed to. Asked before
    // the change; the list and the node may be changed in it, as in those of PortNotification.
    /// The node has this compound as its parent already, and its former one after a refusal.
    virtual bool onNodeAdd(const AddRefWrapper<Node>& node);
    /// The place to disconnect the node: afterwards the far ends only forget it.
    virtual bool onNodeRemove(const AddRefWrapper<Node>& node);

    // Work that only a host can do. The defaults do nothing and answer empty, false or 0. The
    // library itself calls createNewCompound only.
    /// An override makes a node of that preset and returns it; empty when it cannot.
    virtual AddRefWrapper<Node> createNodeFromPreset(const char* preset);
    /// An override makes a compound node of that name inside this compound and returns its
    /// compound. It may change the network, but not use the command that calls it; a node that is
    /// to be moved and is taken out here is moved all the same.
    virtual AddRefWrapper<Compound> createNewCompound(const char* name);
    /// An override writes the compound and changes nothing in it; false when it cannot.
    virtual bool saveAs(const char* name);

    // Ports of the compound: a port of the owning node and its inner port, made and deleted
    // together.
    /// Adds a port to the owner's inputs (PortInput) or outputs (any other direction), then one of
    /// the same name and type to the inner list. Returns the inner port's index, -1 when the
    /// owner's list refused the port or there is no owner: nothing changed. Contract: the second
    /// addition is not checked, so the index may name no port when the inner list refused.
    virtual int createCompoundPort(PortIOType ioType,
                                   const char* name,
                                   const AddRefWrapper<PortDataType>& type);
    /// Removes the inner port from its list, then the first port of its name from the owner's list.
    /// Returns the index that the inner port had, -1 when it is in neither inner list or refused.
    /// Contract: the owner's port is found by name, not by position, and neither port is
    /// disconnected first: a host does that in its onPortListPortRemoved.
    virtual int deleteCompoundPort(AddRefWrapper<Port> innerPort);
    /// What a linked port is, the host says; the result is meant for the port's index.
    virtual int
    createLinkedPort(const char* name, const char* target, const AddRefWrapper<PortDataType>& type);
    /// "Compound"; for a host's class to override. Never null.
    virtual const char* getSpecializedCompoundTypeName();

    // The name is the owner's.
    /// "" without an owner.
    const char* getName() const override;
    /// Renames the owner. Contract: appendString is not overridden and does not reach the owner.
    void setName(const char* name) override;

    /// The owning node; empty when it died.
    AddRefWrapper<Node> getAsNode() const;
    /// The port on the other side of the compound's border, by position: an inner port's mirror on
    /// the owning node and the reverse. Empty when port is in none of the four lists or has no
    /// mirror.
    AddRefWrapper<Port> getReversePort(const AddRefWrapper<Port>& port);

    /// Connects an output of from to an input of to, found by name; for the owning node its inner
    /// inputs and inner outputs stand in. Fails when from is empty ("Missing first node in
    /// makeConnection"), then to ("Missing second node ..."), then when one has no such port, from
    /// first ("Can't find port PORT on NODE in makeConnection"): nothing changed. Otherwise
    /// calls Port::addConnection of the input. Contract: success also when a listener refused the
    /// connection.
    StatusStr makeConnection(AddRefWrapper<Node> from,
                             const char* outName,
                             AddRefWrapper<Node> to,
                             const char* inName);
    /// Removes the first node of that name, as NodeList::remove does, and returns it. Empty when
    /// there is none, or when refused.
    AddRefWrapper<Node> removeNode(const char* name);
    /// Calls callback for every node from the outermost ancestor down to the owner, as
    /// Node::recurse_parent_first does.
    void recurse_parent_first(void (*callback)(Node*, void*), void* data);
    /// Prints the ports, their connections and the nodes on standard output, nested compounds in
    /// place.
    void debugPrint();

private:
    friend class Node;
    friend class PathWalker;

    Node* owner() const;
    void onOwnerDied(Node* owner);

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251) // Private fields: nobody outside reaches them.
#endif
    AddRefWrapper<PortList> m_innerInputs;  ///< Never empty.
    AddRefWrapper<PortList> m_innerOutputs; ///< Never empty.
    AddRefWrapper<NodeList> m_nodes;        ///< Never empty.
#if defined(_MSC_VER)
#pragma warning(pop)
#endif
    Node* m_owner = nullptr; ///< Not owned. Null: there was none, or it died.
};

} // namespace ZEL
