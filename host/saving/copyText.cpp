#include "document/backdrops.h"
#include "document/document.h"
#include "document/graphInterface.h"
#include "format/xml.h"
#include "saving/backdropWriter.h"
#include "saving/factWriter.h"
#include "saving/projection.h"
#include "saving/save.h"

#include <algorithm>
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

/// Those around some of the nodes and no other.
std::vector<BackdropPtr> backdropsOf(Document& document, const std::vector<NodePtr>& nodes)
{
    std::unordered_set<const ZEL::Node*> copied;
    for (const NodePtr& node : nodes)
        copied.insert(node.get());
    std::vector<BackdropPtr> found;
    for (const BackdropPtr& backdrop :
         document.backdrops().in(*nodes.front()->getParentCompound())) {
        const std::vector<NodePtr> inside = backdrop->nodes();
        const bool isWhole = std::all_of(inside.begin(), inside.end(), [&](const NodePtr& node) {
            return copied.count(node.get()) > 0;
        });
        if (isWhole && !inside.empty())
            found.push_back(backdrop);
    }
    return found;
}

/// The element of a backdrop of the document.
const Piece& itemOf(DraftNetwork& network, const Backdrop& backdrop)
{
    const Piece* const read = backdrop.readElement();
    return read ? network.draft().at(*read) : *network.itemOf(backdrop.element());
}

std::string textOf(Document& document,
                   const std::vector<NodePtr>& nodes,
                   std::vector<SaveProblem>& problems,
                   Progress& progress)
{
    DraftNetwork network(document, progress);
    progress.begin(0, 1000, 3 * document.xml().pieces().pieces().size());
    projectNodes(network);
    writeBackdrops(network);
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
    for (const BackdropPtr& backdrop : backdropsOf(document, nodes))
        inside += elementText(itemOf(network, *backdrop));
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
