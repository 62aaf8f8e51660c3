#pragma once

#include "zelCore.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace ZEL {

class Compound;
class ConnectionRecord;
class Node;
class Port;
class PortList;
class Sequence;

/// The direction of a port. The inner ports of a compound are crossed: an inner input feeds the
/// inner nodes and has the direction PortOutput, an inner output is fed by them and has PortInput.
enum PortIOType : std::int32_t {
    PortInput = 0,  ///< The receiving end of a connection.
    PortOutput = 1, ///< The sending end of a connection.
};

/// The type of the data that a port carries: a name, shared by all ports of the type.
class ZEL_API PortDataType : public ReferenceCounted, public Namable {
public:
    /// A new type, held by the wrapper. A null name leaves it unnamed.
    static AddRefWrapper<PortDataType> createNew(const char* name);
    PortDataType(const PortDataType&) = delete;
    PortDataType& operator=(const PortDataType&) = delete;
    ~PortDataType() override;

    // Virtual operations: the order is binary contract.
    /// Types are equal when their names are, also if they are two objects.
    virtual bool operator==(const PortDataType& other) const;
    bool operator!=(const PortDataType& other) const { return !(*this == other); }

protected:
    explicit PortDataType(const char* name);
};

/// Who is asked before, and told after, a change of a port or of a list of ports: Node and Compound
/// implement it, a host overrides it there. An answer of false refuses the change: nothing changes.
///
/// The wrappers, texts and the list are alive during the call. A listener may change the network,
/// also the list and the port at work, and may drop any reference: the library reads both again
/// afterwards. It lets no port die that is connected to the port at work, assigns neither node nor
/// compound at work, does not use the command at work, and throws nothing: docs/callbacks.md.
class ZEL_API PortNotification {
public:
    PortNotification() = default;

    // Virtual operations: the order is binary contract.
    virtual ~PortNotification();
    /// Asked of the sending end's parent only, before the connection is recorded. Port is that end.
    /// A place to take the other end's present sources off.
    virtual bool onPortAddConnection(const AddRefWrapper<Port>& port,
                                     const AddRefWrapper<Port>& other) = 0;
    /// Asked of the parent of the end that takes the connection off both ends, before it does.
    /// Not asked when a node leaves its list or a port dies.
    virtual bool onPortRemoveConnection(const AddRefWrapper<Port>& port,
                                        const AddRefWrapper<Port>& other) = 0;
    /// Asked before the type changes; the type may be empty.
    virtual bool onPortSetDataType(const AddRefWrapper<Port>& port,
                                   const AddRefWrapper<PortDataType>& type) = 0;
    /// Asked before the port is appended. Its parent is already this listener, also after a
    /// refusal.
    virtual bool onPortListPortAdded(const PortList& list, const AddRefWrapper<Port>& port) = 0;
    /// Asked before the port is taken out, once for each place where it stands. The place to
    /// disconnect it: it may die afterwards.
    virtual bool onPortListPortRemoved(const PortList& list, const AddRefWrapper<Port>& port) = 0;
    /// Asked before a port is moved within its list.
    virtual bool onPortListPortMove(const PortList& list, int from, int to) = 0;
    /// Told after the move. The place to move the mirror on the other side of a compound.
    virtual void onPortListPortMoved(const PortList& list, int from, int to) = 0;
    /// Asked each time the default value is read. Null: the port's own value holds. A text is
    /// handed on and stays the listener's.
    virtual const char* onPortGetDefaultValue(const AddRefWrapper<Port>& port) = 0;
    /// Asked before the default value changes.
    virtual bool onPortSetDefaultValue(const AddRefWrapper<Port>& port, const char* value) = 0;
    /// Asked before the name changes. Another name may be given to the port here and this one
    /// refused; setName asks again meanwhile.
    virtual bool onPortSetName(const AddRefWrapper<Port>& port, const char* name) = 0;
    /// The full path name in front of a port's own name. Changes nothing: commands write it down.
    virtual Namable onGetParentFullPathName() = 0;
};

