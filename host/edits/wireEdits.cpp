// The edits that lead connections another way.

#include "base/commandLine.h"
#include "document/document.h"
#include "document/flow.h"
#include "document/names.h"
#include "document/rules.h"
#include "edits/editName.h"
#include "edits/edits.h"
#include "edits/pathPorts.h"

#include <functional>

namespace shading {

namespace {

const char* const kConnectionRefused = "the connection was refused";

bool isSending(ZEL::Port& port)
{
    return port.getPortIOType() == ZEL::PortOutput;
}

/// The first port for which there is no problem. Empty without one: then the problem is that of the
/// first.
PortPtr firstFitting(ZEL::PortList& ports,
                     const std::function<std::string(ZEL::Port&)>& problemOf,
                     std::string& problem)
{
    std::string first;
    for (ZEL::Port* const port : ports) {
        const std::string own = problemOf(*port);
        if (own.empty())
            return port;
        if (first.empty())
            first = own;
    }
    problem = first;
    return nullptr;
}

/// The port at one path that has connections, and the port at the other that can have them instead.
bool chooseRoute(
    const PathPorts& from, const PathPorts& to, bool isInside, PortPtr& present, PortPtr& next)
{
    const PathPorts all[] = {from, to};
    const PortPtr presents[] = {all[0].output, all[0].input, all[0].innerInput, all[0].innerOutput};
    const PortPtr nexts[] = {all[1].output, all[1].input, all[1].innerInput, all[1].innerOutput};
    for (const PortPtr& a : presents) {
        if (!a || !a->isConnected() || (isInside && !a->isCompoundInternalPort()))
            continue;
        for (const PortPtr& b : nexts) {
            if (b && isSending(*a) == isSending(*b) && levelOf(*a) == levelOf(*b)) {
                present = a;
                next = b;
                return true;
            }
        }
    }
    return false;
}

/// The line that does the same; none where the paths mean other ports.
EditName routeName(ZEL::Container& container, const PortPtr& from, const PortPtr& to)
{
    EditName name = {"Move connections of " + shortNameOf(*from) + " to " + shortNameOf(*to), {}};
    for (const bool isInside : {false, true}) {
        PortPtr present;
        PortPtr next;
        const std::vector<std::string> paths = {pathOf(*from), pathOf(*to)};
        if (!chooseRoute(findPorts(container, paths[0]), findPorts(container, paths[1]), isInside,
                         present, next) ||
            present != from || next != to)
            continue;
        std::vector<std::string> words = {"reroute", paths[0], paths[1]};
        if (isInside)
            words.emplace_back("--inside");
        return named(name.title, words);
    }
    return name;
}

} // namespace

bool Edits::moveReceiver(const PortPtr& from, const PortPtr& to, const EditName& name)
{
    const PortPtr source = from->connectedTo()[0];
    return run(name, pathOf(*from), [&]() -> std::string {
        if (!from->removeConnection(source))
            return "the connection stays";
        const std::string problem = connectProblem(source, to);
        if (!problem.empty())
            return pathOf(*source) + ": " + problem;
        PortPtr out = source;
        PortPtr in = to;
        return ZEL::ConnectCommand().connect(&m_document, out, in) ? "" : kConnectionRefused;
    });
}

bool Edits::moveSenders(const PortPtr& from, const PortPtr& to, const EditName& name)
{
    std::vector<PortPtr> targets;
    for (ZEL::Port* const target : from->connectedTo())
        targets.emplace_back(target);
    return run(name, pathOf(*from), [&]() -> std::string {
        for (const PortPtr& target : targets) {
            const std::string problem = connectProblem(to, target);
            if (!problem.empty())
                return pathOf(*to) + ": " + problem;
            PortPtr out = to;
            PortPtr in = target;
            if (!ZEL::ConnectCommand().connect(&m_document, out, in))
                return kConnectionRefused;
        }
        return "";
    });
}

bool Edits::reroute(const PortPtr& from, const PortPtr& to)
{
    if (!has(from) || !has(to))
        return false;
    const std::string path = pathOf(*from);
    if (!from->isConnected())
        return fail(path, "not connected");
    if (from == to)
        return fail(path, "its connections are there");
    if (isSending(*from) != isSending(*to) || levelOf(*from) != levelOf(*to))
        return fail(path,
                    "it and " + pathOf(*to) + " are no two sources or targets in one compound");
    const EditName name = routeName(m_document, from, to);
    return isSending(*from) ? moveSenders(from, to, name) : moveReceiver(from, to, name);
}

bool Edits::reroute(const std::string& from, const std::string& to, bool isInside)
{
    PortPtr present;
    PortPtr next;
    return findRoute(givenPorts(m_document, from), givenPorts(m_document, to), isInside, present,
                     next) &&
           reroute(present, next);
}

bool Edits::findRoute(
    const GivenPorts& from, const GivenPorts& to, bool isInside, PortPtr& present, PortPtr& next)
{
    if (!has(from) || !has(to))
        return false;
    const PathPorts& ports = from.ports;
    if (chooseRoute(ports, to.ports, isInside, present, next))
        return true;
    for (const PortPtr& port : {ports.output, ports.input, ports.innerInput, ports.innerOutput}) {
        if (port && port->isConnected())
            return fail(from.path,
                        "it and " + to.path + " are no two sources or targets in one compound");
    }
    return fail(from.path, "not connected");
}

bool Edits::reconnect(const PortPtr& source,
                      const PortPtr& target,
                      const PortPtr& newSource,
                      const PortPtr& newTarget)
{
    if (!has(source) || !has(target) || !has(newSource) || !has(newTarget))
        return false;
    if (source->connectedTo().findPort(target) < 0)
        return fail(pathOf(*source), "not connected to " + pathOf(*target));
    if (newTarget == target)
        return connect(newSource, target);
    if (newSource == source)
        return reroute(target, newTarget);
    return fail(pathOf(*source), "one end of a connection stays where it is");
}

Edits::Insertion
Edits::insertionFor(const NodePtr& node, const PortPtr& source, const PortPtr& target) const
{
    Insertion insertion;
    if (source->connectedTo().findPort(target) < 0)
        insertion.problem = pathOf(*source) + " is not connected to " + pathOf(*target);
    else if (node == source->getParentNode() || node == target->getParentNode())
        insertion.problem = "it is an end of the connection";
    else if (node->inputs().size() == 0 || node->outputs().size() == 0)
        insertion.problem = node->inputs().size() == 0 ? "it has no input" : "it has no output";
    if (!insertion.problem.empty())
        return insertion;
    const auto inputProblem = [&](ZEL::Port& input) {
        return input.isConnected() ? connectionProblem(*source, input, false)
                                   : connectProblem(source, &input);
    };
    insertion.input = firstFitting(node->inputs(), inputProblem, insertion.problem);
    const auto outputProblem = [&](ZEL::Port& output) { return connectProblem(&output, target); };
    if (insertion.input)
        insertion.output = firstFitting(node->outputs(), outputProblem, insertion.problem);
    return insertion;
}

bool Edits::insertNode(const NodePtr& node, const PortPtr& source, const PortPtr& target)
{
    if (!hasInner(node) || !has(source) || !has(target))
        return false;
    const std::string path = pathOf(*node);
    const Insertion insertion = insertionFor(node, source, target);
    if (!insertion.problem.empty())
        return fail(path, insertion.problem);
    EditName name = connectionName(std::string("Insert ") + node->getName() + " between " +
                                       shortNameOf(*source) + " and " + shortNameOf(*target),
                                   {"insert", path}, source, target);
    if (m_document.findNodeFromPath(path.c_str()) != node)
        name.lines.clear();
    return run(name, path, [&] {
        PortPtr ends[][2] = {{source, insertion.input}, {insertion.output, target}};
        for (auto& [out, in] : ends) {
            if (!ZEL::ConnectCommand().connect(&m_document, out, in))
                return kConnectionRefused;
        }
        return "";
    });
}

bool Edits::insertNode(const std::string& path, const std::string& a, const std::string& b)
{
    const NodePtr node = findNode(path);
    PortPtr sender;
    PortPtr receiver;
    return node && findConnection(a, b, true, sender, receiver) &&
           insertNode(node, sender, receiver);
}

} // namespace shading
