#pragma once

#include "window/canvas/canvasOverlay.h"
#include "window/gestures/desk.h"

#include <Qt>

namespace shading {

/// Where the mouse is.
struct Pointer {
    QPointF pixel; ///< Of the canvas.
    QPointF place; ///< Of the scene.
    Qt::KeyboardModifiers modifiers;
};

/// What goes on from a press of the mouse to its release. Until it is finished it changes nothing:
/// one that is destroyed before leaves no trace.
class Gesture {
public:
    /// The desk is not owned and must outlive the gesture.
    explicit Gesture(Desk& desk) : m_desk(desk) {}
    Gesture(const Gesture&) = delete;
    Gesture& operator=(const Gesture&) = delete;
    /// Takes off all that it showed.
    virtual ~Gesture();

    /// The mouse moved, or a modifier was pressed or released.
    virtual void move(const Pointer& pointer) = 0;
    /// The mouse was released there: makes the edit, one at most. Called once, then the gesture
    /// goes.
    virtual void finish(const Pointer& pointer) = 0;
    virtual Qt::CursorShape cursor() const { return Qt::ArrowCursor; }

protected:
    Desk& desk() const { return m_desk; }
    /// Takes off the overlay, the dimming and the offset of nodes.
    void clear();

private:
    Desk& m_desk;
};

} // namespace shading
