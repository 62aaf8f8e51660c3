#include "console/console.h"
#include "document/names.h"
#include "draw/zelArrange.h"
#include "edits/editName.h"
#include "edits/positions.h"
#include "session/shown.h"

#include <unordered_set>

namespace shading {

namespace {

/// Those of the compound that the words name, each once; all of them without a word. False, and
/// reported, when there is none, or a word names none.
bool chooseNodes(Console& console,
                 ZEL::Compound& compound,
                 const Arguments& arguments,
                 std::vector<NodePtr>& nodes)
{
    std::vector<NodePtr> all;
    if (!console.childrenOf(compound, arguments, 1, all))
        return false;
    for (int i = 0; arguments.size() < 2 && i < compound.nodes().size(); ++i)
        all.push_back(compound.nodes()[i]);
    std::unordered_set<const ZEL::Node*> named;
    for (const NodePtr& node : all) {
        if (named.insert(node.get()).second)
            nodes.push_back(node);
    }
    return !nodes.empty() || console.fail(pathOf(*compound.getAsNode()), "it has no node");
}

bool runArrange(Console& console, const Arguments& arguments)
{
    const CompoundPtr compound = console.compoundAt(arguments);
    std::vector<NodePtr> nodes;
    if (!compound || !chooseNodes(console, *compound, arguments, nodes))
        return false;
    Document& document = console.document();
    zelDraw::PictureOptions options;
    options.isShown = isTelling;
    const std::optional<PlaceBox> box = boxOf(document, nodes);
    const zelDraw::Point anchor =
        box ? zelDraw::Point{box->first.x * kPositionWidth, box->first.y * kPositionHeight}
            : zelDraw::Point();
    std::vector<zelDraw::Point> places;
    std::string problem;
    if (!zelDraw::arrangeNodes(nodes, options, anchor, places, problem))
        return console.fail(pathOf(*compound->getAsNode()), problem);
    std::vector<NodePlace> moves;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        moves.push_back({nodes[i], {places[i].x / kPositionWidth, places[i].y / kPositionHeight}});
    History::Group group(console.edits().history(), {"Arrange " + countOf(nodes), {}});
    return console.report(group.finish(console.edits().moveNodes(moves), problem));
}

} // namespace

const std::vector<Command>& arrangeCommands()
{
    static const int kAny = 1 << 20;
    static const std::vector<Command> commands = {
        {"arrange", "[PATH] [NODE...]",
         "Gives nodes places in layers along their connections, as `draw` does. PATH is the "
         "compound\n"
         "    (default: the root), NODE are names of its nodes (default: all). The upper left "
         "corner of\n"
         "    their places stays where it is.",
         0, kAny, runArrange, "compound child...", "arrange Top.NG_wall grain rows"},
    };
    return commands;
}

} // namespace shading
