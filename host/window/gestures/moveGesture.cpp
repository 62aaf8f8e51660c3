#include "window/gestures/moveGesture.h"

#include "window/canvas/canvas.h"
#include "window/workspace/workspace.h"

#include <QObject>
#include <algorithm>

namespace shading {

namespace {

bool isConnectedAtAll(ZEL::Node& node)
{
    for (ZEL::PortList* const list : {&node.inputs(), &node.outputs()}) {
        for (ZEL::Port* const port : *list) {
            if (port->isConnected())
                return true;
        }
    }
    return false;
}

} // namespace

MoveGesture::MoveGesture(Desk& desk, std::vector<NodePtr> nodes, const Pointer& start)
    : Gesture(desk),
      m_nodes(std::move(nodes)),
      m_start(start.place),
      m_mayInsert(m_nodes.size() == 1 && !isConnectedAtAll(*m_nodes.front()))
{
}

QPointF MoveGesture::offsetAt(const Pointer& pointer) const
{
    const QPointF way = pointer.place - m_start;
    const bool isInverted = (pointer.modifiers & Qt::ControlModifier) != 0;
    const std::vector<int> boxes = boxesOf(desk().canvas, {m_nodes.front()});
    if (isSnapping() == isInverted || boxes.empty())
        return way;
    // While it is dragged, the scene has the box where it is drawn: asked without the offset.
    desk().canvas.setOffset({}, {});
    const SceneBox& box = desk().canvas.scene()->boxes()[static_cast<std::size_t>(boxes.front())];
    return snapped(box.rect.topLeft() + way) - box.rect.topLeft();
}

/// The wire that the node would be inserted into; -1 without one.
int MoveGesture::wireUnder(const Pointer& pointer) const
{
    const Scene* const scene = desk().canvas.scene();
    if (!m_mayInsert || (pointer.modifiers & Qt::AltModifier) != 0)
        return -1;
    const int box = scene->boxOf(m_nodes.front().get());
    if (box < 0)
        return -1;
    const QRectF rect = scene->boxes()[static_cast<std::size_t>(box)].rect;
    int best = -1;
    double least = std::min(rect.width(), rect.height()) / 2;
    scene->forWires(rect, [&](int index) {
        const SceneWire& wire = scene->wires()[static_cast<std::size_t>(index)];
        const double distance = wire.curve().distance(rect.center());
        const PortPtr& source = scene->port(wire.source).port;
        const PortPtr& target = scene->port(wire.target).port;
        if (distance >= least || !source || !target)
            return;
        const Edits::Insertion insertion =
            desk().workspace.edits().insertionFor(m_nodes.front(), source, target);
        if (insertion.problem.empty()) {
            best = index;
            least = distance;
        }
    });
    return best;
}

void MoveGesture::move(const Pointer& pointer)
{
    const QPointF offset = offsetAt(pointer);
    desk().canvas.setOffset(boxesOf(desk().canvas, m_nodes), offset);
    CanvasOverlay overlay;
    overlay.insertion = wireUnder(pointer);
    desk().canvas.setOverlay(std::move(overlay));
}

void MoveGesture::finish(const Pointer& pointer)
{
    move(pointer);
    const Scene* const scene = desk().canvas.scene();
    PortPtr source;
    PortPtr target;
    if (const int wire = desk().canvas.overlay().insertion; wire >= 0) {
        source = scene->port(scene->wires()[static_cast<std::size_t>(wire)].source).port;
        target = scene->port(scene->wires()[static_cast<std::size_t>(wire)].target).port;
    }
    NodePoints points;
    for (const NodePtr& node : m_nodes) {
        const int box = scene->boxOf(node.get());
        if (box >= 0)
            points.emplace_back(node, scene->boxes()[static_cast<std::size_t>(box)].rect.topLeft());
    }
    clear();
    if (!source) {
        desk().workspace.edit([&](Edits& /*edits*/) { return moveTo(desk(), points); });
        return;
    }
    const QString title = QObject::tr("Insert %1").arg(m_nodes.front()->getName());
    desk().workspace.editAs(title, [&](Edits& edits) {
        return moveTo(desk(), points) && edits.insertNode(m_nodes.front(), source, target);
    });
}

} // namespace shading
