#include "zelCommands.h"
#include "zelMCPCmdData.h"

namespace ZEL {

ModifyCompoundPortCommand::ModifyCompoundPortCommand() : m_data(new CmdImpl::MCPCmdData) {}

ModifyCompoundPortCommand::~ModifyCompoundPortCommand()
{
    delete m_data;
}

bool ModifyCompoundPortCommand::setParentCompound(Container* container, const char* path)
{
    return m_data->setParentCompound(container, path);
}

bool ModifyCompoundPortCommand::createPort(PortIOType ioType,
                                           const char* name,
                                           const char* dataTypeName)
{
    return m_data->createPort(ioType, name, dataTypeName);
}

bool ModifyCompoundPortCommand::deletePort(const char* name)
{
    return m_data->deletePort(name);
}

bool ModifyCompoundPortCommand::renamePort(const char* oldName, const char* newName)
{
    return m_data->renamePort(oldName, newName);
}

bool ModifyCompoundPortCommand::doit()
{
    return m_data->doit();
}

void ModifyCompoundPortCommand::undo(Container* container)
{
    m_data->undo(container);
}

void ModifyCompoundPortCommand::redo(Container* container)
{
    m_data->redo(container);
}

} // namespace ZEL
