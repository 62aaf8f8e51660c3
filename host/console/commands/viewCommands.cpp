#include "console/console.h"
#include "views/report.h"

#include <cstdio>
#include <ostream>

namespace shading {

namespace {

bool runLs(Console& console, const Arguments& arguments)
{
    const CompoundPtr compound = console.compoundAt(arguments);
    return compound && console.print(textOf(nodeRecords(*compound), console.hasOption("--json")));
}

bool runPorts(Console& console, const Arguments& arguments)
{
    const NodePtr node = console.nodeAt(arguments);
    return node && console.print(textOf(portRecords(*node), console.hasOption("--json")));
}

bool runConnections(Console& console, const Arguments& arguments)
{
    const CompoundPtr compound = console.compoundAt(arguments);
    return compound &&
           console.print(textOf(connectionRecords(*compound), console.hasOption("--json")));
}

bool runTree(Console& console, const Arguments& arguments)
{
    const NodePtr node = console.nodeAt(arguments);
    return node && console.print(treeText(*node));
}

bool runStats(Console& console, const Arguments& arguments)
{
    const CompoundPtr compound = console.compoundAt(arguments);
    return compound && console.print(statisticsText(statisticsOf(*compound)) + "bytes " +
                                     std::to_string(console.document().fileSize()) + "\n");
}

bool runFind(Console& console, const Arguments& arguments)
{
    return console.print(findText(console.document(), arguments.front()));
}

bool runDump(Console& console, const Arguments& arguments)
{
    const CompoundPtr compound = console.compoundAt(arguments);
    if (!compound)
        return false;
    // The library prints with stdio.
    console.out().flush();
    compound->debugPrint();
    std::fflush(stdout);
    return true;
}

} // namespace

const std::vector<Command>& viewCommands()
{
    static const std::vector<Command> commands = {
        {"ls", "[PATH]",
         "The nodes inside a compound. PATH is the compound (default: the root); a line has name,\n"
         "    node type, and `compound` where it is one. --json prints instead\n"
         "    [{\"name\", \"type\", \"compound\"}] on one line.",
         0, 1, runLs, "compound", "ls Top.NG_gate", "--json"},
        {"tree", "[PATH]",
         "A node and everything below it. PATH is the node (default: the root); lines are those\n"
         "    of `ls`, two blanks deeper for each level.",
         0, 1, runTree, "node", "tree Top.NG_gate.rust"},
        {"ports", "PATH",
         "The ports of a node in order. A line has direction, name, data type, default value, "
         "`<-`\n"
         "    where the data comes from, `->` where it goes to, sorted. An inner port of a\n"
         "    compound has the path of the compound node's own port and stands on its line.\n"
         "    --json prints instead\n"
         "    [{\"direction\", \"name\", \"type\", \"value\", \"sources\": [], \"targets\": []}].",
         1, 1, runPorts, "node", "ports Top.NG_gate.gate_color", "--json"},
        {"connections", "[PATH]",
         "The connections in a compound and below, sorted. PATH is the compound (default: the\n"
         "    root); a line has source and target. A source in brackets is one that the document\n"
         "    names and the network does not show. --json prints instead\n"
         "    [{\"source\", \"target\"}].",
         0, 1, runConnections, "compound", "connections Top.NG_gate.rust", "--json"},
        {"stats", "[PATH]",
         "Counts what is in a compound. PATH is the compound (default: the root); it does not "
         "count\n"
         "    itself. A line each: `nodes` at all levels below; `compounds` among them; `depth`, "
         "how\n"
         "    many levels of nodes there are; `ports` of these nodes, where a compound's port and "
         "the\n"
         "    inner port behind it are one; `connections`, those that the command of that name\n"
         "    prints; `bytes` of the document's file as it was opened, wherever PATH leads.",
         0, 1, runStats, "compound", "stats Top.NG_gate"},
        {"find", "PATH",
         "What a path names. `node` or `compound`, `input`, `output`, each that applies on a "
         "line,\n"
         "    or `nothing`.",
         1, 1, runFind, "any", "find Top.NG_gate.age"},
        {"dump", "[PATH]",
         "Everything inside a compound, as the library prints it. PATH is the compound (default: "
         "the\n    root).",
         0, 1, runDump, "compound", "dump Top.NG_gate.rust.pits"},
    };
    return commands;
}

} // namespace shading
