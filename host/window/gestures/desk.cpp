#include "window/gestures/desk.h"

#include "window/canvas/canvas.h"
#include "window/workspace/workspace.h"

#include <QSettings>
#include <cmath>

namespace shading {

namespace {

const QString kSnapKey = QStringLiteral("canvas/snap");

} // namespace

QPointF placeOfMouse(const Desk& desk)
{
    return desk.mouse ? desk.canvas.toScene(*desk.mouse) : desk.canvas.view().centre();
}

bool isSnapping()
{
    return QSettings().value(kSnapKey, true).toBool();
}

void setSnapping(bool isSnapping)
{
    QSettings().setValue(kSnapKey, isSnapping);
}

QPointF snapped(const QPointF& place)
{
    return {std::round(place.x() / kGridWidth) * kGridWidth,
            std::round(place.y() / kGridHeight) * kGridHeight};
}

Frame frameFor(const QRectF& rect)
{
    return {positionAt(rect.topLeft()), rect.width() / kPositionWidth,
            rect.height() / kPositionHeight};
}

std::vector<int> boxesOf(const Canvas& canvas, const std::vector<NodePtr>& nodes)
{
    std::vector<int> boxes;
    for (const NodePtr& node : nodes) {
        const int box = canvas.scene() ? canvas.scene()->boxOf(node.get()) : -1;
        if (box >= 0)
            boxes.push_back(box);
    }
    return boxes;
}

bool moveTo(Desk& desk, const NodePoints& points)
{
    const Scene* const scene = desk.canvas.scene();
    std::vector<NodePlace> places;
    for (const auto& [node, point] : points) {
        const int box = scene ? scene->boxOf(node.get()) : -1;
        const bool isThere =
            box >= 0 && (scene->boxes()[static_cast<std::size_t>(box)].rect.topLeft() - point)
                                .manhattanLength() < 0.01;
        if (!isThere)
            places.push_back({node, positionAt(point)});
    }
    return places.empty() || desk.workspace.edits().moveNodes(places);
}

} // namespace shading
