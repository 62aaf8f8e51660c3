#pragma once

#include "window/gestures/gesture.h"

namespace shading {

/// Gives an inner port of the compound another place on its bar.
class BarGesture : public Gesture {
public:
    BarGesture(Desk& desk, PortPtr port) : Gesture(desk), m_port(std::move(port)) {}
    void move(const Pointer& pointer) override;
    void finish(const Pointer& pointer) override;
    Qt::CursorShape cursor() const override { return Qt::SizeVerCursor; }

private:
    int gapAt(const Pointer& pointer, const SceneEnd& end) const;

    PortPtr m_port;
};

} // namespace shading
