#include "shadingTerminal.h"

#include "shadingCompletion.h"
#include "shadingShell.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <readline/history.h>
#include <readline/readline.h>

namespace shading {

namespace {

Shell* g_shell = nullptr; ///< Not owned. The one that the terminal runs: readline knows no other.
char g_noCharacters[] = "";

/// Readline takes the whole line for the word, as no character breaks it: so the rules of quotes
/// stand in one place. The first match takes the line's place, the others are shown.
char** completeLine(const char* line, int /*start*/, int /*end*/)
{
    rl_attempted_completion_over = 1;
    rl_completion_suppress_append = 1;
    const Completion found = complete(g_shell->commands(), g_shell->container(), line);
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

} // namespace

void runFromTerminal(Shell& shell)
{
    g_shell = &shell;
    rl_readline_name = "zelsh";
    rl_completer_word_break_characters = g_noCharacters;
    rl_attempted_completion_function = completeLine;
    while (!shell.hasQuit()) {
        char* const line = readline("zelsh> ");
        if (!line) {
            std::cout << std::endl;
            break;
        }
        if (*line != '\0')
            add_history(line);
        shell.run(line);
        std::cout.flush();
        std::free(line);
    }
    g_shell = nullptr;
}

} // namespace shading
