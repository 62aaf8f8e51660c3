#pragma once

#include "window/canvas/canvasOverlay.h"
#include "window/canvas/canvasView.h"
#include "window/canvas/scene.h"

#include <functional>
#include <unordered_set>
#include <vector>

class QPainter;

namespace shading {

/// All that a picture of a scene depends on.
struct CanvasState {
    const Scene* scene = nullptr; ///< Null: nothing is shown.
    CanvasView view;
    std::vector<char> isSelected; ///< By the boxes of the scene.
    std::unordered_set<int> selectedWires;
    int focus = -1; ///< A box.
    Hit hover;
    std::vector<int> flashing; ///< Boxes.
    double flash = 0;          ///< From 0 to 1.
    std::function<bool(const SceneEnd&)> isDimmed;
    bool isDark = false;
};

/// Paints a scene.
class CanvasPainter {
public:
    /// In pixels of the view.
    void paint(QPainter& painter, const CanvasState& state, const QRectF& pixels);
    void paintOverlay(QPainter& painter, const CanvasState& state, const CanvasOverlay& overlay);
};

} // namespace shading
