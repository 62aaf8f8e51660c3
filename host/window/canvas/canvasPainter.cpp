#include "window/canvas/canvasPainter.h"

#include "draw/zelTheme.h"

#include <QPainter>
#include <QPainterPath>

namespace shading {

namespace {

QColor colourOf(const Scene& scene, int type)
{
    return QColor(zelDraw::typeColour(scene.texts().type(type), false));
}

QPainterPath painterPathOf(const WireCurve& curve)
{
    QPainterPath path(curve.control[0]);
    path.cubicTo(curve.control[1], curve.control[2], curve.control[3]);
    return path;
}

} // namespace

void CanvasPainter::paint(QPainter& painter, const CanvasState& state, const QRectF& pixels)
{
    painter.fillRect(pixels, state.isDark ? QColor("#1d2025") : QColor("#f4f6f9"));
    if (!state.scene)
        return;
    const Scene& scene = *state.scene;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const CanvasView& view = state.view;
    painter.translate(view.toPixel(QPointF()));
    painter.scale(view.scale(), view.scale());
    const QRectF area = view.toScene(pixels);
    scene.forWires(area, [&](int wire) {
        const SceneWire& shown = scene.wires()[static_cast<std::size_t>(wire)];
        painter.setPen(
            QPen(colourOf(scene, shown.type), state.selectedWires.count(wire) > 0 ? 4 : 2));
        painter.drawPath(painterPathOf(shown.curve()));
    });
    scene.forBoxes(area.adjusted(-10, -10, 10, 10), [&](int index) {
        const SceneBox& box = scene.boxes()[static_cast<std::size_t>(index)];
        const bool isSelected = state.isSelected[static_cast<std::size_t>(index)] != 0;
        painter.setPen(QPen(isSelected ? Qt::red : Qt::gray, isSelected ? 2 : 1));
        painter.setBrush(state.isDark ? QColor("#2b2f36") : QColor(Qt::white));
        painter.drawRoundedRect(box.rect, 6, 6);
        painter.setPen(state.isDark ? Qt::white : Qt::black);
        painter.drawText(box.rect.topLeft() + QPointF(12, 17), scene.texts().text(box.title));
        for (int i = 0; i < static_cast<int>(box.ports.size()); ++i) {
            const QPointF dot = scene.dotOf({index, i});
            painter.setBrush(colourOf(scene, box.ports[static_cast<std::size_t>(i)].type));
            painter.drawEllipse(dot, 4.5, 4.5);
        }
    });
    painter.restore();
}

void CanvasPainter::paintOverlay(QPainter& painter,
                                 const CanvasState& state,
                                 const CanvasOverlay& overlay)
{
    painter.setPen(state.isDark ? Qt::white : Qt::black);
    if (overlay.rubberBand)
        painter.drawRect(state.view.toPixel(*overlay.rubberBand));
    if (!overlay.tip.isEmpty())
        painter.drawText(state.view.toPixel(overlay.tipAt), overlay.tip);
    for (const CanvasOverlay::Wire& wire : overlay.wires)
        painter.drawLine(state.view.toPixel(wire.from), state.view.toPixel(wire.to));
}

} // namespace shading
