#include "zelLastSeen.h"

#include "zelFuzzKin.h"
#include "zelFuzzPort.h"
#include "zelFuzzUniverse.h"

namespace zelFuzz {

namespace {

/// Of a class that is node and compound at once the compound dies before the ports of the node.
bool isOfBoth(ZEL::Port& port)
{
    return dynamic_cast<FuzzBoth*>(port.getParent()) != nullptr;
}

/// Nobody else holds the object: it dies with the list.
template <class List, class T>
bool isHeldBy(List& list, const T& object)
{
    return object.getRefCount() == 1 || object.getRefCount() == countIn(list, &object);
}

/// Notes all that goes with a node or compound. What others hold as well lives on, and with it what
/// is below.
class Noting {
public:
    explicit Noting(int moment) : m_moment(moment) {}

    void note(ZEL::Node& node) const
    {
        auto& fuzzNode = static_cast<FuzzNode&>(node);
        fuzzNode.seen.note(m_moment, node);
        notePorts(node.inputs());
        notePorts(node.outputs());
        if (fuzzNode.side)
            notePorts(*fuzzNode.side->list);
        ZEL::Compound* const compound = node.getAsCompound().get();
        if (compound && compound->getRefCount() == 1)
            note(*compound);
    }
    void note(ZEL::Compound& compound) const
    {
        auto& fuzzCompound = static_cast<FuzzCompound&>(compound);
        fuzzCompound.seen.note(m_moment, compound);
        notePorts(compound.innerInputs());
        notePorts(compound.innerOutputs());
        if (fuzzCompound.side)
            notePorts(*fuzzCompound.side->list);
        for (ZEL::Node* const node : compound.nodes()) {
            if (isHeldBy(compound.nodes(), *node))
                note(*node);
        }
    }

private:
    void notePorts(ZEL::PortList& list) const
    {
        if (list.getRefCount() > 1)
            return;
        for (ZEL::Port* const port : list) {
            auto* const own = dynamic_cast<FuzzPort*>(port);
            if (own && isHeldBy<ZEL::PortList, ZEL::Port>(list, *own) && !isOfBoth(*own))
                own->seen.note(m_moment, *own);
        }
    }

    int m_moment;
};

} // namespace

LastSeen::State LastSeen::stateOf(ZEL::Node& node)
{
    return {node.getName(), node.getFullPathName().getName(), nullptr,
            node.getParentCompound().get(), nullptr};
}

LastSeen::State LastSeen::stateOf(ZEL::Compound& compound)
{
    const NodePtr owner = compound.getAsNode();
    return {compound.getName(), owner ? owner->getFullPathName().getName() : "", owner.get(),
            owner ? owner->getParentCompound().get() : nullptr, nullptr};
}

LastSeen::State LastSeen::stateOf(ZEL::Port& port)
{
    return {port.getName(), port.getFullPathName().getName(), port.getParentNode().get(),
            port.getParentCompound().get(), port.getParent()};
}

void LastSeen::expectSame(const State& now) const
{
    expect(now.name == m_state.name, m_state.path + ": called " + now.name + " when it dies");
    expect(now.path == m_state.path, m_state.path + ": the path " + now.path + " when it dies");
    expect(now.node == m_state.node, m_state.path + ": another node when it dies");
    expect(now.compound == m_state.compound, m_state.path + ": another compound when it dies");
    expect(now.parent == m_state.parent, m_state.path + ": another parent when it dies");
}

void remember(const Universe& universe, ZEL::Node& top)
{
    Noting(universe.moment).note(top);
}

void remember(const Universe& universe, ZEL::Compound& top)
{
    Noting(universe.moment).note(top);
}

} // namespace zelFuzz
