#include "draw/zelPictureStyle.h"
#include "window/canvas/scene.h"

#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr double kSnap = 20;         ///< Ports are caught from there, in pixels of the screen.
constexpr double kWireReach = 7;     ///< And wires.
constexpr double kEdgeReach = 5;     ///< And the edges of backdrops.
constexpr double kNearEnd = 1.0 / 3; ///< The part of a wire that is near an end.

} // namespace

void Scene::forBoxes(const QRectF& area, const std::function<void(int)>& call) const
{
    std::vector<int> found;
    m_data.boxGrid.query(area, [&](int box) {
        if (m_data.box(box).rect.intersects(area))
            found.push_back(box);
    });
    std::sort(found.begin(), found.end());
    std::for_each(found.begin(), found.end(), call);
}

void Scene::forWires(const QRectF& area, const std::function<void(int)>& call) const
{
    m_data.wireGrid.query(area, [&](int wire) {
        // Wider than it is: the curve costs more to find.
        const QPointF& from = m_data.wire(wire).from;
        const QPointF& to = m_data.wire(wire).to;
        const auto [left, right] = std::minmax({from.x(), to.x()});
        const auto [top, bottom] = std::minmax({from.y(), to.y()});
        if (left - WireCurve::kMostReach <= area.right() &&
            right + WireCurve::kMostReach >= area.left() && top <= area.bottom() &&
            bottom >= area.top())
            call(wire);
    });
}

int Scene::topBoxAt(const QPointF& point) const
{
    int top = -1;
    m_data.boxGrid.query(QRectF(point, QSizeF(0, 0)), [&](int box) {
        if (m_data.box(box).rect.contains(point))
            top = std::max(top, box);
    });
    return top;
}

QRectF Scene::barPlus(int box) const
{
    const QRectF& rect = m_data.box(box).rect;
    return {rect.left(), rect.bottom() - zelDraw::kEdgeRowHeight, rect.width(),
            static_cast<double>(zelDraw::kEdgeRowHeight)};
}

QRectF Scene::badge(int box) const
{
    const QRectF& rect = m_data.box(box).rect;
    return {rect.right() - zelDraw::kSignWidth - 4, rect.top() + 3,
            static_cast<double>(zelDraw::kSignWidth), 21};
}

Hit Scene::hitBox(int index, const QPointF& point, double scale) const
{
    const SceneBox& box = m_data.box(index);
    Hit hit;
    hit.box = index;
    hit.kind = Hit::Kind::Body;
    const double below = point.y() - box.rect.top();
    if (box.isBar()) {
        const auto row = static_cast<int>(below / zelDraw::kEdgeRowHeight);
        hit.port = row < static_cast<int>(box.ports.size()) ? row : -1;
        hit.kind = hit.port < 0 ? Hit::Kind::BarPlus : Hit::Kind::BarRow;
        return hit;
    }
    if (box.kind == SceneBox::Kind::Stub) {
        hit.kind = Hit::Kind::Port;
        hit.port = 0;
        return hit;
    }
    if (below < zelDraw::kBoxHeader) {
        const bool isBadge = box.kind == SceneBox::Kind::Compound && badge(index).contains(point);
        hit.kind = isBadge ? Hit::Kind::Badge : Hit::Kind::Header;
        return hit;
    }
    if (box.fold == Fold::Header || scale < kPortsFrom)
        return hit;
    const auto row = static_cast<int>((below - zelDraw::kBoxHeader) / zelDraw::kRowHeight);
    const int givers = static_cast<int>(box.ports.size()) - box.takers;
    const bool hasTaker = row < box.takers;
    const bool hasGiver = row < givers;
    const bool isLeft = point.x() < box.rect.center().x();
    // The row of what is omitted is no port's.
    const bool isOmitted = row == box.takers && box.omitted > 0 && isLeft;
    if (isOmitted || (!hasTaker && !hasGiver))
        return hit;
    hit.kind = Hit::Kind::Port;
    hit.port = hasTaker && (isLeft || !hasGiver) ? row : box.takers + row;
    return hit;
}

