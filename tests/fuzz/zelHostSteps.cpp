// Steps of the host round the network: what it holds, how its listeners answer, its editors, and
// lookups, whose answers are compared with a plain search.

#include "zelCallerRules.h"
#include "zelFuzzSteps.h"
#include "zelListModel.h"

#include <cstring>
#include <list>
#include <utility>

namespace zelFuzz {

namespace {

void agree(Universe& universe)
{
    universe.refusals = 0;
    universe.countdown = 0;
}

void refuse(Universe& universe)
{
    universe.refusals = universe.input.byte();
}

/// The step that follows in the input is made inside a question.
void reenter(Universe& universe)
{
    universe.countdown = 1 + universe.input.number(6);
}

void holdPort(Universe& universe)
{
    PortPtr& slot = pickSlot(universe, universe.ports);
    swapIn(universe, slot, PortPtr(pickPort(universe)));
}

void holdNode(Universe& universe)
{
    NodePtr& slot = pickSlot(universe, universe.nodes);
    swapIn(universe, slot, NodePtr(pickNode(universe)));
}

void holdCompound(Universe& universe)
{
    CompoundPtr& slot = pickSlot(universe, universe.compounds);
    swapIn(universe, slot, CompoundPtr(pickCompound(universe)));
}

void letSomethingGo(Universe& universe)
{
    switch (universe.input.number(3)) {
    case 0:
        letGo(universe, pickSlot(universe, universe.ports));
        break;
    case 1:
        letGo(universe, pickSlot(universe, universe.nodes));
        break;
    default:
        letGo(universe, pickSlot(universe, universe.compounds));
    }
}

/// A list without a parent holds nothing: the host holds what is in it.
void useFreeList(Universe& universe)
{
    ZEL::Port* const port = pickPort(universe);
    int from = 0;
    switch (universe.input.number(4)) {
    case 0:
        if (port && universe.freePorts.size() < 40) {
            universe.freePorts.emplace_back(port);
            universe.freeList->add(port);
        }
        break;
    case 1:
        universe.freeList->remove(port);
        break;
    case 2:
        from = universe.input.number(universe.freeList->size() + 2);
        universe.freeList->movePort(from, universe.input.number(universe.freeList->size() + 2));
        break;
    default:
        while (universe.freeList->size() > 0)
            universe.freeList->remove((*universe.freeList)[0]);
        std::list<Held<ZEL::Port>> gone;
        for (const PortPtr& one : std::exchange(universe.freePorts, {}))
            gone.emplace_back(universe, one);
    }
}

void useEditor(Universe& universe)
{
    auto& editor = pickSlot(universe, universe.editors);
    ZEL::Node* const node = pickNode(universe);
    const int action = universe.input.number(4);
    if (!editor)
        editor = std::make_unique<FuzzEditor>(universe);
    else if (action == 0)
        editor = nullptr;
    if (editor && node && action == 1)
        universe.registrations.remove(*node, *editor);
    else if (editor && node)
        universe.registrations.add(*node, *editor);
}

void registerMany(Universe& universe)
{
    ZEL::Node* const node = pickNode(universe);
    for (auto& editor : universe.editors) {
        if (!editor)
            editor = std::make_unique<FuzzEditor>(universe);
        if (node)
            universe.registrations.add(*node, *editor);
    }
}

void notify(Universe& universe)
{
    ZEL::Node* const node = pickNode(universe);
    const Held<ZEL::Port> port(universe, pickPort(universe));
    const Held<ZEL::Port> other(universe, pickPort(universe));
    if (!node || !port || !other)
        return;
    switch (universe.input.number(4)) {
    case 0:
        node->notifyConnectionChange(ZEL::eCnxAdded, port.wrapper(), other.wrapper());
        break;
    case 1:
        node->notifyCompoundConnectionChange(ZEL::eCnxRemoved, port.wrapper(), other.wrapper());
        break;
    case 2:
        node->notifyCompoundPortChange(ZEL::eCompoundPortMoved, port.wrapper());
        break;
    default: {
        const Held<ZEL::Compound> compound(universe, pickCompound(universe));
        const Held<ZEL::Node> changed(universe, pickNode(universe));
        node->notifyNodeChange(ZEL::eNodeChanged, compound.wrapper(), changed.wrapper());
    }
    }
}

void lookUpInList(Universe& universe)
{
    ZEL::PortList& list = *pickList(universe);
    const ListModel<ZEL::PortList, ZEL::Port> model(list);
    // Often enough for the tables of a long list.
    for (int i = 0; i < 2 * model.size(); ++i) {
        const PortPtr entry = list[i % model.size()];
        expect(list.findPort(entry) == model.placeOf(entry.get()), "findPort finds another place");
        model.checkName(entry->getName());
    }
    expect(!list["no such name"], "a name that is not there finds a port");
}

void lookUpInCompound(Universe& universe)
{
    ZEL::Compound* const compound = pickCompound(universe);
    const char* const name = universe.input.name();
    if (!compound)
        return;
    ZEL::Node* first = nullptr;
    for (ZEL::Node* const node : compound->nodes()) {
        if (!first && std::strcmp(node->getName(), name) == 0)
            first = node;
    }
    expect(compound->nodes()[name] == first, "a name finds another node");
    if (const PortPtr port = pickPort(universe))
        compound->getReversePort(port);
}

void lookUpPath(Universe& universe)
{
    ZEL::Port* const port = pickPort(universe);
    if (!port)
        return;
    const std::string path = port->getFullPathName().getName();
    PortPtr out;
    PortPtr in;
    universe.findPortFromPath(path.c_str(), port->getPortIOType(),
                              ZEL::Container::eSearchNodeAndInner);
    universe.findPortsForConnection(path.c_str(), universe.input.text(12).c_str(), &out, &in);
    universe.reverseThisExternalPort(port);
}

} // namespace

const std::vector<Step> kHostSteps = {
    {"agree", agree},
    {"refuse", refuse},
    {"reenter", reenter},
    {"reenter", reenter},
    {"reenter", reenter},
    {"holdPort", holdPort},
    {"holdNode", holdNode},
    {"holdCompound", holdCompound},
    {"letSomethingGo", letSomethingGo},
    {"useFreeList", useFreeList},
    {"useEditor", useEditor},
    {"registerMany", registerMany},
    {"notify", notify},
    {"notify", notify},
    {"lookUpInList", lookUpInList},
    {"lookUpInCompound", lookUpInCompound},
    {"lookUpPath", lookUpPath},
};

} // namespace zelFuzz
