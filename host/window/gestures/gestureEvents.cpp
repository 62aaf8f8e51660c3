// From events of the mouse and the keyboard to gestures and clicks.

#include "window/canvas/canvas.h"
#include "window/gestures/canvasMenus.h"
#include "window/gestures/connecting.h"
#include "window/gestures/gestures.h"
#include "window/gestures/selecting.h"
#include "window/gestures/wireGesture.h"
#include "window/workspace/workspace.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QWheelEvent>
#include <cmath>

namespace shading {

namespace {

constexpr double kPixelsOfNotch = 60; ///< That a notch of a wheel moves the view.
constexpr double kNotch = 120;
constexpr double kZoomOfNotch = 1.2;
constexpr double kNearDot = 12; ///< Where a click on a port is one, in pixels of the screen.

bool isNodePart(Hit::Kind kind)
{
    return kind == Hit::Kind::Header || kind == Hit::Kind::Badge || kind == Hit::Kind::Body;
}

bool isGround(Hit::Kind kind)
{
    return kind == Hit::Kind::Empty || kind == Hit::Kind::BackdropBody;
}

} // namespace

Pointer Gestures::pointerOf(const QPointF& pixel, Qt::KeyboardModifiers modifiers) const
{
    return {pixel, m_desk.canvas.toScene(pixel), modifiers};
}

void Gestures::mousePress(QMouseEvent* event)
{
    const Pointer pointer = pointerOf(event->position(), event->modifiers());
    m_lastPixel = pointer.pixel;
    m_desk.mouse = pointer.pixel;
    m_desk.workspace.flush(); // So that what is seen is what is there.
    if (m_gesture) {
        if (m_isFollowing && event->button() == Qt::LeftButton)
            m_press = Press{pointer, {}, event->button()};
        else if (m_isFollowing)
            cancel();
        return;
    }
    m_tip.clear();
    showRest();
    m_press = Press{pointer, m_desk.canvas.hitAt(pointer.pixel), event->button()};
    if (event->button() == Qt::MiddleButton || m_isSpaceDown)
        begin(*m_press, pointer);
    else if (event->button() == Qt::LeftButton && !m_isCutting)
        pressLeft(*m_press);
}

/// What is dragged is selected first.
void Gestures::pressLeft(const Press& press)
{
    if (!isNodePart(press.hit.kind) || !boxOf(press.hit).isNode())
        return;
    const NodePtr node = boxOf(press.hit).node;
    const bool isPlain = press.pointer.modifiers == Qt::NoModifier;
    const bool isAdded = press.pointer.modifiers == Qt::ShiftModifier;
    if ((isPlain || isAdded) && !m_desk.workspace.isSelected(*node))
        selectBy(m_desk.workspace, {node}, press.pointer.modifiers);
}

void Gestures::mouseMove(QMouseEvent* event)
{
    const Pointer pointer = pointerOf(event->position(), event->modifiers());
    m_lastPixel = pointer.pixel;
    m_desk.mouse = pointer.pixel;
    if (m_gesture) {
        m_gesture->move(pointer);
        return;
    }
    if (!m_press) {
        hover(pointer);
        return;
    }
    const QPointF way = pointer.pixel - m_press->pointer.pixel;
    if (way.manhattanLength() >= QApplication::startDragDistance()) {
        const Press press = *m_press;
        begin(press, pointer);
    }
}

void Gestures::mouseRelease(QMouseEvent* event)
{
    const Pointer pointer = pointerOf(event->position(), event->modifiers());
    m_lastPixel = pointer.pixel;
    if (!m_press || event->button() != m_press->button)
        return;
    if (m_gesture) {
        // The wire of a click is on its way until the next one.
        finish(pointer);
        return;
    }
    m_desk.workspace.flush();
    if (!m_press)
        return;
    const Press press = *m_press;
    m_press.reset();
    const QPointF way = pointer.pixel - press.pointer.pixel;
    if (way.manhattanLength() < QApplication::startDragDistance())
        click(press);
}

void Gestures::click(const Press& press)
{
    if (press.button == Qt::RightButton) {
        showMenuAt(press.hit, press.pointer.pixel.toPoint());
        return;
    }
    if (press.button != Qt::LeftButton || m_isCutting || m_isSpaceDown || !m_desk.canvas.scene())
        return;
    if (press.hit.isWire()) {
        clickWire(press);
    } else if (press.hit.kind == Hit::Kind::Port) {
        clickPort(press);
    } else if (press.hit.kind == Hit::Kind::BarRow) {
        m_commands.selectPort(
            boxOf(press.hit).ports[static_cast<std::size_t>(press.hit.port)].port);
    } else if (press.hit.kind == Hit::Kind::BarPlus) {
        pickNewPort(m_desk, boxOf(press.hit).kind == SceneBox::Kind::InputBar);
    } else if (isNodePart(press.hit.kind) && boxOf(press.hit).isNode()) {
        clickNode(press);
    } else if (press.hit.backdrop >= 0 && !isGround(press.hit.kind)) {
        m_commands.selectBackdrop(backdropOf(press.hit));
    } else if (isGround(press.hit.kind) && press.pointer.modifiers == Qt::NoModifier) {
        m_desk.workspace.select({});
        m_commands.selectNoWires();
    }
}

void Gestures::clickNode(const Press& press)
{
    const NodePtr node = boxOf(press.hit).node;
    const Qt::KeyboardModifiers modifiers = press.pointer.modifiers;
    if (modifiers == (Qt::ShiftModifier | Qt::AltModifier))
        selectStream(m_desk.workspace, {node}, true);
    else if (modifiers == (Qt::ControlModifier | Qt::AltModifier))
        selectStream(m_desk.workspace, {node}, false);
    else if (modifiers == Qt::ControlModifier || modifiers == Qt::NoModifier)
        selectBy(m_desk.workspace, {node}, modifiers);
}

/// Near its dot a wire begins, which the next click ends; else the node is meant.
void Gestures::clickPort(const Press& press)
{
    const SceneEnd end = press.hit.end();
    const PortPtr port = m_desk.canvas.scene()->port(end).port;
    const QPointF way =
        m_desk.canvas.toPixel(m_desk.canvas.scene()->dotOf(end)) - press.pointer.pixel;
    const bool isAtDot = port && std::hypot(way.x(), way.y()) <= kNearDot;
    if (isAtDot && press.pointer.modifiers == Qt::NoModifier) {
        begin(press, press.pointer);
        m_isFollowing = m_gesture != nullptr;
    } else if (boxOf(press.hit).isNode()) {
        clickNode(press);
    }
}

void Gestures::clickWire(const Press& press)
{
    const Scene* const scene = m_desk.canvas.scene();
    const SceneWire& wire = scene->wires()[static_cast<std::size_t>(press.hit.wire)];
    const PortPtr source = scene->port(wire.source).port;
    const PortPtr target = scene->port(wire.target).port;
    if (source && target)
        m_commands.selectWire(source, target, press.pointer.modifiers);
}

void Gestures::mouseDoubleClick(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        mousePress(event);
        return;
    }
    drop();
    showRest();
    const Pointer pointer = pointerOf(event->position(), event->modifiers());
    const Hit hit = m_desk.canvas.hitAt(pointer.pixel);
    if (!m_desk.canvas.scene())
        return;
    if (isGround(hit.kind)) {
        openSearch({pointer.place, {}});
    } else if (hit.backdrop >= 0) {
        m_commands.selectBackdrop(backdropOf(hit));
        m_commands.rename();
    } else if (hit.kind == Hit::Kind::BarRow) {
        m_commands.selectPort(boxOf(hit).ports[static_cast<std::size_t>(hit.port)].port);
        m_commands.rename();
    } else if (hit.box >= 0 && boxOf(hit).isNode()) {
        m_desk.workspace.select({boxOf(hit).node});
        if (boxOf(hit).node->isCompound())
            m_commands.enter();
        else if (hit.kind == Hit::Kind::Header)
            m_commands.rename();
    }
}

