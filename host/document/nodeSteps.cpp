// The steps that change lists of nodes, and the running of many steps.

#include "document/change.h"
#include "document/step.h"

#include <climits>

namespace shading {

namespace {

using Nodes = std::vector<NodePtr>;

Nodes nodesOf(ZEL::NodeList& list)
{
    Nodes nodes;
    for (const NodePtr& node : list)
        nodes.push_back(node);
    return nodes;
}

/// Brings the compound's list, which has the same nodes, into their order. A node list only
/// appends, and to take the followers out would cost them their connections; but an assignment
/// takes over another list's order. The other list belongs to a compound of its own, so that nobody
/// is asked.
void setOrder(ZEL::Compound& compound, const Nodes& nodes)
{
    const NodePtr owner = ZEL::Node::createNew(nullptr, nullptr);
    const CompoundPtr scratch = ZEL::Compound::createNew(owner, nullptr);
    for (const NodePtr& node : nodes)
        scratch->nodes().add(node);
    compound.nodes() = scratch->nodes();
    compound.nodes().setParentCompound(&compound); // Adding made the other one the parent.
}

int placeOf(ZEL::NodeList& list, const NodePtr& node)
{
    int place = 0;
    while (place < list.size() && list[place] != node)
        ++place;
    return place;
}

class NodeStep : public Step {
public:
    /// A place at the end, or behind it, is that of the last node.
    NodeStep(ZEL::Compound& compound, const NodePtr& node, int place, bool isAdding)
        : m_compound(&compound),
          m_owner(compound.getAsNode()),
          m_node(node),
          m_size(compound.nodes().size()),
          m_place(place),
          m_isAdding(isAdding)
    {
    }

    bool run(bool isForward) override
    {
        ZEL::NodeList& list = m_compound->nodes();
        if (isForward != m_isAdding)
            return list.remove(m_node);
        Nodes nodes;
        if (m_place < list.size())
            nodes = nodesOf(list);
        if (!list.add(m_node))
            return false;
        if (!nodes.empty()) {
            nodes.insert(nodes.begin() + m_place, m_node);
            setOrder(*m_compound, nodes);
        }
        return true;
    }

    bool isDone() const override
    {
        return m_compound->nodes().size() == m_size + (m_isAdding ? 1 : -1);
    }

    void notify(bool isForward) const override
    {
        m_owner->notifyNodeChange(isForward == m_isAdding ? ZEL::eNodeAdded : ZEL::eNodeRemoved,
                                  m_compound, m_node);
    }

    void collect(ChangeCollector& changes, bool isForward) const override
    {
        changes.addNode(m_compound, m_node, isForward == m_isAdding);
    }

private:
    CompoundPtr m_compound;
    NodePtr m_owner; ///< Keeps the compound in the network.
    NodePtr m_node;
    int m_size; ///< Of the list before the step.
    int m_place;
    bool m_isAdding;
};

class OrderStep : public Step {
public:
    explicit OrderStep(ZEL::Compound& compound)
        : m_compound(&compound),
          m_nodes(nodesOf(compound.nodes()))
    {
    }

    bool run(bool isForward) override
    {
        if (!isForward)
            setOrder(*m_compound, m_nodes);
        return true;
    }

    bool isDone() const override { return true; }
    void notify(bool /*isForward*/) const override {}
    void collect(ChangeCollector& /*changes*/, bool /*isForward*/) const override {}

private:
    CompoundPtr m_compound;
    Nodes m_nodes;
};

} // namespace

Step::~Step() = default;

std::unique_ptr<Step> makeAddNodeStep(ZEL::Compound& compound, const NodePtr& node)
{
    return std::make_unique<NodeStep>(compound, node, compound.nodes().size(), true);
}

std::unique_ptr<Step>
makeRemoveNodeStep(ZEL::Compound& compound, const NodePtr& node, bool withPlace)
{
    const int place = withPlace ? placeOf(compound.nodes(), node) : INT_MAX;
    return std::make_unique<NodeStep>(compound, node, place, false);
}

std::unique_ptr<Step> makeOrderStep(ZEL::Compound& compound)
{
    return std::make_unique<OrderStep>(compound);
}

bool runSteps(const Steps& steps, std::size_t first, bool isForward)
{
    const std::size_t count = steps.size() - first;
    const auto stepAt = [&](std::size_t i) -> Step& {
        return *steps[isForward ? first + i : steps.size() - 1 - i];
    };
    std::size_t done = 0;
    while (done < count && stepAt(done).run(isForward))
        ++done;
    const bool isGood = done == count;
    while (!isGood && done > 0)
        stepAt(--done).run(!isForward);
    return isGood;
}

} // namespace shading
