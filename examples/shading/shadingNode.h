#pragma once

#include "zel.h"

namespace pugi {
struct xml_node_struct;
}

namespace shading {

/// A node of a shading network, plain or the owner of a Compound. It remembers the element of the
/// document that it was made from.
///
/// A host derives from ZEL::Node for two reasons: to keep data of its own with each node, and to
/// answer the questions that the library asks before each change.
class Node : public ZEL::Node {
public:
    /// A new node, held by the wrapper. The container must outlive it.
    static ZEL::AddRefWrapper<Node> createNew(ZEL::Container* container, const char* name);
    explicit Node(ZEL::Container* container);
    /// The virtual assignment of the base, which every derived class would hide otherwise.
    using ZEL::Node::operator=;

    /// Disconnects a port before it goes. A port that dies touches nobody, by the library's
    /// contract, so the ports at the other ends would keep a dead pointer to it. Refuses when a
    /// connection stays.
    bool onPortListPortRemoved(const ZEL::PortList& list,
                               const ZEL::AddRefWrapper<ZEL::Port>& port) override;

    /// The element in the container's document, null for a node that was made without one. Not
    /// owned; valid as long as the container.
    pugi::xml_node_struct* element() const { return m_element; }
    void setElement(pugi::xml_node_struct* element) { m_element = element; }

private:
    pugi::xml_node_struct* m_element = nullptr; ///< Not owned. Null: not in the document.
};

/// Takes all connections off a port that is about to go. False when a listener refused one.
bool disconnect(const ZEL::AddRefWrapper<ZEL::Port>& port);

} // namespace shading
