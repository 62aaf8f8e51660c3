#include "window/gestures/arranging.h"

#include "document/names.h"
#include "draw/zelLayeredLayout.h"
#include "window/canvas/canvas.h"
#include "window/canvas/scenePlaces.h"
#include "window/workspace/workspace.h"

#include <QObject>
#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace shading {

namespace {

struct Placed {
    NodePtr node;
    int box;
    QRectF rect;
};

/// The selected nodes that are shown, in the order in which they were selected.
std::vector<Placed> selectedOn(const Desk& desk)
{
    std::vector<Placed> placed;
    const Scene* const scene = desk.canvas.scene();
    for (const NodePtr& node : desk.workspace.selection()) {
        const int box = scene ? scene->boxOf(node.get()) : -1;
        if (box >= 0)
            placed.push_back({node, box, scene->boxes()[static_cast<std::size_t>(box)].rect});
    }
    return placed;
}

bool refuseFewer(Desk& desk, const QString& what, std::size_t least, std::size_t count)
{
    if (count >= least)
        return false;
    desk.workspace.refuse(what, least == 1 ? QObject::tr("no node is selected")
                                           : QObject::tr("select at least %1 nodes").arg(least));
    return true;
}

QPointF cornerFor(const QRectF& rect, const QRectF& around, Align align)
{
    QRectF moved = rect;
    switch (align) {
    case Align::Left:
        moved.moveLeft(around.left());
        break;
    case Align::Right:
        moved.moveRight(around.right());
        break;
    case Align::Top:
        moved.moveTop(around.top());
        break;
    case Align::Bottom:
        moved.moveBottom(around.bottom());
        break;
    case Align::Centre:
        moved.moveCenter({around.center().x(), rect.center().y()});
        break;
    case Align::Middle:
        moved.moveCenter({rect.center().x(), around.center().y()});
        break;
    }
    return moved.topLeft();
}

bool moveAs(Desk& desk, const QString& title, const NodePoints& points)
{
    return desk.workspace.editAs(title, [&](Edits& /*edits*/) { return moveTo(desk, points); });
}

zelDraw::LayoutGraph graphOf(const Scene& scene, const std::vector<Placed>& placed)
{
    zelDraw::LayoutGraph graph;
    std::unordered_map<int, std::size_t> places;
    for (const Placed& one : placed) {
        const SceneBox& box = scene.boxes()[static_cast<std::size_t>(one.box)];
        places[one.box] = graph.boxes.size();
        zelDraw::LayoutBox laid;
        laid.leftPorts = heightsOf(box, true);
        laid.rightPorts = heightsOf(box, false);
        laid.width = static_cast<int>(std::ceil(box.size.width()));
        const int left = laid.leftPorts.empty() ? 0 : laid.leftPorts.back();
        const int right = laid.rightPorts.empty() ? 0 : laid.rightPorts.back();
        laid.height =
            std::max({static_cast<int>(std::ceil(box.size.height())), left + 1, right + 1});
        graph.boxes.push_back(laid);
    }
    for (const SceneWire& wire : scene.wires()) {
        const auto source = wire.isAlive ? places.find(wire.source.box) : places.end();
        const auto target = wire.isAlive ? places.find(wire.target.box) : places.end();
        if (source == places.end() || target == places.end())
            continue;
        const int takers = scene.boxes()[static_cast<std::size_t>(wire.source.box)].takers;
        graph.edges.push_back({source->second,
                               static_cast<std::size_t>(wire.source.port - takers),
                               target->second,
                               static_cast<std::size_t>(wire.target.port),
                               {}});
    }
    return graph;
}

} // namespace

bool align(Desk& desk, Align align)
{
    const std::vector<Placed> placed = selectedOn(desk);
    if (refuseFewer(desk, QObject::tr("align"), 2, placed.size()))
        return false;
    QRectF around;
    for (const Placed& one : placed)
        around |= one.rect;
    NodePoints points;
    for (const Placed& one : placed)
        points.emplace_back(one.node, cornerFor(one.rect, around, align));
    return moveAs(desk, QObject::tr("Align %1 nodes").arg(placed.size()), points);
}

