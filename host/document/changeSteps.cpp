// The steps that give one thing a new value: what is asked of it before is what it gets back.

#include "document/change.h"
#include "document/node.h"
#include "document/step.h"

namespace shading {

namespace {

/// The thing has get, set, notify and collect.
template <class Thing>
class ChangeStep : public Step {
public:
    using Value = decltype(std::declval<Thing>().get());

    ChangeStep(const Thing& thing, const Value& after)
        : m_thing(thing),
          m_before(thing.get()),
          m_after(after)
    {
    }

    bool run(bool isForward) override
    {
        const Value& value = isForward ? m_after : m_before;
        m_thing.set(value);
        return m_thing.get() == value;
    }

    bool isDone() const override { return m_thing.get() == m_after; }
    void notify(bool /*isForward*/) const override { m_thing.notify(); }
    void collect(ChangeCollector& changes, bool /*isForward*/) const override
    {
        m_thing.collect(changes);
    }

private:
    Thing m_thing;
    Value m_before;
    Value m_after;
};

template <class Thing, class Value>
std::unique_ptr<Step> makeStep(const Thing& thing, const Value& after)
{
    return std::make_unique<ChangeStep<Thing>>(thing, after);
}

struct NodeName {
    NodePtr node;

    std::string get() const { return node->getName(); }
    void set(const std::string& name) const { node->setName(name.c_str()); }
    void notify() const { notifyNode(node, ZEL::eNodeRenamed); }
    void collect(ChangeCollector& changes) const { changes.changeNode(node); }
};

/// What the node knows of its definition; its ports are steps of their own.
struct NodeDefinition {
    HostNodePtr node;

    ZEL::AddRefWrapper<Definition> get() const { return node->definition(); }
    void set(const ZEL::AddRefWrapper<Definition>& value) const { node->setDefinition(value); }
    void notify() const { notifyNode(node.get(), ZEL::eNodeChanged); }
    void collect(ChangeCollector& changes) const { changes.changeNode(node.get()); }
};

/// Without a value it is as it was read.
struct OneAttribute {
    Attributes* attributes;
    AttributeOwner owner;
    std::string name;

    std::optional<AttributeValue> get() const
    {
        const AttributeValue* const value = attributes->changedValue(owner, name);
        return value ? std::optional(*value) : std::nullopt;
    }
    void set(const std::optional<AttributeValue>& value) const
    {
        attributes->set(owner, name, value);
    }
    void notify() const
    {
        if (const NodePtr around = attributes->frameOwner(owner))
            notifyInside(around);
        else
            notifyNode(attributes->nodeOf(owner), ZEL::eNodeChanged);
    }
    void collect(ChangeCollector& changes) const
    {
        if (const NodePtr around = attributes->frameOwner(owner))
            changes.changeInside(around);
        else if (const NodePtr node = attributes->nodeOf(owner))
            changes.changeNode(node);
    }
};

struct OfPort {
    PortPtr port;

    void notify() const { notifyNode(port->getParentNode(), ZEL::eNodeChanged); }
    void collect(ChangeCollector& changes) const { changes.changePort(*port); }
};

struct PortName : OfPort {
    std::string get() const { return port->getName(); }
    void set(const std::string& name) const { port->setName(name.c_str()); }
    void notify() const { notifyPort(port, ZEL::eCompoundPortRenamed); }
};

struct PortType : OfPort {
    TypePtr get() const { return port->getDataType(); }
    void set(const TypePtr& type) const { port->setDataType(type); }
};

struct PortValue : OfPort {
    std::string get() const { return port->getPortDefaultValue(); }
    void set(const std::string& value) const { port->setPortDefaultValue(value.c_str()); }
};

} // namespace

std::unique_ptr<Step> makeRenameNodeStep(const NodePtr& node, const std::string& name)
{
    return makeStep(NodeName{node}, name);
}

std::unique_ptr<Step> makeDefinitionStep(const HostNodePtr& node,
                                         const ZEL::AddRefWrapper<Definition>& definition)
{
    return makeStep(NodeDefinition{node}, definition);
}

std::unique_ptr<Step> makeAttributeStep(Attributes& attributes,
                                        const AttributeOwner& owner,
                                        const std::string& name,
                                        const std::optional<AttributeValue>& value)
{
    return makeStep(OneAttribute{&attributes, owner, name}, value);
}

std::unique_ptr<Step> makeRenamePortStep(const PortPtr& port, const std::string& name)
{
    return makeStep(PortName{{port}}, name);
}

std::unique_ptr<Step> makeTypeStep(const PortPtr& port, const TypePtr& type)
{
    return makeStep(PortType{{port}}, type);
}

std::unique_ptr<Step> makeValueStep(const PortPtr& port, const std::string& value)
{
    return makeStep(PortValue{{port}}, value);
}

void notifyNode(const NodePtr& node, ZEL::ENodeChangeType change)
{
    const CompoundPtr around = node ? node->getParentCompound() : nullptr;
    if (around && around->getAsNode())
        around->getAsNode()->notifyNodeChange(change, around, node);
}

void notifyInside(const NodePtr& owner)
{
    owner->notifyNodeChange(ZEL::eNodeChanged, owner->getAsCompound(), owner);
}

void notifyPort(const PortPtr& port, ZEL::ECompoundPortChangeType change)
{
    const NodePtr node = port->getParentNode();
    if (!node || (node->isCompound() && !port->isCompoundInternalPort()))
        return;
    if (node->isCompound())
        node->notifyCompoundPortChange(change, port);
    notifyNode(node, ZEL::eNodeChanged);
}

} // namespace shading