/// Walks a list by index and gives plain pointers, without touching what they point to. The end is
/// where the list ended when it was asked for; an entry that is gone since is null.
template <class List>
class ListIterator {
public:
    ListIterator(List* list, int index) : m_list(list), m_index(index) {}
    auto operator*() const { return m_list->entryAt(m_index); }
    ListIterator& operator++() { return *this = *this + 1; }
    ListIterator operator+(int places) const { return {m_list, m_index + places}; }
    ListIterator operator-(int places) const { return {m_list, m_index - places}; }
    int operator-(const ListIterator& other) const { return m_index - other.m_index; }
    bool operator==(const ListIterator& other) const { return m_index == other.m_index; }
    bool operator!=(const ListIterator& other) const { return m_index != other.m_index; }

private:
    List* m_list; ///< Not owned.
    int m_index;
};

/// What is known of a parent from where it was set. Unknown: its class is asked when it matters.
enum class ParentKind : std::uint8_t {
    Unknown,
    Node,     ///< A node set itself: the pointer is to the base of that node.
    Compound, ///< A compound set itself.
};

/// An ordered sequence of ports, in one of two roles. With a parent (the inputs, outputs and inner
/// ports) it asks the parent before each change and holds one reference for each entry. Without a
/// parent (the connections of a port) it asks nobody and holds none. Indexes count from 0; a port
/// may stand more than once; the first match wins.
class ZEL_API PortList : public ReferenceCounted {
public:
    /// A new empty list without a parent, held by the wrapper; its direction is PortInput.
    static AddRefWrapper<PortList> createNew();
    PortList();
    /// Contract: copying takes the entries, the parent and the direction, but no references, so a
    /// copy with a parent releases at its end references that it never took. What the target of an
    /// assignment held before is released when the target dies.
    PortList(const PortList& other);
    PortList& operator=(const PortList& other);
    /// Releases the entries if there is a parent at that moment.
    ~PortList() override;

    /// Not owned: the node or compound that made the list; null for connections. When that node or
    /// compound dies and the list lives on, shared, the list asks nobody any more but goes on
    /// holding references. Any other parent must outlive the list. Contract: setting a parent takes
    /// no references, and a list that two nodes share by assignment keeps the parent that made it.
    void setParent(PortNotification* parent);
    PortNotification* getParent();
    /// The direction of the ports that addPort makes from now on.
    void setPortIOType(PortIOType type);

    int size();
    /// Empty when index is out of range.
    AddRefWrapper<Port> operator[](int index) const;
    /// The first port whose getName() is that name; empty when there is none, or name is null.
    AddRefWrapper<Port> operator[](const char* name) const;
    /// The first index of that very port; -1 when it is empty or not in the list.
    int findPort(const AddRefWrapper<Port>& port);
    /// The entries as plain pointers, first to last.
    ListIterator<const PortList> begin() const { return {this, 0}; }
    ListIterator<const PortList> end() const;

    /// Appends the port. With a parent: makes it the port's parent, then asks onPortListPortAdded.
    /// False when empty or refused: the list has not changed. Neither doubles nor directions are
    /// checked. Contract: after a refusal the parent stays set on the port.
    bool add(const AddRefWrapper<Port>& port);
    /// Makes a port of the list's direction, unnamed for a null name, and adds it as above. The
    /// type may be empty; nobody is asked about it. Contract: the new port is returned also when
    /// the parent refused it; then the wrapper is its only holder.
    AddRefWrapper<Port> addPort(const char* name, const AddRefWrapper<PortDataType>& type);
    /// Takes the port out wherever it stands; asks onPortListPortRemoved for each place and stops
    /// with false at a refusal: places taken out before stay out. Contract: prints one line on
    /// standard output, "ZEL::did not find a connection to remove to " and the port's path, and
    /// returns false, when the port is not in the list (whatever the list's role). The port keeps
    /// its parent and its connections: a host disconnects it first.
    bool remove(const AddRefWrapper<Port>& port);
    /// Moves a port: asks onPortListPortMove before, tells onPortListPortMoved after. Both places
    /// lie between 0 and size(). From equal to to: true, nobody is asked. False when out of range,
    /// when from is size() or when refused: nothing changed. Contract: a backward move is ordinary,
    /// W X Y Z with (2, 0) becomes Y W X Z. A forward move repeats the moved port and drops the one
    /// behind it: W X Y Z with (0, 2) becomes W W Y Z; with to = from + 1 the list stays as it is.
    /// Not a rotation. It changes no reference: the list keeps the dropped port alive until it dies
    /// itself, but no walk reaches it any more: a connected one is disconnected first.
    bool movePort(int from, int to);

