#include "saving/draftNetwork.h"

#include "document/attributes.h"
#include "document/backdrops.h"
#include "document/document.h"
#include "document/graphInterface.h"
#include "document/node.h"
#include "document/origins.h"
#include "format/nodeDefs.h"

#include <algorithm>

namespace shading {

namespace {

/// The sibling behind which the port's element comes: the one of the nearest port that has one.
Piece* placeOf(const DraftNetwork& network, Piece& parent, ZEL::PortList& list, ZEL::Port& port)
{
    const int index = list.findPort(&port);
    for (int i = index - 1; i >= 0; --i) {
        Piece* const item = network.itemOf(*list[i]);
        if (item && item->parent == &parent)
            return item;
    }
    for (int i = index + 1; i < list.size(); ++i) {
        const Piece* const item = network.itemOf(*list[i]);
        if (item && item->parent == &parent)
            return pieceBefore(*item);
    }
    return port.getPortIOType() == ZEL::PortInput ? nullptr : lastPiece(parent);
}

} // namespace

DraftNetwork::DraftNetwork(Document& document, Progress& progress)
    : m_document(document),
      m_progress(progress)
{
    m_progress.await([this] { m_draft.emplace(m_document.xml()); });
}

DraftNetwork::~DraftNetwork()
{
    m_progress.awaitResult([this] { m_draft.reset(); });
}

void DraftNetwork::claim(Piece& item, ZEL::Node& node)
{
    m_nodeItems[&node] = &item;
    claimOf(item).first = &node;
}

void DraftNetwork::claim(Piece& item, ZEL::Port& port)
{
    m_portItems[&port] = &item;
    claimOf(item).second = &port;
}

void DraftNetwork::remove(ZEL::Port& port)
{
    if (Piece* const item = itemOf(port)) {
        claimOf(*item).second = nullptr;
        m_draft->remove(*item);
        m_portItems[&port] = nullptr;
    }
}

Piece* DraftNetwork::itemOf(const ZEL::Node& node) const
{
    Piece* const* const found = m_nodeItems.find(&node);
    return found ? *found : nullptr;
}

Piece* DraftNetwork::itemOf(const ZEL::Port& port) const
{
    Piece* const* const found = m_portItems.find(&port);
    return found ? *found : nullptr;
}

Piece* DraftNetwork::itemOf(const Piece& made) const
{
    const auto found = m_madeItems.find(&made);
    return found == m_madeItems.end() ? nullptr : found->second;
}

ZEL::Node* DraftNetwork::nodeOf(const Piece* item) const
{
    return item && item->number < m_claims.size() ? m_claims[item->number].first : nullptr;
}

ZEL::Port* DraftNetwork::portOf(const Piece* item) const
{
    return item && item->number < m_claims.size() ? m_claims[item->number].second : nullptr;
}

Piece* DraftNetwork::readItemOf(const ZEL::Node& node)
{
    const auto* const own = dynamic_cast<const Node*>(&node);
    return own && own->element() ? &m_draft->at(*own->element()) : nullptr;
}

Piece* DraftNetwork::readItemOf(const ZEL::Port& port)
{
    const Piece* const element = m_document.origins().elementOf(port);
    return element ? &m_draft->at(*element) : nullptr;
}

std::pair<ZEL::Node*, ZEL::Port*>& DraftNetwork::claimOf(const Piece& item)
{
    if (item.number >= m_claims.size())
        m_claims.resize(m_draft->pieceCount());
    return m_claims[item.number];
}

bool DraftNetwork::declare(ZEL::Node& node, ZEL::Port& port)
{
    const bool isInput = port.getPortIOType() == ZEL::PortInput;
    const Tie* const tie = isInput ? tieOf(node) : nullptr;
    Piece* const own = itemOf(node);
    if (!own || (tie && !tie->nodeDef))
        return false;
    Piece& parent = tie ? m_draft->at(*tie->nodeDef) : *own;
    // Inputs that references make come behind those that have elements.
    ZEL::PortList& inputs = node.inputs();
    const int place = isInput && node.isCompound() ? inputs.findPort(&port) : 0;
    int first = place;
    while (first > 0 && !itemOf(*inputs[first - 1]))
        --first;
    for (int i = first; i < place; ++i)
        declare(node, *inputs[i]);
    Piece& item = m_draft->newElement(isInput ? "input" : "output");
    m_draft->setAttribute(item, "name", port.getName());
    m_draft->setAttribute(item, "type", typeNameOf(port));
    const bool hasValue = isInput ? !isFed(port) : node.isCompound();
    if (hasValue && *port.getPortDefaultValue() != '\0')
        m_draft->setAttribute(item, "value", port.getPortDefaultValue());
    m_draft->insert(item, parent,
                    placeOf(*this, parent, isInput ? node.inputs() : node.outputs(), port));
    claim(item, port);
    return true;
}

/// Made when it must be; null for what is not in the network.
Piece* DraftNetwork::itemOf(const AttributeOwner& owner)
{
    const BackdropPtr backdrop =
        owner.element ? m_document.backdrops().of(*owner.element) : nullptr;
    if (backdrop && !backdrop->readElement())
        return itemOf(*owner.element);
    if (owner.element)
        return &m_draft->at(*owner.element);
    if (owner.node)
        return itemOf(*owner.node);
    const NodePtr node = owner.port->getParentNode();
    if (!node || !itemOf(*node))
        return nullptr;
    ZEL::PortList& list =
        owner.port->getPortIOType() == ZEL::PortInput ? node->inputs() : node->outputs();
    if (list.findPort(owner.port) < 0)
        return nullptr;
    if (!itemOf(*owner.port))
        declare(*node, *owner.port);
    return itemOf(*owner.port);
}

/// The node is in a graph around the element, or in the document.
bool DraftNetwork::sees(const Piece& item, ZEL::Node& node) const
{
    const CompoundPtr compound = itemOf(node) ? node.getParentCompound() : nullptr;
    const Piece* around = item.parent;
    while (around && (!compound || nodeOf(around) != compound->getAsNode()))
        around = around->parent;
    return around != nullptr;
}

void DraftNetwork::writeAttributes(std::vector<SaveProblem>& problems)
{
    for (const Attributes::Changed& changed : m_document.attributes().changed()) {
        m_progress.step();
        const Piece* const read = m_document.attributes().elementOf(changed.owner);
        for (const auto& [name, value] : changed.values) {
            const std::string now = value.now();
            if ((read ? attributeOf(*read, name) : "") == now)
                continue;
            Piece* const item = itemOf(changed.owner);
            const PortPtr& port = changed.owner.port;
            if (item && now.empty())
                m_draft->removeAttribute(*item, name);
            if (item && now.empty() && port && isBare(*item) && !isFed(*port) &&
                port->getPortIOType() == ZEL::PortInput && !port->getParentNode()->isCompound())
                remove(*port);
            else if (item && !now.empty())
                m_draft->setAttribute(*item, name, now);
            if (item && item->parent && value.named && !sees(*item, *value.named))
                problems.push_back({pathOf(*m_document.getRootNode()) + "." + now,
                                    "it is gone from there, and " + std::string(item->text) +
                                        " \"" + attributeOf(*item, "name") + "\" still names it"});
        }
    }
}

bool DraftNetwork::isFed(ZEL::Port& port) const
{
    return port.getPortIOType() == ZEL::PortInput &&
           (port.isConnected() || !m_document.origins().hiddenSourceOf(port).empty());
}

bool isBare(const Piece& item)
{
    return !item.first &&
           std::all_of(item.attributes.begin(), item.attributes.end(), [](const Attribute& said) {
               return said.name == "name" || said.name == "type";
           });
}

Piece* pieceBefore(const Piece& item)
{
    Piece* piece = item.previous;
    while (piece && piece->isBlank())
        piece = piece->previous;
    return piece;
}

Piece* lastPiece(const Piece& parent)
{
    return parent.last && parent.last->isBlank() ? pieceBefore(*parent.last) : parent.last;
}

} // namespace shading