void Gestures::wheel(QWheelEvent* event)
{
    const QPointF turned = event->angleDelta();
    if ((event->modifiers() & Qt::ControlModifier) != 0) {
        m_desk.canvas.zoomAt(event->position(), std::pow(kZoomOfNotch, turned.y() / kNotch));
    } else {
        QPointF way = event->pixelDelta().isNull() ? turned * kPixelsOfNotch / kNotch
                                                   : QPointF(event->pixelDelta());
        if ((event->modifiers() & Qt::ShiftModifier) != 0 && way.x() == 0)
            way = way.transposed();
        m_desk.canvas.panBy(way);
    }
    event->accept();
    repeatMove(event->modifiers());
}

bool Gestures::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::NativeGesture) {
        const auto* const gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            m_desk.canvas.zoomAt(gesture->position(), 1 + gesture->value());
            return true;
        }
    }
    return QObject::eventFilter(object, event);
}

/// The gesture sees that the view or a modifier changed.
void Gestures::repeatMove(Qt::KeyboardModifiers modifiers)
{
    if (m_gesture)
        m_gesture->move(pointerOf(m_lastPixel, modifiers));
}

void Gestures::keyPress(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space) {
        if (!event->isAutoRepeat() && !m_gesture) {
            m_isSpaceDown = true;
            m_desk.canvas.setCursor(Qt::OpenHandCursor);
        }
        return;
    }
    repeatMove(event->modifiers());
    event->ignore();
}

