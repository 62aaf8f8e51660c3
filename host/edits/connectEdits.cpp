// The edits of connections: from paths to ports, and the library's ConnectCommand.

#include "document/document.h"
#include "document/names.h"
#include "document/rules.h"
#include "edits/edits.h"
#include "shell/commandLine.h"

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

/// True when the port, or the compound node's port that it mirrors, is what its path means first.
bool isFoundByPath(ZEL::Container& container, const PortPtr& port)
{
    const CompoundPtr compound = port->getParentCompound();
    const PathPorts ports = findPorts(container, pathOf(*port));
    return (compound ? compound->getReversePort(port) : port) ==
           (ports.output ? ports.output : ports.input);
}

/// True when the command, which records paths, finds its two ports again. It is asked only where
/// it prints nothing.
bool findsItsPorts(ZEL::Container& container,
                   ZEL::ConnectCommand& command,
                   const PortPtr& sender,
                   const PortPtr& receiver)
{
    PortPtr foundSender;
    PortPtr foundReceiver;
    return isFoundByPath(container, sender) && isFoundByPath(container, receiver) &&
           command.resolvePorts(foundSender, foundReceiver) && foundSender == sender &&
           foundReceiver == receiver;
}

/// Lets the library's command take the edit back, which keeps no places: where both ports were the
/// last in each other's lists it restores them exactly.
void useCommand(Edit* edit,
                const std::shared_ptr<ZEL::ConnectCommand>& command,
                ZEL::Container& container,
                const PortPtr& sender,
                const PortPtr& receiver)
{
    if (!edit || edit->steps.size() != 1 || !findsItsPorts(container, *command, sender, receiver))
        return;
    edit->command = [command, &container](bool isForward) {
        return isForward ? command->redo(&container) : command->undo(&container);
    };
}

} // namespace

/// Finds the pair of ports that the paths mean: one that is connected, or else may be. Prefers ends
/// in one compound to the connections between graphs that the format also knows.
bool Edits::findConnection(
    const std::string& a, const std::string& b, bool isPresent, PortPtr& sender, PortPtr& receiver)
{
    const PathPorts ports[] = {findPorts(m_document, a), findPorts(m_document, b)};
    if (ports[0].isEmpty() || ports[1].isEmpty())
        return fail(ports[0].isEmpty() ? a : b, "no such port");
    for (const bool isInOneCompound : {true, false}) {
        for (const int first : {0, 1}) {
            const PathPorts& from = ports[first];
            const PathPorts& to = ports[1 - first];
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
    return fail(a, isPresent ? "not connected to " + b
                             : "it and " + b + " are no source and target in one compound");
}

bool Edits::connect(const std::string& a, const std::string& b)
{
    PortPtr sender;
    PortPtr receiver;
    if (!findConnection(a, b, false, sender, receiver))
        return false;
    if (sender->connectedTo().findPort(receiver) >= 0)
        return fail(a, "connected to " + b + " already");
    const auto command = std::make_shared<ZEL::ConnectCommand>();
    const bool isDone =
        run(lineOf({"connect", a, b}), a, [&, out = sender, in = receiver]() mutable {
            return command->connect(&m_document, out, in) ? "" : "the connection was refused";
        });
    if (isDone)
        useCommand(m_history.lastEdit(), command, m_document, sender, receiver);
    return isDone;
}

bool Edits::disconnect(const std::string& a, const std::string& b)
{
    PortPtr sender;
    PortPtr receiver;
    if (!findConnection(a, b, true, sender, receiver))
        return false;
    ZEL::PortList& targets = sender->connectedTo();
    const bool isLast =
        targets.findPort(receiver) == targets.size() - 1 && receiver->connectedTo().size() == 1;
    const auto command = std::make_shared<ZEL::ConnectCommand>();
    const bool isDone =
        run(lineOf({"disconnect", a, b}), a, [&, out = sender, in = receiver]() mutable {
            return command->disconnect(&m_document, out, in) ? "" : "the connection stays";
        });
    if (isDone && isLast)
        useCommand(m_history.lastEdit(), command, m_document, sender, receiver);
    return isDone;
}

bool Edits::disconnectAll(const std::string& path)
{
    PathPorts ports = findPorts(m_document, path);
    if (ports.isEmpty())
        return fail(path, "no such port");
    return run(lineOf({"disconnect-all", path}), path, [&] {
        int count = 0;
        for (PortPtr* const port :
             {&ports.input, &ports.output, &ports.innerInput, &ports.innerOutput}) {
            count += *port ? (*port)->connectedTo().size() : 0;
            // Its undo changes nothing, by contract: the steps are taken back instead.
            ZEL::ConnectCommand().disconnectAll(&m_document, *port);
        }
        return count > 0 ? "" : "not connected";
    });
}

} // namespace shading
