#include "document/document.h"
#include "document/graphInterface.h"
#include "format/xml.h"
#include "saving/factWriter.h"
#include "saving/projection.h"
#include "saving/save.h"

#include <unordered_set>

namespace shading {

namespace {

/// Why the node cannot be copied with the others; empty when it can.
std::string
copyProblem(const NodePtr& node, const NodePtr& first, std::unordered_set<ZEL::Node*>& seen)
{
    if (!node->getParentCompound())
        return "the document itself is no node to be copied";
    if (node->getParentCompound() != first->getParentCompound())
        return "it is in another compound than the first";
    if (tieOf(*node))
        return "it implements a nodedef, which only one graph does";
    return seen.insert(node.get()).second ? "" : "it is named twice";
}

std::string textOf(Document& document,
                   const std::vector<NodePtr>& nodes,
                   std::vector<SaveProblem>& problems,
                   Progress& progress)
{
    DraftNetwork network(document, progress);
    progress.begin(0, 1000, 3 * document.xml().pieces().pieces().size());
    projectNodes(network);
    FactWriter(network).writeChanges();
    network.writeAttributes(problems);
    Draft& draft = network.draft();
    Piece& whole = draft.newElement("materialx");
    const Piece* around = network.itemOf(*nodes.front())->parent;
    draft.setAttribute(whole, "version", attributeOf(document.xml().documentElement(), "version"));
    for (; around; around = around->parent) {
        for (const char* const name : {"colorspace", "fileprefix", "geomprefix"}) {
            if (around->attribute(name) && !whole.attribute(name))
                draft.setAttribute(whole, name, attributeOf(*around, name));
        }
    }
    std::string inside;
    for (const NodePtr& node : nodes)
        inside += elementText(*network.itemOf(*node));
    std::string text = elementText(whole);
    text.replace(text.size() - 2, 2, ">" + inside + "</materialx>");
    return text;
}

} // namespace

bool copyToText(Document& document,
                const std::vector<NodePtr>& nodes,
                std::string& text,
                std::vector<SaveProblem>& problems,
                const Progress::Tell& tell)
{
    std::unordered_set<ZEL::Node*> seen;
    for (const NodePtr& node : nodes) {
        const std::string problem = copyProblem(node, nodes.front(), seen);
        if (!problem.empty())
            problems.push_back({pathOf(*node), problem});
    }
    if (!problems.empty() || nodes.empty())
        return false;
    Progress progress(tell);
    try {
        text = textOf(document, nodes, problems, progress);
    } catch (const Cancelled&) {
        problems = {{pathOf(*nodes.front()), kCancelled}};
    }
    return problems.empty();
}

} // namespace shading
