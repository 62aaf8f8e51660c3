#include "document/definedNode.h"
#include "document/journal.h"
#include "document/names.h"
#include "document/rules.h"
#include "shell/commandLine.h"
#include "shell/shell.h"
#include "views/libraryReport.h"

#include <ostream>

namespace shading {

namespace {

using Arguments = std::vector<std::string>;

bool runTypes(Shell& shell, const Arguments& /*arguments*/)
{
    shell.out() << typesText(*shell.document().getRuntime());
    return true;
}

bool runLibrary(Shell& shell, const Arguments& arguments)
{
    ZEL::Runtime& runtime = *shell.document().getRuntime();
    const ZEL::AddRefWrapper<ZEL::NodeLibrary> library =
        arguments.empty() ? runtime.getNodeLibrary() : runtime.findLibrary(arguments[0].c_str());
    if (!library)
        return shell.fail(arguments.empty() ? "runtime" : arguments[0],
                          arguments.empty() ? "it has no node library" : "no such library");
    shell.out() << libraryText(*library, !arguments.empty());
    return true;
}

bool runRuntimes(Shell& shell, const Arguments& /*arguments*/)
{
    ZEL::Host host;
    shell.out() << runtimesText(host, *shell.document().getRuntime());
    return true;
}

/// The definition of that name; or of those of that node type, old versions aside, one that makes a
/// float, else the first.
DefinitionPtr findDefinition(const DefinitionIndex& definitions, const std::string& type)
{
    const std::vector<DefinitionPtr>& ofType = definitions.ofNodeType(type);
    DefinitionPtr best = definitions.named(type);
    if (best || ofType.empty())
        return best;
    for (const DefinitionPtr& definition : ofType) {
        const DefinitionRecord& record = definition->record();
        if (!record.version.empty() && !record.isDefaultVersion)
            continue;
        const bool isFloat = record.outputs.front().type == "float";
        const bool hasFloat = best && best->record().outputs.front().type == "float";
        if (!best || (isFloat && !hasFloat))
            best = definition;
    }
    return best ? best : ofType.front();
}

bool runCreate(Shell& shell, const Arguments& arguments)
{
    Document& document = shell.document();
    const DefinitionPtr definition = findDefinition(document.definitions(), arguments[0]);
    if (!definition)
        return shell.fail(arguments[0], "no definition of that name or node type");
    const ZEL::AddRefWrapper<ZEL::Compound> compound =
        shell.compoundAt(Arguments(arguments.begin() + 2, arguments.end()));
    if (!compound)
        return false;
    // A node on its own is no part of the document: only adding it is an edit.
    document.journal().suspend();
    const ZEL::AddRefWrapper<Node> node = createNode(document, definition, arguments[1].c_str());
    document.journal().resume();
    const auto add = [&]() -> std::string {
        const std::string problem = newNameProblem(*compound, arguments[1]);
        return problem.empty() && !compound->nodes().add(node) ? "refused" : problem;
    };
    Arguments words = {"create"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    if (!shell.edits().run(lineOf(words), arguments[1], add))
        return shell.fail(shell.edits().problem().subject, shell.edits().problem().reason);
    shell.out() << pathOf(*node) << " " << definition->record().name << "\n";
    return true;
}

bool runRebuild(Shell& shell, const Arguments& /*arguments*/)
{
    const auto rebuild = [&] {
        shell.document().getRuntime()->forceRebuildCompounds();
        return "";
    };
    return shell.edits().run("rebuild", "rebuild", rebuild) ||
           shell.fail(shell.edits().problem().subject, shell.edits().problem().reason);
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
         "    of a definition (ND_add_color3) or a node type (add); of several definitions it "
         "takes\n"
         "    one that makes a float, else the first by name. Prints the node's path and the\n"
         "    definition.",
         2, 3, runCreate, "nodetype name compound", "create ND_noise2d_float noise Top.NG_wall"},
        {"rebuild", "", "Brings all nodes of the document up to their definitions.", 0, 0,
         runRebuild},
    };
    return commands;
}

} // namespace shading
