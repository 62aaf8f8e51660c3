#include "shadingReport.h"
#include "shadingShell.h"

#include <cstdio>
#include <ostream>

namespace shading {

namespace {

using Arguments = std::vector<std::string>;

bool runLs(Shell& shell, const Arguments& arguments)
{
    const ZEL::AddRefWrapper<ZEL::Compound> compound = shell.compoundAt(arguments);
    if (compound)
        shell.out() << nodesText(*compound);
    return static_cast<bool>(compound);
}

bool runPorts(Shell& shell, const Arguments& arguments)
{
    const ZEL::AddRefWrapper<ZEL::Node> node = shell.nodeAt(arguments.front());
    if (node)
        shell.out() << portsText(*node);
    return static_cast<bool>(node);
}

bool runConnections(Shell& shell, const Arguments& arguments)
{
    const ZEL::AddRefWrapper<ZEL::Compound> compound = shell.compoundAt(arguments);
    if (compound)
        shell.out() << connectionsText(*compound);
    return static_cast<bool>(compound);
}

bool runFind(Shell& shell, const Arguments& arguments)
{
    shell.out() << findText(shell.container(), arguments.front());
    return true;
}

bool runDump(Shell& shell, const Arguments& arguments)
{
    const ZEL::AddRefWrapper<ZEL::Compound> compound = shell.compoundAt(arguments);
    if (!compound)
        return false;
    // The library prints with stdio.
    shell.out().flush();
    compound->debugPrint();
    std::fflush(stdout);
    return true;
}

} // namespace

const std::vector<Command>& viewCommands()
{
    static const std::vector<Command> commands = {
        {"ls", "[PATH]",
         "The nodes inside the compound at PATH (default: the root): name, node type, `compound`\n"
         "    where it is one.",
         0, 1, runLs},
        {"ports", "PATH",
         "The node's ports in order: direction, name, data type, default value, `<-` where the "
         "data\n"
         "    comes from, `->` where it goes to. An inner port of a compound has the path of the\n"
         "    compound node's own port and stands on its line.",
         1, 1, runPorts},
        {"connections", "[PATH]",
         "The connections in the compound at PATH and below (default: the root), sorted.", 0, 1,
         runConnections},
        {"find", "PATH",
         "What PATH names: `node` or `compound`, `input`, `output`, each that applies on a line, "
         "or\n"
         "    `nothing`.",
         1, 1, runFind},
        {"dump", "[PATH]", "Everything inside the compound at PATH (default: the root).", 0, 1,
         runDump},
    };
    return commands;
}

} // namespace shading
