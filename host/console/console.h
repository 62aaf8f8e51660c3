#pragma once

#include "console/script.h"
#include "session/session.h"

#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace shading {

class Console;
using Arguments = std::vector<std::string>;

/// One command. The texts live as long as the program.
struct Command {
    const char* name;
    const char* arguments; ///< As shown in the help: "[PATH]", "" for none.
    const char* help;      ///< One or more lines, without the last line end.
    int minArguments;
    int maxArguments;
    /// False when it failed: it has reported why with Console::fail.
    bool (*run)(Console& console, const Arguments& arguments);

    // What may be left out; see console/completion.h for the kinds of the arguments.
    const char* kinds = "";
    const char* example = ""; ///< One line.
    /// Words that may stand anywhere among the arguments: "--all --depth=n". Behind one with "="
    /// follows a word of that kind. No other word may begin with "--".
    const char* options = "";
    const char* group = ""; ///< The title that it was added under.
};

/// Runs commands, given as lines of text, on the document of one session.
class Console {
public:
    /// Nothing given is owned; all must outlive the console. Knows `help`, `source` and
    /// `quit`.
    Console(Session& session, std::ostream& out, std::ostream& err);

    /// Adds commands to the table; a name is used once. The help shows them below the title.
    void add(const std::vector<Command>& commands, const char* title = "More");

    /// Runs one line, without its end or with a carriage return there. An empty line and a comment
    /// do nothing. False when there is no such command, it has the wrong number of arguments, or it
    /// failed; the reason is on err.
    bool run(const std::string& given);
    /// Runs the lines of a script until one fails. False then, or when the script cannot be read;
    /// the reason is on err, with "FILE:LINE: " before it where a line failed.
    bool runScript(const std::string& path);
    /// True after `quit`: the caller reads no more lines.
    bool hasQuit() const { return m_hasQuit; }
    /// Takes `quit` back: the session goes on.
    void resume() { m_hasQuit = false; }
    /// Before each line of a script that is asked; when it says true, the line fails instead.
    void stopScriptsWhen(std::function<bool()> isStopped) { m_isStopped = std::move(isStopped); }

    // For commands.
    Session& session() { return m_session; }
    Document& document() { return m_session.document(); }
    Edits& edits() { return m_session.edits(); }
    std::ostream& out() { return m_out; }
    const std::vector<Command>& commands() const { return m_commands; }
    /// True when the running command was given that option of its own.
    bool hasOption(const std::string& option) const { return m_given.count(option) > 0; }
    /// The word behind it; empty without one.
    std::string optionValue(const std::string& option) const;
    /// Prints what a command answers. Returns true.
    bool print(const std::string& text);
    /// Reports that the running command failed: "error: COMMAND: SUBJECT: REASON", in a script with
    /// "FILE:LINE: " before it. Returns false.
    bool fail(const std::string& subject, const std::string& reason);
    /// Says on err, the first time only, that the node is a graph inside a graph, or has one
    /// inside: "note: PATH: TEXT".
    void noteIfNested(const NodePtr& node);
    /// Passes on whether an edit was done, and reports why it was refused.
    bool report(bool isDone);
    bool report(bool isDone, const std::vector<SaveProblem>& problems);
    /// The node at the path that is that argument, the root node without it; empty, and reported,
    /// when the path names none.
    NodePtr nodeAt(const Arguments& arguments, std::size_t index = 0);
    /// Its compound likewise.
    CompoundPtr compoundAt(const Arguments& arguments, std::size_t index = 0);
    /// Adds the nodes of the compound that are called as the arguments from that one on. False, and
    /// reported, when there is none of a name.
    bool childrenOf(ZEL::Compound& compound,
                    const Arguments& arguments,
                    std::size_t first,
                    std::vector<NodePtr>& nodes);

private:
    const Command* findCommand(const std::string& name) const;
    /// What is wrong with a word that names no command.
    std::string noSuchCommand(const std::string& word) const;
    bool takeOptions(const Command& command, Arguments& words);
    static bool help(Console& console, const Arguments& arguments);

    Session& m_session;
    std::ostream& m_out;
    std::ostream& m_err;
    std::vector<Command> m_commands;
    std::string m_running;                      ///< The name of the command that runs.
    std::map<std::string, std::string> m_given; ///< Its options and their words.
    bool m_hasReported = false;                 ///< The line that runs has said why it fails.
    bool m_hasQuit = false;
    bool m_hasNotedNested = false;
    std::function<bool()> m_isStopped; ///< Empty: nothing stops scripts.
    ScriptStack m_scripts;
};

/// What is to be known of a graph inside a graph.
extern const char* const kNested;

/// The commands that show a network and change nothing.
const std::vector<Command>& viewCommands();
/// The commands that show what the runtime offers.
const std::vector<Command>& libraryCommands();
/// The commands that change a network: what they ask for, Edits does.
const std::vector<Command>& editCommands();
/// Those among them that are about nodes, and about the frames around them.
const std::vector<Command>& nodeCommands();
const std::vector<Command>& backdropCommands();
const std::vector<Command>& arrangeCommands();
/// The commands that write the document into files.
const std::vector<Command>& fileCommands();
/// The command that writes a picture of a network and changes nothing.
const std::vector<Command>& drawCommands();

/// All of them, under their titles.
void addAllCommands(Console& console);

/// The options of a command, each without the kind of the word behind it, with that kind.
std::vector<std::pair<std::string, std::string>> optionsOf(const Command& command);

} // namespace shading
