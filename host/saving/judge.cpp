#include "saving/judge.h"

#include "document/document.h"
#include "document/graphInterface.h"
#include "document/origins.h"
#include "document/step.h"
#include "format/nodeDefs.h"
#include "format/xml.h"
#include "saving/referenceWriter.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

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

Judge::Judge(DraftNetwork& network, Document& back, const std::vector<Piece*>& elements)
    : m_network(network),
      m_back(back)
{
    // What was written is read in the same order.
    auto element = elements.begin();
    const std::deque<Piece>& pieces = back.xml().pieces().pieces();
    m_written.resize(pieces.size());
    for (const Piece& piece : pieces) {
        if (m_network.progress().isDue())
            m_network.progress().tell();
        if (!piece.isElement() || &piece == &pieces.front())
            continue;
        m_isWhole = m_isWhole && element != elements.end() && (*element)->text == piece.text;
        if (m_isWhole)
            m_written[piece.number] = *element++;
    }
    m_isWhole = m_isWhole && element == elements.end();
}

std::vector<Difference> Judge::differences()
{
    const NodePtr live = m_network.document().getRootNode();
    const NodePtr back = m_back.getRootNode();
    if (!m_isWhole)
        return {{Fact::Nodes,
                 live.get(),
                 nullptr,
                 {pathOf(*live), "other elements are read back than were written"}}};
    compareNodes(static_cast<Node&>(*live), static_cast<Node&>(*back));
    compareSources(*live);
    return m_differences;
}

void Judge::compareNodes(Node& live, Node& back)
{
    m_network.progress().step();
    if (live.getParentCompound() && std::strcmp(live.getName(), back.getName()) != 0)
        differ(Fact::Name, live, "its name is read back as " + std::string(back.getName()));
    if (std::strcmp(live.getNodeTypeName(), back.getNodeTypeName()) != 0)
        differ(Fact::NodeType, live,
               "its node type is read back as " + std::string(back.getNodeTypeName()));
    if (live.definition() && live.definition() != back.definition() &&
        definitionOf(live) != definitionOf(back))
        differ(Fact::Definition, live, "its definition is read back as another one");
    compareLists(live, live.inputs(), back.inputs());
    compareLists(live, live.outputs(), back.outputs());
    if (live.isCompound() && back.isCompound())
        compareInside(*live.getAsCompound(), *back.getAsCompound());
}

void Judge::compareInside(ZEL::Compound& live, ZEL::Compound& back)
{
    for (ZEL::PortList* const list : {&back.innerInputs(), &back.innerOutputs()}) {
        for (ZEL::Port* const port : *list) {
            const PortPtr outer = back.getReversePort(port);
            ZEL::Port* const* const found = m_liveOf.find(outer.get());
            const PortPtr inner = found ? live.getReversePort(*found) : nullptr;
            if (inner && list == &back.innerInputs())
                m_liveOf[port] = inner.get();
            else if (inner)
                m_backOf[inner.get()] = port;
        }
    }
    ZEL::NodeList& nodes = live.nodes();
    ZEL::NodeList& backNodes = back.nodes();
    if (nodes.size() != backNodes.size())
        differ(Fact::Nodes, *live.getAsNode(), "other nodes are read back in it");
    for (int i = 0; i < backNodes.size(); ++i) {
        Node& backNode = nodeAt(backNodes, i);
        ZEL::Node* const node = m_network.nodeOf(itemAt(backNode.element()));
        if (node && node->getParentCompound() == &live &&
            node->isCompound() == backNode.isCompound())
            compareNodes(static_cast<Node&>(*node), backNode);
        else
            differ(Fact::Nodes, *live.getAsNode(), "other nodes are read back in it");
    }
}

void Judge::compareLists(Node& live, ZEL::PortList& livePorts, ZEL::PortList& backPorts)
{
    const bool isInput = &livePorts == &live.inputs();
    const Ports found = counterparts(livePorts, backPorts);
    for (std::size_t i = 0; i < found.size(); ++i) {
        const PortPtr port = backPorts[static_cast<int>(i)];
        if (!found[i]) {
            m_differences.push_back({Fact::Surplus,
                                     &live,
                                     nullptr,
                                     {pathOf(live) + "." + port->getName(),
                                      "it would be read back without being there"}});
            continue;
        }
        if (isInput)
            m_backOf[found[i]] = port.get();
        if (!isInput || live.isCompound())
            m_liveOf[port.get()] = found[i];
        comparePorts(live, *found[i], *port);
    }
    if (isLike(livePorts, found))
        return;
    const Tie* const tie = isInput ? tieOf(live) : nullptr;
    const bool isElsewhere = tie && !tie->nodeDef;
    // No element stands for such an input, and what is made of the node may give it or not.
    const bool isForgotten = isInput && (isElsewhere || !live.isCompound());
    Ports present;
    for (ZEL::Port* const port : livePorts) {
        if (std::find(found.begin(), found.end(), port) != found.end())
            present.push_back(port);
        else if (!isForgotten || m_network.isFed(*port) || *port->getPortDefaultValue() != '\0')
            differ(Fact::Missing, live, *port, "it is not read back");
    }
    if (found.size() == present.size() && found != present && !tie)
        m_differences.push_back({Fact::Order,
                                 &live,
                                 livePorts[0].get(),
                                 {pathOf(live), "its ports are read back in another order"}});
}

