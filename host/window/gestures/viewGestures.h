#pragma once

#include "window/gestures/gesture.h"

namespace shading {

/// Moves what is seen with the mouse.
class PanGesture : public Gesture {
public:
    PanGesture(Desk& desk, const Pointer& start) : Gesture(desk), m_last(start.pixel) {}
    void move(const Pointer& pointer) override;
    void finish(const Pointer& pointer) override;
    Qt::CursorShape cursor() const override { return Qt::ClosedHandCursor; }

private:
    QPointF m_last;
};

/// Selects the nodes that a rectangle touches; with Shift besides those that are selected, with
/// Ctrl what was not selected of them and no more what was.
class BandGesture : public Gesture {
public:
    BandGesture(Desk& desk, const Pointer& start) : Gesture(desk), m_start(start.place) {}
    void move(const Pointer& pointer) override;
    void finish(const Pointer& pointer) override;
    Qt::CursorShape cursor() const override { return Qt::CrossCursor; }

private:
    QPointF m_start;
};

} // namespace shading
