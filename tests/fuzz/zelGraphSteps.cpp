// Steps that change the network: ports, lists, nodes, compounds.

#include "zelCallerRules.h"
#include "zelFuzzSteps.h"

namespace zelFuzz {

namespace {

constexpr int kMaxPorts = 60; ///< Of one list: long enough for its tables.

void makeNode(Universe& universe)
{
    NodePtr& slot = pickSlot(universe, universe.nodes);
    if (!hasRoom(universe))
        return;
    const NodePtr node(new FuzzNode(universe, &universe));
    node->setName(universe.input.name());
    swapIn(universe, slot, node);
}

void addNode(Universe& universe)
{
    ZEL::Compound* const compound = pickCompound(universe);
    const Held<ZEL::Node> node(universe, pickNode(universe));
    // Asked for beforehand too: during the question the node lies in the compound already.
    if (compound && universe.collapsing == 0 && compound->nodes().size() < kMaxPorts &&
        callerRules::mayAddNode(universe, *node, compound))
        compound->nodes().add(node.wrapper());
}

void makeNodeInside(Universe& universe)
{
    if (!hasRoom(universe))
        return;
    const Held<ZEL::Node> node(universe, new FuzzNode(universe, &universe));
    node->setName(universe.input.name());
    for (int i = universe.input.number(4); i >= 0; --i) {
        const char* const in = universe.input.name();
        const char* const out = universe.input.name();
        node->inputs().addPort(in, pickType(universe));
        node->outputs().addPort(out, pickType(universe));
    }
    ZEL::Compound* const compound = pickCompound(universe);
    if (compound && universe.collapsing == 0)
        compound->nodes().add(node.wrapper());
}

void removeNode(Universe& universe)
{
    ZEL::Compound* const compound = pickCompound(universe);
    ZEL::Node* const node = pickNode(universe);
    if (!compound)
        return;
    if (universe.input.number(2) == 0)
        compound->nodes().remove(node);
    else
        compound->removeNode(universe.input.name());
}

void addPort(Universe& universe)
{
    ZEL::PortList* const list = pickList(universe);
    if (list->size() >= kMaxPorts)
        return;
    const char* const name = universe.input.name();
    const Held<ZEL::Port> port(universe, list->addPort(name, pickType(universe)));
    if (universe.input.number(2) == 0) {
        PortPtr& slot = pickSlot(universe, universe.ports);
        swapIn(universe, slot, port.wrapper());
    }
}

void addManyPorts(Universe& universe)
{
    const HeldList list(universe, pickList(universe));
    for (int i = list->size(); i < 2 * kMaxPorts / 3 && list.isOwned(); ++i) {
        const Held<ZEL::Port> port(universe,
                                   list->addPort(("p" + std::to_string(i)).c_str(), nullptr));
    }
}

void addPresentPort(Universe& universe)
{
    ZEL::PortList* const list = pickList(universe);
    const Held<ZEL::Port> port(universe, pickPort(universe));
    if (port && list->size() < kMaxPorts && !callerRules::standsElsewhere(universe, *port, list)) {
        if (port->getParent() != list->getParent())
            callerRules::disconnect(universe, *port);
        list->add(port.wrapper());
    }
}

void removePort(Universe& universe)
{
    ZEL::PortList* const list = pickList(universe);
    const Held<ZEL::Port> port(universe, universe.input.number(2) == 0 && list->size() > 0
                                             ? (*list)[universe.input.number(list->size())]
                                             : PortPtr(pickPort(universe)));
    // A list whose parent died asks nobody.
    if (port && !list->getParent())
        callerRules::disconnect(universe, *port);
    list->remove(port.wrapper());
}

void movePort(Universe& universe)
{
    ZEL::PortList* const list = pickList(universe);
    const int from = universe.input.number(list->size() + 3) - 1;
    const int to = universe.input.number(list->size() + 3) - 1;
    const bool isInRange = from >= 0 && from < list->size() && to >= 0 && to <= list->size();
    if (isInRange && !list->getParent())
        callerRules::prepareMove(universe, *list, from, to);
    list->movePort(from, to);
}

void moveConnection(Universe& universe)
{
    ZEL::Port* const port = pickPort(universe);
    if (!port || !port->isConnected())
        return;
    const int from = universe.input.number(port->connectedTo().size());
    port->connectedTo().movePort(from, universe.input.number(from + 1));
}

void connect(Universe& universe)
{
    ZEL::Port* const port = pickPort(universe);
    const Held<ZEL::Port> other(universe, pickPort(universe));
    if (port && other && callerRules::mayConnect(universe, *port, *other))
        port->addConnection(other.wrapper());
}

void disconnect(Universe& universe)
{
    ZEL::Port* const port = pickPort(universe);
    if (!port)
        return;
    if (universe.input.number(2) == 0) {
        port->removeAllConnections();
        return;
    }
    const Held<ZEL::Port> other(
        universe, port->isConnected() && universe.input.number(4) > 0
                      ? port->connectedTo()[universe.input.number(port->connectedTo().size())]
                      : PortPtr(pickPort(universe)));
    port->removeConnection(other.wrapper());
}

void connectByName(Universe& universe)
{
    ZEL::Compound* const compound = pickCompound(universe);
    const Held<ZEL::Node> from(universe, pickNode(universe));
    const Held<ZEL::Node> to(universe, pickNode(universe));
    const char* const out = universe.input.name();
    if (compound && from && to)
        compound->makeConnection(from.wrapper(), out, to.wrapper(), universe.input.name());
}

void setPort(Universe& universe)
{
    ZEL::Port* const port = pickPort(universe);
    if (!port)
        return;
    switch (universe.input.number(5)) {
    case 0:
        port->setName(universe.input.name());
        break;
    case 1:
        port->setDataType(pickType(universe));
        break;
    case 2:
        port->setPortDefaultValue(universe.input.text(8).c_str());
        break;
    case 3: {
        const Held<ZEL::Port> held(universe, port); // For two calls, and for the text of the first.
        port->setPortDefaultValue(std::string(port->getPortDefaultValue()).c_str());
        break;
    }
    default:
        // Nobody is asked: the mirror does not hear of it.
        if (const NodePtr node = port->getParentNode(); node && node->isCompound())
            static_cast<FuzzCompound*>(node->getAsCompound().get())->isMirrored = false;
        port->appendString("x");
    }
}

void setNode(Universe& universe)
{
    ZEL::Node* const node = pickNode(universe);
    if (!node)
        return;
    if (universe.input.number(2) == 0)
        node->setName(universe.input.name());
    else
        node->setNodeTypeName(universe.input.name());
}

void makeCompound(Universe& universe)
{
    ZEL::Node* const node = pickNode(universe);
    if (!prepareCompound(universe, node))
        return;
    const CompoundPtr made(new FuzzCompound(universe, node));
}

void dropCompound(Universe& universe)
{
    ZEL::Node* const node = pickNode(universe);
    if (!node || universe.collapsing > 0 || !callerRules::mayReplaceCompound(universe, *node))
        return;
    if (const CompoundPtr compound = node->getAsCompound())
        callerRules::prepareEnd(universe, *compound);
    node->setOwnedCompound(nullptr);
}

void createCompoundPort(Universe& universe)
{
    ZEL::Compound* const compound = pickCompound(universe);
    const ZEL::PortIOType ioType = universe.input.number(2) == 0 ? ZEL::PortInput : ZEL::PortOutput;
    const char* const name = universe.input.name();
    if (compound && compound->innerInputs().size() + compound->innerOutputs().size() < kMaxPorts)
        compound->createCompoundPort(ioType, name, pickType(universe));
}

void deleteCompoundPort(Universe& universe)
{
    ZEL::Compound* const compound = pickCompound(universe);
    if (!compound)
        return;
    ZEL::PortList& list =
        universe.input.number(2) == 0 ? compound->innerInputs() : compound->innerOutputs();
    if (list.size() > 0)
        compound->deleteCompoundPort(list[universe.input.number(list.size())]);
}

/// A new node takes over what a node has: the two share it from then on.
void assignNode(Universe& universe)
{
    NodePtr& slot = pickSlot(universe, universe.nodes);
    ZEL::Node* const node = pickNode(universe);
    if (universe.depth > 0 || !node || !hasRoom(universe))
        return;
    if (const CompoundPtr compound = node->getAsCompound())
        static_cast<FuzzCompound*>(compound.get())->isMirrored = false;
    const NodePtr made(new FuzzNode(universe, &universe));
    *made = *node;
    made->setParentCompound(nullptr);
    swapIn(universe, slot, made);
}

} // namespace

const std::vector<Step> kGraphSteps = {
    {"makeNode", makeNode},
    {"addNode", addNode},
    {"makeNodeInside", makeNodeInside},
    {"makeNodeInside", makeNodeInside},
    {"removeNode", removeNode},
    {"addPort", addPort},
    {"addPort", addPort},
    {"addManyPorts", addManyPorts},
    {"addPresentPort", addPresentPort},
    {"removePort", removePort},
    {"movePort", movePort},
    {"moveConnection", moveConnection},
    {"connect", connect},
    {"connect", connect},
    {"connect", connect},
    {"disconnect", disconnect},
    {"connectByName", connectByName},
    {"setPort", setPort},
    {"setNode", setNode},
    {"makeCompound", makeCompound},
    {"dropCompound", dropCompound},
    {"createCompoundPort", createCompoundPort},
    {"createCompoundPort", createCompoundPort},
    {"deleteCompoundPort", deleteCompoundPort},
    {"assignNode", assignNode},
};

} // namespace zelFuzz
