// What all edits share, and the history.

#include "edits/edits.h"

#include "document/document.h"
#include "document/names.h"
#include "document/rules.h"
#include "edits/pathPorts.h"

namespace shading {

namespace {

const char* const kNoNode = "no such node";
const char* const kNoPort = "no such port";

} // namespace

Edits::Edits(Document& document) : m_document(document), m_history(document) {}

bool Edits::run(const EditName& name, const std::string& subject, const History::Action& action)
{
    std::string reason;
    return m_history.run(name, false, action, reason) || fail(subject, reason);
}

bool Edits::runKeepingTypes(const EditName& name,
                            const std::string& subject,
                            const History::Action& action)
{
    std::string reason;
    return m_history.run(name, true, action, reason) || fail(subject, reason);
}

bool Edits::undo(int count, std::vector<std::string>& titles)
{
    return replay(false, count, titles);
}

bool Edits::redo(int count, std::vector<std::string>& titles)
{
    return replay(true, count, titles);
}

bool Edits::replay(bool isForward, int count, std::vector<std::string>& titles)
{
    const std::string word = isForward ? "redo" : "undo";
    const int available = isForward ? m_history.redoCount() : m_history.undoCount();
    if (available == 0)
        return fail("history", "nothing to " + word);
    if (count > available)
        return fail(std::to_string(count), "only " + std::to_string(available) + " to " + word);
    for (; count > 0; --count) {
        std::string title;
        std::string problem;
        if (!(isForward ? m_history.redo(title, problem) : m_history.undo(title, problem)))
            return fail(title.empty() ? "history" : title, problem);
        titles.push_back(title);
    }
    return true;
}

bool Edits::fail(const std::string& subject, const std::string& reason)
{
    m_problem = {subject, reason};
    return false;
}

bool Edits::has(const NodePtr& node)
{
    return m_document.has(node) || fail(node ? node->getName() : "", kNoNode);
}

bool Edits::has(const PortPtr& port)
{
    const NodePtr node = port ? port->getParentNode() : nullptr;
    if (!node)
        return fail(port ? port->getName() : "", kNoPort);
    const CompoundPtr inside = port->getParentCompound();
    const bool isListed =
        inside ? inside->innerInputs().findPort(port) >= 0 ||
                     inside->innerOutputs().findPort(port) >= 0
               : node->inputs().findPort(port) >= 0 || node->outputs().findPort(port) >= 0;
    return isListed ? has(node) : fail(pathOf(*port), kNoPort);
}

bool Edits::has(const GivenPorts& given)
{
    if (given.port)
        return has(given.port);
    return !given.ports.isEmpty() || fail(given.path, kNoPort);
}

bool Edits::hasInner(const NodePtr& node)
{
    if (!has(node))
        return false;
    return node != m_document.getRootNode() ||
           fail(pathOf(*node), "the document itself stays as it is");
}

bool Edits::mayName(ZEL::Compound& compound, const std::string& name, const std::string& subject)
{
    const std::string problem = nameProblem(name);
    if (!problem.empty())
        return fail(subject, problem);
    const std::string taken = takenProblem(compound, name);
    return taken.empty() || fail(pathOf(*compound.getAsNode()) + "." + name, taken);
}

bool Edits::reaches(const CompoundPtr& compound)
{
    return reaches(compound ? compound->getAsNode() : NodePtr());
}

bool Edits::reaches(const NodePtr& node)
{
    if (!has(node))
        return false;
    const std::string path = pathOf(*node);
    return m_document.findNodeFromPath(path.c_str()) == node ||
           fail(path, "several nodes have this path: rename one first");
}

PortPtr Edits::compoundPort(const PortPtr& port)
{
    if (!has(port))
        return nullptr;
    const CompoundPtr compound = port->getParentNode()->getAsCompound();
    if (!compound) {
        fail(pathOf(*port), "no port of a compound");
        return nullptr;
    }
    if (!reaches(compound))
        return nullptr;
    PortPtr inner = port->isCompoundInternalPort() ? port : compound->getReversePort(port);
    if (findCompoundPort(pathOf(*compound->getAsNode()), port->getName()) == inner)
        return inner;
    fail(pathOf(*port), std::string("several ports are called \"") + port->getName() + "\"");
    return nullptr;
}

NodePtr Edits::findNode(const std::string& path)
{
    NodePtr node = m_document.findNodeFromPath(path.c_str());
    if (!node)
        fail(path, kNoNode);
    return node;
}

NodePtr Edits::findChild(ZEL::Compound& compound, const std::string& name)
{
    NodePtr node = compound.nodes()[name.c_str()];
    if (!node)
        fail(pathOf(*compound.getAsNode()) + "." + name, kNoNode);
    return node;
}

CompoundPtr Edits::findCompound(const std::string& path)
{
    const NodePtr node = findNode(path);
    if (node && !node->isCompound())
        fail(path, "not a compound");
    return node ? node->getAsCompound() : nullptr;
}

PortPtr Edits::findCompoundPort(const std::string& path, const std::string& name)
{
    const CompoundPtr compound = findCompound(path);
    if (!compound)
        return nullptr;
    PortPtr port = compound->innerInputs()[name.c_str()];
    if (!port)
        port = compound->innerOutputs()[name.c_str()];
    if (!port)
        fail(path + "." + name, kNoPort);
    return port;
}

} // namespace shading
