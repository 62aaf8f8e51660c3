#include "edits/expansion.h"

#include "document/attributes.h"
#include "document/document.h"
#include "document/names.h"
#include "document/rules.h"

#include <array>

namespace shading {

namespace {

/// The attributes of an input that say how its value is to be taken.
constexpr std::array<const char*, 5> kQualifiers = {"colorspace", "unit", "unittype", "fileprefix",
                                                    "defaultgeomprop"};

void disconnectAllIn(ZEL::PortList& list)
{
    for (int i = 0; i < list.size(); ++i)
        list[i]->removeAllConnections();
}

} // namespace

Expansion::Expansion(Document& document, const NodePtr& graph)
    : m_document(document),
      m_graph(graph),
      m_compound(graph->getAsCompound()),
      m_around(graph->getParentCompound())
{
    for (const NodePtr& node : m_compound->nodes()) {
        m_nodes.push_back(node);
        m_planned.insert(node.get());
    }
}

std::string Expansion::run()
{
    for (ZEL::PortList* const list : {&m_graph->inputs(), &m_graph->outputs()}) {
        for (ZEL::Port* const port : *list) {
            std::string problem = hiddenSourceProblem(*port);
            if (!problem.empty())
                return problem;
        }
    }
    for (const NodePtr& node : m_nodes)
        planNode(*node);
    for (int i = 0; i < m_graph->inputs().size(); ++i) {
        const PortPtr outer = m_graph->inputs()[i];
        if (const PortPtr inner = m_compound->getReversePort(outer))
            planInput(outer, inner);
    }

    disconnectAll();
    if (!m_around->nodes().remove(m_graph))
        return "it cannot be removed";
    for (const NodePtr& node : m_nodes) {
        std::string problem = moveUp(node);
        if (!problem.empty())
            return problem;
    }
    for (const Link& link : m_links) {
        if (!link.receiver->addConnection(link.sender))
            return pathOf(*link.receiver) + " cannot be connected";
    }
    for (const Gift& gift : m_gifts)
        give(gift);
    return "";
}

/// The connections of a node inside, but for those that come through the compound's inputs.
void Expansion::planNode(ZEL::Node& node)
{
    for (ZEL::Port* const output : node.outputs()) {
        for (const PortPtr& target : targetsOf(*output))
            m_links.push_back({output, target});
    }
    for (ZEL::Port* const input : node.inputs()) {
        for (ZEL::Port* const source : input->connectedTo()) {
            const NodePtr owner = source->getParentNode();
            if (owner != m_graph && m_planned.count(owner.get()) == 0)
                m_links.push_back({source, input});
        }
    }
}

void Expansion::planInput(const PortPtr& outer, const PortPtr& inner)
{
    const std::vector<PortPtr> targets = targetsOf(*inner);
    for (ZEL::Port* const source : outer->connectedTo()) {
        if (source->getParentNode() == m_graph)
            continue; // Fed by the compound itself: planned from where that comes from.
        for (const PortPtr& target : targets)
            m_links.push_back({source, target});
    }
    if (outer->isConnected())
        return;
    for (const PortPtr& target : targets) {
        if (!target->isCompoundInternalPort())
            m_gifts.push_back({outer, target, outer->getPortDefaultValue()});
    }
}

/// The value with what says how it is to be taken, which may be all that there is of it: the name
/// of a geometric property.
void Expansion::give(const Gift& gift)
{
    if (!gift.value.empty())
        gift.to->setPortDefaultValue(gift.value.c_str());
    Attributes& attributes = m_document.attributes();
    for (const char* const name : kQualifiers) {
        const std::string given = attributes.get({nullptr, gift.from}, name);
        if (!given.empty() && attributes.get({nullptr, gift.to}, name).empty())
            attributes.set({nullptr, gift.to}, name, AttributeValue{given, {}});
    }
}

/// Adds the ports that the sender feeds, in order; behind a port of the compound those that it
/// leads to on the other side. What runs in a circle through the compound ends nowhere.
void Expansion::addTargets(ZEL::Port& sender,
                           std::vector<PortPtr>& targets,
                           std::unordered_set<ZEL::Port*>& seen)
{
    if (!seen.insert(&sender).second)
        return;
    for (ZEL::Port* const target : sender.connectedTo()) {
        if (target->getParentNode() != m_graph)
            targets.emplace_back(target);
        else if (const PortPtr mirror = m_compound->getReversePort(target))
            addTargets(*mirror, targets, seen);
    }
}

std::vector<PortPtr> Expansion::targetsOf(ZEL::Port& sender)
{
    std::vector<PortPtr> targets;
    std::unordered_set<ZEL::Port*> seen;
    addTargets(sender, targets, seen);
    return targets;
}

void Expansion::disconnectAll()
{
    disconnectAllIn(m_compound->innerInputs());
    disconnectAllIn(m_compound->innerOutputs());
    disconnectAllIn(m_graph->inputs());
    disconnectAllIn(m_graph->outputs());
    for (const NodePtr& node : m_nodes) {
        disconnectAllIn(node->inputs());
        disconnectAllIn(node->outputs());
    }
}

std::string Expansion::moveUp(const NodePtr& node)
{
    const std::string oldPath = pathOf(*node);
    const std::string name = node->getName();
    // Free above, and among those that are still inside.
    const std::string unique = takenProblem(*m_around, name).empty()
                                   ? name
                                   : uniqueName(*m_around, name, m_compound.get());
    node->setName(unique.c_str());
    if (!m_compound->nodes().remove(node) || !m_around->nodes().add(node))
        return oldPath + " cannot be moved";
    if (unique != name)
        m_renamed.push_back({oldPath, pathOf(*node)});
    return "";
}

} // namespace shading
