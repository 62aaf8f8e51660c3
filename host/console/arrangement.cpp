#include "console/arrangement.h"

#include "document/names.h"
#include "draw/zelArrange.h"
#include "edits/editName.h"
#include "edits/positions.h"
#include "session/session.h"
#include "session/shown.h"

#include <unordered_set>

namespace shading {

namespace {

std::vector<NodePtr> chosenNodes(ZEL::Compound& compound, const std::vector<NodePtr>& named)
{
    std::vector<NodePtr> all = named;
    for (int i = 0; named.empty() && i < compound.nodes().size(); ++i)
        all.push_back(compound.nodes()[i]);
    std::vector<NodePtr> nodes;
    std::unordered_set<const ZEL::Node*> known;
    for (const NodePtr& node : all) {
        if (known.insert(node.get()).second)
            nodes.push_back(node);
    }
    return nodes;
}

} // namespace

bool arrange(Session& session,
             const CompoundPtr& compound,
             const std::vector<NodePtr>& named,
             std::string& subject,
             std::string& reason)
{
    subject = pathOf(*compound->getAsNode());
    const std::vector<NodePtr> nodes = chosenNodes(*compound, named);
    if (nodes.empty()) {
        reason = "it has no node";
        return false;
    }
    Document& document = session.document();
    zelDraw::PictureOptions options;
    options.isShown = isTelling;
    const std::optional<PlaceBox> box = boxOf(document, nodes);
    const zelDraw::Point anchor =
        box ? zelDraw::Point{box->first.x * kPositionWidth, box->first.y * kPositionHeight}
            : zelDraw::Point();
    std::vector<zelDraw::Point> places;
    if (!zelDraw::arrangeNodes(nodes, options, anchor, places, reason))
        return false;
    std::vector<NodePlace> moves;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        moves.push_back({nodes[i], {places[i].x / kPositionWidth, places[i].y / kPositionHeight}});
    Edits& edits = session.edits();
    History::Group group(edits.history(), {"Arrange " + countOf(nodes), {}});
    if (group.finish(edits.moveNodes(moves), reason))
        return true;
    subject = edits.problem().subject;
    reason = edits.problem().reason;
    return false;
}

} // namespace shading
