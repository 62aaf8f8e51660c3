#pragma once

#include "window/canvas/sceneParts.h"

#include <QLineF>
#include <QString>
#include <functional>
#include <vector>

namespace shading {

/// What a gesture shows on top of the canvas while it goes on. All places are in pixels of the
/// scene.
struct CanvasOverlay {
    enum class Verdict { None, Good, Bad };

    /// A connection that is being made: from a port, or to one, to the mouse.
    struct Wire {
        QPointF from; ///< Where it leaves to the right.
        QPointF to;
        int type = 0; ///< A type of the scene.
        Verdict verdict = Verdict::None;
    };

    std::vector<Wire> wires;
    SceneEnd over; ///< A port that a wire is led to: it gets a ring in the verdict's colour.
    Verdict overVerdict = Verdict::None;
    std::optional<QRectF> rubberBand;
    std::vector<QPointF> cut;   ///< The line that cuts; empty: none.
    std::vector<int> struck;    ///< The wires that it strikes: drawn in the colour of errors.
    int insertion = -1;         ///< The wire that a node would be inserted on.
    std::vector<QLineF> guides; ///< What things snap to.
    int barGap = -1;            ///< On the box `barGapBox`: the row before which a port would go.
    int barGapBox = -1;
    QString tip; ///< Near tipAt; empty: none.
    QPointF tipAt;
    Verdict tipVerdict = Verdict::None;
};

} // namespace shading
