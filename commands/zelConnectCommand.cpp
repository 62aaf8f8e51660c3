#include "graph/zelLostPort.h"
#include "graph/zelPortOrder.h"
#include "zelCommands.h"
#include "zelContainer.h"

namespace ZEL {

namespace {

constexpr std::int32_t kConnect = 1;
constexpr std::int32_t kDisconnect = 2;
constexpr std::int32_t kDisconnectAll = 3;

constexpr const char* kOutputKey = "Output";
constexpr const char* kInputKey = "Input";
constexpr const char* kConnectionsName = "Connections";

/// Records the paths of the ports that the port is connected to, in their order.
void saveConnections(PropertyList& state, const AddRefWrapper<Port>& port)
{
    PropertyList* const saved = state.addChildList(kConnectionsName);
    for (int i = 0; i < port->connectedTo().size(); ++i) {
        const AddRefWrapper<Port> other = port->connectedTo()[i];
        saved->addStringPair(kOutputKey, other->getFullPathName().getName());
    }
}

/// Connects the port to the recorded ones, passing over paths that name no output now. The result
/// is that of the last connection made, true when there was none.
bool restoreConnections(Container* container, PropertyList& state, const AddRefWrapper<Port>& port)
{
    PropertyList* const saved = state.getChildList(kConnectionsName);
    bool result = true;
    for (int i = 0; saved && i < saved->getNumberOfPairs(); ++i) {
        const char* key = nullptr;
        const char* path = nullptr;
        if (!saved->getStringPairAt(i, &key, &path))
            continue;
        AddRefWrapper<Port> found =
            container->findPortFromPath(path, PortOutput, Container::eSearchNode);
        if (!found)
            continue;
        const AddRefWrapper<Port> source(found.get());
        AddRefWrapper<Port> end(port.get());
        SwapPortsForOutputInput(found, end);
        result = end->addConnection(found);
        if (result)
            forgetLostPort(port, source, 2, 2);
    }
    return result;
}

} // namespace

ConnectCommand::ConnectCommand() = default;

bool ConnectCommand::connect(Container* container, AddRefWrapper<Port>& a, AddRefWrapper<Port>& b)
{
    if (!container || !a || !b)
        return false;
    if (m_mode != kDisconnectAll)
        SwapPortsForOutputInput(a, b);
    // Held: a listener may empty the caller's variables.
    const AddRefWrapper<Port> outPort(a.get());
    const AddRefWrapper<Port> inPort(b.get());
    m_container = container;
    m_state.removeAll();
    m_state.addStringPair(kOutputKey, outPort->getFullPathName().getName());
    m_state.addStringPair(kInputKey, inPort->getFullPathName().getName());
    if (m_mode != kConnect && m_mode != kDisconnectAll)
        return inPort->removeConnection(outPort);
    saveConnections(m_state, inPort);
    inPort->removeAllConnections();
    return m_mode == kDisconnectAll || inPort->addConnection(outPort);
}

bool ConnectCommand::disconnect(Container* container,
                                AddRefWrapper<Port>& a,
                                AddRefWrapper<Port>& b)
{
    m_mode = kDisconnect;
    return connect(container, a, b);
}

bool ConnectCommand::disconnectAll(Container* container, AddRefWrapper<Port>& port)
{
    m_mode = kDisconnectAll;
    return connect(container, port, port);
}

bool ConnectCommand::undo(Container* container)
{
    AddRefWrapper<Port> outPort;
    AddRefWrapper<Port> inPort;
    if (!resolveBothPorts(container, outPort, inPort))
        return false;
    if (m_mode == kConnect)
        inPort->removeConnection(outPort);
    if (m_mode == kConnect || m_mode == kDisconnectAll)
        restoreConnections(container, m_state, inPort);
    else if (inPort->addConnection(outPort))
        forgetLostPort(inPort, outPort);
    return true;
}

bool ConnectCommand::redo(Container* container)
{
    AddRefWrapper<Port> outPort;
    AddRefWrapper<Port> inPort;
    if (!resolveBothPorts(container, outPort, inPort) || !connect(container, outPort, inPort))
        return false;
    forgetLostPort(inPort, outPort);
    return true;
}

bool ConnectCommand::resolvePorts(AddRefWrapper<Port>& outPort, AddRefWrapper<Port>& inPort)
{
    const char* const inputPath = m_state.getStringPairValue(kInputKey);
    const char* const outputPath = m_state.getStringPairValue(kOutputKey);
    return m_container && inputPath && outputPath &&
           m_container->findPortsForConnection(outputPath, inputPath, &outPort, &inPort);
}

/// Takes over the container and resolves the paths there; false also when one end has no port.
bool ConnectCommand::resolveBothPorts(Container* container,
                                      AddRefWrapper<Port>& outPort,
                                      AddRefWrapper<Port>& inPort)
{
    if (!container)
        return false;
    m_container = container;
    return resolvePorts(outPort, inPort) && outPort && inPort;
}

} // namespace ZEL
