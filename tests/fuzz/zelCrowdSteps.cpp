// Steps that change many at once, with listeners that may refuse and re-enter at any of them.

#include "zelCallerRules.h"
#include "zelCrowd.h"

#include <algorithm>

namespace zelFuzz {

namespace {

/// Where in a list many are taken from: its front, its end, its middle, both ends in turn, or every
/// few in strides.
int pickPlace(int from, int size, int step = 0)
{
    if (from == 0 || (from == 3 && step % 2 == 0))
        return 0;
    if (from == 4)
        return step * 5 % size;
    return from == 2 ? size / 2 : size - 1;
}

void addManyNodes(Universe& universe)
{
    ZEL::Compound* const picked = pickCompound(universe);
    const int kinds = universe.input.number(6);
    const int naming = universe.input.byte();
    const int count = roomForMany(pickManyCount(universe));
    if (!picked || universe.collapsing > 0)
        return;
    const Held<ZEL::Compound> compound(universe, picked);
    for (int i = 0; i < count; ++i) {
        const Held<ZEL::Node> node(universe,
                                   makeCrowdNode(universe, i % (kinds + 1), crowdName(naming, i)));
        compound->nodes().add(node.wrapper());
    }
}

void removeManyNodes(Universe& universe)
{
    ZEL::Compound* const picked = pickCompound(universe);
    const int from = universe.input.number(3);
    int count = pickManyCount(universe);
    if (!picked || picked->nodes().size() <= 32)
        return;
    const Held<ZEL::Compound> compound(universe, picked);
    for (; count > 0 && compound->nodes().size() > 0; --count) {
        const Held<ZEL::Node> node(universe,
                                   compound->nodes()[pickPlace(from, compound->nodes().size())]);
        compound->nodes().remove(node.wrapper());
    }
}

/// As pasting does: all under one name, then one after the other gets its own.
void renameManyNodes(Universe& universe)
{
    ZEL::Compound* const picked = pickCompound(universe);
    const int naming = universe.input.byte();
    if (!picked)
        return;
    const Held<ZEL::Compound> compound(universe, picked);
    ZEL::NodeList& list = compound->nodes();
    for (int i = 0; i < list.size(); ++i) {
        const std::string name = crowdName(naming, i);
        list[i]->setName(name.c_str());
        expect(list[name.c_str()] != nullptr, "a node that was renamed is not found");
    }
}

void addManyOwnPorts(Universe& universe)
{
    const HeldList list(universe, pickList(universe));
    const int kinds = universe.input.number(6);
    const int naming = universe.input.byte();
    const auto ioType = static_cast<ZEL::PortIOType>(universe.input.number(2));
    const int count = roomForMany(pickManyCount(universe));
    for (int i = 0; i < count && list.isOwned(); ++i) {
        const Held<ZEL::Port> port(
            universe, makeCrowdPort(universe, i % (kinds + 1), crowdName(naming, i), ioType));
        list->add(port.wrapper());
    }
}

void removeManyPorts(Universe& universe)
{
    const HeldList list(universe, pickList(universe));
    const int from = universe.input.number(3);
    int count = pickManyCount(universe);
    for (; count > 0 && list->size() > 0 && list.isOwned(); --count) {
        const Held<ZEL::Port> port(universe, (*list)[pickPlace(from, list->size())]);
        if (!list->getParent())
            callerRules::disconnect(universe, *port);
        list->remove(port.wrapper());
    }
}

void renameManyPorts(Universe& universe)
{
    const HeldList list(universe, pickList(universe));
    const int naming = universe.input.byte();
    for (int i = 0; i < list->size(); ++i) {
        const Held<ZEL::Port> port(universe, (*list)[i]);
        port->setName(crowdName(naming, i).c_str());
        (*list)[port->getName()];
    }
}

/// One port to all of a list, or to itself so often.
void connectMany(Universe& universe)
{
    ZEL::Port* const picked = pickPort(universe);
    const HeldList list(universe, pickList(universe));
    const int count = roomForConnections(universe.census(), pickManyCount(universe));
    if (!picked)
        return;
    const Held<ZEL::Port> port(universe, picked);
    for (int i = 0; i < count && list->size() > 0; ++i) {
        const Held<ZEL::Port> other(universe, (*list)[i % list->size()]);
        port->addConnection(other.wrapper());
    }
}

void disconnectMany(Universe& universe)
{
    ZEL::Port* const picked = pickPort(universe);
    const int from = universe.input.numberOrLater(3, 2);
    int count = pickManyCount(universe);
    if (!picked)
        return;
    const Held<ZEL::Port> port(universe, picked);
    for (; count > 0 && port->isConnected(); --count) {
        const Held<ZEL::Port> other(
            universe, port->connectedTo()[pickPlace(from, port->connectedTo().size(), count)]);
        port->removeConnection(other.wrapper());
    }
}

/// Null equals no entry, whatever a list looks like: nothing changes.
void useNull(Universe& universe)
{
    const HeldList list(universe, pickList(universe));
    const int size = list->size();
    list->onPortDeleted(nullptr);
    const char* const noName = nullptr;
    expect(!list->add(nullptr) && !list->remove(nullptr) && list->findPort(nullptr) < 0 &&
               !(*list)[noName] && list->size() == size,
           "a list of ports takes null for an entry");
    if (ZEL::Port* const port = pickPort(universe)) {
        const int connections = port->connectedTo().size();
        port->removeFromConnectedList(nullptr);
        expect(!port->addConnection(nullptr) && !port->removeConnection(nullptr) &&
                   port->connectedTo().size() == connections,
               "a port takes null for another");
        port->setName(nullptr);
        port->appendString(nullptr);
    }
    if (ZEL::Compound* const compound = pickCompound(universe)) {
        const int nodes = compound->nodes().size();
        expect(!compound->nodes().add(nullptr) && !compound->nodes().remove(nullptr) &&
                   !compound->nodes()[noName] && compound->deleteCompoundPort(nullptr) < 0 &&
                   compound->nodes().size() == nodes,
               "a compound takes null for a node");
    }
    if (ZEL::Node* const node = pickNode(universe)) {
        node->registerEditor(nullptr);
        node->unregisterEditor(nullptr);
        node->setName(nullptr);
    }
}

} // namespace

const std::vector<Step> kCrowdSteps = {
    {"addManyNodes", addManyNodes},
    {"removeManyNodes", removeManyNodes},
    {"renameManyNodes", renameManyNodes},
    {"addManyOwnPorts", addManyOwnPorts},
    {"removeManyPorts", removeManyPorts},
    {"renameManyPorts", renameManyPorts},
    {"connectMany", connectMany},
    {"disconnectMany", disconnectMany},
    {"useNull", useNull},
};

} // namespace zelFuzz
