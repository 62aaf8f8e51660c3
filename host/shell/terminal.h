#pragma once

namespace shading {

class Console;

/// Runs the lines that are typed on the terminal, with line editing, history and completion, until
/// `quit` or the end of the input. What fails is on the screen and is no failure of the session.
/// With edits that were not saved it warns, and ends when that follows again at once. Control-C
/// drops the line that is typed; while a command runs it stops scripts before their next line.
void runFromTerminal(Console& console);

} // namespace shading
