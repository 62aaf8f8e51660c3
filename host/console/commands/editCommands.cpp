#include "base/commandLine.h"
#include "console/console.h"
#include "console/findings.h"
#include "document/attributes.h"
#include "document/names.h"
#include "views/report.h"

#include <ostream>

namespace shading {

namespace {

/// An edit that takes words and gives nothing back.
template <bool (Edits::*edit)(const std::string&)>
bool runEdit(Console& console, const Arguments& arguments)
{
    return console.report((console.edits().*edit)(arguments[0]));
}

template <bool (Edits::*edit)(const std::string&, const std::string&)>
bool runEdit(Console& console, const Arguments& arguments)
{
    return console.report((console.edits().*edit)(arguments[0], arguments[1]));
}

bool runCollapse(Console& console, const Arguments& arguments)
{
    const Arguments nodes(arguments.begin() + 2, arguments.end());
    std::string path;
    if (!console.report(console.edits().collapse(arguments[0], arguments[1], nodes, path)))
        return false;
    const NodePtr graph = console.document().findNodeFromPath(path.c_str());
    console.noteIfNested(graph);
    return console.print(path + "\n");
}

bool runReroute(Console& console, const Arguments& arguments)
{
    return console.report(
        console.edits().reroute(arguments[0], arguments[1], console.hasOption("--inside")));
}

bool runInsert(Console& console, const Arguments& arguments)
{
    return console.report(console.edits().insertNode(arguments[0], arguments[1], arguments[2]));
}

bool runExpand(Console& console, const Arguments& arguments)
{
    Renamings renamed;
    if (!console.report(console.edits().expand(arguments[0], renamed)))
        return false;
    for (const auto& [from, to] : renamed)
        console.out() << from << " -> " << to << "\n";
    return true;
}

bool runPort(Console& console, const Arguments& arguments)
{
    Edits& edits = console.edits();
    const std::string& verb = arguments[0];
    if (verb == "add" && arguments.size() == 5) {
        if (arguments[2] != "input" && arguments[2] != "output")
            return console.fail(arguments[2], "neither input nor output");
        const ZEL::PortIOType ioType = arguments[2] == "input" ? ZEL::PortInput : ZEL::PortOutput;
        return console.report(edits.addPort(arguments[1], ioType, arguments[3], arguments[4]));
    }
    if (verb == "delete" && arguments.size() == 3)
        return console.report(edits.deletePort(arguments[1], arguments[2]));
    if (verb == "rename" && arguments.size() == 4)
        return console.report(edits.renamePort(arguments[1], arguments[2], arguments[3]));
    if (verb == "type" && arguments.size() == 4)
        return console.report(edits.setPortType(arguments[1], arguments[2], arguments[3]));
    if (verb == "move" && arguments.size() == 4) {
        int place = 0;
        return readNumber(arguments[3], 1, place)
                   ? console.report(edits.movePort(arguments[1], arguments[2], place))
                   : console.fail(arguments[3], "not a place, from 1");
    }
    return console.fail(
        verb, "usage: port add PATH input|output NAME TYPE, port delete PATH NAME, "
              "port rename PATH OLD NEW, port move PATH NAME PLACE, port type PATH NAME TYPE");
}

bool runAttribute(Console& console, const Arguments& arguments)
{
    const std::string& path = arguments[0];
    if (arguments.size() == 3)
        return console.report(console.edits().setAttribute(path, arguments[1], arguments[2]));
    if (arguments.size() == 2) {
        std::string value;
        return console.report(console.edits().getAttribute(path, arguments[1], value)) &&
               console.print(value + "\n");
    }
    AttributeOwner owner;
    if (!console.report(console.edits().findOwner(path, owner)))
        return false;
    for (const auto& [name, value] : console.document().attributes().all(owner)) {
        if (owner.element || Edits::attributeProblem(owner, name).empty())
            console.print(name + " " + quoted(value) + "\n");
    }
    return true;
}

/// Undoes or redoes as many edits as the argument says, one without it.
template <bool isUndo>
bool runReplay(Console& console, const Arguments& arguments)
{
    int count = 1;
    if (!arguments.empty() && !readNumber(arguments[0], 1, count))
        return console.fail(arguments[0], "not a number of edits");
    std::vector<std::string> titles;
    const bool isDone =
        isUndo ? console.edits().undo(count, titles) : console.edits().redo(count, titles);
    for (const std::string& title : titles)
        console.out() << (isUndo ? "undo: " : "redo: ") << title << "\n";
    return console.report(isDone);
}

bool runShowHistory(Console& console, const Arguments& /*arguments*/)
{
    History& history = console.edits().history();
    const int done = history.undoCount();
    int number = 0;
    for (const EditName& name : history.names()) {
        ++number;
        if (!console.hasOption("--commands"))
            console.out() << number << (number > done ? " undone: " : " ") << name.title << "\n";
        else if (number <= done)
            for (const std::string& line : name.lines)
                console.out() << line << "\n";
    }
    return true;
}

bool runCheck(Console& console, const Arguments& /*arguments*/)
{
    const Findings findings = findingsOf(console.document());
    console.print(textOf(findings.records, console.hasOption("--json")));
    return findings.faults == 0;
}

/// The edits of connections, compounds, ports and values.
const std::vector<Command>& networkCommands()
{
    static const int kAny = 1 << 20;
    static const std::vector<Command> commands = {
        {"connect", "SOURCE TARGET",
         "Connects an output to an input. The paths may come in either order; where both orders\n"
         "    make sense, the first is the source. A source that the input has is replaced.",
         2, 2, runEdit<&Edits::connect>, "port port", "connect Top.noise.out Top.SR_wall.specular"},
        {"disconnect", "SOURCE TARGET", "Takes a connection off. The paths in either order.", 2, 2,
         runEdit<&Edits::disconnect>, "port port", "disconnect Top.noise.out Top.SR_wall.specular"},
        {"disconnect-all", "PORT",
         "Takes off all connections of a port. Those inside a compound too.", 1, 1,
         runEdit<&Edits::disconnectAll>, "port", "disconnect-all Top.NG_wall.color"},
        {"reroute", "FROM TO",
         "Moves the connections of a port to another one. FROM and TO are two sources, and TO "
         "feeds\n"
         "    then all that FROM fed; or two targets, and the source of FROM feeds TO instead. "
         "Both\n"
         "    lie in one compound. With --inside, the inner port of a compound is meant.",
         2, 2, runReroute, "port port", "reroute Top.noise.out Top.ramp.out", "--inside"},
        {"insert", "NODE SOURCE TARGET",
         "Puts a node into a connection. SOURCE then feeds the first free input of NODE that takes "
         "it,\n"
         "    and the first output of NODE that fits feeds TARGET.",
         3, 3, runInsert, "node port port", "insert Top.tint Top.noise.out Top.SR_wall.specular"},
        {"collapse", "PATH NAME NODE...",
         "Moves nodes into a new compound. PATH is the compound that they are in, NODE are their\n"
         "    names. Prints the path of the new one; its name is made unique, and so are those of "
         "its\n"
         "    ports: one for each source, and one for a material at the end of the network. A "
         "graph "
         "inside\n"
         "    a graph is noted once: the format has them, but its own library follows no reference "
         "to one.",
         3, kAny, runCollapse, "compound name child...",
         "collapse Top.NG_wall moss moss_line "
         "above_moss"},
        {"expand", "PATH",
         "Moves the nodes of a compound up and removes it. Connections become direct. Prints the\n"
         "    nodes that got another name: OLD PATH -> NEW PATH.",
         1, 1, runExpand, "compound", "expand Top.NG_gate.paint"},
        {"port",
         "add PATH input|output NAME TYPE | delete PATH NAME | rename PATH OLD NEW | move PATH "
         "NAME "
         "PLACE | type PATH NAME TYPE",
         "Changes the ports of a compound. PATH is the compound; PLACE counts from 1 among the\n"
         "    inputs, or among the outputs. What a deleted input fed gets its value. A port gets\n"
         "    another type when what it is connected to has that. The ports of a\n"
         "    graph that implements a nodedef change with that, when nothing else uses it.",
         3, 5, runPort,
         "=add compound =input,output name type | =delete compound inner | =rename compound inner "
         "name | =move compound inner name | =type compound inner type",
         "port add Top.NG_wall input wetness float"},
        {"set", "PATH VALUE",
         "Gives an input a value. PATH is an input of a node or a compound; VALUE is written as "
         "in\n"
         "    the document, where numbers have commas between: \"0.1, 0.2, 0.3\". It counts where\n"
         "    nothing feeds the input, and stands in the document then only. An empty VALUE gives\n"
         "    it that of its definition, or none.",
         2, 2, runEdit<&Edits::setValue>, "input", "set Top.NG_wall.rows 16"},
        {"attribute", "PATH [NAME [VALUE]]",
         "Reads and changes what the network does not show. PATH is a node, a port, the document,\n"
         "    or an element like a look (Top.LOOK) or what is in it (Top.LOOK.ASSIGN); one "
         "without\n"
         "    a name is called like its element (Top.look2 for the second). Without NAME all that\n"
         "    stands there, a line each; without VALUE that one; with VALUE it becomes that, and "
         "an\n"
         "    empty one takes it off. The attributes that the network shows have edits of their "
         "own.",
         1, 3, runAttribute, "any =colorspace,doc,uiname,unit,unittype,version,xpos,ypos",
         "attribute Top.NG_wall.grain colorspace lin_rec709"},
    };
    return commands;
}

const std::vector<Command>& historyCommands()
{
    static const std::vector<Command> commands = {
        {"undo", "[N]", "Takes the last edits back. N of them (default: 1); prints them.", 0, 1,
         runReplay<true>, "", "undo 3"},
        {"redo", "[N]", "Does undone edits again. N of them (default: 1); prints them.", 0, 1,
         runReplay<false>, "", "redo 3"},
        {"history", "",
         "All edits, the oldest first, with those that are undone. --commands prints instead the\n"
         "    commands that do the same as those that are not undone, a line each, ready to be a\n"
         "    script.",
         0, 0, runShowHistory, "", "history --commands", "--commands"},
        {"check", "",
         "What is wrong with the document. Prints PATH: REASON, a line each, and fails when there "
         "is\n"
         "    something: broken connections and circles, what a save would refuse, and the rules "
         "of "
         "the\n"
         "    format that the file would break. A reason that begins with \"note\" is no failure. "
         "--json\n"
         "    prints instead [{\"path\", \"reason\"}], on one line, and fails likewise.",
         0, 0, runCheck, "", "check --json", "--json"},
    };
    return commands;
}

} // namespace

const std::vector<Command>& editCommands()
{
    static const std::vector<Command> commands = [] {
        std::vector<Command> all = networkCommands();
        for (const std::vector<Command>* const more :
             {&nodeCommands(), &arrangeCommands(), &backdropCommands(), &historyCommands()})
            all.insert(all.end(), more->begin(), more->end());
        return all;
    }();
    return commands;
}

} // namespace shading
