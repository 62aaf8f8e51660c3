// The edits that put nodes into a compound and take them out.

#include "document/document.h"
#include "document/graphInterface.h"
#include "document/names.h"
#include "document/node.h"
#include "document/reservedNames.h"
#include "document/rules.h"
#include "edits/collapsedPorts.h"
#include "edits/editName.h"
#include "edits/edits.h"
#include "edits/expansion.h"
#include "edits/inheritance.h"
#include "edits/positions.h"
#include "edits/relocation.h"
#include "format/nodeDefs.h"
#include "format/piece.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace shading {

namespace {

using Nodes = std::vector<NodePtr>;

/// The names of nodes that are connected to one of the nodes and are none of them. The library's
/// command takes a far end for one of the moved nodes by its name.
std::unordered_set<std::string> namesOfNeighbours(const Nodes& nodes)
{
    std::unordered_set<ZEL::Node*> moved;
    for (const NodePtr& node : nodes)
        moved.insert(node.get());
    std::unordered_set<std::string> names;
    for (const NodePtr& node : nodes) {
        for (ZEL::PortList* const list : {&node->inputs(), &node->outputs()}) {
            for (ZEL::Port* const port : *list) {
                for (ZEL::Port* const other : port->connectedTo()) {
                    const NodePtr owner = other->getParentNode();
                    if (owner && moved.count(owner.get()) == 0)
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
        const std::unordered_set<std::string> taken = namesOfNeighbours(nodes);
        for (const NodePtr& node : nodes) {
            if (taken.count(node->getName()) == 0)
                continue;
            m_names.emplace_back(node, node->getName());
            std::string aside = node->getName();
            do {
                aside += "_";
            } while (taken.count(aside) > 0 || !takenProblem(compound, aside).empty());
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

/// Why the library's command, which goes by names, cannot move one of the nodes; which one.
const ZEL::Node* unmovable(ZEL::Compound& compound, const Nodes& nodes, std::string& reason)
{
    std::unordered_map<std::string, int> names;
    for (const NodePtr& node : compound.nodes())
        ++names[node->getName()];
    for (const NodePtr& node : nodes) {
        if (node->getParentCompound() != &compound)
            reason = "not in " + pathOf(*compound.getAsNode());
        else if (names[node->getName()] > 1)
            reason = "several nodes have this path: rename one first";
        for (ZEL::PortList* const list : {&node->inputs(), &node->outputs()}) {
            std::unordered_set<std::string> ports;
            for (ZEL::Port* const port : *list) {
                if (reason.empty() && !ports.insert(port->getName()).second)
                    reason = std::string("several ports are called \"") + port->getName() + "\"";
            }
        }
        if (!reason.empty())
            return node.get();
    }
    return nullptr;
}

/// Null for a node that the document did not have.
const Piece* elementOf(ZEL::Node& node)
{
    const auto* const own = dynamic_cast<const Node*>(&node);
    return own ? own->element() : nullptr;
}

/// What is inside beside the nodes: backdrops and the like come up with them, by the names that
/// they have; tokens are the graph's own, and what they stand for would be lost.
std::string leftBehindProblem(ZEL::Node& graph)
{
    const Piece* const element = elementOf(graph);
    if (!element)
        return "";
    const Tie* const tie = tieOf(graph);
    for (const Piece* const owner : {element, tie ? tie->nodeDef : nullptr}) {
        for (const Piece* child = owner ? owner->first : nullptr; child; child = child->next) {
            if (child->isElement() && child->text == "token")
                return "token \"" + attributeOf(*child, "name") + "\" counts in that graph only";
        }
    }
    ZEL::Compound& around = *graph.getParentCompound();
    for (const Piece& child : ElementsIn(*element)) {
        const std::string name = attributeOf(child, "name");
        const bool isOther = kindOf(child) == ElementKind::Other && child.text != "backdrop";
        if (!isOther || name.empty() || name == graph.getName())
            continue;
        const std::string problem = takenProblem(around, name);
        if (!problem.empty())
            return std::string(child.text).append(" \"").append(name).append("\" inside: ") +
                   problem;
    }
    return "";
}

/// The compound is that of the node, or lies in it.
bool isInside(CompoundPtr compound, const NodePtr& node)
{
    while (compound && compound->getAsNode() != node)
        compound = compound->getAsNode()->getParentCompound();
    return static_cast<bool>(compound);
}

/// Backdrops of a compound that is gone, into the one around it.
void moveUp(Document& document, const std::vector<BackdropPtr>& backdrops, ZEL::Compound& around)
{
    for (const BackdropPtr& backdrop : backdrops) {
        Backdrop::State state = backdrop->state();
        state.owner = around.getAsNode();
        if (!state.name.empty())
            state.name = uniqueName(around, state.name);
        document.backdrops().set(backdrop, state);
    }
}

} // namespace

bool Edits::collapse(const CompoundPtr& compound,
                     const std::string& name,
                     const std::vector<NodePtr>& nodes,
                     NodePtr& created)
{
    if (!reaches(compound))
        return false;
    const std::string path = pathOf(*compound->getAsNode());
    std::string problem = nameProblem(name);
    if (!problem.empty())
        return fail(path, problem);
    if (nodes.empty())
        return fail(path, "no node is named");
    std::unordered_set<ZEL::Node*> seen;
    Nodes moved;
    std::vector<std::string> words = {"collapse", path, name};
    for (const NodePtr& node : nodes) {
        if (!hasInner(node))
            return false;
        if (!seen.insert(node.get()).second)
            continue;
        moved.push_back(node);
        words.emplace_back(node->getName());
    }
    if (const ZEL::Node* const node = unmovable(*compound, moved, problem))
        return fail(path + "." + node->getName(), problem);
    const std::string what =
        moved.size() == 1 ? moved[0]->getName() : std::to_string(moved.size()) + " nodes";
    return runKeepingTypes(named("Collapse " + what + " into " + name, words), path, [&] {
        NamesAside aside(*compound, moved);
        ZEL::CreateCompoundCommand command;
        command.setParentCompound(&m_document, path.c_str());
        command.setNewCompoundName(name.c_str());
        for (const NodePtr& node : moved)
            command.addNodeToMove(node->getName());
        if (!command.doit())
            return "no compound can be made";
        aside.giveBack();
        created = m_document.findNodeFromPath(command.getCreatedCompoundPath());
        finishCollapsedPorts(*created->getAsCompound());
        if (const std::optional<Position> middle = middleOf(m_document, moved))
            setPosition(m_document, created, *middle);
        return "";
    });
}

bool Edits::collapse(const std::string& path,
                     const std::string& name,
                     const std::vector<std::string>& nodes,
                     std::string& createdPath)
{
    const CompoundPtr compound = findCompound(path);
    if (!compound)
        return false;
    Nodes moved;
    for (const std::string& nodeName : nodes) {
        moved.push_back(findChild(*compound, nodeName));
        if (!moved.back())
            return false;
    }
    NodePtr created;
    if (!collapse(compound, name, moved, created) || !created)
        return false;
    createdPath = pathOf(*created);
    return true;
}

bool Edits::expand(const NodePtr& graph, Renamings& renamed)
{
    if (!hasInner(graph))
        return false;
    const std::string path = pathOf(*graph);
    if (!graph->isCompound())
        return fail(path, "not a compound");
    const std::string left = leftBehindProblem(*graph);
    if (!left.empty())
        return fail(path, left);
    const Piece* const element = elementOf(*graph);
    const Piece* const around = elementOf(*graph->getParentCompound()->getAsNode());
    const std::string title = std::string("Expand ") + graph->getName();
    const bool isDone = runKeepingTypes(named(title, {"expand", path}), path, [&] {
        Expansion expansion(m_document, graph);
        Nodes inside;
        for (const NodePtr& node : graph->getAsCompound()->nodes())
            inside.push_back(node);
        const CompoundPtr above = graph->getParentCompound();
        const std::vector<BackdropPtr> backdrops =
            m_document.backdrops().in(*graph->getAsCompound());
        const Inheritance inheritance(m_document, inside);
        std::string problem = expansion.run();
        if (problem.empty())
            inheritance.keep();
        if (problem.empty())
            moveUp(m_document, backdrops, *above);
        const std::optional<Position> to = positionOf(m_document, graph);
        const std::optional<Position> from = middleOf(m_document, inside);
        if (problem.empty() && from && to) {
            shift(m_document, inside, *from, *to);
            shift(m_document, backdrops, *from, *to);
        }
        renamed = expansion.renamed();
        return problem;
    });
    if (isDone && element && around)
        m_document.reservedNames().addAll(*element, *around);
    return isDone;
}

bool Edits::expand(const std::string& path, Renamings& renamed)
{
    const NodePtr graph = findNode(path);
    return graph && expand(graph, renamed);
}

bool Edits::reparent(const CompoundPtr& compound, const std::vector<NodePtr>& nodes)
{
    if (nodes.empty() || !compound || !has(compound->getAsNode()))
        return fail("nodes", "no node or no compound is named");
    CompoundPtr from = nodes.front()->getParentCompound();
    const std::string path = pathOf(*compound->getAsNode());
    std::vector<std::string> words = {"reparent", path};
    std::vector<NodePtr> down; // The graphs to go into, the innermost first.
    for (NodePtr node = compound->getAsNode(); node && !isInside(from, node);) {
        down.push_back(node);
        const CompoundPtr around = node->getParentCompound();
        node = around ? around->getAsNode() : nullptr;
    }
    std::unordered_set<ZEL::Node*> seen;
    for (const NodePtr& node : nodes) {
        if (!hasInner(node))
            return false;
        const bool isAround = std::find(down.begin(), down.end(), node) != down.end();
        if (node->getParentCompound() != from)
            return fail(pathOf(*node), "it is in another compound than the first");
        if (from == compound || isAround)
            return fail(pathOf(*node), isAround ? "it cannot go into itself" : "it is there");
        if (!seen.insert(node.get()).second)
            return fail(pathOf(*node), "it is named twice");
        words.push_back(pathOf(*node));
    }
    const std::string what =
        nodes.size() == 1 ? nodes[0]->getName() : std::to_string(nodes.size()) + " nodes";
    const std::string title = "Move " + what + " into " + compound->getAsNode()->getName();
    return runKeepingTypes(named(title, words), path, [&] {
        std::string problem;
        const Inheritance inheritance(m_document, nodes);
        const CompoundPtr common = down.empty() ? compound : down.back()->getParentCompound();
        while (problem.empty() && from != common) {
            const NodePtr graph = from->getAsNode();
            problem = Relocation(graph, nodes, false).run();
            from = graph->getParentCompound();
        }
        for (auto graph = down.rbegin(); graph != down.rend() && problem.empty(); ++graph)
            problem = Relocation(*graph, nodes, true).run();
        if (problem.empty())
            inheritance.keep();
        return problem;
    });
}

} // namespace shading
