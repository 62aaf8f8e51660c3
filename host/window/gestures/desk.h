#pragma once

#include "document/pointers.h"

#include <QPointF>
#include <QRectF>
#include <Qt>
#include <functional>
#include <optional>

namespace shading {

class Canvas;
class ScreenMemory;
struct Frame;
class Workspace;

/// A wire whose other end is still to be found.
struct LooseWire {
    PortPtr port;             ///< The end that is fixed.
    bool seeksTarget = false; ///< It is a source.
};

/// Where a node is wanted, and what it is to be connected to.
struct NodeWish {
    QPointF place; ///< In pixels of the scene.
    std::optional<LooseWire> wire;
};

/// What everything that the user does on one canvas works on. Nothing is owned.
struct Desk {
    Canvas& canvas;
    Workspace& workspace;
    ScreenMemory& memory;
    std::optional<QPointF> mouse; ///< The pixel of the canvas that it is over; empty: elsewhere.
    /// Lets the user choose a node to be made.
    std::function<void(const NodeWish& wish)> search;
};

/// The place in the scene that the mouse is at, or else the middle of what is seen.
QPointF placeOfMouse(const Desk& desk);

/// Kept in the settings; true at first.
bool isSnapping();
void setSnapping(bool isSnapping);
/// The nearest point of the grid that is drawn.
QPointF snapped(const QPointF& place);

/// The frame of a backdrop that is shown as that rectangle.
Frame frameFor(const QRectF& rect);
/// The boxes of the nodes that are shown.
std::vector<int> boxesOf(const Canvas& canvas, const std::vector<NodePtr>& nodes);

/// Nodes and where each is to stand: its upper left corner, in pixels of the scene.
using NodePoints = std::vector<std::pair<NodePtr, QPointF>>;
/// One edit, to be run in another one or alone. Those that stand there already are left out.
bool moveTo(Desk& desk, const NodePoints& points);

} // namespace shading
