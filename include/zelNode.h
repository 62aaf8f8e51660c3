#pragma once

#include "zelEditor.h"
#include "zelPort.h"

#include <string>
#include <string_view>

namespace ZEL {

class Compound;
class Container;
class NodeList;
class PortListPair;
class Sequence;

/// One vertex of the network: a name, ordered inputs and outputs, the name of its type and, for a
/// compound node, the compound inside it. It holds its two lists, which hold the ports, and its
/// compound. It is the listener of its own ports and agrees to every change; a host derives from it
/// and overrides the questions.
class ZEL_API Node : public ReferenceCounted,
                     public Namable,
                     public PortNotification,
                     public HostEditorNotifier {
public:
    /// A new node, held by the wrapper; a name that is not null is set through the virtual setName.
    static AddRefWrapper<Node> createNew(Container* container, const char* name);
    /// The container, the document that the node belongs to, is not owned and may be null.
    explicit Node(Container* container);
    Node(const Node&) = delete;
    /// Releases the owned compound, then the outputs, then the inputs. What dies with them still
    /// finds its owner, parent, name and full path as they were, also for a host's destructor; but
    /// a class derived from this one has gone already, and its overrides with it. What lives on,
    /// held by others, loses its link to this node afterwards. Ports connected to its ports are not
    /// told: NodeList::remove does that.
    ~Node() override;

    // Virtual operations: the order is binary contract.
    /// True when the node owns a compound.
    virtual bool isCompound();
    /// The owned compound, empty when there is none.
    virtual AddRefWrapper<Compound> getAsCompound();
    /// The names from the outermost ancestor down to this node, joined by "."; names are not
    /// escaped.
    virtual Namable getFullPathName();
    /// Never null; empty when unset. Valid until the name changes.
    virtual const char* getNodeTypeName() const;
    /// Copies the name; a null one counts as empty.
    virtual void setNodeTypeName(const char* name);
    // A derived class hides this one by the assignment that it has implicitly: not worth a warning.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
    /// Assigns the name through the virtual setName and copies the type name and the plain
    /// pointers; the editors registered with either stay where they are. Contract: the lists and
    /// the owned compound are shared, not copied: both nodes then have the same objects, whose
    /// parent and owner stay the node that made them, and a change through either node shows in
    /// both.
    virtual Node& operator=(const Node& other);
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
    /// Makes the ports that are connected to the inputs, then to the outputs, forget them. Called
    /// by NodeList::remove. An override calls it, or disconnects the ports itself.
    virtual void onThisNodeDeleted();

    // Questions of the own ports and lists: every change is agreed to; no default value is given.
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
    /// The virtual getFullPathName.
    Namable onGetParentFullPathName() override;

    // Ports. The lists live as long as the node, unless an assignment replaces them.
    PortList& inputs();
    PortList& outputs();

    // Place in the network.
    /// Not owned by the node; empty for a top-level node. Set by the list that receives the node
    /// and reset when the compound dies with the node in it. Contract: a node taken out of its list
    /// keeps it; who keeps such a node longer than the compound calls setParentCompound(nullptr).
    AddRefWrapper<Compound> getParentCompound();
    /// Stores the pointer. Nobody is asked.
    void setParentCompound(Compound* compound);
    /// Holds the compound and releases the one before; null clears. Compound's constructor calls
    /// it.
    void setOwnedCompound(Compound* compound);
    /// Not owned; null when the node was made without one.
    Container* getContainer();
    /// Calls callback for every node from the outermost ancestor down to this one. Each is held
    /// until its turn is over: a callback may change, move and remove them.
    void recurse_parent_first(void (*callback)(Node*, void*), void* data);

private:
    friend class NodeList;
    friend class PathWalker;

    void appendFullPath(std::string& path, std::size_t following);

    PortListPair* m_lists;                ///< Never null; a reference to each of the two.
    Compound* m_parentCompound = nullptr; ///< Not owned. Null: a top-level node.
#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251) // Private fields: nobody outside reaches them.
#endif
    AddRefWrapper<Compound> m_ownedCompound; ///< Empty: a plain node.
    Container* m_container;                  ///< Not owned, may be null.
    std::string m_nodeTypeName;
#if defined(_MSC_VER)
#pragma warning(pop)
#endif
};

/// Appends "." and the node's name to data, which points to a std::string; for
/// recurse_parent_first.
ZEL_API void GPFN_Callback(Node* node, void* data);

/// The ordered nodes of one compound. It holds one reference for each entry and asks the compound
/// before each change. Indexes count from 0; a node may stand more than once; the first match wins.
class ZEL_API NodeList : public ReferenceCounted {
public:
    /// A new empty list without a compound, held by the wrapper.
    static AddRefWrapper<NodeList> createNew();
    NodeList();
    /// Holds the same nodes. Contract: the parent compound is not copied, and the nodes keep
    /// theirs.
    NodeList(const NodeList& other);
    NodeList& operator=(const NodeList& other);
    ~NodeList() override;

    int size();
    /// Empty when index is out of range.
    AddRefWrapper<Node> operator[](int index);
    /// The first node whose getName() is that name; empty when there is none, or name is null.
    AddRefWrapper<Node> operator[](const char* name);
    /// The entries as plain pointers, first to last.
    ListIterator<NodeList> begin() { return {this, 0}; }
    ListIterator<NodeList> end() { return {this, size()}; }

    /// Not owned; empty when unset, and when that compound died. Contract: a list that two
    /// compounds share by assignment keeps the compound that made it.
    AddRefWrapper<Compound> getParentCompound();
    /// Stores the pointer and sets it as the parent compound of every node in the list.
    void setParentCompound(Compound* compound);

    /// Makes the list's compound the node's parent compound, asks its onNodeAdd, then appends the
    /// node. False without a compound, for an empty node, or when refused: nothing changed, and the
    /// node has its former parent compound. Neither doubles nor names are checked.
    bool add(const AddRefWrapper<Node>& node);
    /// Asks onNodeRemove, calls the node's onThisNodeDeleted, then takes out its first place. False
    /// without a compound, when the node is not in the list, or when refused: nothing changed.
    /// Nothing is printed. Contract: the node keeps its parent compound, and its ports their
    /// connection lists.
    bool remove(const AddRefWrapper<Node>& node);

private:
    friend class Compound;
    friend class ListIterator<NodeList>;
    friend class PathWalker;

    Sequence entries() const;
    Node* entryAt(int index) const;
    void append(Node* node);
    /// As the operator, for a part of a longer text.
    Node* findNamed(std::string_view name);
    void onCompoundDied(Compound* compound);

    mutable std::uintptr_t m_entries = 0; ///< The word of a Sequence; one reference for each entry.
    Compound* m_parentCompound = nullptr; ///< Not owned. Null: nothing can be added or removed.
};

} // namespace ZEL
