// Steps with classes of several bases, and with ports of the host's own class.

#include "zelCrowd.h"
#include "zelFuzzKin.h"
#include "zelFuzzPort.h"

namespace zelFuzz {

namespace {

NodePtr makeKinNode(Universe& universe)
{
    switch (universe.input.number(3)) {
    case 0:
        return new MainThenSide<FuzzNode>(universe, &universe);
    case 1:
        return new SideThenMain<FuzzNode>(universe, &universe);
    default:
        return new FuzzBoth(universe);
    }
}

void makeKin(Universe& universe)
{
    NodePtr& slot = pickSlot(universe, universe.nodes);
    if (!hasRoom(universe))
        return;
    const NodePtr node = makeKinNode(universe);
    node->setName(universe.input.name());
    swapIn(universe, slot, node);
}

void makeKinInside(Universe& universe)
{
    if (!hasRoom(universe))
        return;
    const Held<ZEL::Node> node(universe, makeKinNode(universe));
    node->setName(universe.input.name());
    node->inputs().addPort(universe.input.name(), nullptr);
    node->outputs().addPort(universe.input.name(), nullptr);
    ZEL::Compound* const compound = pickCompound(universe);
    if (compound && universe.collapsing == 0)
        compound->nodes().add(node.wrapper());
}

void makeKinCompound(Universe& universe)
{
    ZEL::Node* const node = pickNode(universe);
    if (!prepareCompound(universe, node))
        return;
    CompoundPtr made;
    if (universe.input.number(2) == 0)
        made = new MainThenSide<FuzzCompound>(universe, node);
    else
        made = new SideThenMain<FuzzCompound>(universe, node);
}

/// A port of an object's second base stands in that list, and nowhere else.
void addSidePort(Universe& universe)
{
    if (universe.sides.empty() || roomForMany(1) == 0)
        return;
    SideListener& side = *universe.sides[static_cast<std::size_t>(
        universe.input.place(static_cast<int>(universe.sides.size())))];
    const auto ioType = static_cast<ZEL::PortIOType>(universe.input.number(2));
    const Held<ZEL::Port> port(
        universe, makeCrowdPort(universe, universe.input.number(3), universe.input.name(), ioType));
    port->setParent(&side);
    side.list->add(port.wrapper());
}

void addOwnPort(Universe& universe)
{
    ZEL::PortList* const list = pickList(universe);
    if (roomForMany(1) == 0)
        return;
    const auto ioType = static_cast<ZEL::PortIOType>(universe.input.number(2));
    const Held<ZEL::Port> port(
        universe, makeCrowdPort(universe, universe.input.number(3), universe.input.name(), ioType));
    list->add(port.wrapper());
}

} // namespace

const std::vector<Step> kKinSteps = {
    {"makeKin", makeKin},
    {"makeKinInside", makeKinInside},
    {"makeKinCompound", makeKinCompound},
    {"addSidePort", addSidePort},
    {"addOwnPort", addOwnPort},
};

} // namespace zelFuzz
