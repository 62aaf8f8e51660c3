// Steps with the three commands: done, undone and redone, in any order and checked as one round.

#include "zelCallerRules.h"
#include "zelFuzzSteps.h"
#include "zelInvariants.h"

#include <algorithm>
#include <set>

namespace zelFuzz {

namespace {

/// While it lives a command is at work.
class Busy {
public:
    explicit Busy(bool& mark) : m_mark(mark) { m_mark = true; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    ~Busy() { m_mark = false; }

private:
    bool& m_mark;
};

bool isReachable(Universe& universe, ZEL::Port& port)
{
    const std::string path = port.getFullPathName().getName();
    return universe.findPortFromPath(path.c_str(), ZEL::PortOutput, ZEL::Container::eSearchNode) ==
           &port;
}

// ConnectCommand.

void editConnections(Universe& universe)
{
    auto& slot = pickSlot(universe, universe.connects);
    const Held<ZEL::Port> a(universe, pickPort(universe));
    const Held<ZEL::Port> b(universe, pickPort(universe));
    if ((slot && slot->isBusy) || !a || !b || !callerRules::mayConnect(universe, *a, *b))
        return;
    const int action = universe.input.number(7);
    if (!slot || action == 0)
        slot = std::make_unique<ConnectSlot>();
    PortPtr first(a.wrapper());
    PortPtr second(b.wrapper());
    const Busy busy(slot->isBusy);
    if (action == 1)
        slot->command.disconnect(&universe, first, second);
    else if (action == 2)
        slot->command.disconnectAll(&universe, first);
    else if (action == 3)
        slot->command.undo(&universe);
    else if (action == 4)
        slot->command.redo(&universe);
    else
        slot->command.connect(&universe, first, second);
}

/// Undo brings a connection's first text back when the paths of all ports lead to them; redo brings
/// the second back when those of the two ends do.
void checkConnectRound(Universe& universe)
{
    PortPtr a(pickPort(universe));
    PortPtr b(pickPort(universe));
    const bool isConnect = universe.input.number(2) == 0;
    if (universe.depth > 0 || !a || !b || a == b)
        return;
    const Agreement agreement(universe);
    if (a->getPortIOType() == ZEL::PortInput)
        a.swap(b);
    bool comesBack = a->getPortIOType() == ZEL::PortOutput && b->getPortIOType() == ZEL::PortInput;
    for (ZEL::Port* const source : b->connectedTo())
        comesBack = comesBack && source->getPortIOType() == ZEL::PortOutput &&
                    (!isConnect || isReachable(universe, *source));
    if (!isConnect)
        comesBack = comesBack && countIn(b->connectedTo(), a.get()) == 1;
    const std::string before = networkText(universe);
    ZEL::ConnectCommand command;
    PortPtr first(a);
    PortPtr second(b);
    if (isConnect)
        command.connect(&universe, first, second);
    else
        command.disconnect(&universe, first, second);
    const std::string after = networkText(universe);
    PortPtr out;
    PortPtr in;
    const bool isResolved = command.resolvePorts(out, in) && out == a && in == b;
    for (int i = 0; i < 2 && isResolved; ++i) {
        expect(command.undo(&universe), "the undo of a connect command fails");
        if (comesBack)
            expect(networkText(universe) == before, "an undone connection leaves another text");
        command.redo(&universe);
        expect(networkText(universe) == after, "a connection redone leaves another text");
    }
}

// CreateCompoundCommand.

void bindCollapse(Universe& universe, CollapseSlot& slot)
{
    ZEL::Compound* const compound = pickCompound(universe);
    const NodePtr owner = compound ? compound->getAsNode() : nullptr;
    const std::string path = owner ? owner->getFullPathName().getName() : "";
    const Held<ZEL::Compound> former(universe, slot.parent);
    if (const NodePtr node = universe.findNodeFromPath(path.c_str()))
        slot.parent = node->getAsCompound().get();
    slot.command.setParentCompound(&universe, path.c_str());
}

void addToCollapse(Universe& universe, CollapseSlot& slot)
{
    const char* const name = universe.input.name();
    const NodePtr node = slot.parent ? slot.parent->nodes()[name] : nullptr;
    const auto place = slot.nodes.find(name);
    if (place != slot.nodes.end() && place->second != node)
        return; // The node that is replaced would go without a word.
    if (slot.command.addNodeToMove(name))
        slot.nodes[name] = node.get();
}

void doCollapse(Universe& universe, CollapseSlot& slot)
{
    std::vector<ZEL::Node*> moved;
    for (const auto& entry : slot.nodes)
        moved.push_back(entry.second);
    if (!slot.parent || !hasRoom(universe) || !callerRules::mayCollapse(*slot.parent, moved))
        return;
    const Held<ZEL::Compound> parent(universe, slot.parent);
    ++universe.collapsing;
    const bool isDone = slot.command.doit();
    --universe.collapsing;
    if (isDone)
        slot.parent = nullptr;
    if (!isDone || universe.depth > 0)
        return;
    const std::string after = networkText(universe);
    expect(!slot.command.undo(&universe) && !slot.command.redo(&universe) &&
               networkText(universe) == after,
           "the undo of a collapse does something");
}

void collapse(Universe& universe)
{
    auto& slot = pickSlot(universe, universe.collapses);
    const int action = universe.input.number(8);
    if ((slot && slot->isBusy) || universe.collapsing > 0)
        return;
    if (!slot)
        slot = std::make_unique<CollapseSlot>();
    if (action == 0) {
        letGo(universe, slot);
        return;
    }
    const Busy busy(slot->isBusy);
    if (action <= 2)
        bindCollapse(universe, *slot);
    else if (action <= 5)
        addToCollapse(universe, *slot);
    else if (action == 6)
        slot->command.setNewCompoundName(universe.input.name());
    else
        doCollapse(universe, *slot);
}

// ModifyCompoundPortCommand.

void request(Universe& universe, ZEL::ModifyCompoundPortCommand& command)
{
    const char* const name = universe.input.name();
    switch (universe.input.number(4)) {
    case 0:
        command.createPort(ZEL::PortInput, name, "float");
        break;
    case 1:
        command.createPort(ZEL::PortOutput, name, "color");
        break;
    case 2:
        command.deletePort(name);
        break;
    default:
        command.renamePort(name, universe.input.name());
    }
}

void modifyPorts(Universe& universe)
{
    auto& slot = pickSlot(universe, universe.modifies);
    const int action = universe.input.number(8);
    if (slot && slot->isBusy) {
        request(universe, slot->command); // A listener may add requests.
        return;
    }
    if (!slot || action == 0) {
        letGo(universe, slot);
        ZEL::Compound* const compound = pickCompound(universe);
        const NodePtr owner = compound ? compound->getAsNode() : nullptr;
        const std::string path = owner ? owner->getFullPathName().getName() : "";
        slot = std::make_unique<ModifySlot>();
        slot->command.setParentCompound(&universe, path.c_str());
        if (const NodePtr node = universe.findNodeFromPath(path.c_str()))
            slot->compound = node->getAsCompound().get();
        return;
    }
    if (action <= 4) {
        request(universe, slot->command);
        return;
    }
    const Busy busy(slot->isBusy);
    if (action == 5)
        slot->command.doit();
    else if (action == 6)
        slot->command.undo(&universe);
    else
        slot->command.redo(&universe);
}

/// Records a request that meets no other and no port; false when there is none of that name.
bool requestPlainly(Universe& universe,
                    ZEL::ModifyCompoundPortCommand& command,
                    std::set<std::string>& present,
                    std::set<std::string>& used,
                    bool& hasDeletes,
                    bool& hasRenames)
{
    const std::string name = universe.input.name();
    const std::string newName = universe.input.name();
    const int kind = universe.input.number(3);
    if (name.empty() || newName.empty() || !used.insert(name).second)
        return false;
    if (kind == 0)
        return present.count(name) == 0 &&
               command.createPort(ZEL::PortInput, name.c_str(), "float");
    if (kind == 1) {
        hasDeletes = hasDeletes || present.count(name) != 0;
        return command.deletePort(name.c_str());
    }
    hasRenames = true;
    return present.count(newName) == 0 && used.insert(newName).second &&
           command.renamePort(name.c_str(), newName.c_str());
}

/// Redo brings the second text back, and undo the first when nothing was deleted: a deleted port
/// loses its connections outside. A deleted port that comes back goes to the end of the node's list
/// but to its place among the inner ports: what is renamed in the same command then has another
/// mirror, for this host does not move the node's port likewise.
void checkModifyRound(Universe& universe)
{
    ZEL::Compound* const compound = pickCompound(universe);
    const NodePtr owner = compound ? compound->getAsNode() : nullptr;
    if (universe.depth > 0 || !owner || !static_cast<FuzzCompound*>(compound)->isMirrored ||
        owner->getAsCompound() != compound)
        return;
    const std::string path = owner->getFullPathName().getName();
    std::set<std::string> present;
    for (ZEL::PortList* const list : {&compound->innerInputs(), &compound->innerOutputs()}) {
        for (ZEL::Port* const port : *list) {
            if (!present.insert(port->getName()).second)
                return;
        }
    }
    const Agreement agreement(universe);
    ZEL::ModifyCompoundPortCommand command;
    command.setParentCompound(&universe, path.c_str());
    if (universe.findNodeFromPath(path.c_str()) != owner)
        return;
    std::set<std::string> used;
    bool hasDeletes = false;
    bool hasRenames = false;
    for (int i = universe.input.number(4); i >= 0; --i)
        requestPlainly(universe, command, present, used, hasDeletes, hasRenames);
    const std::string before = networkText(universe);
    ++universe.mirrorDepth;
    command.doit();
    const std::string after = networkText(universe);
    for (int i = 0; i < 2; ++i) {
        command.undo(&universe);
        if (!hasDeletes)
            expect(networkText(universe) == before, "undone requests leave another text");
        command.redo(&universe);
        if (!hasDeletes || !hasRenames)
            expect(networkText(universe) == after, "requests redone leave another text");
    }
    --universe.mirrorDepth;
}

} // namespace

const std::vector<Step> kCommandSteps = {
    {"editConnections", editConnections},
    {"editConnections", editConnections},
    {"checkConnectRound", checkConnectRound},
    {"checkConnectRound", checkConnectRound},
    {"collapse", collapse},
    {"collapse", collapse},
    {"collapse", collapse},
    {"collapse", collapse},
    {"modifyPorts", modifyPorts},
    {"modifyPorts", modifyPorts},
    {"modifyPorts", modifyPorts},
    {"checkModifyRound", checkModifyRound},
};

} // namespace zelFuzz