bool distribute(Desk& desk, Qt::Orientation orientation)
{
    std::vector<Placed> placed = selectedOn(desk);
    if (refuseFewer(desk, QObject::tr("distribute"), 3, placed.size()))
        return false;
    const bool isFlat = orientation == Qt::Horizontal;
    const auto begin = [&](const QRectF& rect) { return isFlat ? rect.left() : rect.top(); };
    const auto length = [&](const QRectF& rect) { return isFlat ? rect.width() : rect.height(); };
    std::sort(placed.begin(), placed.end(), [&](const Placed& a, const Placed& b) {
        return begin(a.rect) + length(a.rect) / 2 < begin(b.rect) + length(b.rect) / 2;
    });
    double room =
        begin(placed.back().rect) + length(placed.back().rect) - begin(placed.front().rect);
    for (const Placed& one : placed)
        room -= length(one.rect);
    const double count = static_cast<double>(placed.size() - 1);
    const double gap = room / count;
    const auto middle = [&](const QRectF& rect) { return begin(rect) + length(rect) / 2; };
    const double step = (middle(placed.back().rect) - middle(placed.front().rect)) / count;
    double next = begin(placed.front().rect);
    double nextMiddle = middle(placed.front().rect);
    NodePoints points;
    for (const Placed& one : placed) {
        if (gap < 0) // There is no room for gaps: then their middles are apart.
            next = nextMiddle - length(one.rect) / 2;
        nextMiddle += step;
        points.emplace_back(one.node, isFlat ? QPointF(next, one.rect.top())
                                             : QPointF(one.rect.left(), next));
        next += length(one.rect) + gap;
    }
    return moveAs(desk, QObject::tr("Distribute %1 nodes").arg(placed.size()), points);
}

bool nudge(Desk& desk, int right, int down)
{
    desk.workspace.flush(); // The places that the step before gave.
    const std::vector<Placed> placed = selectedOn(desk);
    if (refuseFewer(desk, QObject::tr("nudge"), 1, placed.size()))
        return false;
    std::string key = "nudge";
    NodePoints points;
    for (const Placed& one : placed) {
        const QPointF corner = one.rect.topLeft() + QPointF(right * kGridWidth, down * kGridHeight);
        // What stands on the grid stays on it, however often its place was written and read.
        const QPointF near = snapped(corner);
        points.emplace_back(one.node, (near - corner).manhattanLength() < 0.01 ? near : corner);
        key += ' ' + pathOf(*one.node);
    }
    const History::Repeating repeating(desk.workspace.history(), key);
    return desk.workspace.edit([&](Edits& /*edits*/) { return moveTo(desk, points); });
}

bool arrange(Desk& desk)
{
    const std::vector<Placed> placed = selectedOn(desk);
    const QString what = QObject::tr("arrange");
    if (refuseFewer(desk, what, 2, placed.size()))
        return false;
    zelDraw::LayoutGraph graph = graphOf(*desk.canvas.scene(), placed);
    std::string problem;
    if (!zelDraw::layOut(graph, problem)) {
        desk.workspace.refuse(what, QString::fromStdString(problem));
        return false;
    }
    const auto pointAt = [&](std::size_t i) {
        return QPointF(graph.boxes[i].place.x, graph.boxes[i].place.y);
    };
    const QPointF shift = placed.front().rect.topLeft() - pointAt(0);
    NodePoints points;
    for (std::size_t i = 0; i < placed.size(); ++i)
        points.emplace_back(placed[i].node, pointAt(i) + shift);
    return moveAs(desk, QObject::tr("Arrange %1 nodes").arg(placed.size()), points);
}

} // namespace shading
