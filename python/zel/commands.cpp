#include "zel/commands.h"

#include "zel/pyContainer.h"

#include <memory>
#include <pybind11/pybind11.h>
#include <stdexcept>
#include <utility>

namespace zelpython {

namespace py = pybind11;

// ConnectCommand.

template <class Edit>
bool PyConnectCommand::use(ZEL::Container* container, bool isTaken, Edit edit)
{
    if (m_isAtWork)
        throw std::runtime_error(
            "the command is at work: use another one, or wait until it is done");
    // The one before goes when the command is at rest: its end may ask for the command.
    PyRef former = isTaken ? std::exchange(m_container, toPythonObject(container)) : PyRef();
    const std::shared_ptr<bool> work(&m_isAtWork, [](bool* isAtWork) { *isAtWork = false; });
    m_isAtWork = true;
    return edit();
}

bool PyConnectCommand::connect(ZEL::Container* container, Port a, Port b)
{
    return use(container, container && a && b, [&] { return m_command.connect(container, a, b); });
}

bool PyConnectCommand::disconnect(ZEL::Container* container, Port a, Port b)
{
    return use(container, container && a && b,
               [&] { return m_command.disconnect(container, a, b); });
}

bool PyConnectCommand::disconnectAll(ZEL::Container* container, Port port)
{
    return use(container, container && port,
               [&] { return m_command.disconnectAll(container, port); });
}

bool PyConnectCommand::undo(ZEL::Container* container)
{
    return use(container, container, [&] { return m_command.undo(container); });
}

bool PyConnectCommand::redo(ZEL::Container* container)
{
    return use(container, container, [&] { return m_command.redo(container); });
}

bool PyConnectCommand::resolvePorts(Port& outPort, Port& inPort)
{
    return use(nullptr, false, [&] { return m_command.resolvePorts(outPort, inPort); });
}

// CreateCompoundCommand.

PyCreateCompoundCommand::~PyCreateCompoundCommand()
{
    work();
}

bool PyCreateCompoundCommand::setParentCompound(ZEL::Container* container, const char* path)
{
    const Use use(*this);
    if (m_isDone)
        throw py::value_error("the command has made its compound: make another command");
    const Found found = find(container, path);
    if (found.node && !m_nodes.empty() && (!m_compound || found.compound != m_compound->get()))
        throw py::value_error("the nodes to move lie in another compound: make another command");
    return give(m_command, container, found);
}

void PyCreateCompoundCommand::setNewCompoundName(const char* name)
{
    const Use use(*this);
    m_command.setNewCompoundName(name);
}

bool PyCreateCompoundCommand::addNodeToMove(const char* name)
{
    const Use use(*this);
    const ZEL::AddRefWrapper<ZEL::Node> node =
        m_compound ? m_compound->get()->nodes()[name] : nullptr;
    if (!m_command.addNodeToMove(name))
        return false;
    m_nodes.insert_or_assign(name, CommandHold<ZEL::Node>(*node));
    return true;
}

bool PyCreateCompoundCommand::doit()
{
    const Use use(*this);
    for (const auto& [name, held] : m_nodes) {
        const auto parent = held.get()->getParentCompound();
        if (parent && m_compound && parent != m_compound->get())
            throw py::value_error("a node lies in another compound now: " + name);
    }
    if (!m_command.doit())
        return false;
    m_isDone = true;
    m_compound.reset();
    m_document.aim(nullptr);
    return true;
}

bool PyCreateCompoundCommand::undo(ZEL::Container* container)
{
    const Use use(*this);
    if (!m_command.redo(nullptr))
        return false;
    m_document.aim(container);
    return m_command.undo(container ? &m_document : nullptr);
}

bool PyCreateCompoundCommand::redo()
{
    const Use use(*this);
    return m_command.redo(nullptr);
}

std::string PyCreateCompoundCommand::getCreatedCompoundPath()
{
    const Use use(*this);
    return m_command.getCreatedCompoundPath();
}

void PyCreateCompoundCommand::work()
{
    BoundCommand::work();
    for (auto& [name, held] : m_nodes)
        held.work();
}

void PyCreateCompoundCommand::rest()
{
    BoundCommand::rest();
    for (auto& [name, held] : m_nodes)
        held.rest();
}

int PyCreateCompoundCommand::traverse(visitproc visit, void* arg) const
{
    for (const auto& [name, held] : m_nodes)
        Py_VISIT(held.half());
    return BoundCommand::traverse(visit, arg);
}

// ModifyCompoundPortCommand.

PyModifyCompoundPortCommand::~PyModifyCompoundPortCommand()
{
    work();
}

bool PyModifyCompoundPortCommand::setParentCompound(ZEL::Container* container, const char* path)
{
    const Use use(*this);
    return give(m_command, container, find(container, path));
}

bool PyModifyCompoundPortCommand::createPort(ZEL::PortIOType ioType,
                                             const char* name,
                                             const char* dataTypeName)
{
    const Use use(*this, true);
    return m_command.createPort(ioType, name, dataTypeName);
}

bool PyModifyCompoundPortCommand::deletePort(const char* name)
{
    const Use use(*this, true);
    return m_command.deletePort(name);
}

bool PyModifyCompoundPortCommand::renamePort(const char* oldName, const char* newName)
{
    const Use use(*this, true);
    return m_command.renamePort(oldName, newName);
}

bool PyModifyCompoundPortCommand::doit()
{
    const Use use(*this);
    return m_command.doit();
}

void PyModifyCompoundPortCommand::undo()
{
    const Use use(*this);
    m_command.undo(nullptr);
}

void PyModifyCompoundPortCommand::redo()
{
    const Use use(*this);
    m_command.redo(nullptr);
}

int visitEdges(PyConnectCommand& command, visitproc visit, void* arg)
{
    Py_VISIT(command.container());
    return 0;
}

int visitEdges(BoundCommand& command, visitproc visit, void* arg)
{
    return command.traverse(visit, arg);
}

} // namespace zelpython
