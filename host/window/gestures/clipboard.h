#pragma once

#include "window/gestures/desk.h"

namespace shading {

// The selected nodes as text of the format, on the clipboard of the system: other documents, other
// windows and text editors take it.

/// False when nothing is selected, or a node cannot be copied; refused with the reason.
bool copySelection(Desk& desk);
/// Copies and deletes, without healing.
bool cutSelection(Desk& desk);
bool canPaste();
/// Pastes where the mouse is, else in the middle of what is seen. What is made is selected. With
/// incoming wires the copies have those from outside of the text, too.
bool paste(Desk& desk, bool withIncoming);
/// Makes the selected nodes once more beside themselves.
bool duplicate(Desk& desk);

} // namespace shading
