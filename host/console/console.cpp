#include "console/console.h"

#include "base/commandLine.h"
#include "console/help.h"
#include "document/names.h"

#include <algorithm>
#include <cctype>
#include <ostream>
#include <sstream>

namespace shading {

const char* const kNested = "a graph inside a graph: the format has them, but its own library "
                            "follows no reference to one";

Console::Console(Session& session, std::ostream& out, std::ostream& err)
    : m_session(session),
      m_out(out),
      m_err(err)
{
    add(
        {
            {"help", "[COMMAND]",
             "What the commands do. Without an argument all of them, a line each.", 0, 1,
             &Console::help, "command", "help connect"},
            {"source", "FILE",
             "Runs the commands in a file, one a line. A line may be empty or a comment, which\n"
             "    begins with `#`. Stops at the first that fails and fails itself: the error has\n"
             "    FILE:LINE: before it; what was done until then stays and can be undone. A FILE "
             "in\n"
             "    a script is looked up beside that script; `quit` ends the session.",
             1, 1,
             [](Console& console, const Arguments& words) {
                 return console.runScript(words.front());
             },
             "file", "source examples/scripts/tidy_wall.zelsh"},
            {"quit", "",
             "Ends the session; so does the end of the input. On a terminal, edits that were not\n"
             "    saved are told first, and the next `quit` or Control-D ends. Control-C drops "
             "the\n"
             "    line that is typed, or stops a script before its next line.",
             0, 0,
             [](Console& console, const Arguments& /*words*/) { return console.m_hasQuit = true; }},
        },
        "The session");
}

void Console::add(const std::vector<Command>& commands, const char* title)
{
    for (const Command& command : commands) {
        m_commands.push_back(command);
        m_commands.back().group = title;
    }
}

bool Console::run(const std::string& given)
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
    if (!takeOptions(*command, words))
        return false;
    const int count = static_cast<int>(words.size());
    if (count < command->minArguments || count > command->maxArguments)
        return fail(std::to_string(count) + " arguments", "usage: " + usageOf(*command));
    return command->run(*this, words);
}

bool Console::runScript(const std::string& path)
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

bool Console::fail(const std::string& subject, const std::string& reason)
{
    m_out.flush();
    m_hasReported = true;
    m_err << m_scripts.place() << "error: " << (m_running.empty() ? "" : m_running + ": ")
          << subject << ": " << reason << std::endl;
    return false;
}

void Console::noteIfNested(const NodePtr& node)
{
    if (!node->isCompound() || m_hasNotedNested)
        return;
    const CompoundPtr around = node->getParentCompound();
    m_hasNotedNested = around && around->getAsNode()->getParentCompound();
    for (const NodePtr& inner : node->getAsCompound()->nodes())
        m_hasNotedNested = m_hasNotedNested || inner->isCompound();
    if (m_hasNotedNested)
        m_err << "note: " << pathOf(*node) << ": " << kNested << "\n";
}

bool Console::report(bool isDone)
{
    const Edits::Problem& problem = edits().problem();
    return isDone || fail(problem.subject, problem.reason);
}

bool Console::report(bool isDone, const std::vector<SaveProblem>& problems)
{
    for (const SaveProblem& problem : problems)
        fail(problem.path, problem.reason);
    return isDone;
}

bool Console::print(const std::string& text)
{
    m_out << text;
    return true;
}

NodePtr Console::nodeAt(const Arguments& arguments, std::size_t index)
{
    if (index >= arguments.size())
        return document().getRootNode();
    NodePtr node = edits().findNode(arguments[index]);
    report(node != nullptr);
    return node;
}

CompoundPtr Console::compoundAt(const Arguments& arguments, std::size_t index)
{
    if (index >= arguments.size())
        return document().getRootNode()->getAsCompound();
    CompoundPtr compound = edits().findCompound(arguments[index]);
    report(compound != nullptr);
    return compound;
}

bool Console::childrenOf(ZEL::Compound& compound,
                         const Arguments& arguments,
                         std::size_t first,
                         std::vector<NodePtr>& nodes)
{
    for (std::size_t i = first; i < arguments.size(); ++i) {
        nodes.push_back(edits().findChild(compound, arguments[i]));
        if (!report(nodes.back() != nullptr))
            return false;
    }
    return true;
}

std::string Console::optionValue(const std::string& option) const
{
    const auto found = m_given.find(option);
    return found == m_given.end() ? "" : found->second;
}

const Command* Console::findCommand(const std::string& name) const
{
    for (const Command& command : m_commands) {
        if (name == command.name)
            return &command;
    }
    return nullptr;
}

std::string Console::noSuchCommand(const std::string& word) const
{
    const std::string nearest = nearestCommand(m_commands, word);
    return nearest.empty() ? "no such command; help lists them"
                           : "no such command; did you mean \"" + nearest + "\"?";
}

bool Console::takeOptions(const Command& command, Arguments& words)
{
    const auto known = optionsOf(command);
    m_given.clear();
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const auto option = std::find_if(known.begin(), known.end(),
                                         [&](const auto& o) { return o.first == words[i]; });
        if (option != known.end())
            m_given[option->first] = option->second.empty() || ++i == words.size() ? "" : words[i];
        else if (!known.empty() && words[i].rfind("--", 0) == 0)
            return fail(words[i], "no such option");
        else
            arguments.push_back(words[i]);
    }
    words = std::move(arguments);
    return true;
}

bool Console::help(Console& console, const Arguments& arguments)
{
    const Command* const command =
        arguments.empty() ? nullptr : console.findCommand(arguments.front());
    if (!arguments.empty() && !command)
        return console.fail(arguments.front(), console.noSuchCommand(arguments.front()));
    return console.print(command ? helpText(*command) : overviewText(console.m_commands));
}

void addAllCommands(Console& console)
{
    console.add(viewCommands(), "Looking");
    console.add(drawCommands(), "Looking");
    console.add(libraryCommands(), "Definitions");
    console.add(editCommands(), "Editing");
    console.add(fileCommands(), "Files");
}

std::vector<std::pair<std::string, std::string>> optionsOf(const Command& command)
{
    std::vector<std::pair<std::string, std::string>> options;
    std::istringstream words(command.options);
    for (std::string word; words >> word;) {
        const std::size_t end = std::min(word.find('='), word.size());
        options.emplace_back(word.substr(0, end), word.substr(std::min(end + 1, word.size())));
    }
    return options;
}

} // namespace shading
