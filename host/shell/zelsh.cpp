#include "definitions/pluginModule.h"
#include "reading/definitionReader.h"
#include "reading/openDocument.h"
#include "shell/commands/drawCommand.h"
#include "shell/progressLine.h"
#include "shell/shell.h"
#include "shell/terminal.h"
#include "shell/watcher.h"

#include <cstdio>
#include <getopt.h>
#include <iostream>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

namespace {

// What the program returns: all went well, an error in the document or a command, wrong usage.
constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kWrongUsage = 2;

const char* const kUsage =
    "usage: zelsh [OPTION]... DOCUMENT.mtlx [-c COMMAND]...\n"
    "Opens a shading document and runs the commands, or those on standard input.\n"
    "  -c COMMAND      run this command; may be repeated\n"
    "  --plugin PATH   load this plugin (default: shadingPlugin.so beside the program)\n"
    "  --library FILE  read more data types and node definitions; may be repeated\n"
    "  --strict        do not open a document that has warnings\n"
    "  --watch         print what editors are told of each change\n"
    "  --help          show this text\n"
    "The command help lists the commands. On a terminal Tab completes, Control-C drops the\n"
    "line that is typed and Control-D ends.\n";

struct Arguments {
    std::string document;
    std::vector<std::string> commands; ///< Empty: read them from standard input.
    std::string plugin = shading::defaultPluginPath();
    std::vector<std::string> libraries;
    shading::OpenOptions options;
    bool wantsHelp = false;
    bool isWatched = false;
};

/// False when the usage is wrong.
bool readArguments(int argc, char** argv, Arguments& arguments)
{
    const option longOptions[] = {
        {"plugin", required_argument, nullptr, 'p'}, {"library", required_argument, nullptr, 'l'},
        {"strict", no_argument, nullptr, 's'},       {"watch", no_argument, nullptr, 'w'},
        {"help", no_argument, nullptr, 'h'},         {nullptr, 0, nullptr, 0},
    };
    int letter = 0;
    while ((letter = getopt_long(argc, argv, "c:h", longOptions, nullptr)) != -1) {
        if (letter == 'c')
            arguments.commands.emplace_back(optarg);
        else if (letter == 'p')
            arguments.plugin = optarg;
        else if (letter == 'l')
            arguments.libraries.emplace_back(optarg);
        else if (letter == 's')
            arguments.options.isStrict = true;
        else if (letter == 'w')
            arguments.isWatched = true;
        else if (letter == 'h')
            arguments.wantsHelp = true;
        else
            return false; // getopt_long has said why.
    }
    if (optind + 1 == argc)
        arguments.document = argv[optind];
    else if (!arguments.wantsHelp)
        std::cerr << "zelsh: " << (optind == argc ? "no document" : "more than one document")
                  << "\n";
    return optind + 1 == argc || arguments.wantsHelp;
}

/// Goes on after a command that failed; false when there was one.
bool runFromInput(shading::Shell& shell)
{
    bool isGood = true;
    std::string line;
    while (!shell.hasQuit() && std::getline(std::cin, line))
        isGood = shell.run(line) && isGood;
    if (std::ferror(stdin) == 0)
        return isGood;
    std::cerr << "error: standard input: cannot be read\n";
    return false;
}

/// What the program returns in the end.
int finish(bool isGood)
{
    std::cout.flush();
    if (!std::cout || std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::cerr << "error: standard output: cannot be written\n";
        return kFailure;
    }
    return isGood ? kSuccess : kFailure;
}

/// Of standard error; 0 where it is no terminal.
int terminalColumns()
{
    winsize size = {};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0)
        return 0;
    return size.ws_col > 0 ? size.ws_col : 80; // Some terminals do not say.
}

/// The plugin's runtime; without a plugin the host's own, which has no definitions.
ZEL::Runtime*
chooseRuntime(const std::string& path, shading::PluginModule& plugin, ZEL::Runtime& own)
{
    std::string problem;
    if (plugin.load(path, problem))
        return plugin.runtime();
    std::cerr << "zelsh: plugin " << path << ": " << problem << "; going on without it\n";
    return &own;
}

/// With a line on standard error when it takes its time.
std::unique_ptr<shading::Document> openDocument(const Arguments& arguments,
                                                std::vector<shading::Message>& messages)
{
    shading::ProgressLine line(std::cerr, terminalColumns(), "opening " + arguments.document,
                               std::chrono::steady_clock::now);
    shading::OpenOptions options = arguments.options;
    options.progress = [&](int permille) { line.update(permille); };
    return shading::openDocument(arguments.document, options, messages);
}

bool runCommands(shading::Shell& shell, const std::vector<std::string>& commands)
{
    bool isGood = true;
    for (std::size_t i = 0; i < commands.size() && !shell.hasQuit(); ++i)
        isGood = shell.run(commands[i]) && isGood;
    return isGood;
}

} // namespace

int main(int argc, char** argv)
{
    Arguments arguments;
    if (!readArguments(argc, argv, arguments)) {
        std::cerr << kUsage;
        return kWrongUsage;
    }
    if (arguments.wantsHelp) {
        std::cout << kUsage;
        return finish(true);
    }

    // The order matters: at the end the document goes before the runtime that serves it, and the
    // plugin, which owns the runtime and the code behind it, goes last.
    shading::PluginModule plugin;
    ZEL::Runtime ownRuntime;
    ZEL::Runtime* const runtime = chooseRuntime(arguments.plugin, plugin, ownRuntime);
    arguments.options.runtime = runtime;

    std::vector<shading::Message> messages;
    bool isRead = true;
    for (const std::string& library : arguments.libraries)
        isRead = shading::readDefinitions(library, *runtime, messages) && isRead;
    std::unique_ptr<shading::Document> document;
    if (isRead)
        document = openDocument(arguments, messages);
    for (const shading::Message& message : messages)
        std::cerr << shading::messageText(message) << "\n";
    if (!document)
        return kFailure;

    shading::Shell shell(*document, std::cout, std::cerr);
    shell.add(shading::viewCommands(), "Looking");
    shell.add(shading::drawCommands(), "Looking");
    shell.add(shading::libraryCommands(), "Definitions");
    shell.add(shading::editCommands(), "Editing");
    shell.add(shading::fileCommands(), "Files");
    std::unique_ptr<shading::Watcher> watcher;
    if (arguments.isWatched)
        watcher = std::make_unique<shading::Watcher>(document->getRootNode(), std::cout);
    bool isGood = true;
    if (!arguments.commands.empty())
        isGood = runCommands(shell, arguments.commands);
    else if (isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0)
        shading::runFromTerminal(shell);
    else
        isGood = runFromInput(shell);
    return finish(isGood);
}
