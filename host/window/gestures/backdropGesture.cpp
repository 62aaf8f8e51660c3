#include "window/gestures/backdropGesture.h"

#include "document/backdrops.h"
#include "edits/positions.h"
#include "window/canvas/canvas.h"
#include "window/workspace/workspace.h"

#include <QObject>
#include <algorithm>

namespace shading {

BackdropGesture::BackdropGesture(Desk& desk, const Hit& hit, const Pointer& start)
    : Gesture(desk),
      m_hit(hit),
      m_start(start.place)
{
    const SceneBackdrop& shown =
        desk.canvas.scene()->backdrops()[static_cast<std::size_t>(hit.backdrop)];
    m_backdrop = shown.backdrop;
    m_rect = shown.rect;
}

Qt::CursorShape BackdropGesture::cursor() const
{
    if (m_hit.kind == Hit::Kind::BackdropTitle)
        return Qt::SizeAllCursor;
    if (m_hit.isRight && m_hit.isBottom)
        return Qt::SizeFDiagCursor;
    return m_hit.isRight ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

/// The rectangle that a drop would give it: on the grid, unless that is off.
QRectF BackdropGesture::rectAt(const Pointer& pointer) const
{
    const bool isInverted = (pointer.modifiers & Qt::ControlModifier) != 0;
    const auto placed = [&](const QPointF& corner) {
        const QPointF moved = corner + pointer.place - m_start;
        return isSnapping() == isInverted ? moved : snapped(moved);
    };
    QRectF rect = m_rect;
    if (m_hit.kind == Hit::Kind::BackdropTitle) {
        rect.moveTopLeft(placed(m_rect.topLeft()));
        return rect;
    }
    const QPointF corner = placed(m_rect.bottomRight());
    if (m_hit.isRight)
        rect.setRight(std::max(corner.x(), rect.left() + 3 * kGridWidth));
    if (m_hit.isBottom)
        rect.setBottom(std::max(corner.y(), rect.top() + 2 * kGridHeight));
    return rect;
}

void BackdropGesture::move(const Pointer& pointer)
{
    const QRectF rect = rectAt(pointer);
    if (m_hit.kind == Hit::Kind::BackdropTitle)
        desk().canvas.setOffset(boxesOf(desk().canvas, m_backdrop->nodes()),
                                rect.topLeft() - m_rect.topLeft());
    CanvasOverlay overlay;
    overlay.guides = {{rect.topLeft(), rect.topRight()},
                      {rect.topRight(), rect.bottomRight()},
                      {rect.bottomRight(), rect.bottomLeft()},
                      {rect.bottomLeft(), rect.topLeft()}};
    desk().canvas.setOverlay(std::move(overlay));
}

bool BackdropGesture::moveContent(Edits& edits, const QRectF& rect) const
{
    const Scene& scene = *desk().canvas.scene();
    NodePoints points;
    for (const NodePtr& node : m_backdrop->nodes()) {
        const int box = scene.boxOf(node.get());
        if (box >= 0)
            points.emplace_back(node, scene.boxes()[static_cast<std::size_t>(box)].rect.topLeft() +
                                          rect.topLeft() - m_rect.topLeft());
    }
    // One that stands around its nodes goes with them.
    return moveTo(desk(), points) && (!frameOf(desk().workspace.document(), *m_backdrop) ||
                                      edits.setBackdropFrame(m_backdrop, frameFor(rect)));
}

void BackdropGesture::finish(const Pointer& pointer)
{
    const QRectF rect = rectAt(pointer);
    clear();
    if (rect == m_rect)
        return;
    Workspace& workspace = desk().workspace;
    if (m_hit.kind != Hit::Kind::BackdropTitle) {
        workspace.edit(
            [&](Edits& edits) { return edits.setBackdropFrame(m_backdrop, frameFor(rect)); });
        return;
    }
    const std::vector<NodePtr> nodes = m_backdrop->nodes();
    const bool isWhole = frameOf(workspace.document(), *m_backdrop) &&
                         std::all_of(nodes.begin(), nodes.end(), [&](const NodePtr& node) {
                             return positionOf(workspace.document(), node).has_value();
                         });
    // Where the document has all places, it is the one edit that the shell has, too.
    if (isWhole)
        workspace.edit([&](Edits& edits) {
            return edits.moveBackdrop(m_backdrop, positionAt(rect.topLeft()));
        });
    else
        workspace.editAs(QObject::tr("Move %1").arg(QString::fromStdString(m_backdrop->name())),
                         [&](Edits& edits) { return moveContent(edits, rect); });
}

} // namespace shading
