// The edits of ports: those of compounds, by the library's ModifyCompoundPortCommand, and values.

#include "document/definedNode.h"
#include "document/document.h"
#include "document/graphInterface.h"
#include "document/names.h"
#include "document/rules.h"
#include "edits/editName.h"
#include "edits/edits.h"
#include "format/value.h"

namespace shading {

namespace {

/// Of a port inside a compound: as it is called outside.
const char* directionOf(ZEL::Port& inner)
{
    return inner.getPortIOType() == ZEL::PortOutput ? "input" : "output";
}

/// What an input of a compound gives to those that it feeds; empty where its source does.
std::string valueHandedOn(ZEL::Port& inner)
{
    const PortPtr outer = inner.getParentCompound()->getReversePort(&inner);
    const bool isGiving =
        outer && outer->getPortIOType() == ZEL::PortInput && !outer->isConnected();
    return isGiving ? outer->getPortDefaultValue() : "";
}

/// What feeds the port of a compound from either side, or is fed by it, and has another type.
std::string otherTypeProblem(ZEL::Port& outer, ZEL::Port& inner, const std::string& type)
{
    for (ZEL::Port* const side : {&outer, &inner}) {
        for (ZEL::Port* const other : side->connectedTo()) {
            if (typeNameOf(*other) != type)
                return pathOf(*other) + " is connected, and is a " + typeNameOf(*other);
        }
        const std::string hidden = hiddenSourceOf(*side);
        if (!hidden.empty())
            return hidden + " feeds it, which the network does not show";
    }
    return "";
}

} // namespace

bool Edits::addPort(const CompoundPtr& compound,
                    ZEL::PortIOType ioType,
                    const std::string& name,
                    const std::string& type)
{
    if (!reaches(compound))
        return false;
    const NodePtr node = compound->getAsNode();
    const std::string path = pathOf(*node);
    if (!mayName(*compound, name, path))
        return false;
    const std::string direction = ioType == ZEL::PortInput ? "input" : "output";
    const EditName edit = named("Add " + direction + " " + name + " to " + node->getName(),
                                {"port", "add", path, direction, name, type});
    return run(edit, path, [&]() -> std::string {
        ZEL::ModifyCompoundPortCommand command;
        command.setParentCompound(&m_document, path.c_str());
        if (!command.createPort(ioType, name.c_str(), type.c_str()))
            return "there is no data type \"" + type + "\"";
        command.doit();
        return "";
    });
}

bool Edits::addPort(const std::string& path,
                    ZEL::PortIOType ioType,
                    const std::string& name,
                    const std::string& type)
{
    const CompoundPtr compound = findCompound(path);
    return compound && addPort(compound, ioType, name, type);
}

bool Edits::deletePort(const PortPtr& port)
{
    const PortPtr inner = compoundPort(port);
    if (!inner)
        return false;
    const NodePtr node = inner->getParentNode();
    const std::string path = pathOf(*node);
    const std::string name = inner->getName();
    const EditName edit =
        named(std::string("Delete ") + directionOf(*inner) + " " + name + " of " + node->getName(),
              {"port", "delete", path, name});
    return run(edit, path + "." + name, [&]() -> std::string {
        const PortPtr outer = inner->getParentCompound()->getReversePort(inner);
        std::string problem = outer ? hiddenSourceProblem(*outer) : "";
        if (!problem.empty())
            return problem;
        const std::string value = valueHandedOn(*inner);
        std::vector<PortPtr> targets;
        for (ZEL::Port* const target : inner->connectedTo())
            targets.emplace_back(target);
        ZEL::ModifyCompoundPortCommand command;
        command.setParentCompound(&m_document, path.c_str());
        command.deletePort(name.c_str());
        command.doit();
        for (const PortPtr& target : targets) {
            if (!value.empty() && !target->isCompoundInternalPort())
                target->setPortDefaultValue(value.c_str());
        }
        return "";
    });
}

bool Edits::deletePort(const std::string& path, const std::string& name)
{
    const PortPtr port = findCompoundPort(path, name);
    return port && deletePort(port);
}

bool Edits::renamePort(const PortPtr& port, const std::string& newName)
{
    const PortPtr inner = compoundPort(port);
    if (!inner)
        return false;
    const NodePtr node = inner->getParentNode();
    const std::string path = pathOf(*node);
    const std::string oldName = inner->getName();
    if (!mayName(*node->getAsCompound(), newName, path + "." + oldName))
        return false;
    const EditName edit = named(std::string("Rename ") + directionOf(*inner) + " " + oldName +
                                    " of " + node->getName() + " to " + newName,
                                {"port", "rename", path, oldName, newName});
    return run(edit, path + "." + oldName, [&] {
        ZEL::ModifyCompoundPortCommand command;
        command.setParentCompound(&m_document, path.c_str());
        command.renamePort(oldName.c_str(), newName.c_str());
        command.doit();
        return "";
    });
}

bool Edits::renamePort(const std::string& path,
                       const std::string& oldName,
                       const std::string& newName)
{
    const PortPtr port = findCompoundPort(path, oldName);
    return port && renamePort(port, newName);
}

bool Edits::movePort(const PortPtr& port, int place)
{
    const PortPtr inner = compoundPort(port);
    if (!inner)
        return false;
    const NodePtr node = inner->getParentNode();
    const PortPtr outer = node->getAsCompound()->getReversePort(inner);
    const bool isInput = outer->getPortIOType() == ZEL::PortInput;
    ZEL::PortList& list = isInput ? node->inputs() : node->outputs();
    const std::string path = pathOf(*node);
    const std::string name = inner->getName();
    const int from = list.findPort(outer);
    if (place < 1 || place > list.size())
        return fail(path + "." + name, "the last place is " + std::to_string(list.size()));
    if (from == place - 1)
        return fail(path + "." + name, "it is there");
    if (isInput && tieOf(*node))
        return fail(path + "." + name, "the nodedef of its graph gives the order");
    const std::string number = std::to_string(place);
    const EditName edit = named(std::string("Move ") + directionOf(*inner) + " " + name + " of " +
                                    node->getName() + " to place " + number,
                                {"port", "move", path, name, number});
    return run(edit, path + "." + name, [&] {
        // The library moves to the front only: to the back, the others move.
        const int to = place - 1;
        if (from > to)
            list.movePort(from, to);
        for (int i = from; i < to; ++i)
            list.movePort(i + 1, i);
        return "";
    });
}

bool Edits::movePort(const std::string& path, const std::string& name, int place)
{
    const PortPtr port = findCompoundPort(path, name);
    return port && movePort(port, place);
}

bool Edits::setPortType(const PortPtr& port, const std::string& type)
{
    const PortPtr inner = compoundPort(port);
    if (!inner)
        return false;
    const NodePtr node = inner->getParentNode();
    const PortPtr outer = node->getAsCompound()->getReversePort(inner);
    const std::string name = inner->getName();
    const std::string path = pathOf(*node) + "." + name;
    const TypePtr wanted = m_document.getRuntime()->getPortDataType(type.c_str());
    if (!wanted || !outer)
        return fail(path, "there is no data type \"" + type + "\"");
    if (typeNameOf(*outer) == type && typeNameOf(*inner) == type)
        return true; // No edit.
    const std::string problem = otherTypeProblem(*outer, *inner, type);
    if (!problem.empty())
        return fail(path, problem);
    const EditName edit = named(std::string("Make ") + directionOf(*inner) + " " + name + " of " +
                                    node->getName() + " a " + type,
                                {"port", "type", pathOf(*node), name, type});
    return run(edit, path, [&] {
        // A value that the new type does not have goes.
        if (!valueProblem(type, outer->getPortDefaultValue()).empty())
            outer->setPortDefaultValue("");
        inner->setDataType(wanted);
        outer->setDataType(wanted);
        return "";
    });
}

bool Edits::setPortType(const std::string& path, const std::string& name, const std::string& type)
{
    const PortPtr port = findCompoundPort(path, name);
    return port && setPortType(port, type);
}

bool Edits::setValue(const PortPtr& port, const std::string& value)
{
    if (!has(port))
        return false;
    // An inner port has the value of the compound node's own.
    const CompoundPtr inside = port->getParentCompound();
    const PortPtr own = inside ? inside->getReversePort(port) : port;
    const std::string path = pathOf(*port);
    if (!own || own->getPortIOType() != ZEL::PortInput)
        return fail(path, "an output has no value");
    const TypePtr type = own->getDataType();
    const std::string problem = valueProblem(type ? type->getName() : "", value);
    if (!problem.empty())
        return fail(path, problem);
    // Without a value an input has that of its definition.
    const PortDescription* const description = descriptionOf(*own);
    const std::string& given = value.empty() && description ? description->value : value;
    if (given == own->getPortDefaultValue())
        return true; // No edit.
    const std::string title = value.empty()
                                  ? "Clear " + shortNameOf(*own)
                                  : "Set " + shortNameOf(*own) + " to " + shortValue(value);
    return run(named(title, {"set", path, value}), path, [&] {
        own->setPortDefaultValue(given.c_str());
        return "";
    });
}

PortPtr Edits::findInput(const std::string& path)
{
    const auto find = [&](ZEL::PortIOType ioType) {
        return m_document.findPortFromPath(path.c_str(), ioType, ZEL::Container::eSearchNode);
    };
    PortPtr port = find(ZEL::PortInput);
    if (!port)
        fail(path, find(ZEL::PortOutput) ? "an output has no value" : "no such input");
    return port;
}

bool Edits::setValue(const std::string& path, const std::string& value)
{
    const PortPtr port = findInput(path);
    return port && setValue(port, value);
}

} // namespace shading
