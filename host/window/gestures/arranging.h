#pragma once

#include "window/gestures/desk.h"

namespace shading {

// The places of the selected nodes. Each is one edit, and refuses with a reason where there is
// nothing to do.

enum class Align { Left, Right, Top, Bottom, Middle, Centre };

/// All on the edge of the outermost one; Centre and Middle: on the line down, or across, the middle
/// of them all.
bool align(Desk& desk, Align align);
/// With gaps of one size between them, from the first to the last.
bool distribute(Desk& desk, Qt::Orientation orientation);
/// So many steps of the grid to the right and down. Those that follow within a second are one edit.
bool nudge(Desk& desk, int right, int down);
/// In layers along their connections; the node that was selected first stays.
bool arrange(Desk& desk);

} // namespace shading
