#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zelDraw {

/// In pixels, to the right and down.
struct Point {
    double x = 0;
    double y = 0;
};

inline Point operator+(const Point& a, const Point& b)
{
    return {a.x + b.x, a.y + b.y};
}

/// The last point of each cubic Bézier curve is the first of the next: 3 * n + 1 points.
using Curve = std::vector<Point>;

/// A box of a given size to be placed. Edges come in on its left side and go out on its right.
struct LayoutBox {
    enum class Layer { Any, First, Last };

    int width = 0;
    int height = 0;
    std::vector<int> leftPorts;  ///< Their heights below the top; from 1 to height - 1, at least 2
                                 ///< apart, rising.
    std::vector<int> rightPorts; ///< Likewise.
    Layer layer = Layer::Any;    ///< First: the one box before all others; Last: behind them.
    Point place;                 ///< Filled by the layout: the upper left corner.
};

/// From a port on the right side of a box to one on the left side of a box, which may be the same.
struct LayoutEdge {
    std::size_t source = 0; ///< Indexes, from 0.
    std::size_t sourcePort = 0;
    std::size_t target = 0;
    std::size_t targetPort = 0;
    Curve curve; ///< Filled by the layout: begins and ends exactly at the ports.
};

struct LayoutGraph {
    std::vector<LayoutBox> boxes;
    std::vector<LayoutEdge> edges;
    double width = 0; ///< Filled by the layout, which begins at (0, 0).
    double height = 0;
};

/// Pairs of boxes, source and target, that keep the box of LayoutBox::Layer::First before all
/// others and that of Last behind them, when they are led as edges: from the first to where the
/// edges of the others begin, and from where they end to the last. Edges that close a cycle lead
/// nowhere.
std::vector<std::pair<std::size_t, std::size_t>> layerBounds(const LayoutGraph& graph);

/// Places boxes in layers from left to right and leads the edges between them as curves around the
/// boxes, with the `dot` engine of Graphviz, of which nothing else is used: neither its shapes nor
/// its fonts nor its writers. The same graph gives the same places. False, with the reason, when
/// the engine fails. Graphs of more than 300 boxes or 900 edges, and boxes of more than 65000
/// pixels, are too much for it: then layOutQuickly places them. May be called by any thread.
bool layOut(LayoutGraph& graph, std::string& problem);

} // namespace zelDraw
