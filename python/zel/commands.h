#pragma once

#include "zel/boundCommand.h"

#include <map>
#include <string>

namespace zelpython {

/// zel.ConnectCommand. It holds the Python object of the document of its last call, as the
/// library's command points to that document.
class PyConnectCommand {
public:
    using Port = ZEL::AddRefWrapper<ZEL::Port>;

    // As in the library; the caller's ports stay as they are.
    bool connect(ZEL::Container* container, Port a, Port b);
    bool disconnect(ZEL::Container* container, Port a, Port b);
    bool disconnectAll(ZEL::Container* container, Port port);
    bool undo(ZEL::Container* container);
    bool redo(ZEL::Container* container);
    bool resolvePorts(Port& outPort, Port& inPort);

    PyObject* container() const { return m_container.get(); }

private:
    /// Calls edit() on behalf of that document.
    template <class Edit>
    bool use(ZEL::Container* container, bool isTaken, Edit edit);

    ZEL::ConnectCommand m_command;
    PyRef m_container;
    bool m_isAtWork = false;
    LiveCount m_live{"zel.ConnectCommand"};
};

/// zel.CreateCompoundCommand.
class PyCreateCompoundCommand final : public BoundCommand {
public:
    PyCreateCompoundCommand() = default;
    ~PyCreateCompoundCommand() override;

    /// Raises ValueError after the collapse, and for another compound than that of the nodes.
    bool setParentCompound(ZEL::Container* container, const char* path);
    void setNewCompoundName(const char* name);
    bool addNodeToMove(const char* name);
    /// Raises ValueError when a node was put into another compound since it was added.
    bool doit();
    bool undo(ZEL::Container* container);
    bool redo();
    std::string getCreatedCompoundPath();

    int traverse(visitproc visit, void* arg) const override;

private:
    void work() override;
    void rest() override;

    std::map<std::string, CommandHold<ZEL::Node>> m_nodes; ///< As the command has them.
    bool m_isDone = false;
    ZEL::CreateCompoundCommand m_command;
    LiveCount m_live{"zel.CreateCompoundCommand"};
};

/// zel.ModifyCompoundPortCommand.
class PyModifyCompoundPortCommand final : public BoundCommand {
public:
    PyModifyCompoundPortCommand() = default;
    ~PyModifyCompoundPortCommand() override;

    bool setParentCompound(ZEL::Container* container, const char* path);
    // Requests may be added from a callback that the command causes.
    bool createPort(ZEL::PortIOType ioType, const char* name, const char* dataTypeName);
    bool deletePort(const char* name);
    bool renamePort(const char* oldName, const char* newName);
    bool doit();
    void undo();
    void redo();

private:
    ZEL::ModifyCompoundPortCommand m_command;
    LiveCount m_live{"zel.ModifyCompoundPortCommand"};
};

// For the collector.
int visitEdges(PyConnectCommand& command, visitproc visit, void* arg);
int visitEdges(BoundCommand& command, visitproc visit, void* arg);

} // namespace zelpython
