#pragma once

#include "window/gestures/gesture.h"

#include <vector>

namespace shading {

/// Takes off all wires that a line across the canvas strikes.
class CutGesture : public Gesture {
public:
    CutGesture(Desk& desk, const Pointer& start) : Gesture(desk), m_line{start.place} {}
    void move(const Pointer& pointer) override;
    void finish(const Pointer& pointer) override;
    Qt::CursorShape cursor() const override { return Qt::CrossCursor; }

private:
    std::vector<int> struck() const;

    std::vector<QPointF> m_line;
};

} // namespace shading
