#include "document/journal.h"

#include "document/document.h"
#include "document/graphInterface.h"
#include "document/names.h"
#include "document/node.h"
#include "document/origins.h"
#include "document/rules.h"
#include "format/piece.h"

namespace shading {

namespace {

/// False for what is on its own, and for what is inside of it: no part of the network yet.
bool isInNetwork(const NodePtr& node)
{
    NodePtr top = node;
    while (top && top->getParentCompound())
        top = top->getParentCompound()->getAsNode();
    return top && top->getContainer() && top->getContainer()->getRootNode() == top;
}

} // namespace

void Journal::begin(bool keepsTypes)
{
    if (isRecording())
        checkLastStep(); // A step of the level around.
    m_levels.push_back({m_steps.size(), m_keepsTypes, m_refusal});
    m_removals.clear(); // What is taken back alone needs its order for itself.
    m_refusal.clear();
    m_keepsTypes = keepsTypes;
    m_mode = Mode::Recording;
}

bool Journal::end(bool isGood, std::string& problem)
{
    checkLastStep();
    const bool isKept = isGood && m_refusal.empty();
    const Level level = m_levels.back();
    m_levels.pop_back();
    if (!isKept) {
        takeBack(level.firstStep);
        problem = m_refusal;
    }
    m_refusal = level.refusal;
    m_keepsTypes = level.keepsTypes;
    m_mode = m_levels.empty() ? Mode::Idle : Mode::Recording;
    if (m_levels.empty())
        m_removals.clear();
    return isKept;
}

Steps Journal::takeSteps()
{
    Steps steps;
    steps.swap(m_steps);
    return steps;
}

bool Journal::takeBack(std::size_t firstStep)
{
    m_mode = Mode::Replaying;
    m_removals.clear();
    const bool isBack = runSteps(m_steps, firstStep, false);
    m_isStale = m_isStale || !isBack;
    m_steps.resize(firstStep);
    return isBack;
}

bool Journal::replay(const Steps& steps, bool isForward)
{
    m_mode = Mode::Replaying;
    const bool result = runSteps(steps, 0, isForward);
    m_mode = Mode::Idle;
    return result;
}

bool Journal::takeStale()
{
    const bool isStale = m_isStale;
    m_isStale = false;
    return isStale;
}

bool Journal::refuse(const std::string& reason)
{
    if (m_refusal.empty())
        m_refusal = reason;
    return false;
}

/// A listener may have refused after this one agreed: then the step never happened.
void Journal::checkLastStep()
{
    const std::size_t firstStep = m_levels.back().firstStep;
    if (m_steps.size() == firstStep || m_steps.back()->isDone())
        return;
    m_steps.pop_back();
    refuse("refused by a listener");
}

/// True when a step of the node is to be written down; a change outside of edits is remembered.
bool Journal::isWanted(const NodePtr& node)
{
    ++m_changes;
    if (m_mode == Mode::Idle)
        m_isStale = m_isStale || isInNetwork(node);
    if (!isRecording())
        return false;
    checkLastStep();
    return isInNetwork(node);
}

bool Journal::write(std::unique_ptr<Step> step)
{
    m_steps.push_back(std::move(step));
    return true;
}

/// Of a graph's two ports, the one of its node is asked about.
bool Journal::mayChangeInterface(const PortPtr& port, bool isRemoval)
{
    const NodePtr node = port->getParentNode();
    if (port->isCompoundInternalPort() || !tieOf(*node))
        return true;
    const Origins& origins = static_cast<Document&>(*node->getContainer()).origins();
    const std::string problem =
        interfaceProblem(*node, port->getPortIOType(), origins.nameOf(*port), isRemoval);
    return problem.empty() || refuse(problem);
}

bool Journal::mayConnect(const PortPtr& a, const PortPtr& b)
{
    // What dies with another document would leave a dead end behind.
    const NodePtr nodes[] = {a->getParentNode(), b->getParentNode()};
    if (!nodes[0] || !nodes[1] || nodes[0]->getContainer() != nodes[1]->getContainer())
        return refuse("the two are not ports of one document");
    if (!isWanted(a->getParentNode()) && !isWanted(b->getParentNode()))
        return true;
    const bool aSends = a->getPortIOType() == ZEL::PortOutput;
    const std::string problem = connectionProblem(aSends ? *a : *b, aSends ? *b : *a, m_keepsTypes);
    return problem.empty() ? write(makeConnectStep(a, b)) : refuse(problem);
}

bool Journal::mayDisconnect(const PortPtr& a, const PortPtr& b)
{
    // The library asks also about ports that are not connected.
    const bool isConnected = a->connectedTo().findPort(b) >= 0;
    return !isConnected || !isWanted(a->getParentNode()) || write(makeDisconnectStep(a, b));
}

bool Journal::mayAddPort(ZEL::PortList& list, const PortPtr& port)
{
    if (!isWanted(port->getParentNode()))
        return true;
    const CompoundPtr compound = port->getParentCompound();
    const std::string problem = compound ? newPortNameProblem(*compound, port->getName())
                                : list[port->getName()] ? kNameIsTaken
                                                        : "";
    if (!problem.empty())
        return refuse(pathOf(*port) + ": " + problem);
    return mayChangeInterface(port) && write(makeAddPortStep(list, port));
}

bool Journal::mayRemovePort(ZEL::PortList& list, const PortPtr& port)
{
    return !isWanted(port->getParentNode()) ||
           (mayChangeInterface(port, true) && write(makeRemovePortStep(list, port)));
}

bool Journal::mayMovePort(ZEL::PortList& list, int from, int to)
{
    // The library repeats a port that moves to the back and drops the one behind it.
    if (from < to || from >= list.size())
        return refuse("a port can be moved to the front only");
    return !isWanted(list[from]->getParentNode()) ||
           (mayChangeInterface(list[from]) && write(makeMovePortStep(list, from, to)));
}

bool Journal::maySetType(const PortPtr& port, const TypePtr& type)
{
    return !isWanted(port->getParentNode()) ||
           (mayChangeInterface(port) && write(makeTypeStep(port, type)));
}

bool Journal::maySetValue(const PortPtr& port, const char* value)
{
    const bool isSame = std::string(value) == port->getPortDefaultValue();
    return isSame || !isWanted(port->getParentNode()) ||
           (mayChangeInterface(port) && write(makeValueStep(port, value)));
}

bool Journal::mayRenamePort(ZEL::PortList& list, const PortPtr& port, const char* name)
{
    const NodePtr node = port->getParentNode();
    if (!isWanted(node))
        return true;
    // The inner port of a compound stands for the pair.
    const CompoundPtr compound = port->getParentCompound();
    const std::string problem = compound     ? newPortNameProblem(*compound, name)
                                : list[name] ? kNameIsTaken
                                             : nameProblem(name);
    if (!problem.empty())
        return refuse(pathOf(*node) + "." + name + ": " + problem);
    return mayChangeInterface(port) && write(makeRenamePortStep(port, name));
}

/// A source that the network does not show is named beside the node, where that was read. A graph
/// of the document itself is named from everywhere.
bool Journal::mayLeaveSources(ZEL::Compound& compound, const NodePtr& node)
{
    const auto* const own = dynamic_cast<const Node*>(node.get());
    const NodePtr owner = compound.getAsNode();
    const auto* const around = dynamic_cast<const Node*>(owner.get());
    const Piece* const element = own ? own->element() : nullptr;
    if (!element || (around && around->element() == element->parent))
        return true;
    for (ZEL::Port* const input : node->inputs()) {
        const std::string source = hiddenSourceOf(*input);
        if (source.empty())
            continue;
        const Origins& origins = static_cast<Document&>(*node->getContainer()).origins();
        const bool isGraph = says(*origins.elementOf(*input), "nodegraph");
        if (!isGraph || kindOf(*element->parent) == ElementKind::Graph)
            return refuse(node->getName() + std::string(".") + input->getName() + " reads from " +
                          source + ", which the network does not show and which stays behind");
    }
    return true;
}

bool Journal::mayAddNode(ZEL::Compound& compound, const NodePtr& node)
{
    if (!isWanted(compound.getAsNode()))
        return true;
    // Among nodes only: the library's collapse names the ports of a compound before nodes move in.
    if (compound.nodes()[node->getName()])
        return refuse(pathOf(*node) + ": " + kNameIsTaken);
    if (tieOf(*node) && compound.getAsNode()->getParentCompound())
        return refuse(kStaysAtTheTop);
    return mayLeaveSources(compound, node) && write(makeAddNodeStep(compound, node));
}

bool Journal::mayRemoveNode(ZEL::Compound& compound, const NodePtr& node)
{
    if (!isWanted(compound.getAsNode()))
        return true;
    const int removal = ++m_removals[&compound];
    if (removal == 2)
        write(makeOrderStep(compound));
    return write(makeRemoveNodeStep(compound, node, removal == 1));
}

bool Journal::mayRenameNode(const NodePtr& node, const char* name)
{
    const CompoundPtr around = node->getParentCompound();
    if (!isWanted(node))
        return true;
    const std::string problem = around ? newNameProblem(*around, name) : "";
    return problem.empty() ? write(makeRenameNodeStep(node, name))
                           : refuse(pathOf(*around->getAsNode()) + "." + name + ": " + problem);
}

void Journal::setsDefinition(const HostNodePtr& node,
                             const ZEL::AddRefWrapper<Definition>& definition)
{
    if (isWanted(node.get()))
        write(makeDefinitionStep(node, definition));
}

void Journal::setsAttribute(Attributes& attributes,
                            const AttributeOwner& owner,
                            const std::string& name,
                            const std::optional<AttributeValue>& value)
{
    if (isWanted(attributes.nodeOf(owner)))
        write(makeAttributeStep(attributes, owner, name, value));
}

void Journal::setsBackdrop(Backdrops& backdrops,
                           const BackdropPtr& backdrop,
                           const Backdrop::State& state)
{
    if (isWanted(state.owner ? state.owner : backdrop->owner()))
        write(makeBackdropStep(backdrops, backdrop, state));
}

} // namespace shading
