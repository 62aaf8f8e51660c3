// The edit that deletes nodes.

#include "document/document.h"
#include "document/names.h"
#include "document/rules.h"
#include "edits/editName.h"
#include "edits/edits.h"

#include <unordered_set>
#include <utility>

namespace shading {

namespace {

using NodeSet = std::unordered_set<const ZEL::Node*>;
/// A source and a target that it is to feed.
using Joint = std::pair<PortPtr, PortPtr>;

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

/// The only one of the ports that is connected; empty when none or several are.
PortPtr onlyConnected(ZEL::PortList& ports)
{
    PortPtr found;
    for (ZEL::Port* const port : ports) {
        if (port->isConnected() && found)
            return nullptr;
        if (port->isConnected())
            found = port;
    }
    return found;
}

/// The source of a node that has one input fed and one output feeding; empty for any other.
PortPtr sourceThrough(ZEL::Node& node)
{
    const PortPtr input = onlyConnected(node.inputs());
    return input && onlyConnected(node.outputs()) ? input->connectedTo()[0] : PortPtr();
}

/// What stays of the connections through the nodes, from the source before them to the target
/// behind. A node that is passed twice lies in a circle, which is given up.
std::vector<Joint> jointsOf(const std::vector<NodePtr>& nodes, const NodeSet& deleted)
{
    std::vector<Joint> joints;
    for (const NodePtr& node : nodes) {
        const PortPtr output = onlyConnected(node->outputs());
        PortPtr source = output ? sourceThrough(*node) : PortPtr();
        NodeSet passed = {node.get()};
        while (source && deleted.count(source->getParentNode().get()) > 0)
            source = passed.insert(source->getParentNode().get()).second
                         ? sourceThrough(*source->getParentNode())
                         : PortPtr();
        if (!source)
            continue;
        for (ZEL::Port* const target : output->connectedTo()) {
            if (deleted.count(target->getParentNode().get()) == 0 &&
                fitProblem(*source, *target).empty())
                joints.emplace_back(source, target);
        }
    }
    return joints;
}

/// One of the nodes around it is among those.
bool isInside(ZEL::Node& node, const NodeSet& nodes)
{
    CompoundPtr around = node.getParentCompound();
    while (around && nodes.count(around->getAsNode().get()) == 0)
        around = around->getAsNode()->getParentCompound();
    return static_cast<bool>(around);
}

/// Returns why it cannot be done, empty when it is done.
std::string remove(const std::vector<NodePtr>& nodes)
{
    for (const NodePtr& node : nodes) {
        isolate(*node);
        if (!node->getParentCompound()->nodes().remove(node))
            return nodes.size() == 1 ? "it cannot be removed"
                                     : pathOf(*node) + " cannot be removed";
    }
    return "";
}

} // namespace

bool Edits::deleteNodes(const std::vector<NodePtr>& nodes, bool isHealed)
{
    NodeSet named;
    std::vector<std::string> words = {"delete"};
    for (const NodePtr& node : nodes) {
        if (!hasInner(node))
            return false;
        words.push_back(pathOf(*node));
        if (!named.insert(node.get()).second)
            return fail(words.back(), "it is named twice");
    }
    if (nodes.empty())
        return fail("delete", "no node is named");
    const std::string first = words[1];
    if (isHealed)
        words.emplace_back("--heal");
    std::vector<NodePtr> deleted;
    for (const NodePtr& node : nodes) {
        if (!isInside(*node, named))
            deleted.push_back(node);
    }
    const EditName name = namedFor(m_document, nodes, "Delete " + countOf(deleted), words);
    return run(name, first, [&]() -> std::string {
        const std::vector<Joint> joints =
            isHealed ? jointsOf(deleted, named) : std::vector<Joint>();
        std::string problem = remove(deleted);
        if (!problem.empty())
            return problem;
        for (auto [source, target] : joints) {
            if (!ZEL::ConnectCommand().connect(&m_document, source, target))
                return pathOf(*target) + " cannot be connected to " + pathOf(*source);
        }
        return "";
    });
}

bool Edits::deleteNodes(const std::vector<std::string>& paths, bool isHealed)
{
    std::vector<NodePtr> nodes;
    for (const std::string& path : paths) {
        nodes.push_back(findNode(path));
        if (!nodes.back())
            return false;
    }
    return deleteNodes(nodes, isHealed);
}

bool Edits::deleteNode(const NodePtr& node)
{
    return deleteNodes(std::vector<NodePtr>{node}, false);
}

bool Edits::deleteNode(const std::string& path)
{
    return deleteNodes(std::vector<std::string>{path}, false);
}

} // namespace shading
