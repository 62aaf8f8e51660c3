#include "window/gestures/cutGesture.h"

#include "window/canvas/canvas.h"
#include "window/workspace/workspace.h"

#include <QLineF>
#include <QObject>
#include <algorithm>

namespace shading {

namespace {

constexpr int kPieces = 24; ///< Of a curve.

bool crosses(const WireCurve& curve, const std::vector<QPointF>& line)
{
    QPointF from = curve.at(0);
    for (int i = 1; i <= kPieces; ++i) {
        const QPointF to = curve.at(static_cast<double>(i) / kPieces);
        const QLineF piece(from, to);
        for (std::size_t k = 1; k < line.size(); ++k) {
            if (piece.intersects(QLineF(line[k - 1], line[k]), nullptr) ==
                QLineF::BoundedIntersection)
                return true;
        }
        from = to;
    }
    return false;
}

} // namespace

std::vector<int> CutGesture::struck() const
{
    QRectF area(m_line.front(), QSizeF(0, 0));
    for (const QPointF& point : m_line) {
        area.setCoords(std::min(area.left(), point.x()), std::min(area.top(), point.y()),
                       std::max(area.right(), point.x()), std::max(area.bottom(), point.y()));
    }
    std::vector<int> wires;
    const Scene* const scene = desk().canvas.scene();
    scene->forWires(area, [&](int index) {
        const SceneWire& wire = scene->wires()[static_cast<std::size_t>(index)];
        // A source that the network does not show cannot be taken off.
        if (scene->port(wire.source).port && scene->port(wire.target).port &&
            crosses(wire.curve(), m_line))
            wires.push_back(index);
    });
    std::sort(wires.begin(), wires.end());
    return wires;
}

void CutGesture::move(const Pointer& pointer)
{
    m_line.push_back(pointer.place);
    CanvasOverlay overlay;
    overlay.cut = m_line;
    overlay.struck = struck();
    desk().canvas.setOverlay(std::move(overlay));
}

void CutGesture::finish(const Pointer& pointer)
{
    move(pointer);
    const Scene* const scene = desk().canvas.scene();
    std::vector<std::pair<PortPtr, PortPtr>> wires;
    for (const int index : struck()) {
        const SceneWire& wire = scene->wires()[static_cast<std::size_t>(index)];
        wires.emplace_back(scene->port(wire.source).port, scene->port(wire.target).port);
    }
    clear();
    if (wires.empty())
        return;
    const auto cut = [&](Edits& edits) {
        return std::all_of(wires.begin(), wires.end(), [&](const auto& wire) {
            return edits.disconnect(wire.first, wire.second);
        });
    };
    if (wires.size() == 1)
        desk().workspace.edit(cut);
    else
        desk().workspace.editAs(QObject::tr("Cut %1 wires").arg(wires.size()), cut);
}

} // namespace shading
