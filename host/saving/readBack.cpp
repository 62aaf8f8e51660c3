#include "saving/readBack.h"

#include "document/document.h"
#include "document/origins.h"
#include "document/step.h"
#include "format/format.h"
#include "format/xml.h"
#include "saving/referenceWriter.h"

#include <algorithm>

namespace shading {

namespace {

std::string definitionOf(const Node& node)
{
    return node.definition() ? node.definition()->record().name : "";
}

bool isLike(ZEL::PortList& ports, const std::vector<ZEL::Port*>& others)
{
    return static_cast<int>(others.size()) == ports.size() &&
           std::equal(others.begin(), others.end(), ports.begin());
}

/// The nodes of this host's compounds are its own.
Node& nodeAt(ZEL::NodeList& list, int index)
{
    return static_cast<Node&>(*list[index]);
}

} // namespace

ReadBack::ReadBack(DraftNetwork& network, Document& back, const std::vector<Piece*>& elements)
    : m_network(network),
      m_back(back)
{
    // What was written is read in the same order.
    auto element = elements.begin();
    const std::deque<Piece>& pieces = back.xml().pieces().pieces();
    m_written.resize(pieces.size());
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        if (pieces[i].isElement() && element != elements.end())
            m_written[i] = *element++;
    }
}

void ReadBack::run()
{
    const NodePtr live = m_network.document().getRootNode();
    const NodePtr back = m_back.getRootNode();
    compareNodes(static_cast<Node&>(*live), static_cast<Node&>(*back));
    compareSources(*live);
    if (!m_hasChanged)
        declareMissing();
}

void ReadBack::compareNodes(Node& live, Node& back)
{
    Piece& item = *m_network.itemOf(live);
    Draft& draft = m_network.draft();
    const std::string name = live.getName();
    const std::string type = live.getNodeTypeName();
    const std::string definition = definitionOf(live);
    if (live.getParentCompound() && name != back.getName())
        differ(pathOf(live), "its name is read back as " + std::string(back.getName()),
               draft.setAttribute(item, "name", name));
    if (type != back.getNodeTypeName())
        differ(pathOf(live), "its node type is read back as " + std::string(back.getNodeTypeName()),
               live.getParentCompound() && draft.setElementName(item, type));
    if (definition != definitionOf(back) && !definition.empty())
        differ(pathOf(live), "its definition is read back as another one",
               draft.setAttribute(item, "nodedef", definition));
    compareLists(live, back, live.inputs(), back.inputs());
    compareLists(live, back, live.outputs(), back.outputs());
    if (live.isCompound() && back.isCompound())
        compareInside(*live.getAsCompound(), *back.getAsCompound());
}

void ReadBack::compareInside(ZEL::Compound& live, ZEL::Compound& back)
{
    for (ZEL::PortList* const list : {&back.innerInputs(), &back.innerOutputs()}) {
        for (ZEL::Port* const port : *list) {
            const PortPtr outer = back.getReversePort(port);
            const auto found = m_liveOf.find(outer.get());
            const PortPtr inner =
                found == m_liveOf.end() ? nullptr : live.getReversePort(found->second);
            if (inner && list == &back.innerInputs())
                m_liveOf[port] = inner.get();
            else if (inner)
                m_backOf[inner.get()] = port;
        }
    }
    ZEL::NodeList& nodes = live.nodes();
    ZEL::NodeList& backNodes = back.nodes();
    bool isSame = nodes.size() == backNodes.size();
    for (int i = 0; isSame && i < nodes.size(); ++i)
        isSame = m_network.nodeOf(itemAt(nodeAt(backNodes, i).element())) == nodes[i].get() &&
                 nodes[i]->isCompound() == backNodes[i]->isCompound();
    if (!isSame) {
        differ(pathOf(*live.getAsNode()), "its nodes are not read back in their order", false);
        return;
    }
    for (int i = 0; i < nodes.size(); ++i)
        compareNodes(nodeAt(nodes, i), nodeAt(backNodes, i));
}

void ReadBack::compareLists(Node& live,
                            Node& back,
                            ZEL::PortList& livePorts,
                            ZEL::PortList& backPorts)
{
    const bool isInput = &livePorts == &live.inputs();
    const Ports found = counterparts(livePorts, backPorts);
    for (std::size_t i = 0; i < found.size(); ++i) {
        const PortPtr port = backPorts[static_cast<int>(i)];
        if (!found[i]) {
            differ(pathOf(back) + "." + port->getName(),
                   "it would be read back without being there", false);
            m_unclear.push_back(&live);
        } else {
            if (isInput)
                m_backOf[found[i]] = port.get();
            if (!isInput || live.isCompound())
                m_liveOf[port.get()] = found[i];
            comparePorts(live, *found[i], *port);
        }
    }
    if (isLike(livePorts, found))
        return;
    for (ZEL::Port* const port : livePorts) {
        if (std::find(found.begin(), found.end(), port) != found.end())
            continue;
        m_missing.emplace_back(&live, port);
        differ(pathOf(*port), "it is not read back", false);
    }
    compareOrder(live, livePorts, found);
}

/// The live port for each port read back, null where there is none: by its element, else by name.
ReadBack::Ports ReadBack::counterparts(ZEL::PortList& livePorts, ZEL::PortList& backPorts)
{
    Ports found;
    found.reserve(static_cast<std::size_t>(backPorts.size()));
    std::unordered_map<std::string, Ports> withoutElement;
    for (int i = livePorts.size() - 1; i >= 0; --i) {
        if (!m_network.itemOf(*livePorts[i]))
            withoutElement[livePorts[i]->getName()].push_back(livePorts[i].get());
    }
    for (ZEL::Port* const port : backPorts) {
        const Piece* const item = itemAt(m_back.origins().elementOf(*port));
        ZEL::Port* live = m_network.portOf(item);
        const auto named = item ? withoutElement.end() : withoutElement.find(port->getName());
        if (named != withoutElement.end() && !named->second.empty()) {
            live = named->second.back();
            named->second.pop_back();
        }
        found.push_back(live);
    }
    return found;
}

