#pragma once

#include "draw/zelLayeredLayout.h"

#include <utility>
#include <vector>

namespace zelDraw {

/// Pairs of boxes, source and target, that keep the box of LayoutBox::Layer::First before all
/// others and that of Last behind them, when they are led as edges: from the first to where the
/// edges of the others begin, and from where they end to the last. Edges that close a cycle lead
/// nowhere.
std::vector<std::pair<std::size_t, std::size_t>> layerBounds(const LayoutGraph& graph);

} // namespace zelDraw
