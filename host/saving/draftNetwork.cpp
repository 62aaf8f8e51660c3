#include "saving/draftNetwork.h"

#include "document/document.h"
#include "document/node.h"
#include "document/origins.h"
#include "format/xml.h"

namespace shading {

namespace {

template <class Map, class Key>
auto valueAt(const Map& map, const Key* key) -> typename Map::mapped_type
{
    const auto found = map.find(key);
    return found == map.end() ? nullptr : found->second;
}

/// Counts the elements below; -1 when the draft lacks one.
int countIn(const Draft& draft, pugi::xml_node parent)
{
    int count = 0;
    for (const pugi::xml_node child : parent.children()) {
        if (child.type() != pugi::node_element)
            continue;
        const DraftItem* const item = draft.elementAt(offsetOf(child));
        const int inside = item && item->text == child.name() ? countIn(draft, child) : -1;
        if (inside < 0)
            return -1;
        count += 1 + inside;
    }
    return count;
}

DraftItem* itemAt(const Draft& draft, pugi::xml_node_struct* element)
{
    return element ? draft.elementAt(offsetOf(pugi::xml_node(element))) : nullptr;
}

/// The sibling behind which the port's element comes: the one of the nearest port that has one.
DraftItem* placeOf(const DraftNetwork& network, ZEL::PortList& list, ZEL::Port& port)
{
    const int index = list.findPort(&port);
    for (int i = index - 1; i >= 0; --i) {
        if (DraftItem* const item = network.itemOf(*list[i]))
            return item;
    }
    for (int i = index + 1; i < list.size(); ++i) {
        if (const DraftItem* const item = network.itemOf(*list[i]))
            return pieceBefore(*item);
    }
    const ZEL::AddRefWrapper<ZEL::Node> node = port.getParentNode();
    return port.getPortIOType() == ZEL::PortInput ? nullptr : lastPiece(*network.itemOf(*node));
}

} // namespace

DraftNetwork::DraftNetwork(Document& document)
    : m_document(document),
      m_draft(document.xml().text(), document.xml().encoding())
{
    m_portItems.reserve(m_draft.elementCount());
}

bool DraftNetwork::isWhole() const
{
    const pugi::xml_node root = m_document.xml().documentElement();
    return countIn(m_draft, root.parent()) == static_cast<int>(m_draft.elementCount());
}

void DraftNetwork::claim(DraftItem& item, ZEL::Node& node)
{
    m_nodeItems[&node] = &item;
    claimOf(item).first = &node;
}

void DraftNetwork::claim(DraftItem& item, ZEL::Port& port)
{
    m_portItems[&port] = &item;
    claimOf(item).second = &port;
}

DraftItem* DraftNetwork::itemOf(const ZEL::Node& node) const
{
    return valueAt(m_nodeItems, &node);
}

DraftItem* DraftNetwork::itemOf(const ZEL::Port& port) const
{
    return valueAt(m_portItems, &port);
}

ZEL::Node* DraftNetwork::nodeOf(const DraftItem* item) const
{
    return item && item->number < m_claims.size() ? m_claims[item->number].first : nullptr;
}

ZEL::Port* DraftNetwork::portOf(const DraftItem* item) const
{
    return item && item->number < m_claims.size() ? m_claims[item->number].second : nullptr;
}

DraftItem* DraftNetwork::readItemOf(const ZEL::Node& node) const
{
    const auto* const own = dynamic_cast<const Node*>(&node);
    return own ? itemAt(m_draft, own->element()) : nullptr;
}

DraftItem* DraftNetwork::readItemOf(const ZEL::Port& port) const
{
    return itemAt(m_draft, m_document.origins().elementOf(port));
}

std::pair<ZEL::Node*, ZEL::Port*>& DraftNetwork::claimOf(const DraftItem& item)
{
    if (item.number >= m_claims.size())
        m_claims.resize(m_draft.pieceCount());
    return m_claims[item.number];
}

bool DraftNetwork::arrange(DraftItem& parent,
                           const std::vector<DraftItem*>& items,
                           DraftItem* start)
{
    std::size_t placed = 0;
    for (const DraftItem* child = parent.first; child && placed < items.size(); child = child->next)
        placed += child == items[placed] ? 1 : 0;
    if (placed == items.size())
        return false;
    std::unordered_map<const DraftItem*, int> places;
    int place = 0;
    for (const DraftItem* child = parent.first; child; child = child->next)
        places[child] = ++place;
    DraftItem* last = nullptr;
    int lastPlace = 0;
    bool hasMoved = false;
    for (DraftItem* const item : items) {
        if (item->parent == &parent && places[item] > lastPlace) {
            lastPlace = places[item];
        } else {
            hasMoved = true;
            DraftItem* const previous = last ? last : start;
            if (item->parent)
                m_draft.move(*item, parent, previous);
            else
                m_draft.insert(*item, parent, previous);
        }
        last = item;
    }
    return hasMoved;
}

void DraftNetwork::declare(ZEL::Node& node, ZEL::Port& port)
{
    const bool isInput = port.getPortIOType() == ZEL::PortInput;
    DraftItem& item = m_draft.newElement(isInput ? "input" : "output");
    m_draft.setAttribute(item, "name", port.getName());
    m_draft.setAttribute(item, "type", typeNameOf(port));
    if ((isInput || node.isCompound()) && *port.getPortDefaultValue() != '\0')
        m_draft.setAttribute(item, "value", port.getPortDefaultValue());
    m_draft.insert(item, *itemOf(node),
                   placeOf(*this, isInput ? node.inputs() : node.outputs(), port));
    claim(item, port);
}

DraftItem* pieceBefore(const DraftItem& item)
{
    DraftItem* piece = item.previous;
    while (piece && piece->isBlank())
        piece = piece->previous;
    return piece;
}

DraftItem* lastPiece(const DraftItem& parent)
{
    return parent.last && parent.last->isBlank() ? pieceBefore(*parent.last) : parent.last;
}

} // namespace shading
