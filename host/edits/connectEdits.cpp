// The edits of connections, from paths to ports, and the library's ConnectCommand.

#include "base/commandLine.h"
#include "document/document.h"
#include "document/flow.h"
#include "document/names.h"
#include "document/rules.h"
#include "edits/editName.h"
#include "edits/edits.h"

#include <algorithm>

namespace shading {

namespace {

/// What a path may mean. A compound node's port and its inner port bear one path.
struct PathPorts {
    PortPtr input;
    PortPtr output;
    PortPtr innerInput;
    PortPtr innerOutput;

    bool isEmpty() const { return !input && !output; }
};

PathPorts findPorts(ZEL::Container& container, const std::string& path)
{
    PathPorts ports;
    const char* const text = path.c_str();
    ports.input = container.findPortFromPath(text, ZEL::PortInput, ZEL::Container::eSearchNode);
    ports.output = container.findPortFromPath(text, ZEL::PortOutput, ZEL::Container::eSearchNode);
    ports.innerInput = container.reverseThisExternalPort(ports.input);
    ports.innerOutput = container.reverseThisExternalPort(ports.output);
    return ports;
}

/// True when the two are connected (isPresent) or may be, and both or not both lie in one compound.
bool isMeant(const PortPtr& sender, const PortPtr& receiver, bool isInOneCompound, bool isPresent)
{
    if (!sender || !receiver || isInOneCompound != (levelOf(*sender) == levelOf(*receiver)))
        return false;
    return isPresent ? sender->connectedTo().findPort(receiver) >= 0
                     : isInScope(*sender, *receiver);
}

/// The pair of ports that the paths mean: one that is connected, or else may be. Prefers ends in
/// one compound to the connections between graphs that the format also knows. False without one.
bool choosePair(
    const PathPorts& a, const PathPorts& b, bool isPresent, PortPtr& sender, PortPtr& receiver)
{
    for (const bool isInOneCompound : {true, false}) {
        for (const bool isTurned : {false, true}) {
            const PathPorts& from = isTurned ? b : a;
            const PathPorts& to = isTurned ? a : b;
            for (const PortPtr* const source : {&from.output, &from.innerInput}) {
                for (const PortPtr* const target : {&to.input, &to.innerOutput}) {
                    if (isMeant(*source, *target, isInOneCompound, isPresent)) {
                        sender = *source;
                        receiver = *target;
                        return true;
                    }
                }
            }
        }
    }
    return false;
}

} // namespace

bool Edits::findConnection(
    const std::string& a, const std::string& b, bool isPresent, PortPtr& sender, PortPtr& receiver)
{
    const PathPorts first = findPorts(m_document, a);
    const PathPorts second = findPorts(m_document, b);
    if (first.isEmpty() || second.isEmpty())
        return fail(first.isEmpty() ? a : b, "no such port");
    return choosePair(first, second, isPresent, sender, receiver) ||
           fail(a, isPresent ? "not connected to " + b
                             : "it and " + b + " are no source and target in one compound");
}

/// Empty when the two paths mean another pair, in either order.
std::string Edits::connectionLine(const char* word, const PortPtr& sender, const PortPtr& receiver)
{
    const PortPtr* ends[] = {&sender, &receiver};
    const bool isPresent = sender->connectedTo().findPort(receiver) >= 0;
    for (int i = 0; i < 2; ++i, std::swap(ends[0], ends[1])) {
        const std::string paths[] = {pathOf(**ends[0]), pathOf(**ends[1])};
        PortPtr from;
        PortPtr to;
        if (choosePair(findPorts(m_document, paths[0]), findPorts(m_document, paths[1]), isPresent,
                       from, to) &&
            from == sender && to == receiver)
            return lineOf({word, paths[0], paths[1]});
    }
    return "";
}

bool Edits::connect(const PortPtr& source, const PortPtr& target)
{
    if (!has(source) || !has(target))
        return false;
    if (source->getPortIOType() != ZEL::PortOutput || target->getPortIOType() == ZEL::PortOutput)
        return fail(pathOf(*source), "it and " + pathOf(*target) + " are no source and target");
    if (source->connectedTo().findPort(target) >= 0)
        return fail(pathOf(*source), "connected to " + pathOf(*target) + " already");
    if (comesFrom(*source, *target))
        return fail(pathOf(*source), "what it gives comes from " + pathOf(*target));
    EditName name = {"Connect " + shortNameOf(*source) + " to " + shortNameOf(*target), {}};
    const std::string line = connectionLine("connect", source, target);
    if (!line.empty())
        name.lines.push_back(line);
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
    EditName name = {"Disconnect " + shortNameOf(*source) + " from " + shortNameOf(*target), {}};
    const std::string line = connectionLine("disconnect", source, target);
    if (!line.empty())
        name.lines.push_back(line);
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
