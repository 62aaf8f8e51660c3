#pragma once

#include "window/gestures/gesture.h"
#include "window/gestures/wireJudge.h"

#include <utility>
#include <vector>

namespace shading {

/// Leads a wire to another port: a new one, one end of one that is there, or all that leave an
/// output. It is told over each port whether it fits and why not; the edit decides on the drop. A
/// drop on a node takes its first free port that fits; one on the last row of a bar makes a port. A
/// drop in the empty takes off a wire that was there; a new one gets a node to be chosen.
class WireGesture : public Gesture {
public:
    using Wire = std::pair<PortPtr, PortPtr>; ///< Source and target.

    /// A new wire from or to the port.
    static std::unique_ptr<WireGesture> begin(Desk& desk, const PortPtr& port);
    /// A wire that is there; its target, or its source, moves.
    static std::unique_ptr<WireGesture> grab(Desk& desk, const Wire& wire, bool movesTarget);
    /// All that leave the output, which is connected.
    static std::unique_ptr<WireGesture> grabAll(Desk& desk, const PortPtr& output);

    void move(const Pointer& pointer) override;
    void finish(const Pointer& pointer) override;
    Qt::CursorShape cursor() const override { return Qt::CrossCursor; }

private:
    /// What a drop would do.
    struct Aim {
        enum class Kind { Empty, Port, NewPort, Nothing };
        Kind kind = Kind::Empty;
        PortPtr port;        ///< Where the wire would go.
        std::string subject; ///< Of a refusal.
        std::string problem; ///< Empty: none.
        SceneEnd end;        ///< Of the port, where it is shown.
    };

    WireGesture(Desk& desk, std::vector<PortPtr> fixed, bool seeksTarget);
    void dim();
    Aim aimAt(const Pointer& pointer) const;
    Aim aimAtPort(const SceneEnd& end) const;
    QString tipOf(const Aim& aim) const;
    bool isOwnPlace(const Aim& aim) const;
    void drop(const Aim& aim, const Pointer& pointer);
    bool connect(Edits& edits, const PortPtr& port) const;
    bool connectToNewPort(Edits& edits) const;

    WireJudge m_judge;
    Wire m_wire;      ///< That was grabbed; empty: another gesture.
    PortPtr m_output; ///< Whose wires all move; empty: another gesture.
};

/// The overlay's wire from or to the port, whose other end is at the place.
CanvasOverlay::Wire looseWire(const Canvas& canvas, const LooseWire& wire, const QPointF& place);

} // namespace shading
