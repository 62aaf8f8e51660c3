#include "edits/relocation.h"

#include "document/graphInterface.h"
#include "document/names.h"
#include "document/rules.h"

namespace shading {

Relocation::Relocation(const NodePtr& graph, const std::vector<NodePtr>& nodes, bool isInward)
    : m_graph(graph),
      m_inside(graph->getAsCompound()),
      m_from(isInward ? graph->getParentCompound() : m_inside),
      m_to(isInward ? m_inside : graph->getParentCompound()),
      m_nodes(nodes)
{
    for (const NodePtr& node : nodes)
        m_moved.insert(node.get());
}

std::string Relocation::run()
{
    for (const NodePtr& node : m_nodes)
        planNode(*node);
    for (const Link& link : m_broken)
        link.receiver->removeConnection(link.sender);
    for (const NodePtr& node : m_nodes) {
        std::string problem = move(node);
        if (!problem.empty())
            return problem;
    }
    collectPorts();
    for (const Link& link : m_links) {
        std::string problem = connect(link);
        if (!problem.empty())
            return problem;
    }
    for (const auto& [port, value] : m_values)
        port->setPortDefaultValue(value.c_str());
    removeIdlePorts();
    return "";
}

void Relocation::planNode(ZEL::Node& node)
{
    for (ZEL::Port* const input : node.inputs()) {
        for (ZEL::Port* const source : input->connectedTo())
            planInput(*input, source);
    }
    for (ZEL::Port* const output : node.outputs()) {
        for (ZEL::Port* const target : output->connectedTo()) {
            if (!isMoved(*target)) // Else it was planned from there.
                planTarget(*output, target);
        }
    }
}

void Relocation::planInput(ZEL::Port& input, const PortPtr& source)
{
    const PortPtr mirror = mirrorAcross(source);
    if (!mirror) {
        m_links.push_back({source, &input});
        return;
    }
    const PortPtr behind = mirror->connectedTo()[0];
    const std::string value = mirror->getPortDefaultValue();
    if (behind)
        m_links.push_back({behind, &input});
    else if (!mirror->isCompoundInternalPort() && !value.empty())
        m_values.emplace_back(&input, value);
}

void Relocation::planTarget(ZEL::Port& output, const PortPtr& target)
{
    const PortPtr mirror = mirrorAcross(target);
    if (!mirror) {
        m_links.push_back({&output, target});
        return;
    }
    for (ZEL::Port* const behind : mirror->connectedTo()) {
        m_links.push_back({&output, behind});
        m_broken.push_back({mirror, behind});
    }
}

/// The other side of a port of the graph on the border that the nodes cross; empty for any other.
PortPtr Relocation::mirrorAcross(const PortPtr& port)
{
    if (port->getParentNode() != m_graph)
        return nullptr;
    PortPtr mirror = m_inside->getReversePort(port);
    const PortPtr& inner = port->isCompoundInternalPort() ? port : mirror;
    if (inner && m_isCrossed.insert(inner.get()).second)
        m_crossed.push_back(inner);
    return mirror;
}

std::string Relocation::move(const NodePtr& node)
{
    const std::string path = pathOf(*node);
    const std::string name = node->getName();
    if (!takenProblem(*m_to, name).empty())
        node->setName(uniqueName(*m_to, name, m_from.get()).c_str());
    return m_from->nodes().remove(node) && m_to->nodes().add(node) ? "" : path + " cannot be moved";
}

std::string Relocation::connect(const Link& link)
{
    PortPtr sender = link.sender;
    const bool isInward = isInside(*link.receiver);
    if (isInside(*sender) != isInward) {
        sender = isInward ? inputFor(sender, link.receiver) : outputFor(sender);
        if (!sender)
            return pathOf(*m_graph) + ": a graph that implements a nodedef has no sources: nodes "
                                      "of its type have them";
    }
    if (!isInScope(*sender, *link.receiver))
        return pathOf(*link.receiver) + " is not in the compound of " + pathOf(*sender);
    return link.receiver->addConnection(sender) ? ""
                                                : pathOf(*link.receiver) + " cannot be connected";
}

/// The ports that the graph has, by what feeds them.
void Relocation::collectPorts()
{
    for (ZEL::Port* const inner : m_inside->innerInputs()) {
        const PortPtr outer = m_inside->getReversePort(inner);
        if (outer && outer->isConnected())
            m_inputs.emplace(outer->connectedTo()[0].get(), inner);
    }
    for (ZEL::Port* const inner : m_inside->innerOutputs()) {
        if (inner->isConnected())
            m_outputs.emplace(inner->connectedTo()[0].get(), m_inside->getReversePort(inner));
    }
}

/// The inner side of the graph's input that the sender feeds, made when there is none; empty when
/// the graph may have none.
PortPtr Relocation::inputFor(const PortPtr& sender, const PortPtr& receiver)
{
    PortPtr& known = m_inputs[sender.get()];
    if (known || tieOf(*m_graph))
        return known;
    const int index =
        m_inside->createCompoundPort(ZEL::PortInput, receiver->getName(), sender->getDataType());
    const PortPtr inner = m_inside->innerInputs()[index]; // Empty when it was refused.
    if (inner && m_graph->inputs()[index]->addConnection(sender))
        known = inner;
    return known;
}

/// Likewise the outer side of its output.
PortPtr Relocation::outputFor(const PortPtr& sender)
{
    PortPtr& known = m_outputs[sender.get()];
    if (known)
        return known;
    const int index =
        m_inside->createCompoundPort(ZEL::PortOutput, sender->getName(), sender->getDataType());
    const PortPtr inner = m_inside->innerOutputs()[index];
    if (inner && inner->addConnection(sender))
        known = m_graph->outputs()[index];
    return known;
}

bool Relocation::isMoved(ZEL::Port& port) const
{
    const NodePtr node = port.getParentNode();
    return node && m_moved.count(node.get()) > 0;
}

/// Deep inside counts: what is there reaches out through the graph as well.
bool Relocation::isInside(ZEL::Port& port) const
{
    CompoundPtr level = levelOf(port);
    while (level && level != m_inside)
        level = level->getAsNode()->getParentCompound();
    return static_cast<bool>(level);
}

void Relocation::removeIdlePorts()
{
    if (tieOf(*m_graph))
        return;
    for (const PortPtr& inner : m_crossed) {
        const bool isInput = inner->getPortIOType() == ZEL::PortOutput;
        const PortPtr outer = m_inside->getReversePort(inner);
        if (outer && !(isInput ? inner : outer)->isConnected())
            m_inside->deleteCompoundPort(inner);
    }
}

} // namespace shading
