#include "shadingShell.h"

#include "shadingCommandLine.h"

#include <ostream>

namespace shading {

namespace {

std::string usageOf(const Command& command)
{
    const std::string name = command.name;
    return *command.arguments == '\0' ? name : name + " " + command.arguments;
}

} // namespace

Shell::Shell(Container& container, std::ostream& out, std::ostream& err)
    : m_container(container),
      m_editor(container),
      m_out(out),
      m_err(err)
{
    add({
        {"help", "[COMMAND]", "What the commands do.", 0, 1, &Shell::help},
        {"quit", "", "Ends the session; so does the end of the input.", 0, 0, &Shell::quit},
    });
}

void Shell::add(const std::vector<Command>& commands)
{
    m_commands.insert(m_commands.end(), commands.begin(), commands.end());
}

bool Shell::run(const std::string& line)
{
    std::vector<std::string> words;
    std::string problem;
    m_running.clear();
    if (!splitCommand(line, words, problem))
        return fail(line, problem);
    if (words.empty())
        return true;
    const Command* const command = findCommand(words.front());
    if (!command)
        return fail(words.front(), "no such command; help lists them");
    m_running = command->name;
    words.erase(words.begin());
    const int count = static_cast<int>(words.size());
    if (count < command->minArguments || count > command->maxArguments)
        return fail(std::to_string(count) + " arguments", "usage: " + usageOf(*command));
    return command->run(*this, words);
}

bool Shell::fail(const std::string& subject, const std::string& reason)
{
    m_out.flush();
    m_err << "error: " << (m_running.empty() ? "" : m_running + ": ") << subject << ": " << reason
          << std::endl;
    return false;
}

ZEL::AddRefWrapper<ZEL::Node> Shell::nodeAt(const std::string& path)
{
    ZEL::AddRefWrapper<ZEL::Node> node = m_container.findNodeFromPath(path.c_str());
    if (!node)
        fail(path, "no such node");
    return node;
}

ZEL::AddRefWrapper<ZEL::Compound> Shell::compoundAt(const std::vector<std::string>& arguments)
{
    if (arguments.empty())
        return m_container.getRootNode()->getAsCompound();
    const ZEL::AddRefWrapper<ZEL::Node> node = nodeAt(arguments.front());
    if (!node)
        return nullptr;
    if (!node->isCompound())
        fail(arguments.front(), "not a compound");
    return node->getAsCompound();
}

const Command* Shell::findCommand(const std::string& name) const
{
    for (const Command& command : m_commands) {
        if (name == command.name)
            return &command;
    }
    return nullptr;
}

bool Shell::help(Shell& shell, const std::vector<std::string>& arguments)
{
    if (arguments.empty()) {
        for (const Command& command : shell.m_commands)
            shell.m_out << usageOf(command) << "\n    " << command.help << "\n";
        return true;
    }
    const Command* const command = shell.findCommand(arguments.front());
    if (!command)
        return shell.fail(arguments.front(), "no such command");
    shell.m_out << usageOf(*command) << "\n    " << command->help << "\n";
    return true;
}

bool Shell::quit(Shell& shell, const std::vector<std::string>& /*arguments*/)
{
    shell.m_hasQuit = true;
    return true;
}

} // namespace shading
