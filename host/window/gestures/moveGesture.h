#pragma once

#include "window/gestures/gesture.h"

#include <vector>

namespace shading {

/// Moves nodes with the mouse. On the grid, unless that is off; Ctrl inverts it. A single node
/// without connections is inserted into the wire that it is dropped on; Alt suspends that.
class MoveGesture : public Gesture {
public:
    /// The first of the nodes is the one that the mouse is on: it is the one that snaps.
    MoveGesture(Desk& desk, std::vector<NodePtr> nodes, const Pointer& start);
    void move(const Pointer& pointer) override;
    void finish(const Pointer& pointer) override;
    Qt::CursorShape cursor() const override { return Qt::SizeAllCursor; }

private:
    QPointF offsetAt(const Pointer& pointer) const;
    int wireUnder(const Pointer& pointer) const;

    std::vector<NodePtr> m_nodes;
    QPointF m_start;
    bool m_mayInsert = false;
};

} // namespace shading
