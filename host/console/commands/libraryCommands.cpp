#include "console/console.h"
#include "document/names.h"
#include "document/node.h"
#include "views/libraryReport.h"

namespace shading {

namespace {

bool runTypes(Console& console, const Arguments& /*arguments*/)
{
    return console.print(typesText(*console.document().getRuntime()));
}

bool runLibrary(Console& console, const Arguments& arguments)
{
    ZEL::Runtime& runtime = *console.document().getRuntime();
    const ZEL::AddRefWrapper<ZEL::NodeLibrary> library =
        arguments.empty() ? runtime.getNodeLibrary() : runtime.findLibrary(arguments[0].c_str());
    if (!library)
        return console.fail(arguments.empty() ? "runtime" : arguments[0],
                            arguments.empty() ? "it has no node library" : "no such library");
    return console.print(libraryText(*library, !arguments.empty()));
}

bool runRuntimes(Console& console, const Arguments& /*arguments*/)
{
    ZEL::Host host;
    return console.print(runtimesText(host, *console.document().getRuntime()));
}

bool runCreate(Console& console, const Arguments& arguments)
{
    const std::string path =
        arguments.size() > 2 ? arguments[2] : console.document().getRootNode()->getName();
    const std::string dataType = console.optionValue("--type");
    if (console.hasOption("--type") && dataType.empty())
        return console.fail("--type", "needs a data type");
    HostNodePtr node;
    if (!console.report(
            console.edits().createNode(path, arguments[0], arguments[1], node, dataType)))
        return false;
    console.noteIfNested(node.get());
    const DefinitionPtr& definition = node->definition();
    return console.print(pathOf(*node) + " " +
                         (definition ? definition->record().name : node->getNodeTypeName()) + "\n");
}

bool runRebuild(Console& console, const Arguments& /*arguments*/)
{
    return console.report(console.edits().rebuild());
}

} // namespace

const std::vector<Command>& libraryCommands()
{
    static const std::vector<Command> commands = {
        {"types", "", "The data types of the runtime, in its order.", 0, 0, runTypes},
        {"library", "[NAME]",
         "The tree of node libraries. Each with the number of its definitions; or the first "
         "library\n"
         "    of that name, with its definitions: node type, name, inputs, outputs.",
         0, 1, runLibrary, "library", "library math"},
        {"runtimes", "", "The runtimes of all plugins, by index and by name.", 0, 0, runRuntimes},
        {"create", "TYPE NAME [PATH]",
         "Makes a node. It goes inside the compound at PATH (default: the root). TYPE is the name\n"
         "    of a definition (ND_add_color3), a node type (add), or nodegraph for an empty graph. "
         "Of\n"
         "    several definitions it takes one that makes the data type of --type, or without that "
         "a\n"
         "    float, else the first by name. Prints the node's path and the definition.",
         2, 3, runCreate, "nodetype name compound | =nodegraph name compound",
         "create image rust_color Top.NG_wall --type color3", "--type=type"},
        {"rebuild", "", "Brings all nodes of the document up to their definitions.", 0, 0,
         runRebuild},
    };
    return commands;
}

} // namespace shading
