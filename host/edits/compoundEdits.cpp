// The edits that put nodes into a compound and take them out.

#include "document/document.h"
#include "document/rules.h"
#include "edits/edits.h"
#include "edits/expansion.h"
#include "shell/commandLine.h"

#include <algorithm>
#include <set>

namespace shading {

namespace {

using Nodes = std::vector<NodePtr>;

bool isAmong(const Nodes& nodes, const NodePtr& node)
{
    return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
}

/// The names of nodes that are connected to one of the nodes and are none of them. The library's
/// command takes a far end for one of the moved nodes by its name.
std::set<std::string> namesOfNeighbours(const Nodes& nodes)
{
    std::set<std::string> names;
    for (const NodePtr& node : nodes) {
        for (ZEL::PortList* const list : {&node->inputs(), &node->outputs()}) {
            for (ZEL::Port* const port : *list) {
                for (ZEL::Port* const other : port->connectedTo()) {
                    const NodePtr owner = other->getParentNode();
                    if (owner && !isAmong(nodes, owner))
                        names.insert(owner->getName());
                }
            }
        }
    }
    return names;
}

/// Gives other names to nodes that are called like a neighbour, and later gives the names back.
class NamesAside {
public:
    NamesAside(ZEL::Compound& compound, const Nodes& nodes)
    {
        const std::set<std::string> taken = namesOfNeighbours(nodes);
        for (const NodePtr& node : nodes) {
            if (taken.count(node->getName()) == 0)
                continue;
            m_names.emplace_back(node, node->getName());
            std::string aside = node->getName();
            do {
                aside += "_";
            } while (taken.count(aside) > 0 || isNameTaken(compound, aside));
            node->setName(aside.c_str());
        }
    }

    void giveBack()
    {
        for (const auto& [node, name] : m_names)
            node->setName(name.c_str());
    }

private:
    std::vector<std::pair<NodePtr, std::string>> m_names;
};

/// The compound's ports were named before its nodes came.
void renamePortsLikeNodes(ZEL::Compound& compound)
{
    for (ZEL::PortList* const list : {&compound.innerInputs(), &compound.innerOutputs()}) {
        for (ZEL::Port* const port : *list) {
            if (!compound.nodes()[port->getName()])
                continue;
            const std::string name = uniqueName(compound, port->getName());
            const PortPtr mirror = compound.getReversePort(port);
            port->setName(name.c_str());
            mirror->setName(name.c_str());
        }
    }
}

/// Why the library's command, which goes by names, cannot move the node.
std::string moveProblem(ZEL::Compound& compound, const NodePtr& node, const std::string& name)
{
    if (!node)
        return "no such node";
    if (isAmbiguous(compound.nodes(), name.c_str()))
        return "several nodes have this path: rename one first";
    for (ZEL::PortList* const list : {&node->inputs(), &node->outputs()}) {
        for (ZEL::Port* const port : *list) {
            if (isAmbiguous(*list, port->getName()))
                return std::string("several ports are called \"") + port->getName() + "\"";
        }
    }
    return "";
}

} // namespace

bool Edits::collapse(const std::string& path,
                     const std::string& name,
                     const std::vector<std::string>& nodes,
                     std::string& createdPath)
{
    const CompoundPtr compound = findCompound(path);
    if (!compound)
        return false;
    const std::string problem = nameProblem(name);
    if (!problem.empty())
        return fail(path + "." + name, problem);
    Nodes moved;
    std::vector<std::string> words = {"collapse", path, name};
    words.insert(words.end(), nodes.begin(), nodes.end());
    for (const std::string& nodeName : nodes) {
        const NodePtr node = compound->nodes()[nodeName.c_str()];
        const std::string reason = moveProblem(*compound, node, nodeName);
        if (!reason.empty())
            return fail(std::string(path).append(".").append(nodeName), reason);
        if (!isAmong(moved, node))
            moved.push_back(node);
    }
    return runKeepingTypes(lineOf(words), path, [&] {
        NamesAside aside(*compound, moved);
        ZEL::CreateCompoundCommand command;
        command.setParentCompound(&m_document, path.c_str());
        command.setNewCompoundName(name.c_str());
        for (const NodePtr& node : moved)
            command.addNodeToMove(node->getName());
        if (!command.doit())
            return "no compound can be made";
        aside.giveBack();
        createdPath = command.getCreatedCompoundPath();
        renamePortsLikeNodes(*m_document.findNodeFromPath(createdPath.c_str())->getAsCompound());
        return "";
    });
}

bool Edits::expand(const std::string& path, std::vector<std::string>& renamed)
{
    const NodePtr node = findInnerNode(path);
    if (!node || !findCompound(path))
        return false;
    return runKeepingTypes(lineOf({"expand", path}), path, [&] {
        Expansion expansion(node);
        std::string problem = expansion.run();
        renamed = expansion.renamed();
        return problem;
    });
}

} // namespace shading
