#include "console/arrangement.h"
#include "console/console.h"

namespace shading {

namespace {

bool runArrange(Console& console, const Arguments& arguments)
{
    const CompoundPtr compound = console.compoundAt(arguments);
    std::vector<NodePtr> nodes;
    if (!compound || !console.childrenOf(*compound, arguments, 1, nodes))
        return false;
    std::string subject;
    std::string reason;
    return arrange(console.session(), compound, nodes, subject, reason) ||
           console.fail(subject, reason);
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