SceneEnd Scene::nearestDot(const QPointF& point,
                           double distance,
                           const std::function<bool(const SceneEnd&)>& filter) const
{
    SceneEnd nearest;
    double least = distance;
    const QRectF area(point.x() - distance, point.y() - distance, 2 * distance, 2 * distance);
    m_data.boxGrid.query(area, [&](int index) {
        const SceneBox& box = m_data.box(index);
        if (box.fold == Fold::Header || !box.rect.intersects(area))
            return;
        for (int i = 0; i < static_cast<int>(box.ports.size()); ++i) {
            const SceneEnd end = {index, i};
            const QPointF off = m_data.dotOf(end) - point;
            const double far = std::hypot(off.x(), off.y());
            if (far < least && (!filter || filter(end))) {
                least = far;
                nearest = end;
            }
        }
    });
    return nearest;
}

SceneEnd Scene::portAt(const QPointF& point,
                       double scale,
                       const std::function<bool(const SceneEnd&)>& filter) const
{
    const int top = topBoxAt(point);
    if (top >= 0) {
        const SceneEnd end = hitBox(top, point, scale).end();
        if (end.isValid() && (!filter || filter(end)))
            return end;
    }
    return scale < kPortsFrom ? SceneEnd{} : nearestDot(point, kSnap / scale, filter);
}

Hit Scene::hitWire(const QPointF& point, double scale) const
{
    Hit hit;
    double least = kWireReach / scale;
    const QRectF area(point.x() - least, point.y() - least, 2 * least, 2 * least);
    forWires(area, [&](int wire) {
        double part = 0;
        const double distance = m_data.wire(wire).curve().distance(point, &part);
        if (distance >= least)
            return;
        least = distance;
        hit.wire = wire;
        hit.kind = part < kNearEnd       ? Hit::Kind::WireSource
                   : part > 1 - kNearEnd ? Hit::Kind::WireTarget
                                         : Hit::Kind::WireMiddle;
    });
    return hit;
}

Hit Scene::hitBackdrop(const QPointF& point, double scale) const
{
    const double reach = kEdgeReach / scale;
    for (int i = static_cast<int>(m_data.backdrops.size()) - 1; i >= 0; --i) {
        const QRectF& rect = m_data.backdrops[static_cast<std::size_t>(i)].rect;
        if (!rect.adjusted(-reach, -reach, reach, reach).contains(point))
            continue;
        Hit hit;
        hit.backdrop = i;
        hit.isRight = point.x() > rect.right() - reach;
        hit.isBottom = point.y() > rect.bottom() - reach;
        if (hit.isRight || hit.isBottom)
            hit.kind = Hit::Kind::BackdropEdge;
        else if (point.y() < rect.top() + zelDraw::kFrameHeader)
            hit.kind = Hit::Kind::BackdropTitle;
        else
            hit.kind = Hit::Kind::BackdropBody;
        return hit;
    }
    return {};
}

Hit Scene::hitAt(const QPointF& point, double scale) const
{
    const int top = topBoxAt(point);
    const bool isOnNode = top >= 0 && !m_data.box(top).isBar();
    if (isOnNode)
        return hitBox(top, point, scale);
    if (scale >= kPortsFrom) {
        const SceneEnd dot = nearestDot(point, kSnap / scale, {});
        // A row of a bar is its own but for the dot.
        const bool isNear =
            dot.isValid() && (top < 0 || std::abs(m_data.dotOf(dot).x() - point.x()) * scale < 8);
        if (isNear) {
            Hit hit;
            hit.kind = Hit::Kind::Port;
            hit.box = dot.box;
            hit.port = dot.port;
            return hit;
        }
    }
    if (top >= 0)
        return hitBox(top, point, scale);
    const Hit wire = hitWire(point, scale);
    return wire.isWire() ? wire : hitBackdrop(point, scale);
}

} // namespace shading
