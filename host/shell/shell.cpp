#include "shell/shell.h"

#include "base/commandLine.h"
#include "shell/help.h"

#include <algorithm>
#include <ostream>

namespace shading {

Shell::Shell(Session& session, std::ostream& out, std::ostream& err)
    : m_session(session),
      m_out(out),
      m_err(err)
{
    add(
        {
            {"help", "[COMMAND]",
             "What the commands do. Without an argument all of them, a line each.", 0, 1,
             &Shell::help, "command", "help connect"},
            {"source", "FILE",
             "Runs the commands in a file, one a line. A line may be empty or a comment, which\n"
             "    begins with `#`. Stops at the first that fails and fails itself: the error has\n"
             "    FILE:LINE: before it; what was done until then stays and can be undone. A FILE "
             "in\n"
             "    a script is looked up beside that script; `quit` ends the session.",
             1, 1, &Shell::source, "file", "source examples/scripts/tidy_wall.zelsh"},
            {"quit", "",
             "Ends the session; so does the end of the input. On a terminal, edits that were not\n"
             "    saved are told first, and the next `quit` or Control-D ends. Control-C drops "
             "the\n"
             "    line that is typed, or stops a script before its next line.",
             0, 0, &Shell::quit},
        },
        "The session");
}

void Shell::add(const std::vector<Command>& commands, const char* title)
{
    for (const Command& command : commands) {
        m_commands.push_back(command);
        m_commands.back().group = title;
    }
}

bool Shell::run(const std::string& given)
{
    // Lines of a file from another system end in a carriage return.
    const bool hasReturn = !given.empty() && given.back() == '\r';
    const std::string line(given, 0, given.size() - (hasReturn ? 1 : 0));
    std::vector<std::string> words;
    std::string problem;
    m_running.clear();
    m_hasReported = false;
    const std::size_t zero = line.find('\0');
    if (zero != std::string::npos)
        return fail(line.substr(0, zero), "a byte of value 0 follows");
    if (!splitCommand(line, words, problem))
        return fail(line, problem);
    if (words.empty())
        return true;
    const Command* const command = findCommand(words.front());
    if (!command)
        return fail(words.front(), noSuchCommand(words.front()));
    m_running = command->name;
    words.erase(words.begin());
    takeOptions(*command, words);
    const int count = static_cast<int>(words.size());
    if (count < command->minArguments || count > command->maxArguments)
        return fail(std::to_string(count) + " arguments", "usage: " + usageOf(*command));
    return command->run(*this, words);
}

bool Shell::runScript(const std::string& path)
{
    std::string problem;
    if (!m_scripts.enter(path, problem))
        return fail(path, problem);
    // Each turn looks the script up again: running a line may move the stack.
    for (std::size_t i = 0; i < m_scripts.current().lines.size() && !m_hasQuit; ++i) {
        ++m_scripts.current().line;
        const std::string text = m_scripts.current().lines[i];
        m_running = "source";
        if (m_isStopped && m_isStopped())
            fail("interrupted", "the script stops before this line");
        else if (run(text))
            continue;
        // A check that finds something has printed that and reports no error.
        if (!m_hasReported)
            fail("failed", "the script stops here");
        const int line = m_scripts.current().line;
        m_scripts.leave();
        m_running = "source";
        return m_scripts.isEmpty() ? false : fail(path, "stopped at line " + std::to_string(line));
    }
    m_scripts.leave();
    return true;
}

bool Shell::fail(const std::string& subject, const std::string& reason)
{
    m_out.flush();
    m_hasReported = true;
    m_err << m_scripts.place() << "error: " << (m_running.empty() ? "" : m_running + ": ")
          << subject << ": " << reason << std::endl;
    return false;
}

bool Shell::report(bool isDone)
{
    const Edits::Problem& problem = edits().problem();
    return isDone || fail(problem.subject, problem.reason);
}

ZEL::AddRefWrapper<ZEL::Node> Shell::nodeAt(const std::string& path)
{
    ZEL::AddRefWrapper<ZEL::Node> node = document().findNodeFromPath(path.c_str());
    if (!node)
        fail(path, "no such node");
    return node;
}

ZEL::AddRefWrapper<ZEL::Compound> Shell::compoundAt(const std::vector<std::string>& arguments)
{
    if (arguments.empty())
        return document().getRootNode()->getAsCompound();
    const ZEL::AddRefWrapper<ZEL::Node> node = nodeAt(arguments.front());
    if (!node)
        return nullptr;
    if (!node->isCompound())
        fail(arguments.front(), "not a compound");
    return node->getAsCompound();
}

bool Shell::hasOption(const std::string& option) const
{
    return std::find(m_given.begin(), m_given.end(), option) != m_given.end();
}

const Command* Shell::findCommand(const std::string& name) const
{
    for (const Command& command : m_commands) {
        if (name == command.name)
            return &command;
    }
    return nullptr;
}

std::string Shell::noSuchCommand(const std::string& word) const
{
    const std::string nearest = nearestCommand(m_commands, word);
    return nearest.empty() ? "no such command; help lists them"
                           : "no such command; did you mean \"" + nearest + "\"?";
}

void Shell::takeOptions(const Command& command, std::vector<std::string>& words)
{
    std::vector<std::string> known;
    std::string ignored;
    splitCommand(command.options, known, ignored);
    const auto isOption = [&](const std::string& word) {
        return std::find(known.begin(), known.end(), word) != known.end();
    };
    m_given.clear();
    std::copy_if(words.begin(), words.end(), std::back_inserter(m_given), isOption);
    words.erase(std::remove_if(words.begin(), words.end(), isOption), words.end());
}

bool Shell::help(Shell& shell, const std::vector<std::string>& arguments)
{
    const Command* const command =
        arguments.empty() ? nullptr : shell.findCommand(arguments.front());
    if (!arguments.empty() && !command)
        return shell.fail(arguments.front(), shell.noSuchCommand(arguments.front()));
    shell.m_out << (command ? helpText(*command) : overviewText(shell.m_commands));
    return true;
}

bool Shell::source(Shell& shell, const std::vector<std::string>& arguments)
{
    return shell.runScript(arguments.front());
}

bool Shell::quit(Shell& shell, const std::vector<std::string>& /*arguments*/)
{
    shell.m_hasQuit = true;
    return true;
}

} // namespace shading