    /// Takes out every entry equal to port. Nobody is asked, no reference changes; null is no
    /// entry.
    void onPortDeleted(Port* port);
    /// Calls onParentNodeDeleted on every port, first to last.
    void onParentNodeDeleted();

private:
    friend class Compound;
    friend class ConnectionRecord;
    friend class ListIterator<const PortList>;
    friend class PathWalker;
    friend class Node;
    friend class Port;

    Sequence entries() const;
    Port* entryAt(int index) const;
    PortNotification* parent() const { return m_isRecord != 0 ? nullptr : m_parent; }
    void endRecord();
    bool forget(Port* port);
    bool removeEvery(const AddRefWrapper<Port>& port);
    static void reportMissing(Port& port);
    AddRefWrapper<Port> findNamed(std::string_view name) const;
    void append(Port* port);
    bool holdsReferences() const;
    void addSurplus(Port* port, int change);
    void releasePlace(Port* port);
    void repeatForward(int from, int to);
    void releaseEntries(PortNotification* dyingParent);
    void setParent(PortNotification* parent, ParentKind kind);
    void giveParentTo(Port& port);
    void noteParentClass();
    void onParentDied(PortNotification* parent);

    // These share one word, which fills the one that the count leaves half empty.
    std::int32_t m_ioType : 24;     ///< A PortIOType, or where to look for it.
    std::uint32_t m_parentKind : 2; ///< A ParentKind.
    std::uint32_t m_orphaned : 1;   ///< The parent died: the list holds references without it.
    std::uint32_t m_isRecord : 1;   ///< Connections, as connecting has made them.
    std::uint32_t m_parentIsPlainNode : 1; ///< As in Port.
    std::uint32_t m_parentAgrees : 1;      ///< As in Port.
    /// The word of a Sequence. There is one reference for each entry while there is a parent, but
    /// for what forward moves and assignments have left uneven, which the extras remember.
    mutable std::uintptr_t m_entries = 0;
    // NOLINTBEGIN(readability-identifier-naming): they are private, too.
    union {
        PortNotification* m_parent; ///< Not owned. Null: nobody is asked.
        /// Of a record, which has no parent: the slot of the port whose connections these are in
        /// the list of the one connected last, unless entries moved there since.
        std::uint32_t m_slot;
    };
    // NOLINTEND(readability-identifier-naming)
};

/// One named, typed end point. The list it stands in holds it; connections hold nothing, so they
/// never keep a port alive. Contract: the destructor touches nobody: a port that dies while others
/// are connected to it leaves dead pointers in their lists. NodeList::remove and
/// removeAllConnections disconnect; PortList::remove and Compound::deleteCompoundPort do not.
class ZEL_API Port : public Namable, public ReferenceCounted {
public:
    /// A new port, held by the wrapper: no parent, type or default value. A null name: unnamed.
    static AddRefWrapper<Port> createNew(const char* name, PortIOType ioType);
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    ~Port() override;

    /// Renames the port. Asks onPortSetName of the parent; a refusal changes nothing and is not
    /// reported. A null name and the present name are ignored, and then nobody is asked.
    /// Contract: appendString is not overridden and asks nobody.
    void setName(const char* name) override;
    using Namable::operator=;

    // Owner. What the parent is, its class tells whenever it is asked for, through whichever base
    // the parent is a PortNotification.
    /// Not owned. Set by the list that receives the port, reset when a node or compound dies with
    /// the port in its lists and the port lives on. It decides which end of a connection sends, so
    /// a connected port keeps it (docs/caller-guarantees.md, P9). Contract: a port taken out of its
    /// list keeps the parent; who keeps such a port longer than the parent calls
    /// setParent(nullptr).
    void setParent(PortNotification* parent);
    PortNotification* getParent();
    /// True when the parent is a Compound.
    bool isCompoundInternalPort();
    /// The parent if it is a node, the owner of the parent if it is a compound, otherwise empty.
    AddRefWrapper<Node> getParentNode();
    /// The parent if it is a compound, otherwise empty, also for a port of a node within a
    /// compound.
    AddRefWrapper<Compound> getParentCompound();
    /// The parent's path, "." and the name; without a parent the name alone. An inner port has the
    /// path of the compound node's own port of that name.
    Namable getFullPathName();

