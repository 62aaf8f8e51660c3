#include "zelCallerRules.h"

#include "zelFuzzKin.h"
#include "zelFuzzUniverse.h"

#include <algorithm>
#include <unordered_set>

namespace zelFuzz::callerRules {

namespace {

std::vector<PortPtr> partnersOf(ZEL::Port& port)
{
    std::vector<PortPtr> partners;
    for (ZEL::Port* const other : port.connectedTo())
        partners.emplace_back(other);
    return partners;
}

/// Takes off the connections that lead from the ports in the census to others.
void isolate(const Census& inside)
{
    for (ZEL::Port* const port : inside.ports.all()) {
        for (const PortPtr& other : partnersOf(*port)) {
            if (!inside.ports.has(other.get()))
                port->removeConnection(other);
        }
    }
}

/// Each port that somebody besides the network holds: the host, a step at work, or the library for
/// a question.
std::vector<PortPtr> heldPorts(const Universe& universe)
{
    std::vector<PortPtr> held;
    for (const PortPtr& port : universe.ports) {
        if (port)
            held.push_back(port);
    }
    held.insert(held.end(), universe.freePorts.begin(), universe.freePorts.end());
    for (const std::vector<ZEL::Port*>* const some : {&universe.heldPorts, &universe.askedPorts})
        held.insert(held.end(), some->begin(), some->end());
    for (ZEL::PortList* const list : universe.heldLists) {
        for (ZEL::Port* const port : *list)
            held.emplace_back(port);
    }
    return held;
}

bool shares(ZEL::Node& node, const Census& inside)
{
    const ZEL::Compound* const compound = node.getAsCompound().get();
    return inside.lists.has(&node.inputs()) || inside.lists.has(&node.outputs()) ||
           (compound && inside.compounds.has(compound));
}

/// The port that a second base holds may live on in a list, or name a parent elsewhere.
void isolateSides(Universe& universe, const Census& inside)
{
    for (SideListener* const side : universe.sides) {
        ZEL::Port& port = *side->single;
        if (inside.ports.has(&port) &&
            (port.getRefCount() > inside.ports.count(&port) || port.getParent() != side))
            port.removeAllConnections();
    }
}

/// What somebody holds of that which is below may outlive the rest.
void isolateHeld(Universe& universe, const Census& inside, const ZEL::Node* top)
{
    isolateSides(universe, inside);
    for (const PortPtr& port : heldPorts(universe)) {
        if (inside.ports.has(port.get()))
            port->removeAllConnections();
    }
    std::vector<ZEL::Node*> held = universe.heldNodes;
    held.push_back(universe.root.get());
    for (const NodePtr& node : universe.nodes)
        held.push_back(node.get());
    for (const auto& slot : universe.collapses) {
        for (const auto& entry : slot ? slot->nodes : decltype(slot->nodes)())
            held.push_back(entry.second);
    }
    // A node elsewhere shares the lists or the compound of one below, which it was assigned.
    const std::size_t hostCount = held.size();
    const Census census = universe.census();
    held.insert(held.end(), census.nodes.all().begin(), census.nodes.all().end());
    for (std::size_t i = 0; i < held.size(); ++i) {
        ZEL::Node* const node = held[i];
        const bool isHeldInside = node && inside.nodes.has(node) && i < hostCount;
        const bool isSharing = node && !inside.nodes.has(node) && shares(*node, inside);
        if (node == top || (!isHeldInside && !isSharing))
            continue;
        Census below;
        below.addNode(node);
        isolate(below);
    }
    std::vector<ZEL::Compound*> heldCompounds = universe.heldCompounds;
    for (const CompoundPtr& compound : universe.compounds)
        heldCompounds.push_back(compound.get());
    for (const auto& slot : universe.collapses)
        heldCompounds.push_back(slot ? slot->parent : nullptr);
    for (const auto& slot : universe.modifies)
        heldCompounds.push_back(slot ? slot->compound : nullptr);
    for (ZEL::Compound* const compound : heldCompounds) {
        if (!compound || !inside.compounds.has(compound))
            continue;
        Census below;
        below.addCompound(compound);
        isolate(below);
    }
}

} // namespace

void disconnect(Universe& universe, ZEL::Port& port)
{
    const Agreement agreement(universe);
    port.removeAllConnections();
}

void prepareEnd(Universe& universe, ZEL::Node& node)
{
    const Agreement agreement(universe);
    if (node.inputs().size() + node.outputs().size() == 0 && !node.isCompound() &&
        !static_cast<FuzzNode&>(node).side) {
        remember(universe, node); // Nothing to disconnect.
        return;
    }
    for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
        for (ZEL::Port* const port : *list)
            port->removeAllConnections();
    }
    Census inside;
    inside.addNode(&node);
    isolate(inside);
    isolateHeld(universe, inside, &node);
    remember(universe, node);
}

void prepareClosing(Universe& universe)
{
    const Agreement agreement(universe);
    Census inside;
    inside.addNode(universe.root.get());
    isolateSides(universe, inside);
    remember(universe, *universe.root);
}

