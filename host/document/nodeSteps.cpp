// The steps that change nodes and their lists, and the running of many steps.

#include "document/node.h"
#include "document/step.h"

namespace shading {

namespace {

/// The place of the node in the list, its size when it is not there.
int placeOf(ZEL::NodeList& list, const NodePtr& node)
{
    int place = 0;
    while (place < list.size() && list[place] != node)
        ++place;
    return place;
}

/// Moves the last node to the place. A node list only appends, and to take the followers out would
/// cost them their connections; but an assignment takes over another list's order. The other list
/// belongs to a compound of its own, so that nobody is asked.
void moveLastTo(ZEL::Compound& compound, int place)
{
    ZEL::NodeList& list = compound.nodes();
    if (place >= list.size() - 1)
        return;
    const NodePtr owner = ZEL::Node::createNew(nullptr, nullptr);
    const CompoundPtr scratch = ZEL::Compound::createNew(owner, nullptr);
    ZEL::NodeList& ordered = scratch->nodes();
    for (int i = 0; i < list.size(); ++i)
        ordered.add(list[i < place ? i : i == place ? list.size() - 1 : i - 1]);
    list = ordered;
    list.setParentCompound(&compound); // Adding to the other list made that one the parent.
}

class NodeStep : public Step {
public:
    NodeStep(ZEL::Compound& compound, const NodePtr& node, bool isAdding)
        : m_compound(&compound),
          m_owner(compound.getAsNode()),
          m_node(node),
          m_place(placeOf(compound.nodes(), node)),
          m_isAdding(isAdding)
    {
    }

    bool run(bool isForward) override
    {
        ZEL::NodeList& list = m_compound->nodes();
        if (isForward != m_isAdding)
            return list.remove(m_node);
        if (!list.add(m_node))
            return false;
        moveLastTo(*m_compound, m_place);
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

private:
    NodePtr m_node;
    std::string m_before;
    std::string m_after;
};

/// What the node knows of its definition; its ports are steps of their own.
class DefinitionStep : public Step {
public:
    DefinitionStep(const ZEL::AddRefWrapper<Node>& node,
                   const ZEL::AddRefWrapper<Definition>& definition)
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

private:
    ZEL::AddRefWrapper<Node> m_node;
    ZEL::AddRefWrapper<Definition> m_before;
    ZEL::AddRefWrapper<Definition> m_after;
};

} // namespace

Step::~Step() = default;

std::unique_ptr<Step> makeAddNodeStep(ZEL::Compound& compound, const NodePtr& node)
{
    return std::make_unique<NodeStep>(compound, node, true);
}

std::unique_ptr<Step> makeRemoveNodeStep(ZEL::Compound& compound, const NodePtr& node)
{
    return std::make_unique<NodeStep>(compound, node, false);
}

std::unique_ptr<Step> makeRenameNodeStep(const NodePtr& node, const std::string& name)
{
    return std::make_unique<RenameNodeStep>(node, name);
}

std::unique_ptr<Step> makeDefinitionStep(const ZEL::AddRefWrapper<Node>& node,
                                         const ZEL::AddRefWrapper<Definition>& definition)
{
    return std::make_unique<DefinitionStep>(node, definition);
}

bool runSteps(const Steps& steps, bool isForward)
{
    const std::size_t count = steps.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (steps[isForward ? i : count - 1 - i]->run(isForward))
            continue;
        while (i-- > 0)
            steps[isForward ? i : count - 1 - i]->run(!isForward);
        return false;
    }
    return true;
}

} // namespace shading
