#include "check/zelCheck.h"
#include "edits/edits.h"
#include "shell/shell.h"
#include "views/json.h"

#include <cstdlib>
#include <ostream>

namespace shading {

namespace {

using Arguments = std::vector<std::string>;

bool report(Shell& shell, bool isDone)
{
    const Edits::Problem& problem = shell.edits().problem();
    return isDone || shell.fail(problem.subject, problem.reason);
}

bool runConnect(Shell& shell, const Arguments& arguments)
{
    return report(shell, shell.edits().connect(arguments[0], arguments[1]));
}

bool runDisconnect(Shell& shell, const Arguments& arguments)
{
    return report(shell, shell.edits().disconnect(arguments[0], arguments[1]));
}

bool runDisconnectAll(Shell& shell, const Arguments& arguments)
{
    return report(shell, shell.edits().disconnectAll(arguments[0]));
}

bool runCollapse(Shell& shell, const Arguments& arguments)
{
    const Arguments nodes(arguments.begin() + 2, arguments.end());
    std::string path;
    if (!report(shell, shell.edits().collapse(arguments[0], arguments[1], nodes, path)))
        return false;
    shell.out() << path << "\n";
    return true;
}

bool runExpand(Shell& shell, const Arguments& arguments)
{
    std::vector<std::string> renamed;
    if (!report(shell, shell.edits().expand(arguments[0], renamed)))
        return false;
    for (const std::string& line : renamed)
        shell.out() << line << "\n";
    return true;
}

bool runPort(Shell& shell, const Arguments& arguments)
{
    Edits& edits = shell.edits();
    const std::string& verb = arguments[0];
    if (verb == "add" && arguments.size() == 5) {
        if (arguments[2] != "input" && arguments[2] != "output")
            return shell.fail(arguments[2], "neither input nor output");
        const ZEL::PortIOType ioType = arguments[2] == "input" ? ZEL::PortInput : ZEL::PortOutput;
        return report(shell, edits.addPort(arguments[1], ioType, arguments[3], arguments[4]));
    }
    if (verb == "delete" && arguments.size() == 3)
        return report(shell, edits.deletePort(arguments[1], arguments[2]));
    if (verb == "rename" && arguments.size() == 4)
        return report(shell, edits.renamePort(arguments[1], arguments[2], arguments[3]));
    return shell.fail(verb, "usage: port add PATH input|output NAME TYPE, port delete PATH NAME, "
                            "port rename PATH OLD NEW");
}

bool runSet(Shell& shell, const Arguments& arguments)
{
    return report(shell, shell.edits().setValue(arguments[0], arguments[1]));
}

bool runDelete(Shell& shell, const Arguments& arguments)
{
    return report(shell, shell.edits().deleteNode(arguments[0]));
}

bool runRename(Shell& shell, const Arguments& arguments)
{
    return report(shell, shell.edits().renameNode(arguments[0], arguments[1]));
}

/// Undoes or redoes as many edits as the argument says, one without it. More than there are: none.
bool runHistory(Shell& shell, const Arguments& arguments, bool isUndo)
{
    const std::string word = isUndo ? "undo" : "redo";
    History& history = shell.edits().history();
    const int available = isUndo ? history.undoCount() : history.redoCount();
    int count = 1;
    if (!arguments.empty()) {
        char* end = nullptr;
        const long number = std::strtol(arguments[0].c_str(), &end, 10);
        if (*end != '\0' || number < 1)
            return shell.fail(arguments[0], "not a number of edits");
        count = number > available ? available + 1 : static_cast<int>(number);
    }
    if (available == 0)
        return shell.fail("history", "nothing to " + word);
    if (count > available)
        return shell.fail(arguments[0], "only " + std::to_string(available) + " to " + word);
    for (; count > 0; --count) {
        std::string title;
        std::string problem;
        if (!(isUndo ? history.undo(title, problem) : history.redo(title, problem)))
            return shell.fail(title, problem);
        shell.out() << word << ": " << title << "\n";
    }
    return true;
}

bool runUndo(Shell& shell, const Arguments& arguments)
{
    return runHistory(shell, arguments, true);
}

bool runRedo(Shell& shell, const Arguments& arguments)
{
    return runHistory(shell, arguments, false);
}

bool runShowHistory(Shell& shell, const Arguments& /*arguments*/)
{
    History& history = shell.edits().history();
    const int done = history.undoCount();
    int number = 0;
    for (const std::string& title : history.titles()) {
        ++number;
        shell.out() << number << (number > done ? " undone: " : " ") << title << "\n";
    }
    return true;
}

bool runCheck(Shell& shell, const Arguments& /*arguments*/)
{
    const std::vector<zelCheck::Finding> findings = zelCheck::checkNetwork(shell.document());
    if (shell.hasOption("--json"))
        shell.out() << jsonText(findings);
    else
        for (const zelCheck::Finding& finding : findings)
            shell.out() << zelCheck::findingText(finding) << "\n";
    return findings.empty();
}

} // namespace

const std::vector<Command>& editCommands()
{
    static const int kAny = 1 << 20;
    static const std::vector<Command> commands = {
        {"connect", "SOURCE TARGET",
         "Connects an output to an input. The paths may come in either order; where both orders\n"
         "    make sense, the first is the source. A source that the input has is replaced.",
         2, 2, runConnect, "port port", "connect Top.noise.out Top.SR_wall.specular"},
        {"disconnect", "SOURCE TARGET", "Takes a connection off. The paths in either order.", 2, 2,
         runDisconnect, "port port", "disconnect Top.noise.out Top.SR_wall.specular"},
        {"disconnect-all", "PORT",
         "Takes off all connections of a port. Those inside a compound too.", 1, 1,
         runDisconnectAll, "port", "disconnect-all Top.NG_wall.color"},
        {"collapse", "PATH NAME NODE...",
         "Moves nodes into a new compound. PATH is the compound that they are in, NODE are their\n"
         "    names. Prints the path of the new one; its name is made unique, and so are those of "
         "its\n    ports.",
         3, kAny, runCollapse, "compound name child...",
         "collapse Top.NG_wall moss moss_line "
         "above_moss"},
        {"expand", "PATH",
         "Moves the nodes of a compound up and removes it. Connections become direct. Prints the\n"
         "    nodes that got another name: OLD PATH -> NEW PATH.",
         1, 1, runExpand, "compound", "expand Top.NG_gate.paint"},
        {"port", "add PATH input|output NAME TYPE | delete PATH NAME | rename PATH OLD NEW",
         "Changes the ports of a compound. PATH is the compound.", 3, 5, runPort,
         "=add compound =input,output name type | =delete compound inner | =rename compound inner "
         "name",
         "port add Top.NG_wall input wetness float"},
        {"set", "PATH VALUE",
         "Gives an input a value. PATH is an input of a node or a compound; VALUE is written as "
         "in\n"
         "    the document, where numbers have commas between: \"0.1, 0.2, 0.3\". It counts where\n"
         "    nothing feeds the input. An empty VALUE takes the value off.",
         2, 2, runSet, "input", "set Top.NG_wall.rows 16"},
        {"delete", "PATH", "Deletes a node with its connections.", 1, 1, runDelete, "node",
         "delete Top.NG_wall.grain"},
        {"rename", "PATH NAME", "Gives a node another name.", 2, 2, runRename, "node name",
         "rename Top.NG_wall.grain fine_grain"},
        {"undo", "[N]", "Takes the last edits back. N of them (default: 1); prints them.", 0, 1,
         runUndo, "", "undo 3"},
        {"redo", "[N]", "Does undone edits again. N of them (default: 1); prints them.", 0, 1,
         runRedo, "", "redo 3"},
        {"history", "", "All edits, the oldest first, with those that are undone.", 0, 0,
         runShowHistory},
        {"check", "",
         "What is wrong with the network. Prints PATH: REASON, a line each; fails when there is\n"
         "    something. --json prints instead [{\"path\", \"reason\"}], on one line, and fails "
         "likewise.",
         0, 0, runCheck, "", "check --json", "--json"},
    };
    return commands;
}

} // namespace shading
