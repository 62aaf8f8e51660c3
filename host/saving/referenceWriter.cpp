#include "saving/referenceWriter.h"

#include "document/document.h"
#include "document/node.h"
#include "document/origins.h"
#include "document/pointers.h"
#include "saving/draftNetwork.h"

#include <map>

namespace shading {

namespace {

bool isMultiOutput(const DraftNetwork& network, const ZEL::Node& node)
{
    const Piece* const item = network.itemOf(node);
    return item && attributeOf(*item, "type") == kMultiOutput;
}

/// A reference that says no output means this one.
bool isDefaultOutput(const DraftNetwork& network, ZEL::Node& node, ZEL::Port& source)
{
    if (node.isCompound())
        return node.outputs()[0].get() == &source;
    if (!isMultiOutput(network, node))
        return std::string(source.getName()) == kDefaultOutput;
    for (const Piece& child : ElementsIn(*network.itemOf(node))) {
        const std::string name = attributeOf(child, "name");
        if (kindOf(child) == ElementKind::Output)
            return (name.empty() ? node.outputs()[0] : node.outputs()[name.c_str()]) == &source;
    }
    return false;
}

/// The output of the document that a reference names alone, by the name that it has or had, when it
/// has that source; null otherwise.
PortPtr documentOutput(DraftNetwork& network, const Piece& element, ZEL::Port& source)
{
    if (!namesOutputOnly(element))
        return nullptr;
    const std::string name = attributeOf(element, "output");
    const NodePtr root = network.document().getRootNode();
    for (ZEL::Port* const output : root->outputs()) {
        const PortPtr inner = root->getAsCompound()->getReversePort(output);
        if ((name == output->getName() || name == network.document().origins().nameOf(*output)) &&
            inner->connectedTo()[0] == &source)
            return output;
    }
    return nullptr;
}

/// The element names that node, as it is called now or was when it was read.
bool namesNode(const Piece& element, ZEL::Node& node)
{
    std::string name = attributeOf(element, "nodegraph");
    if (name.empty())
        name = attributeOf(element, "nodename");
    const auto* const own = dynamic_cast<const Node*>(&node);
    return name == node.getName() ||
           (own && own->element() && name == attributeOf(*own->element(), "name"));
}

/// The attributes that name the port. An element that names the node already keeps its form.
/// Contract: an `output` that names a `nodegraph` names no output, for the format does not find it;
/// so it names a graph beside it by `nodename`.
std::map<std::string, std::string>
referenceTo(DraftNetwork& network, const Piece& element, ZEL::Port& source)
{
    if (source.isCompoundInternalPort())
        return {{"interfacename", source.getName()}};
    if (const PortPtr output = documentOutput(network, element, source))
        return {{"output", output->getName()}};
    const NodePtr node = source.getParentNode();
    const bool isKept = namesNode(element, *node);
    const bool isOutput = element.text == "output";
    const Piece* const scope = isOutput ? element.parent : element.parent->parent;
    const bool isNear = network.itemOf(*node)->parent == scope;
    const bool hasNodeName = says(element, "nodename");
    const bool isByNode = !node->isCompound() || (isNear && (isKept ? hasNodeName : isOutput));
    std::map<std::string, std::string> result = {
        {isByNode ? "nodename" : "nodegraph", node->getName()}};
    const bool hasSeveral =
        node->isCompound() ? node->outputs().size() > 1 : isMultiOutput(network, *node);
    const bool hasOutput = says(element, "output");
    if (!isDefaultOutput(network, *node, source) || (isKept ? hasOutput : hasSeveral))
        result["output"] = source.getName();
    if (isOutput && !isByNode && !isKept)
        result.erase("output");
    return result;
}

} // namespace

bool isStale(DraftNetwork& network, const Piece& element, ZEL::Port& port)
{
    if (!hasReference(element))
        return false;
    const Origins& origins = network.document().origins();
    const Piece* const read = origins.elementOf(port);
    return !network.draft().isRead(element) || (read && origins.wasConnected(*read));
}

bool means(DraftNetwork& network, const Piece& element, ZEL::Port& source)
{
    const std::string interface = attributeOf(element, "interfacename");
    if (source.isCompoundInternalPort() || !interface.empty())
        return source.isCompoundInternalPort() && interface == source.getName();
    const std::string output = attributeOf(element, "output");
    if (const PortPtr named = documentOutput(network, element, source))
        return output == named->getName();
    const std::string graph = attributeOf(element, "nodegraph");
    const NodePtr node = source.getParentNode();
    if ((graph.empty() ? attributeOf(element, "nodename") : graph) != node->getName() ||
        (!graph.empty() && !node->isCompound()))
        return false;
    return output.empty() ? isDefaultOutput(network, *node, source) : output == source.getName();
}

bool writeReference(DraftNetwork& network, Piece& element, const PortPtr& source)
{
    std::map<std::string, std::string> wanted;
    if (source)
        wanted = referenceTo(network, element, *source);
    bool hasChanged = false;
    for (const char* const name : kReferences) {
        const auto found = wanted.find(name);
        const bool isChange = found == wanted.end()
                                  ? network.draft().removeAttribute(element, name)
                                  : network.draft().setAttribute(element, name, found->second);
        hasChanged = hasChanged || isChange;
    }
    return hasChanged;
}

} // namespace shading
