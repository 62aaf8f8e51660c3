// The edits of connections, from paths to ports, and the library's ConnectCommand.

#include "base/commandLine.h"
#include "document/document.h"
#include "document/flow.h"
#include "document/names.h"
#include "document/rules.h"
#include "edits/editName.h"
#include "edits/edits.h"
#include "edits/pathPorts.h"

#include <algorithm>

namespace shading {

bool Edits::findConnection(
    const std::string& a, const std::string& b, bool isPresent, PortPtr& sender, PortPtr& receiver)
{
    return findConnection(givenPorts(m_document, a), givenPorts(m_document, b), isPresent, sender,
                          receiver);
}

bool Edits::findConnection(
    const GivenPorts& a, const GivenPorts& b, bool isPresent, PortPtr& sender, PortPtr& receiver)
{
    return has(a) && has(b) &&
           (choosePair(a.ports, b.ports, isPresent, sender, receiver) ||
            fail(a.path, isPresent
                             ? "not connected to " + b.path
                             : "it and " + b.path + " are no source and target in one compound"));
}

std::string Edits::connectProblem(const PortPtr& source, const PortPtr& target) const
{
    if (source->getPortIOType() != ZEL::PortOutput || target->getPortIOType() == ZEL::PortOutput)
        return "it and " + pathOf(*target) + " are no source and target";
    if (source->connectedTo().findPort(target) >= 0)
        return "connected to " + pathOf(*target) + " already";
    if (comesFrom(*source, *target))
        return "what it gives comes from " + pathOf(*target);
    return fitProblem(*source, *target);
}

/// Words with the paths of the two; none when those mean another pair, in either order.
EditName Edits::connectionName(std::string title,
                               std::vector<std::string> words,
                               const PortPtr& sender,
                               const PortPtr& receiver)
{
    const std::vector<std::string> paths = pairPaths(m_document, sender, receiver);
    words.insert(words.end(), paths.begin(), paths.end());
    return paths.empty() ? EditName{std::move(title), {}} : named(std::move(title), words);
}

bool Edits::connect(const PortPtr& source, const PortPtr& target)
{
    if (!has(source) || !has(target))
        return false;
    const std::string problem = connectProblem(source, target);
    if (!problem.empty())
        return fail(pathOf(*source), problem);
    const EditName name =
        connectionName("Connect " + shortNameOf(*source) + " to " + shortNameOf(*target),
                       {"connect"}, source, target);
    return run(name, pathOf(*source), [&, out = source, in = target]() mutable {
        return ZEL::ConnectCommand().connect(&m_document, out, in) ? ""
                                                                   : "the connection was refused";
    });
}

bool Edits::connect(const std::string& a, const std::string& b)
{
    PortPtr sender;
    PortPtr receiver;
    return findConnection(a, b, false, sender, receiver) && connect(sender, receiver);
}

bool Edits::disconnect(const PortPtr& source, const PortPtr& target)
{
    if (!has(source) || !has(target))
        return false;
    if (source->connectedTo().findPort(target) < 0)
        return fail(pathOf(*source), "not connected to " + pathOf(*target));
    const EditName name =
        connectionName("Disconnect " + shortNameOf(*source) + " from " + shortNameOf(*target),
                       {"disconnect"}, source, target);
    return run(name, pathOf(*source), [&, out = source, in = target]() mutable {
        return ZEL::ConnectCommand().disconnect(&m_document, out, in) ? "" : "the connection stays";
    });
}

bool Edits::disconnect(const std::string& a, const std::string& b)
{
    PortPtr sender;
    PortPtr receiver;
    return findConnection(a, b, true, sender, receiver) && disconnect(sender, receiver);
}

bool Edits::disconnectAll(const PortPtr& port)
{
    return has(port) && disconnectPorts({port}, pathOf(*port));
}

bool Edits::disconnectAll(const std::string& path)
{
    const PathPorts ports = findPorts(m_document, path);
    if (ports.isEmpty())
        return fail(path, "no such port");
    return disconnectPorts({ports.input, ports.output, ports.innerInput, ports.innerOutput}, path);
}

/// Those among them that are connected; empty ones are passed over.
bool Edits::disconnectPorts(const std::vector<PortPtr>& ports, const std::string& path)
{
    std::vector<PortPtr> connected;
    for (const PortPtr& port : ports) {
        if (port && port->isConnected())
            connected.push_back(port);
    }
    if (connected.empty())
        return fail(path, "not connected");
    EditName name = {"Disconnect " + shortNameOf(*connected.front()), {}};
    // The line means all ports at the path.
    const PathPorts all = findPorts(m_document, path);
    const PortPtr atPath[] = {all.input, all.output, all.innerInput, all.innerOutput};
    const auto isLeft = [&](const PortPtr& port) {
        return port && port->isConnected() &&
               std::find(connected.begin(), connected.end(), port) == connected.end();
    };
    const bool isFound =
        std::find(std::begin(atPath), std::end(atPath), connected.front()) != std::end(atPath);
    if (isFound && std::none_of(std::begin(atPath), std::end(atPath), isLeft))
        name.lines.push_back(lineOf({"disconnect-all", path}));
    return run(name, path, [&] {
        // Its undo changes nothing, by contract: the steps are taken back instead.
        for (PortPtr& port : connected)
            ZEL::ConnectCommand().disconnectAll(&m_document, port);
        return "";
    });
}

} // namespace shading
