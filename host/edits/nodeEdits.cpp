// The edits of nodes: here a node is made, deleted and renamed.

#include "document/definedNode.h"
#include "document/document.h"
#include "document/names.h"
#include "edits/editName.h"
#include "edits/edits.h"
#include "edits/positions.h"

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

bool makesFloat(const DefinitionPtr& definition)
{
    const std::vector<PortDescription>& outputs = definition->record().outputs;
    return !outputs.empty() && outputs.front().type == "float";
}

} // namespace

bool Edits::createNode(const CompoundPtr& compound,
                       const DefinitionPtr& definition,
                       const std::string& name,
                       HostNodePtr& created)
{
    const NodePtr owner = compound ? compound->getAsNode() : nullptr;
    if (!has(owner))
        return false;
    const std::string path = pathOf(*owner);
    if (!definition)
        return fail(path, "no definition to make a node of");
    if (!mayName(*compound, name, path))
        return false;
    std::vector<std::string> words = {"create", definition->record().name, name};
    if (owner->getParentCompound())
        words.push_back(path);
    return run(named("Create " + name, words), path + "." + name, [&] {
        // Until it is added, the node is no part of the network: only that is written down.
        created = shading::createNode(m_document, definition, name.c_str());
        if (!compound->nodes().add(created.get()))
            return "refused";
        placeNew(m_document, created.get());
        return "";
    });
}

bool Edits::createNode(const std::string& path,
                       const std::string& type,
                       const std::string& name,
                       HostNodePtr& created)
{
    const DefinitionPtr definition = definitionFor(type);
    if (!definition)
        return fail(type, "no definition of that name or node type");
    const CompoundPtr compound = findCompound(path);
    return compound && createNode(compound, definition, name, created);
}

DefinitionPtr Edits::definitionFor(const std::string& type) const
{
    const DefinitionIndex& definitions = m_document.definitions();
    const std::vector<DefinitionPtr>& ofType = definitions.ofNodeType(type);
    DefinitionPtr best = definitions.named(type);
    if (best || ofType.empty())
        return best;
    for (const DefinitionPtr& definition : ofType) {
        const DefinitionRecord& record = definition->record();
        if (!record.version.empty() && !record.isDefaultVersion)
            continue;
        if (!best || (makesFloat(definition) && !makesFloat(best)))
            best = definition;
    }
    return best ? best : ofType.front();
}

bool Edits::deleteNode(const NodePtr& node)
{
    if (!hasInner(node))
        return false;
    const std::string path = pathOf(*node);
    const CompoundPtr around = node->getParentCompound();
    return run(named(std::string("Delete ") + node->getName(), {"delete", path}), path, [&] {
        isolate(*node);
        return around->nodes().remove(node) ? "" : "it cannot be removed";
    });
}

bool Edits::deleteNode(const std::string& path)
{
    const NodePtr node = findNode(path);
    return node && deleteNode(node);
}

bool Edits::renameNode(const NodePtr& node, const std::string& name)
{
    if (!hasInner(node))
        return false;
    const std::string path = pathOf(*node);
    if (!mayName(*node->getParentCompound(), name, path))
        return false;
    const EditName edit =
        named(std::string("Rename ") + node->getName() + " to " + name, {"rename", path, name});
    return run(edit, path, [&] {
        node->setName(name.c_str());
        return "";
    });
}

bool Edits::renameNode(const std::string& path, const std::string& name)
{
    const NodePtr node = findNode(path);
    return node && renameNode(node, name);
}

bool Edits::rebuild()
{
    return run(named("Rebuild", {"rebuild"}), "rebuild", [&] {
        m_document.rebuildCompounds();
        return "";
    });
}

} // namespace shading