/// The live port for each port read back, null where there is none: by its element, else by name.
Judge::Ports Judge::counterparts(ZEL::PortList& livePorts, ZEL::PortList& backPorts)
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
        // Graphs that implement one definition share its elements.
        ZEL::Port* live = m_network.portOf(item);
        if (live && item->parent->text == "nodedef" && livePorts.findPort(live) < 0) {
            live = nullptr;
            for (ZEL::Port* const sharing : livePorts)
                live = m_network.itemOf(*sharing) == item ? sharing : live;
        }
        const auto named = item ? withoutElement.end() : withoutElement.find(port->getName());
        if (named != withoutElement.end() && !named->second.empty()) {
            live = named->second.back();
            named->second.pop_back();
        }
        found.push_back(live);
    }
    return found;
}

void Judge::comparePorts(Node& node, ZEL::Port& live, ZEL::Port& back)
{
    if (std::strcmp(live.getName(), back.getName()) != 0)
        differ(Fact::Name, node, live, "its name is read back as " + std::string(back.getName()));
    if (live.getDataType() != back.getDataType() && typeNameOf(live) != typeNameOf(back))
        differ(Fact::PortType, node, live, "its type is read back as " + typeNameOf(back));
    if (!m_network.isFed(live) &&
        std::strcmp(live.getPortDefaultValue(), back.getPortDefaultValue()) != 0)
        differ(Fact::Value, node, live,
               "its value is read back as \"" + std::string(back.getPortDefaultValue()) + "\"");
}

void Judge::compareSources(ZEL::Node& node)
{
    m_network.progress().step();
    for (ZEL::Port* const input : node.inputs())
        compareSource(node, *input, *input);
    const CompoundPtr compound = node.getAsCompound();
    if (!compound)
        return;
    for (ZEL::Port* const inner : compound->innerOutputs()) {
        const PortPtr outer = compound->getReversePort(inner);
        if (outer)
            compareSource(node, *inner, *outer);
        else // Somebody took it away past the compound.
            differ(Fact::Order, node, *inner, "it has no port outside of its compound");
    }
    for (const NodePtr& child : compound->nodes())
        compareSources(*child);
}

/// The outer port is the one that has the element.
void Judge::compareSource(ZEL::Node& node, ZEL::Port& receiver, ZEL::Port& outer)
{
    ZEL::Port* const* const found = m_backOf.find(&receiver);
    if (!found)
        return; // The port itself is missing.
    const PortPtr source = receiver.connectedTo()[0];
    const PortPtr backSource = (*found)->connectedTo()[0];
    const Piece* const item = m_network.itemOf(outer);
    const bool isHidden =
        !source && !m_network.document().origins().hiddenSourceOf(receiver).empty();
    if (isHidden && item && namesOutputOnly(*item))
        return; // It follows that output of the document, wherever this leads.
    if (!source && !backSource) {
        if (item && isStale(m_network, *item, outer))
            differ(Fact::Source, node, outer, "it still names a source");
        return;
    }
    ZEL::Port* const* const backAsLive = m_liveOf.find(backSource.get());
    if (!source)
        differ(Fact::Source, node, outer, "it is read back with the source " + pathOf(*backSource));
    else if (!backAsLive || *backAsLive != source.get())
        differ(Fact::Source, node, outer,
               "the format has no words for its source " + pathOf(*source));
}

Piece* Judge::itemAt(const Piece* element) const
{
    return element ? m_written[element->number] : nullptr;
}

void Judge::differ(Fact fact, ZEL::Node& node, const std::string& reason)
{
    m_differences.push_back({fact, &node, nullptr, {pathOf(node), reason}});
}

void Judge::differ(Fact fact, ZEL::Node& node, ZEL::Port& port, const std::string& reason)
{
    m_differences.push_back({fact, &node, &port, {pathOf(port), reason}});
}

} // namespace shading