void ReadBack::comparePorts(Node& node, ZEL::Port& live, ZEL::Port& back)
{
    Draft& draft = m_network.draft();
    Piece* const item = m_network.itemOf(live);
    const std::string name = live.getName();
    const std::string value = live.getPortDefaultValue();
    if (name != back.getName())
        differ(pathOf(live), "its name is read back as " + std::string(back.getName()),
               draft.setAttribute(*item, "name", name));
    if (typeNameOf(live) != typeNameOf(back))
        differ(pathOf(live), "its type is read back as " + typeNameOf(back), writeType(node, live));
    if (value == back.getPortDefaultValue())
        return;
    bool isWritten = true;
    if (!item)
        m_missing.emplace_back(&node, &live);
    else
        isWritten = value.empty() ? draft.removeAttribute(*item, "value")
                                  : draft.setAttribute(*item, "value", value);
    differ(pathOf(live),
           "its value is read back as \"" + std::string(back.getPortDefaultValue()) + "\"",
           item && isWritten);
}

/// The output that a plain node has by its type needs no element.
bool ReadBack::writeType(Node& node, ZEL::Port& live)
{
    Draft& draft = m_network.draft();
    Piece* const item = m_network.itemOf(live);
    Piece& owner = *m_network.itemOf(node);
    const std::string type = typeNameOf(live);
    const Attribute* const ownerType = owner.attribute("type");
    const bool isImplied = live.getPortIOType() == ZEL::PortOutput && !node.isCompound() &&
                           std::string(live.getName()) == kDefaultOutput && ownerType &&
                           !ownerType->value.empty() && ownerType->value != kMultiOutput;
    if (!item && !isImplied)
        m_missing.emplace_back(&node, &live);
    const bool isOwnWritten = item && draft.setAttribute(*item, "type", type);
    return (isImplied && draft.setAttribute(owner, "type", type)) || isOwnWritten;
}

void ReadBack::compareOrder(Node& node, ZEL::PortList& livePorts, const Ports& found)
{
    if (static_cast<int>(found.size()) != livePorts.size())
        return;
    std::vector<Piece*> items;
    for (ZEL::Port* const port : livePorts) {
        if (Piece* const item = m_network.itemOf(*port))
            items.push_back(item);
    }
    Piece* const parent = m_network.itemOf(node);
    const bool hasMoved =
        !items.empty() && m_network.arrange(*parent, items, pieceBefore(*items.front()));
    differ(pathOf(node), "its ports are read back in another order", hasMoved);
    m_unclear.push_back(&node);
}

/// Elements for the ports that do not come back otherwise; at last for all of a node, so that
/// nothing is left to its definition and to references.
void ReadBack::declareMissing()
{
    for (const auto& [node, port] : m_missing) {
        if (m_network.itemOf(*port))
            continue;
        m_network.declare(*node, *port);
        m_hasChanged = true;
    }
    for (Node* const node : m_hasChanged ? std::vector<Node*>() : m_unclear) {
        for (ZEL::PortList* const list : {&node->inputs(), &node->outputs()}) {
            for (ZEL::Port* const port : *list) {
                if (m_network.itemOf(*port))
                    continue;
                m_network.declare(*node, *port);
                m_hasChanged = true;
            }
        }
    }
}

void ReadBack::compareSources(ZEL::Node& node)
{
    for (ZEL::Port* const input : node.inputs())
        compareSource(node, *input, *input);
    const CompoundPtr compound = node.getAsCompound();
    if (!compound)
        return;
    for (ZEL::Port* const inner : compound->innerOutputs())
        compareSource(node, *inner, *compound->getReversePort(inner));
    for (const NodePtr& child : compound->nodes())
        compareSources(*child);
}

/// The outer port is the one that has the element.
void ReadBack::compareSource(ZEL::Node& node, ZEL::Port& receiver, ZEL::Port& outer)
{
    const auto found = m_backOf.find(&receiver);
    if (found == m_backOf.end())
        return; // Its element has just been written, without a source.
    const PortPtr source = receiver.connectedTo()[0];
    const PortPtr backSource = found->second->connectedTo()[0];
    const auto backAsLive = m_liveOf.find(backSource.get());
    Piece* const item = m_network.itemOf(outer);
    const bool isSame =
        source ? backAsLive != m_liveOf.end() && backAsLive->second == source.get() : !backSource;
    if (isSame && (source || !item || !isStale(m_network, *item, outer)))
        return;
    if (!item)
        m_missing.emplace_back(&static_cast<Node&>(node), &outer);
    const bool isWritten = item && writeReference(m_network, *item, source);
    std::string reason = "it still names a source";
    if (source)
        reason = "the format has no words for its source " + pathOf(*source);
    else if (backSource)
        reason = "it is read back with the source " + pathOf(*backSource);
    differ(pathOf(receiver), reason, isWritten);
}

Piece* ReadBack::itemAt(const Piece* element) const
{
    return element ? m_written[element->number] : nullptr;
}

void ReadBack::differ(const std::string& path, const std::string& reason, bool isWritten)
{
    m_differences.push_back({path, reason});
    m_hasChanged = m_hasChanged || isWritten;
}

} // namespace shading
