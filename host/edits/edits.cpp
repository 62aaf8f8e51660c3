#include "edits/edits.h"

#include "document/document.h"
#include "document/names.h"
#include "document/rules.h"
#include "format/value.h"
#include "shell/commandLine.h"

#include <unordered_set>

namespace shading {

namespace {

void collectPorts(ZEL::PortList& list, std::vector<PortPtr>& ports)
{
    for (ZEL::Port* const port : list)
        ports.emplace_back(port);
}

/// All ports of the node and of everything inside.
void collectPorts(ZEL::Node& node, std::vector<PortPtr>& ports)
{
    collectPorts(node.inputs(), ports);
    collectPorts(node.outputs(), ports);
    const CompoundPtr compound = node.getAsCompound();
    if (!compound)
        return;
    collectPorts(compound->innerInputs(), ports);
    collectPorts(compound->innerOutputs(), ports);
    for (const NodePtr& inner : compound->nodes())
        collectPorts(*inner, ports);
}

/// Takes off all connections that lead out of the node, also those from deep inside: a graph may be
/// fed straight by a graph of the document.
void isolate(ZEL::Node& node)
{
    std::vector<PortPtr> ports;
    collectPorts(node, ports);
    std::unordered_set<ZEL::Port*> inside;
    for (const PortPtr& port : ports)
        inside.insert(port.get());
    for (const PortPtr& port : ports) {
        ZEL::PortList& others = port->connectedTo();
        for (int i = others.size() - 1; i >= 0; --i) {
            if (inside.count(others[i].get()) == 0)
                port->removeConnection(others[i]);
        }
    }
}

} // namespace

Edits::Edits(Document& document) : m_document(document), m_history(document) {}

bool Edits::addPort(const std::string& path,
                    ZEL::PortIOType ioType,
                    const std::string& name,
                    const std::string& type)
{
    const CompoundPtr compound = findCompound(path);
    if (!compound)
        return false;
    const std::string problem = newNameProblem(*compound, name);
    if (!problem.empty())
        return fail(path + "." + name, problem);
    const char* const direction = ioType == ZEL::PortInput ? "input" : "output";
    return run(lineOf({"port", "add", path, direction, name, type}), path, [&] {
        ZEL::ModifyCompoundPortCommand command;
        command.setParentCompound(&m_document, path.c_str());
        if (!command.createPort(ioType, name.c_str(), type.c_str()))
            return "there is no data type \"" + type + "\"";
        command.doit();
        return std::string();
    });
}

bool Edits::deletePort(const std::string& path, const std::string& name)
{
    const CompoundPtr compound = findCompound(path);
    if (!compound || !findCompoundPort(*compound, name))
        return false;
    return run(lineOf({"port", "delete", path, name}), path + "." + name, [&] {
        ZEL::ModifyCompoundPortCommand command;
        command.setParentCompound(&m_document, path.c_str());
        command.deletePort(name.c_str());
        command.doit();
        return std::string();
    });
}

bool Edits::renamePort(const std::string& path,
                       const std::string& oldName,
                       const std::string& newName)
{
    const CompoundPtr compound = findCompound(path);
    if (!compound || !findCompoundPort(*compound, oldName))
        return false;
    const std::string problem = newNameProblem(*compound, newName);
    if (!problem.empty())
        return fail(path + "." + newName, problem);
    const auto command = std::make_shared<ZEL::ModifyCompoundPortCommand>();
    const bool isDone =
        run(lineOf({"port", "rename", path, oldName, newName}), path + "." + oldName, [&] {
            command->setParentCompound(&m_document, path.c_str());
            command->renamePort(oldName.c_str(), newName.c_str());
            command->doit();
            return std::string();
        });
    // This one reverses itself exactly: no object is made or lost.
    if (Edit* const edit = isDone ? m_history.lastEdit() : nullptr) {
        edit->command = [command](bool isForward) {
            isForward ? command->redo(nullptr) : command->undo(nullptr);
            return true;
        };
    }
    return isDone;
}

bool Edits::setValue(const std::string& path, const std::string& value)
{
    const auto find = [&](ZEL::PortIOType ioType) {
        return m_document.findPortFromPath(path.c_str(), ioType, ZEL::Container::eSearchNode);
    };
    const PortPtr port = find(ZEL::PortInput);
    if (!port)
        return fail(path, find(ZEL::PortOutput) ? "an output has no value" : "no such input");
    const TypePtr type = port->getDataType();
    const std::string problem = valueProblem(type ? type->getName() : "", value);
    if (!problem.empty())
        return fail(path, problem);
    if (value == port->getPortDefaultValue())
        return fail(path, "it has that value");
    return run(lineOf({"set", path, value}), path, [&] {
        port->setPortDefaultValue(value.c_str());
        return "";
    });
}

bool Edits::deleteNode(const std::string& path)
{
    const NodePtr node = findInnerNode(path);
    if (!node)
        return false;
    const CompoundPtr around = node->getParentCompound();
    return run(lineOf({"delete", path}), path, [&] {
        isolate(*node);
        return around->nodes().remove(node) ? "" : "it cannot be removed";
    });
}

bool Edits::renameNode(const std::string& path, const std::string& name)
{
    const NodePtr node = findInnerNode(path);
    if (!node)
        return false;
    const std::string problem = nameProblem(name);
    if (!problem.empty())
        return fail(path, problem);
    const CompoundPtr around = node->getParentCompound();
    if (isNameTaken(*around, name))
        return fail(pathOf(*around->getAsNode()) + "." + name, "the name is taken");
    return run(lineOf({"rename", path, name}), path, [&] {
        node->setName(name.c_str());
        return "";
    });
}

bool Edits::run(const std::string& title, const std::string& subject, const History::Action& action)
{
    std::string reason;
    return m_history.run(title, false, action, reason) || fail(subject, reason);
}

bool Edits::runKeepingTypes(const std::string& title,
                            const std::string& subject,
                            const History::Action& action)
{
    std::string reason;
    return m_history.run(title, true, action, reason) || fail(subject, reason);
}

bool Edits::fail(const std::string& subject, const std::string& reason)
{
    m_problem = {subject, reason};
    return false;
}

NodePtr Edits::findNode(const std::string& path)
{
    NodePtr node = m_document.findNodeFromPath(path.c_str());
    if (!node)
        fail(path, "no such node");
    return node;
}

NodePtr Edits::findInnerNode(const std::string& path)
{
    NodePtr node = findNode(path);
    if (!node || node->getParentCompound())
        return node;
    fail(path, "the document itself stays as it is");
    return nullptr;
}

CompoundPtr Edits::findCompound(const std::string& path)
{
    const NodePtr node = findNode(path);
    if (node && !node->isCompound())
        fail(path, "not a compound");
    return node ? node->getAsCompound() : nullptr;
}

PortPtr Edits::findCompoundPort(ZEL::Compound& compound, const std::string& name)
{
    PortPtr port = compound.innerInputs()[name.c_str()];
    if (!port)
        port = compound.innerOutputs()[name.c_str()];
    if (!port)
        fail(pathOf(*compound.getAsNode()) + "." + name, "no such port");
    return port;
}

} // namespace shading