    // Connections. In each pair one end sends: a compound-internal port, or else an output.
    /// The ports at the other ends, in the order of connecting. The list is a member of the port
    /// and lives as long as it: a wrapper of the list does not keep it longer (P10 in
    /// docs/caller-guarantees.md).
    PortList& connectedTo();
    bool isConnected();
    /// Connects the two ports; may be called on either. Asks onPortAddConnection of the sending
    /// end's parent, then appends to the sending end's list, then to the other's. False, and
    /// nothing changed, when refused, when other is empty, when no end can send (two plain inputs,
    /// which are no inner ports, or two inner ports of one direction; nobody is asked), or when the
    /// listener drops the last reference to an end or to the compound that lets it send. Types,
    /// doubles and present connections are not checked. Of two inner ports the PortOutput sends.
    bool addConnection(const AddRefWrapper<Port>& other);
    /// Disconnects the two ports, all entries of the pair at once. This port does it, or the other
    /// when this is a plain input: asks onPortRemoveConnection of its parent, then takes the pair
    /// off its own list and off the far one. False when refused, when other is empty, or for two
    /// plain inputs: nothing changed. When they are not connected it prints the line of
    /// PortList::remove and returns false. Contract: unlike addConnection it looks at this port
    /// only: an output of a node keeps the sending role, and its parent is asked, also when the
    /// other end is a compound-internal port.
    bool removeConnection(const AddRefWrapper<Port>& other);
    /// Calls removeConnection for each place of the list, last to first; a refused one stays.
    void removeAllConnections();
    /// Forgets the other port. Nobody is asked; no reference changes.
    void removeFromConnectedList(Port* port);
    /// Makes the ports at all other ends forget this one; the own list stays. Nobody is asked.
    void onParentNodeDeleted();

    // Data.
    PortIOType getPortIOType();
    /// Empty when no type was set.
    AddRefWrapper<PortDataType> getDataType();
    /// Asks onPortSetDataType, also when the type is the present one. An empty type clears it.
    /// False when refused: nothing changed.
    bool setDataType(const AddRefWrapper<PortDataType>& type);
    /// The own default value, unless the parent gives one (asks onPortGetDefaultValue on every
    /// call). Never null. Valid until the value changes; the parent's text lives as long as the
    /// parent says.
    const char* getPortDefaultValue();
    /// Copies the value; a null one counts as empty. Asks onPortSetDefaultValue; a refusal changes
    /// nothing.
    void setPortDefaultValue(const char* value);
    /// A mark for the host; the library does not read it.
    void hidePort(bool hide);
    bool isPortHidden();

protected:
    Port(const char* name, PortIOType ioType);

private:
    friend class ConnectionRecord;
    friend class PortList;

    void setParent(PortNotification* parent, ParentKind kind);
    ParentKind parentKind() const { return static_cast<ParentKind>(m_parentKind); }
    bool isParentAsked() const { return m_parent && m_parentAgrees == 0; }
    Node* findParentNode() const;
    Compound* findParentCompound() const;

    // These share one word, which fills the one that the count leaves half empty.
    std::int32_t m_ioType : 24;     ///< A PortIOType, or where to look for it.
    std::uint32_t m_parentKind : 2; ///< A ParentKind.
    std::uint32_t m_hidden : 1;
    // What its class says of the parent; 0 also when it was not asked.
    std::uint32_t m_parentIsPlainNode : 1; ///< A node and no compound.
    std::uint32_t m_parentAgrees : 1;      ///< To every connection and disconnection.
    PortNotification* m_parent = nullptr;  ///< Not owned. Null: a port on its own.
    PortList m_connections;                ///< The port holds one reference; it has no parent.
#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251) // Private fields: nobody outside reaches them.
#endif
    AddRefWrapper<PortDataType> m_dataType;      ///< Empty: no type.
    std::unique_ptr<std::string> m_defaultValue; ///< Null: the empty text.
#if defined(_MSC_VER)
#pragma warning(pop)
#endif
};

} // namespace ZEL