void prepareEnd(Universe& universe, ZEL::Compound& compound)
{
    const Agreement agreement(universe);
    Census inside;
    inside.addCompound(&compound);
    isolate(inside);
    isolateHeld(universe, inside, nullptr);
    remember(universe, compound);
}

bool mayConnect(Universe& universe, ZEL::Port& port, ZEL::Port& other)
{
    const Census census = universe.census();
    return census.ports.has(&port) && census.ports.has(&other);
}

void forgetParent(Universe& universe,
                  ZEL::PortNotification* parent,
                  std::initializer_list<ZEL::PortList*> lists)
{
    const auto isTold = [parent, lists](const PortPtr& port) {
        return std::any_of(lists.begin(), lists.end(), [&](ZEL::PortList* list) {
            return list->getParent() == parent && list->findPort(port) >= 0;
        });
    };
    std::vector<PortPtr> held = heldPorts(universe);
    for (SideListener* const side : universe.sides) {
        if (parent != side)
            held.push_back(side->single);
    }
    for (const PortPtr& port : held) {
        if (port->getParent() == parent) {
            disconnect(universe, *port);
            if (!isTold(port))
                port->setParent(nullptr);
        }
    }
}

void forgetCompound(Universe& universe, ZEL::Compound* compound)
{
    const auto forget = [compound](ZEL::Node* node) {
        if (node && node->getParentCompound() == compound && countIn(compound->nodes(), node) == 0)
            node->setParentCompound(nullptr);
    };
    for (const NodePtr& node : universe.nodes)
        forget(node.get());
    for (const auto& slot : universe.collapses) {
        for (const auto& entry : slot ? slot->nodes : decltype(slot->nodes)())
            forget(entry.second);
    }
}

void forgetOwner(Universe& universe, ZEL::Node* node)
{
    for (CompoundPtr& slot : universe.compounds) {
        if (slot && slot->getAsNode() == node && node->getAsCompound() != slot) {
            prepareEnd(universe, *slot);
            slot = nullptr;
        }
    }
}

void forgetFormerCompounds(Universe& universe)
{
    const Census census = universe.census();
    std::unordered_set<ZEL::Node*> placed; // Each stands in one compound's list.
    for (ZEL::Compound* const compound : census.compounds.all()) {
        for (ZEL::Node* const node : compound->nodes()) {
            if (node->getParentCompound() == compound)
                placed.insert(node);
        }
    }
    for (ZEL::Node* const node : census.nodes.all()) {
        if (placed.count(node) == 0)
            node->setParentCompound(nullptr);
    }
}

bool standsElsewhere(Universe& universe, ZEL::Port& port, const ZEL::PortList* list)
{
    const Census census = universe.census();
    for (ZEL::PortList* const other : census.lists.all()) {
        if (other != list && other->findPort(&port) >= 0)
            return true;
    }
    return false;
}

bool mayAddNode(Universe& universe, ZEL::Node& node, ZEL::Compound* compound, bool isNew)
{
    Census below;
    if (node.isCompound())
        below.addNode(&node);
    if (below.compounds.has(compound))
        return false;
    // A compound that its node has let go still leads up to it.
    for (CompoundPtr above(compound); above;) {
        const NodePtr owner = above->getAsNode();
        if (owner == &node)
            return false;
        above = owner ? owner->getParentCompound() : nullptr;
    }
    if (isNew)
        return true;
    const Census census = universe.census();
    for (ZEL::Compound* const other : census.compounds.all()) {
        ZEL::NodeList& list = other->nodes();
        if (other != compound && countIn(list, &node) > 0)
            return false;
    }
    return true;
}

bool mayCollapse(ZEL::Compound& parent, const std::vector<ZEL::Node*>& nodes)
{
    ZEL::NodeList& list = parent.nodes();
    return std::all_of(nodes.begin(), nodes.end(), [&](ZEL::Node* node) {
        Census below;
        below.addNode(node);
        return !below.compounds.has(&parent) && countIn(list, node) > 0;
    });
}

bool mayReplaceCompound(Universe& universe, ZEL::Node& node)
{
    const ZEL::Compound* const compound = node.getAsCompound().get();
    for (const auto& slot : universe.collapses) {
        if (compound && slot && slot->parent == compound)
            return false;
    }
    for (const auto& slot : universe.modifies) {
        if (compound && slot && slot->compound == compound)
            return false;
    }
    const Census census = universe.census();
    return !compound ||
           std::none_of(census.nodes.all().begin(), census.nodes.all().end(),
                        [&](ZEL::Node* other) {
                            return other != &node && other->getAsCompound() == compound;
                        });
}

void prepareMove(Universe& universe, const ZEL::PortList& list, int from, int to)
{
    if (to < from + 2)
        return;
    const PortPtr moved = list[from];
    const PortPtr dropped = list[from + 1];
    for (const PortPtr& port : {moved, dropped}) {
        if (port)
            port->hidePort(true); // The mark of a port whose places and references are uneven.
    }
    if (dropped)
        disconnect(universe, *dropped);
}

int countNamed(ZEL::PortList& list, const std::string& name)
{
    int count = 0;
    for (ZEL::Port* const port : list)
        count += name == port->getName() ? 1 : 0;
    return count;
}

} // namespace zelFuzz::callerRules
