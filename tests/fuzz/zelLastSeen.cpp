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

/// Nobody else holds the port: it dies with the list.
bool isHeldBy(ZEL::PortList& list, const ZEL::Port& port)
{
    return port.getRefCount() == 1 || port.getRefCount() == countIn(list, &port);
}

template <class Fuzz, class T>
void noteAll(const Universe& universe, const Counted<T>& objects, const void* top)
{
    for (T* const object : objects.all()) {
        if (object == top || object->getRefCount() == objects.count(object))
            static_cast<Fuzz*>(object)->seen.note(universe.moment, *object);
    }
}

void noteInside(const Universe& universe, const Census& inside, const void* top)
{
    noteAll<FuzzNode>(universe, inside.nodes, top);
    noteAll<FuzzCompound>(universe, inside.compounds, top);
    for (ZEL::PortList* const list : inside.lists.all()) {
        // A list that is shared lives on when the parent of its ports dies.
        if (list->getRefCount() != inside.lists.count(list) || list->getRefCount() > 1)
            continue;
        for (ZEL::Port* const port : *list) {
            auto* const own = dynamic_cast<FuzzPort*>(port);
            if (own && isHeldBy(*list, *own) && !isOfBoth(*own))
                own->seen.note(universe.moment, *own);
        }
    }
}

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

void remember(Universe& universe, const Census& inside, ZEL::Node* top)
{
    static_cast<FuzzNode*>(top)->seen.note(universe.moment, *top);
    noteInside(universe, inside, top);
}

void remember(Universe& universe, const Census& inside, ZEL::Compound* top)
{
    static_cast<FuzzCompound*>(top)->seen.note(universe.moment, *top);
    noteInside(universe, inside, top);
}

} // namespace zelFuzz