void Gestures::keyRelease(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        m_isSpaceDown = false;
        showCursor(m_desk.canvas.hover());
        return;
    }
    repeatMove(event->modifiers());
    event->ignore();
}

void Gestures::hover(const Pointer& pointer)
{
    const Hit hit = m_desk.canvas.hitAt(pointer.pixel);
    m_desk.canvas.setHover(hit);
    showCursor(hit);
}

void Gestures::showCursor(const Hit& hit)
{
    Qt::CursorShape shape = Qt::ArrowCursor;
    if (m_isSpaceDown)
        shape = Qt::OpenHandCursor;
    else if (m_isCutting || hit.kind == Hit::Kind::Port || hit.kind == Hit::Kind::WireSource ||
             hit.kind == Hit::Kind::WireTarget)
        shape = Qt::CrossCursor;
    else if (hit.kind == Hit::Kind::BarPlus)
        shape = Qt::PointingHandCursor;
    else if (hit.kind == Hit::Kind::BackdropEdge)
        shape = hit.isRight && hit.isBottom ? Qt::SizeFDiagCursor
                : hit.isRight               ? Qt::SizeHorCursor
                                            : Qt::SizeVerCursor;
    m_desk.canvas.setCursor(shape);
}

void Gestures::contextMenu(QContextMenuEvent* event)
{
    // That of the mouse comes when the button goes up and the mouse did not move.
    if (event->reason() != QContextMenuEvent::Mouse)
        showMenu();
}

void Gestures::showMenu()
{
    const std::vector<int> boxes = m_desk.canvas.selectedBoxes();
    Hit hit;
    QPointF place = m_desk.canvas.view().centre();
    if (!boxes.empty()) {
        hit.kind = Hit::Kind::Header;
        hit.box = boxes.back();
        place = boxOf(hit).rect.center();
    }
    showMenuAt(hit, m_desk.canvas.toPixel(place).toPoint());
}

void Gestures::showMenuAt(const Hit& hit, const QPoint& pixel)
{
    if (!m_desk.canvas.scene())
        return;
    if (hit.box >= 0 && boxOf(hit).isNode() && !m_desk.workspace.isSelected(*boxOf(hit).node))
        m_desk.workspace.select({boxOf(hit).node});
    auto* const menu = new QMenu(&m_desk.canvas);
    menu->setObjectName(QStringLiteral("canvasMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillCanvasMenu(*menu, {*this, m_actions, hit, m_desk.canvas.toScene(QPointF(pixel))});
    if (hit.backdrop >= 0 && !isGround(hit.kind)) // After the menu saw what nodes are selected.
        m_commands.selectBackdrop(backdropOf(hit));
    menu->popup(m_desk.canvas.mapToGlobal(pixel));
}

void Gestures::leave()
{
    m_desk.mouse.reset();
    m_desk.canvas.setHover({});
}

void Gestures::focusIn(QFocusEvent* /*event*/) {}

void Gestures::focusOut(QFocusEvent* event)
{
    m_isSpaceDown = false;
    if (m_gesture && event->reason() != Qt::PopupFocusReason)
        cancel();
}

} // namespace shading
