#include "edits/pathPorts.h"

#include "document/names.h"
#include "document/rules.h"

#include <utility>

namespace shading {

namespace {

/// True when the two are connected (isPresent) or may be, and both or not both lie in one compound.
bool isMeant(const PortPtr& sender, const PortPtr& receiver, bool isInOneCompound, bool isPresent)
{
    if (!sender || !receiver || isInOneCompound != (levelOf(*sender) == levelOf(*receiver)))
        return false;
    return isPresent ? sender->connectedTo().findPort(receiver) >= 0
                     : isInScope(*sender, *receiver);
}

} // namespace

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

GivenPorts givenPorts(ZEL::Container& container, const std::string& path)
{
    return {path, nullptr, findPorts(container, path)};
}

GivenPorts givenPorts(const PortPtr& port)
{
    GivenPorts given = {pathOf(*port), port, {}};
    const bool isOutput = port->getPortIOType() == ZEL::PortOutput;
    if (port->isCompoundInternalPort())
        (isOutput ? given.ports.innerInput : given.ports.innerOutput) = port;
    else
        (isOutput ? given.ports.output : given.ports.input) = port;
    return given;
}

bool choosePair(
    const PathPorts& a, const PathPorts& b, bool isPresent, PortPtr& sender, PortPtr& receiver)
{
    for (const bool isInOneCompound : {true, false}) {
        for (const bool isTurned : {false, true}) {
            const PathPorts& from = isTurned ? b : a;
            const PathPorts& to = isTurned ? a : b;
            for (const PortPtr& source : from.senders()) {
                for (const PortPtr& target : to.receivers()) {
                    if (isMeant(source, target, isInOneCompound, isPresent)) {
                        sender = source;
                        receiver = target;
                        return true;
                    }
                }
            }
        }
    }
    return false;
}

std::vector<std::string>
pairPaths(ZEL::Container& container, const PortPtr& sender, const PortPtr& receiver)
{
    std::vector<std::string> paths = {pathOf(*sender), pathOf(*receiver)};
    const bool isPresent = sender->connectedTo().findPort(receiver) >= 0;
    for (int i = 0; i < 2; ++i, std::swap(paths[0], paths[1])) {
        PortPtr from;
        PortPtr to;
        if (choosePair(findPorts(container, paths[0]), findPorts(container, paths[1]), isPresent,
                       from, to) &&
            from == sender && to == receiver)
            return paths;
    }
    return {};
}

} // namespace shading
