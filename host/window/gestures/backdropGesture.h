#pragma once

#include "window/canvas/sceneParts.h"
#include "window/gestures/gesture.h"

#include <memory>

namespace shading {

class Backdrop;
class Edits;

/// Moves a backdrop with the nodes that it contains, or one of its edges.
class BackdropGesture : public Gesture {
public:
    /// The hit is on the title or an edge of a backdrop.
    BackdropGesture(Desk& desk, const Hit& hit, const Pointer& start);
    void move(const Pointer& pointer) override;
    void finish(const Pointer& pointer) override;
    Qt::CursorShape cursor() const override;

private:
    QRectF rectAt(const Pointer& pointer) const;
    bool moveContent(Edits& edits, const QRectF& rect) const;

    std::shared_ptr<Backdrop> m_backdrop;
    Hit m_hit;
    QRectF m_rect; ///< Before the gesture.
    QPointF m_start;
};

} // namespace shading
