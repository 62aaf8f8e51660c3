#pragma once

#include <QPointF>

class QContextMenuEvent;
class QFocusEvent;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace shading {

/// Who is told of what the user does on a canvas. Places in the events are pixels of the canvas. A
/// key or wheel event that is not wanted is ignored by `event->ignore()`.
class CanvasInput {
public:
    CanvasInput() = default;
    CanvasInput(const CanvasInput&) = delete;
    CanvasInput& operator=(const CanvasInput&) = delete;
    virtual ~CanvasInput();

    virtual void mousePress(QMouseEvent* event) = 0;
    virtual void mouseMove(QMouseEvent* event) = 0;
    virtual void mouseRelease(QMouseEvent* event) = 0;
    virtual void mouseDoubleClick(QMouseEvent* event) = 0;
    virtual void wheel(QWheelEvent* event) = 0;
    virtual void keyPress(QKeyEvent* event) = 0;
    virtual void keyRelease(QKeyEvent* event) = 0;
    virtual void contextMenu(QContextMenuEvent* event) = 0;
    /// The mouse is no longer over the canvas.
    virtual void leave() = 0;
    virtual void focusIn(QFocusEvent* event) = 0;
    virtual void focusOut(QFocusEvent* event) = 0;
    /// The scene has changed or is another one: indexes into it mean nothing any more.
    virtual void sceneChanged() = 0;
};

} // namespace shading
