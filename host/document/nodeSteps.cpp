// The steps that change nodes, their lists and attributes, and the running of many steps.

#include "document/change.h"
#include "document/node.h"
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

class RenameNodeStep : public Step {
public:
    RenameNodeStep(const NodePtr& node, const std::string& name)
        : m_node(node),
          m_before(node->getName()),
          m_after(name)
    {
    }

    bool run(bool isForward) override
    {
        m_node->setName((isForward ? m_after : m_before).c_str());
        return isDone() == isForward;
    }

    bool isDone() const override { return m_node->getName() == m_after; }

    void notify(bool /*isForward*/) const override
    {
        const CompoundPtr around = m_node->getParentCompound();
        if (around && around->getAsNode())
            around->getAsNode()->notifyNodeChange(ZEL::eNodeRenamed, around, m_node);
    }

    void collect(ChangeCollector& changes, bool /*isForward*/) const override
    {
        changes.changeNode(m_node);
    }

private:
    NodePtr m_node;
    std::string m_before;
    std::string m_after;
};

/// What the node knows of its definition; its ports are steps of their own.
class DefinitionStep : public Step {
public:
    DefinitionStep(const HostNodePtr& node, const ZEL::AddRefWrapper<Definition>& definition)
        : m_node(node),
          m_before(node->definition()),
          m_after(definition)
    {
    }

    bool run(bool isForward) override
    {
        m_node->setDefinition(isForward ? m_after : m_before);
        return true;
    }

    bool isDone() const override { return m_node->definition() == m_after; }

    void notify(bool /*isForward*/) const override
    {
        const CompoundPtr around = m_node->getParentCompound();
        if (around && around->getAsNode())
            around->getAsNode()->notifyNodeChange(ZEL::eNodeChanged, around, m_node.get());
    }

    void collect(ChangeCollector& changes, bool /*isForward*/) const override
    {
        changes.changeNode(m_node.get());
    }

private:
    HostNodePtr m_node;
    ZEL::AddRefWrapper<Definition> m_before;
    ZEL::AddRefWrapper<Definition> m_after;
};

class AttributeStep : public Step {
public:
    AttributeStep(Attributes& attributes,
                  const AttributeOwner& owner,
                  const std::string& name,
                  const std::optional<AttributeValue>& before,
                  const std::optional<AttributeValue>& after)
        : m_attributes(attributes),
          m_owner(owner),
          m_name(name),
          m_before(before),
          m_after(after)
    {
    }

    bool run(bool isForward) override
    {
        m_attributes.set(m_owner, m_name, isForward ? m_after : m_before);
        return true;
    }

    bool isDone() const override
    {
        const AttributeValue* const value = m_attributes.changedValue(m_owner, m_name);
        return value ? m_after && *value == *m_after : !m_after;
    }

    void notify(bool /*isForward*/) const override
    {
        const NodePtr node = m_attributes.nodeOf(m_owner);
        const CompoundPtr around = node ? node->getParentCompound() : nullptr;
        if (around && around->getAsNode())
            around->getAsNode()->notifyNodeChange(ZEL::eNodeChanged, around, node);
    }

    void collect(ChangeCollector& changes, bool /*isForward*/) const override
    {
        if (const NodePtr node = m_attributes.nodeOf(m_owner))
            changes.changeNode(node);
    }

private:
    Attributes& m_attributes;
    AttributeOwner m_owner;
    std::string m_name;
    std::optional<AttributeValue> m_before; ///< Empty: as it was read.
    std::optional<AttributeValue> m_after;
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

std::unique_ptr<Step> makeRenameNodeStep(const NodePtr& node, const std::string& name)
{
    return std::make_unique<RenameNodeStep>(node, name);
}

std::unique_ptr<Step> makeDefinitionStep(const HostNodePtr& node,
                                         const ZEL::AddRefWrapper<Definition>& definition)
{
    return std::make_unique<DefinitionStep>(node, definition);
}

std::unique_ptr<Step> makeAttributeStep(Attributes& attributes,
                                        const AttributeOwner& owner,
                                        const std::string& name,
                                        const std::optional<AttributeValue>& before,
                                        const std::optional<AttributeValue>& after)
{
    return std::make_unique<AttributeStep>(attributes, owner, name, before, after);
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
