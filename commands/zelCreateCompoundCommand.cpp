#include "zelCCCmdData.h"
#include "zelCommands.h"

namespace ZEL {

CreateCompoundCommand::CreateCompoundCommand() : m_data(new CmdImpl::CCCmdData) {}

CreateCompoundCommand::~CreateCompoundCommand()
{
    delete m_data;
}

bool CreateCompoundCommand::setParentCompound(Container* container, const char* path)
{
    return m_data->setParentCompound(container, path);
}

void CreateCompoundCommand::setNewCompoundName(const char* name)
{
    m_data->setNewCompoundName(name);
}

bool CreateCompoundCommand::addNodeToMove(const char* name)
{
    return m_data->addNodeToMove(name);
}

bool CreateCompoundCommand::doit()
{
    return m_data->doit();
}

bool CreateCompoundCommand::undo(Container* container)
{
    return m_data->isReady() && m_data->undo(container);
}

bool CreateCompoundCommand::redo(Container* /*container*/)
{
    return m_data->isReady();
}

const char* CreateCompoundCommand::getCreatedCompoundPath()
{
    return m_data->createdCompoundPath.c_str();
}

} // namespace ZEL
