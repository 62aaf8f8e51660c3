#include "console/console.h"
#include "document/names.h"
#include "edits/pasteOptions.h"

#include <algorithm>

namespace shading {

namespace {

/// False, and reported, when one of the two is no number.
bool readPosition(Console& console, const std::string& x, const std::string& y, Position& position)
{
    if (!readFloat(x, position.x))
        return console.fail(x, "not a number");
    return readFloat(y, position.y) || console.fail(y, "not a number");
}

/// PATH X Y, one after the other.
bool runMove(Console& console, const Arguments& arguments)
{
    if (arguments.size() % 3 != 0)
        return console.fail(arguments.back(), "usage: move PATH X Y [PATH X Y]...");
    std::vector<std::pair<std::string, Position>> places;
    for (std::size_t i = 0; i < arguments.size(); i += 3) {
        places.push_back({arguments[i], {}});
        if (!readPosition(console, arguments[i + 1], arguments[i + 2], places.back().second))
            return false;
    }
    return console.report(console.edits().moveNodes(places));
}

/// False, and reported, when one of the paths names no node.
bool readNodes(Console& console, const Arguments& arguments, std::vector<NodePtr>& nodes)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        nodes.push_back(console.nodeAt(arguments, i));
        if (!nodes.back())
            return false;
    }
    return true;
}

bool printPaths(Console& console, const std::vector<NodePtr>& nodes)
{
    for (const NodePtr& node : nodes) {
        console.noteIfNested(node);
        console.print(pathOf(*node) + "\n");
    }
    return true;
}

bool runCopy(Console& console, const Arguments& arguments)
{
    std::vector<NodePtr> nodes;
    std::vector<SaveProblem> problems;
    return readNodes(console, arguments, nodes) &&
           console.report(console.session().copy(nodes, problems), problems) &&
           console.print(console.session().copied() + "\n");
}

/// The options of pasting that were given. False, and reported, when one is wrong.
bool readOptions(Console& console, PasteOptions& options)
{
    options.isInner = console.hasOption("--inner");
    options.isMiddleAt = console.hasOption("--middle");
    if (options.isMiddleAt && console.hasOption("--at"))
        return console.fail("--middle", "--at says where already");
    if (!options.isMiddleAt && !console.hasOption("--at"))
        return true;
    const std::string text = console.optionValue(options.isMiddleAt ? "--middle" : "--at");
    const std::size_t comma = std::min(text.find(','), text.size());
    options.at.emplace();
    return (comma < text.size() && readFloat(text.substr(0, comma), options.at->x) &&
            readFloat(text.substr(comma + 1), options.at->y)) ||
           console.fail(text, "not a place: X,Y");
}

bool runPaste(Console& console, const Arguments& arguments)
{
    Arguments path = arguments;
    std::string text = console.session().copied();
    if (!path.empty() && (path.size() > 1 || path.back().compare(0, 1, "<") == 0)) {
        text = path.back();
        path.pop_back();
    }
    if (text.empty())
        return console.fail("text", "nothing was copied");
    const CompoundPtr compound = console.compoundAt(path);
    PasteOptions options;
    std::vector<NodePtr> made;
    return compound && readOptions(console, options) &&
           console.report(console.edits().paste(compound, text, options, made)) &&
           printPaths(console, made);
}

bool runDuplicate(Console& console, const Arguments& arguments)
{
    std::vector<NodePtr> nodes;
    PasteOptions options;
    std::vector<NodePtr> made;
    std::vector<SaveProblem> problems;
    return readNodes(console, arguments, nodes) && readOptions(console, options) &&
           console.report(console.session().duplicate(nodes, options, made, problems), problems) &&
           printPaths(console, made);
}

bool runReparent(Console& console, const Arguments& arguments)
{
    const CompoundPtr compound = console.compoundAt(arguments);
    std::vector<NodePtr> nodes;
    return compound && readNodes(console, {arguments.begin() + 1, arguments.end()}, nodes) &&
           console.report(console.edits().reparent(compound, nodes)) && printPaths(console, nodes);
}

bool runDelete(Console& console, const Arguments& arguments)
{
    return console.report(console.edits().deleteNodes(arguments, console.hasOption("--heal")));
}

bool runRename(Console& console, const Arguments& arguments)
{
    return console.report(console.edits().renameNode(arguments[0], arguments[1]));
}

const char* const kPasteOptions = "--inner --at=x,y --middle=x,y";

} // namespace

const std::vector<Command>& nodeCommands()
{
    static const int kAny = 1 << 20;
    static const std::vector<Command> commands = {
        {"reparent", "PATH NODE...",
         "Moves nodes into another compound. PATH is that compound, NODE are their paths, all in\n"
         "    one compound. Their connections lead the same way, through ports of the compounds\n"
         "    between. Prints their new paths.",
         2, kAny, runReparent, "compound node...", "reparent Top.NG_wall Top.NG_gate.rust"},
        {"move", "PATH X Y [PATH X Y]...",
         "Changes where nodes are drawn: their attributes xpos and ypos. To the right and down.", 3,
         kAny, runMove, "node name name ...", "move Top.NG_wall.grain 2.5 -1"},
        {"copy", "NODE...",
         "Prints nodes as a document of the format, on one line. NODE are their paths, all in one\n"
         "    compound. `paste` makes what was copied last.",
         1, kAny, runCopy, "node...", "copy Top.NG_wall.grain Top.NG_wall.rows"},
        {"paste", "[PATH] [TEXT]",
         "Makes the nodes of a text of the format. PATH is the compound that they get into "
         "(default:\n"
         "    the root); TEXT is a document like those of `copy` (default: what was copied last).\n"
         "    Names are made unique. What the text refers to and lacks is what is called so in "
         "the\n"
         "    compound; with --inner the nodes are connected among themselves only. Their upper "
         "left\n"
         "    corner comes to --at X,Y, or their middle to --middle X,Y. Prints the paths of the "
         "new\n"
         "    nodes.",
         0, 2, runPaste, "compound", "paste Top.NG_wall --at 2,1.5", kPasteOptions},
        {"duplicate", "NODE...",
         "Copies nodes and pastes them beside themselves. The options are those of `paste`; what "
         "was\n"
         "    copied before stays.",
         1, kAny, runDuplicate, "node...", "duplicate Top.NG_wall.grain", kPasteOptions},
        {"delete", "PATH...",
         "Deletes nodes with their connections. With --heal, where one of them has one input fed "
         "and\n"
         "    one output feeding something, the source of the one feeds the targets of the other, "
         "if\n"
         "    the types fit.",
         1, kAny, runDelete, "node...", "delete Top.NG_wall.grain", "--heal"},
        {"rename", "PATH NAME",
         "Gives a node another name. A name has letters, digits and _, and begins with no digit.",
         2, 2, runRename, "node name", "rename Top.NG_wall.grain fine_grain"},
    };
    return commands;
}

} // namespace shading
