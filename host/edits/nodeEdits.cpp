// The edits of nodes: here one is made and renamed.

#include "document/definedNode.h"
#include "document/document.h"
#include "document/names.h"
#include "edits/editName.h"
#include "edits/edits.h"
#include "edits/positions.h"

namespace shading {

namespace {

bool makes(const DefinitionPtr& definition, const std::string& dataType)
{
    const std::vector<PortDescription>& outputs = definition->record().outputs;
    return !outputs.empty() && outputs.front().type == dataType;
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

bool Edits::createGraph(const CompoundPtr& compound, const std::string& name, HostNodePtr& created)
{
    const NodePtr owner = compound ? compound->getAsNode() : nullptr;
    if (!has(owner))
        return false;
    const std::string path = pathOf(*owner);
    if (!mayName(*compound, name, path))
        return false;
    std::vector<std::string> words = {"create", "nodegraph", name};
    if (owner->getParentCompound())
        words.push_back(path);
    return run(named("Create " + name, words), path + "." + name, [&] {
        const CompoundPtr made = compound->createNewCompound(name.c_str());
        if (!made)
            return "refused";
        // The compounds of this host make nodes of this host.
        created = static_cast<Node*>(made->getAsNode().get());
        placeNew(m_document, created.get());
        return "";
    });
}

bool Edits::createNode(const std::string& path,
                       const std::string& type,
                       const std::string& name,
                       HostNodePtr& created,
                       const std::string& dataType)
{
    const bool isGraph = type == "nodegraph";
    const DefinitionPtr definition = isGraph ? nullptr : definitionFor(type, dataType);
    if (isGraph && !dataType.empty())
        return fail(type, "it makes what is inside, and no type of its own");
    if (!isGraph && !definition)
        return fail(type, definitionFor(type) ? "no definition of it makes " + dataType
                                              : "no definition of that name or node type");
    const CompoundPtr compound = findCompound(path);
    if (!compound)
        return false;
    return isGraph ? createGraph(compound, name, created)
                   : createNode(compound, definition, name, created);
}

DefinitionPtr Edits::definitionFor(const std::string& type, const std::string& dataType) const
{
    const auto isWanted = [&](const DefinitionPtr& definition) {
        return dataType.empty() || makes(definition, dataType);
    };
    const DefinitionIndex& definitions = m_document.definitions();
    if (DefinitionPtr named = definitions.named(type))
        return isWanted(named) ? named : nullptr;
    DefinitionPtr best;
    DefinitionPtr old; // What there is when all are of an old version.
    for (const DefinitionPtr& definition : definitions.ofNodeType(type)) {
        if (!isWanted(definition))
            continue;
        const DefinitionRecord& record = definition->record();
        DefinitionPtr& chosen = record.version.empty() || record.isDefaultVersion ? best : old;
        const bool isBetter =
            &chosen == &best && makes(definition, "float") && chosen && !makes(chosen, "float");
        if (!chosen || isBetter)
            chosen = definition;
    }
    return best ? best : old;
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
