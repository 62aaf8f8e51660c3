#include "shell/terminal.h"

#include "console/completion.h"
#include "console/console.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <readline/history.h>
#include <readline/readline.h>
#include <termios.h>
#include <unistd.h>

namespace shading {

namespace {

Console* g_console =
    nullptr; ///< Not owned. The one that the terminal runs: readline knows no other.
char g_noCharacters[] = "";
constexpr int kAbortKey = '\a'; ///< Control-G.
int g_interruptKey = -1;        ///< The terminal's, Control-C as a rule; -1: it has none.
bool g_isDropped = false;       ///< The line that was read is not to be run.
volatile std::sig_atomic_t g_isInterrupted = 0; ///< The command that runs was.

/// Readline takes the whole line for the word, as no character breaks it: so the rules of quotes
/// stand in one place. The first match takes the line's place, the others are shown.
char** completeLine(const char* line, int /*start*/, int /*end*/)
{
    rl_attempted_completion_over = 1;
    rl_completion_suppress_append = 1;
    const Completion found = complete(g_console->commands(), g_console->document(), line);
    const std::size_t count = found.candidates.size();
    if (count == 0)
        return nullptr;
    const std::string completed = std::string(line).substr(0, found.start) + found.text;
    const std::size_t shown = count == 1 ? 0 : count;
    // Readline frees the matches and their table.
    char** const matches = static_cast<char**>(std::calloc(shown + 2, sizeof(char*)));
    if (!matches)
        return nullptr;
    matches[0] = strdup(completed.c_str());
    for (std::size_t i = 0; i < shown; ++i)
        matches[i + 1] = strdup(found.candidates[i].c_str());
    return matches;
}

/// While a line is typed the interrupt is a key like others, so that nothing happens in the middle
/// of editing; while a command runs it is the signal.
void prepareTerminal(int meta)
{
    rl_prep_terminal(meta);
    termios settings = {};
    if (tcgetattr(fileno(rl_instream), &settings) != 0)
        return;
    settings.c_cc[VINTR] = _POSIX_VDISABLE;
    tcsetattr(fileno(rl_instream), TCSADRAIN, &settings);
}

int dropLine(int /*count*/, int /*key*/)
{
    g_isDropped = true;
    rl_echo_signal_char(SIGINT);
    return rl_newline(1, '\n');
}

/// The question whether to show many completions, and the pager for them, know the abort key only.
int readKey(std::FILE* input)
{
    const int key = rl_getc(input);
    const bool isAsking = RL_ISSTATE(RL_STATE_COMPLETING) && RL_ISSTATE(RL_STATE_MOREINPUT);
    if (key != g_interruptKey || !isAsking)
        return key;
    rl_stuff_char(key); // Read behind the question, it drops the line.
    return kAbortKey;
}

void noteInterrupt(int /*signal*/)
{
    g_isInterrupted = 1;
}

void setUpInterrupt()
{
    struct sigaction action = {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = SA_RESTART; // What a command reads or writes goes on.
    sigaction(SIGINT, &action, nullptr);
    termios settings = {};
    if (tcgetattr(STDIN_FILENO, &settings) != 0 || settings.c_cc[VINTR] == _POSIX_VDISABLE)
        return;
    g_interruptKey = settings.c_cc[VINTR];
    rl_initialize(); // Reads the user's settings, which may bind the key otherwise.
    for (Keymap map : {emacs_standard_keymap, vi_insertion_keymap, vi_movement_keymap})
        rl_bind_key_in_map(g_interruptKey, dropLine, map);
    rl_prep_term_function = prepareTerminal;
    rl_getc_function = readKey;
}

/// False at the end of the input.
bool runLine(Console& console)
{
    g_isDropped = false;
    const std::unique_ptr<char, void (*)(void*)> line(readline("zelsh> "), std::free);
    if (!line)
        std::cout << std::endl;
    if (!line || g_isDropped)
        return static_cast<bool>(line);
    if (*line != '\0')
        add_history(line.get());
    g_isInterrupted = 0;
    console.run(line.get());
    std::cout.flush();
    return true;
}

} // namespace

void runFromTerminal(Console& console)
{
    g_console = &console;
    rl_readline_name = "zelsh";
    rl_completer_word_break_characters = g_noCharacters;
    rl_attempted_completion_function = completeLine;
    setUpInterrupt();
    console.stopScriptsWhen([] { return g_isInterrupted != 0; });
    bool isWarned = false;
    while (true) {
        const bool isAtEnd = !runLine(console) || console.hasQuit();
        if (isAtEnd && (isWarned || console.session().isSaved()))
            break;
        // Only at once: the next `quit` after more edits warns again.
        isWarned = isAtEnd;
        console.resume();
        if (isAtEnd)
            std::cerr << "warning: edits are not saved: `save` writes them, `quit` again "
                         "drops them"
                      << std::endl;
    }
    g_console = nullptr;
}

} // namespace shading
