#pragma once

#include "draw/zelLayeredLayout.h"

namespace zelDraw {

/// Places boxes in layers from left to right, as layOut does, in little more than linear time: for
/// graphs that are too large for the engine, and for those that somebody waits for. Parts that are
/// not connected stand beside and below each other. Edges are led straight from port to port and
/// may run below boxes. The same graph gives the same places.
void layOutQuickly(LayoutGraph& graph);

} // namespace zelDraw
