#include "zelMCPCmdData.h"

#include "core/zelText.h"
#include "graph/zelLostPort.h"
#include "zelCompound.h"
#include "zelContainer.h"
#include "zelNode.h"
#include "zelRuntime.h"

#include <cstring>

namespace ZEL::CmdImpl {

MCPCmdData::MCPCmdData() = default;

MCPCmdData::~MCPCmdData() = default;

bool MCPCmdData::setParentCompound(Container* newContainer, const char* path)
{
    container = newContainer;
    compoundPath = orEmpty(path);
    const AddRefWrapper<Node> node = container ? container->findNodeFromPath(path) : nullptr;
    // Contract: a path that names no node is no failure and keeps the present compound.
    if (!node)
        return true;
    compound = node->getAsCompound();
    return static_cast<bool>(compound);
}

bool MCPCmdData::createPort(PortIOType ioType, const char* name, const char* dataTypeName)
{
    Runtime* const runtime = compound && container ? container->getRuntime() : nullptr;
    const AddRefWrapper<PortDataType> type =
        runtime ? runtime->getPortDataType(dataTypeName) : nullptr;
    if (!type)
        return false;
    creates.push_back({orEmpty(name), "", ioType, type});
    return true;
}

bool MCPCmdData::deletePort(const char* name)
{
    if (!getCompoundPort(name))
        return false;
    DeletePortInfo info;
    info.name = name;
    deletes.push_back(info);
    return true;
}

bool MCPCmdData::renamePort(const char* oldName, const char* newName)
{
    if (!getCompoundPort(oldName))
        return false;
    RenameInfo info;
    info.oldName = oldName;
    info.newName = orEmpty(newName);
    renames.push_back(info);
    return true;
}

bool MCPCmdData::doit()
{
    redo(container);
    return true;
}

void MCPCmdData::redo(Container* /*unused*/)
{
    // Contract: the lengths are read on every turn; a listener may add requests.
    for (std::size_t i = 0; i < renames.size(); ++i)
        doRenamePort(renames[i]);
    for (std::size_t i = 0; i < creates.size(); ++i)
        doCreatePort(creates[i]);
    for (std::size_t i = 0; i < deletes.size(); ++i)
        doDeletePort(deletes[i]);
}

void MCPCmdData::undo(Container* /*unused*/)
{
    // Contract: the groups run backwards, the records of each group forwards.
    for (std::size_t i = 0; i < deletes.size(); ++i)
        undoDeletePort(deletes[i]);
    for (std::size_t i = 0; i < creates.size(); ++i)
        undoCreatePort(creates[i]);
    for (std::size_t i = 0; i < renames.size(); ++i)
        undoRenamePort(renames[i]);
}

AddRefWrapper<Port> MCPCmdData::getCompoundPort(const char* name)
{
    if (!compound)
        return nullptr;
    AddRefWrapper<Port> port = compound->innerInputs()[name];
    return port ? port : compound->innerOutputs()[name];
}

PortList& MCPCmdData::innerPorts(PortIOType ioType)
{
    return ioType == PortOutput ? compound->innerOutputs() : compound->innerInputs();
}

void MCPCmdData::doRenamePort(RenameInfo& info)
{
    const AddRefWrapper<Port> port = getCompoundPort(info.oldName.c_str());
    const AddRefWrapper<Port> mirror = port ? compound->getReversePort(port) : nullptr;
    if (!mirror) {
        info.failed = true;
        return;
    }
    port->setName(info.newName.c_str());
    info.actualName = port->getName();
    mirror->setName(info.actualName.c_str());
}

void MCPCmdData::undoRenamePort(RenameInfo& info)
{
    if (info.failed)
        return;
    const AddRefWrapper<Port> port = getCompoundPort(info.actualName.c_str());
    const AddRefWrapper<Port> mirror = port ? compound->getReversePort(port) : nullptr;
    if (!mirror)
        return;
    port->setName(info.oldName.c_str());
    // Contract: the mirror gets the name asked for, not the one that the port received.
    mirror->setName(info.oldName.c_str());
    info.oldName = port->getName();
}

bool MCPCmdData::doCreatePort(CreatePortInfo& info)
{
    const int index =
        compound ? compound->createCompoundPort(info.ioType, info.name.c_str(), info.dataType) : -1;
    if (index == -1)
        return false;
    const AddRefWrapper<Port> port = innerPorts(info.ioType)[index];
    info.createdName = port ? port->getName() : "";
    return static_cast<bool>(port);
}

void MCPCmdData::undoCreatePort(CreatePortInfo& info)
{
    if (info.createdName.empty())
        return;
    if (const AddRefWrapper<Port> port = getCompoundPort(info.createdName.c_str()))
        compound->deleteCompoundPort(port);
}

bool MCPCmdData::doDeletePort(DeletePortInfo& info)
{
    const AddRefWrapper<Port> port = getCompoundPort(info.name.c_str());
    if (!port) {
        info.failed = true;
        return false;
    }
    // Inner ports are crossed: the record keeps the direction seen from outside.
    info.ioType = port->getPortIOType() == PortInput ? PortOutput : PortInput;
    info.dataType = port->getDataType();
    info.connections.clear();
    for (int i = 0; i < port->connectedTo().size(); ++i) {
        const AddRefWrapper<Port> other = port->connectedTo()[i];
        // Contract: a connection straight through to another inner port is not made again.
        if (!other || other->isCompoundInternalPort())
            continue;
        if (const AddRefWrapper<Node> node = other->getParentNode())
            info.connections.push_back({node->getName(), other->getName()});
    }
    port->removeAllConnections();
    info.position = compound->deleteCompoundPort(port);
    info.failed = info.failed || info.position == -1;
    return info.position != -1;
}

void MCPCmdData::undoDeletePort(DeletePortInfo& info)
{
    if (info.failed || !compound)
        return;
    const int index = compound->createCompoundPort(info.ioType, info.name.c_str(), info.dataType);
    if (index == -1)
        return;
    PortList& list = innerPorts(info.ioType);
    const AddRefWrapper<Port> port = list[index];
    if (!port)
        return;
    list.movePort(index, info.position);
    for (std::size_t i = info.connections.size(); i-- > 0;) {
        const CnxInfo& cnx = info.connections[i];
        const AddRefWrapper<Port> other = findPort(info.ioType, cnx);
        if (other && port->addConnection(other))
            forgetLostPort(port, other);
    }
}

/// The port of a node inside; the node is not held while the port is at work.
AddRefWrapper<Port> MCPCmdData::findPort(PortIOType ioType, const CnxInfo& cnx)
{
    const AddRefWrapper<Node> node = compound->nodes()[cnx.nodeName.c_str()];
    if (!node)
        return nullptr;
    PortList& ports = ioType == PortOutput ? node->outputs() : node->inputs();
    return ports[cnx.portName.c_str()];
}

int findPortInPortList(PortList& list, const char* name)
{
    for (int i = 0; i < list.size(); ++i) {
        if (std::strcmp(list[i]->getName(), name) == 0)
            return i;
    }
    return -1;
}

} // namespace ZEL::CmdImpl
