#pragma once

#include "shadingDefinition.h"
#include "zel.h"

namespace shading {

class Journal;
struct Piece;

/// A node of a shading network, plain or the owner of a Compound. It remembers the element of the
/// document that it was made from.
///
/// A host derives from ZEL::Node for two reasons: to keep data of its own with each node, and to
/// answer the questions that the library asks before each change.
class Node : public ZEL::Node {
public:
    /// A new node, held by the wrapper. The document must outlive it.
    static ZEL::AddRefWrapper<Node> createNew(ZEL::Container* container, const char* name);
    explicit Node(ZEL::Container* container);
    /// The virtual assignment of the base, which every derived class would hide otherwise.
    using ZEL::Node::operator=;

    /// Refuses a name that a path cannot reach or that a sibling has. Contract: the library asks
    /// nobody about the name of a node; a host that cares overrides this.
    void setName(const char* name) override;

    // Questions of the own ports and lists. The journal checks the rules and writes down.
    bool onPortAddConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                             const ZEL::AddRefWrapper<ZEL::Port>& other) override;
    bool onPortRemoveConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                                const ZEL::AddRefWrapper<ZEL::Port>& other) override;
    bool onPortSetDataType(const ZEL::AddRefWrapper<ZEL::Port>& port,
                           const ZEL::AddRefWrapper<ZEL::PortDataType>& type) override;
    bool onPortListPortAdded(const ZEL::PortList& list,
                             const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    /// Disconnects a port before it goes. A port that dies touches nobody, by the library's
    /// contract, so the ports at the other ends would keep a dead pointer to it. Refuses when a
    /// connection stays.
    bool onPortListPortRemoved(const ZEL::PortList& list,
                               const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    bool onPortListPortMove(const ZEL::PortList& list, int from, int to) override;
    /// Moves the inner port of a compound likewise: mirroring goes by position.
    void onPortListPortMoved(const ZEL::PortList& list, int from, int to) override;
    bool onPortSetDefaultValue(const ZEL::AddRefWrapper<ZEL::Port>& port,
                               const char* value) override;
    bool onPortSetName(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* name) override;

    /// The element that the node was read from, null for a node that was made without one. Not
    /// owned; valid as long as the document.
    const Piece* element() const { return m_element; }
    void setElement(const Piece* element) { m_element = element; }
    /// True when the document has an element for the port of this node: it stands there with its
    /// value or source. A port that only the definition gives does not.
    bool isInDocument(const ZEL::Port& port);

    /// The definition that gave the node its ports; empty when none fitted. The node holds it, so
    /// nodes go before the plugin that it may come from.
    const ZEL::AddRefWrapper<Definition>& definition() const { return m_definition; }
    void setDefinition(const ZEL::AddRefWrapper<Definition>& definition);

private:
    ZEL::PortList& listLike(const ZEL::PortList& list);

    const Piece* m_element = nullptr; ///< Not owned. Null: not in the document.
    ZEL::AddRefWrapper<Definition> m_definition;
};

/// The journal of the node's document; without a document of this host one that agrees to all.
Journal& journalOf(ZEL::Node* node);

/// Takes all connections off a port that is about to go. False when a listener refused one.
bool disconnect(const ZEL::AddRefWrapper<ZEL::Port>& port);

} // namespace shading
