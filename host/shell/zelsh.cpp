#include "console/console.h"
#include "shell/progressLine.h"
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
    "       zelsh [OPTION]... --new FILE.mtlx [-c COMMAND]...\n"
    "Opens a shading document and runs the commands, or those on standard input.\n"
    "  -c COMMAND      run this command; may be repeated\n"
    "  --new FILE      begin an empty document; `save` writes it into FILE, which must not be "
    "there\n"
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
    bool isNew = false; ///< The document is to be made.
    bool wantsHelp = false;
    bool isWatched = false;
};

/// False when the usage is wrong.
bool readArguments(int argc, char** argv, Arguments& arguments)
{
    const option longOptions[] = {
        {"plugin", required_argument, nullptr, 'p'},
        {"library", required_argument, nullptr, 'l'},
        {"strict", no_argument, nullptr, 's'},
        {"watch", no_argument, nullptr, 'w'},
        {"help", no_argument, nullptr, 'h'},
        {"new", required_argument, nullptr, 'n'},
        {nullptr, 0, nullptr, 0},
    };
    std::vector<std::string> documents;
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
        else if (letter == 'n')
            documents.emplace_back(optarg);
        else
            return false; // getopt_long has said why.
    }
    arguments.isNew = !documents.empty();
    documents.insert(documents.end(), argv + optind, argv + argc);
    if (documents.size() == 1)
        arguments.document = documents.front();
    else if (!arguments.wantsHelp)
        std::cerr << "zelsh: " << (documents.empty() ? "no document" : "more than one document")
                  << "\n";
    return documents.size() == 1 || arguments.wantsHelp;
}

/// Goes on after a command that failed; false when there was one.
bool runFromInput(shading::Console& console)
{
    bool isGood = true;
    std::string line;
    while (!console.hasQuit() && std::getline(std::cin, line))
        isGood = console.run(line) && isGood;
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

/// The session that was asked for; empty, and said why, when there is none. A document that takes
/// its time to open has a line on standard error.
std::unique_ptr<shading::Session> begin(const Arguments& arguments)
{
    std::string problem;
    const auto environment = std::make_shared<shading::Environment>(arguments.plugin, problem);
    if (!problem.empty())
        std::cerr << "zelsh: plugin " << arguments.plugin << ": " << problem
                  << "; going on without it\n";
    std::vector<shading::Message> messages;
    bool isRead = true;
    for (const std::string& library : arguments.libraries)
        isRead = environment->addLibrary(library, messages) && isRead;
    std::unique_ptr<shading::Session> session;
    if (isRead && arguments.isNew) {
        session = shading::Session::createNew(environment, arguments.document, messages);
    } else if (isRead) {
        shading::ProgressLine line(std::cerr, terminalColumns(), "opening " + arguments.document,
                                   std::chrono::steady_clock::now);
        shading::OpenOptions options = arguments.options;
        options.progress = [&](int permille) {
            line.update(permille);
            return true;
        };
        session = shading::Session::open(environment, arguments.document, options, messages);
    }
    for (const shading::Message& message : messages)
        std::cerr << shading::messageText(message) << "\n";
    return session;
}

bool runCommands(shading::Console& console, const std::vector<std::string>& commands)
{
    bool isGood = true;
    for (std::size_t i = 0; i < commands.size() && !console.hasQuit(); ++i)
        isGood = console.run(commands[i]) && isGood;
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

    const std::unique_ptr<shading::Session> session = begin(arguments);
    if (!session)
        return kFailure;

    shading::Console console(*session, std::cout, std::cerr);
    shading::addAllCommands(console);
    std::unique_ptr<shading::Watcher> watcher;
    if (arguments.isWatched)
        watcher = std::make_unique<shading::Watcher>(session->document().getRootNode(), std::cout);
    bool isGood = true;
    if (!arguments.commands.empty())
        isGood = runCommands(console, arguments.commands);
    else if (isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0)
        shading::runFromTerminal(console);
    else
        isGood = runFromInput(console);
    return finish(isGood);
}
