// The steps that change nodes and their lists, and the running of many steps.

#include "document/change.h"
#include "document/node.h"
#include "document/nodeOrder.h"
#include "document/step.h"

namespace shading {

namespace {

class NodeStep : public Step {
public:
    NodeStep(ZEL::Compound& compound, const NodePtr& node, int place, bool isAdding)
        : m_compound(&compound),
          m_owner(compound.getAsNode()),
          m_node(node),
          m_place(place),
          m_isAdding(isAdding)
    {
    }

    bool run(bool isForward, NodeOrders& orders) override
    {
        ZEL::NodeList& list = m_compound->nodes();
        if (isForward != m_isAdding) {
            if (!list.remove(m_node))
                return false;
            orders.noteRemoved(*m_compound, m_node.get());
            return true;
        }
        // Before the node is there: the order is that of the list.
        NodeOrder* const order = m_place < list.size() ? &orders.keep(*m_compound) : nullptr;
        if (!list.add(m_node))
            return false;
        if (order)
            order->insert(m_place, m_node.get());
        else
            orders.noteAppended(*m_compound, m_node.get());
        return true;
    }

    bool isDone() const override
    {
        ZEL::NodeList& list = m_compound->nodes();
        return (list[m_place] == m_node) == m_isAdding;
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
    int m_place;
    bool m_isAdding;
};

class RenameNodeStep : public Step {
public:
    RenameNodeStep(const NodePtr& node, const std::string& name)
        : m_node(node),
          m_before(node->getName()),
          m_after(name)
    {
    }

    bool run(bool isForward, NodeOrders& /*orders*/) override
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

    bool run(bool isForward, NodeOrders& /*orders*/) override
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

} // namespace

Step::~Step() = default;

std::unique_ptr<Step> makeAddNodeStep(ZEL::Compound& compound, const NodePtr& node)
{
    return std::make_unique<NodeStep>(compound, node, compound.nodes().size(), true);
}

std::unique_ptr<Step> makeRemoveNodeStep(ZEL::Compound& compound, const NodePtr& node, int place)
{
    return std::make_unique<NodeStep>(compound, node, place, false);
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

bool runSteps(const Steps& steps, std::size_t first, bool isForward)
{
    NodeOrders orders;
    const std::size_t count = steps.size() - first;
    const auto stepAt = [&](std::size_t i) -> Step& {
        return *steps[isForward ? first + i : steps.size() - 1 - i];
    };
    std::size_t done = 0;
    while (done < count && stepAt(done).run(isForward, orders))
        ++done;
    const bool isGood = done == count;
    while (!isGood && done > 0)
        stepAt(--done).run(!isForward, orders);
    orders.apply();
    return isGood;
}

} // namespace shading
