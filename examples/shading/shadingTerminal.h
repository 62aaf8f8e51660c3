#pragma once

namespace shading {

class Shell;

/// Runs the lines that are typed on the terminal, with line editing, history and completion, until
/// `quit` or the end of the input. What fails is on the screen and is no failure of the session.
void runFromTerminal(Shell& shell);

} // namespace shading
