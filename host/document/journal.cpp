#include "document/journal.h"

#include "document/names.h"
#include "document/node.h"
#include "document/rules.h"

namespace shading {

namespace {

std::string isTaken(const std::string& path)
{
    return path + ": the name is taken";
}

} // namespace

void Journal::begin(bool keepsTypes)
{
    m_steps.clear();
    m_refusal.clear();
    m_keepsTypes = keepsTypes;
    m_mode = Mode::Recording;
}

bool Journal::end(bool isGood, Steps& steps, std::string& problem)
{
    checkLastStep();
    m_mode = Mode::Idle;
    steps.clear();
    if (isGood && m_refusal.empty()) {
        steps.swap(m_steps);
        return true;
    }
    replay(m_steps, false);
    m_steps.clear();
    problem = m_refusal;
    return false;
}

bool Journal::replay(const Steps& steps, bool isForward)
{
    m_mode = Mode::Replaying;
    const bool result = runSteps(steps, isForward);
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
    if (m_steps.empty() || m_steps.back()->isDone())
        return;
    m_steps.pop_back();
    refuse("refused by a listener");
}

/// True when a step is to be written down; a change outside of edits is remembered.
bool Journal::isWanted()
{
    m_isStale = m_isStale || m_mode == Mode::Idle;
    if (isRecording())
        checkLastStep();
    return isRecording();
}

bool Journal::write(std::unique_ptr<Step> step)
{
    m_steps.push_back(std::move(step));
    return true;
}

bool Journal::mayConnect(const PortPtr& a, const PortPtr& b)
{
    if (!isWanted())
        return true;
    const bool aSends = a->getPortIOType() == ZEL::PortOutput;
    const std::string problem = connectionProblem(aSends ? *a : *b, aSends ? *b : *a, m_keepsTypes);
    return problem.empty() ? write(makeConnectStep(a, b)) : refuse(problem);
}

bool Journal::mayDisconnect(const PortPtr& a, const PortPtr& b)
{
    // The library asks also about ports that are not connected.
    const bool isConnected = a->connectedTo().findPort(b) >= 0;
    return !isConnected || !isWanted() || write(makeDisconnectStep(a, b));
}

bool Journal::mayAddPort(ZEL::PortList& list, const PortPtr& port)
{
    if (!isWanted())
        return true;
    return list[port->getName()] ? refuse(isTaken(pathOf(*port)))
                                 : write(makeAddPortStep(list, port));
}

bool Journal::mayRemovePort(ZEL::PortList& list, const PortPtr& port)
{
    return !isWanted() || write(makeRemovePortStep(list, port));
}

bool Journal::mayMovePort(ZEL::PortList& list, int from, int to)
{
    // The library repeats a port that moves to the back and drops the one behind it.
    if (from < to || from >= list.size())
        return refuse("a port can be moved to the front only");
    return !isWanted() || write(makeMovePortStep(list, from, to));
}

bool Journal::maySetType(const PortPtr& port, const TypePtr& type)
{
    return !isWanted() || write(makeTypeStep(port, type));
}

bool Journal::maySetValue(const PortPtr& port, const char* value)
{
    const bool isSame = std::string(value) == port->getPortDefaultValue();
    return isSame || !isWanted() || write(makeValueStep(port, value));
}

bool Journal::mayRenamePort(ZEL::PortList& list, const PortPtr& port, const char* name)
{
    if (!isWanted())
        return true;
    const std::string problem = nameProblem(name);
    if (!problem.empty())
        return refuse(problem);
    return list[name] ? refuse(isTaken(pathOf(*list[name])))
                      : write(makeRenamePortStep(port, name));
}

bool Journal::mayAddNode(ZEL::Compound& compound, const NodePtr& node)
{
    if (!isWanted())
        return true;
    return compound.nodes()[node->getName()] ? refuse(isTaken(pathOf(*node)))
                                             : write(makeAddNodeStep(compound, node));
}

bool Journal::mayRemoveNode(ZEL::Compound& compound, const NodePtr& node)
{
    return !isWanted() || write(makeRemoveNodeStep(compound, node));
}

bool Journal::mayRenameNode(const NodePtr& node, const char* name)
{
    const CompoundPtr around = node->getParentCompound();
    // A node on its own is no part of the network yet.
    if (!around || !isWanted())
        return true;
    const std::string problem = nameProblem(name);
    if (!problem.empty())
        return refuse(problem);
    const NodePtr namesake = around->nodes()[name];
    return namesake ? refuse(isTaken(pathOf(*namesake))) : write(makeRenameNodeStep(node, name));
}

void Journal::setsDefinition(const ZEL::AddRefWrapper<Node>& node,
                             const ZEL::AddRefWrapper<Definition>& definition)
{
    if (isWanted())
        write(makeDefinitionStep(node, definition));
}

} // namespace shading
