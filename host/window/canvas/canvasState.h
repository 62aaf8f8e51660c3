#pragma once

#include "window/canvas/canvasView.h"
#include "window/canvas/scene.h"

#include <functional>
#include <unordered_set>
#include <vector>

namespace shading {

/// All that a picture of a scene depends on.
struct CanvasState {
    const Scene* scene = nullptr; ///< Null: nothing is shown.
    CanvasView view;
    std::vector<char> isSelected; ///< By the boxes of the scene.
    std::vector<int> selected;    ///< The boxes.
    std::unordered_set<int> selectedWires;
    std::vector<SceneEnd> selectedRows; ///< Of bars.
    int selectedBackdrop = -1;
    std::vector<char> isShown; ///< By the boxes; empty: all are.
    int focus = -1;            ///< A box.
    Hit hover;
    std::vector<int> flashing;                     ///< Boxes.
    double flash = 0;                              ///< From 0 to 1.
    std::function<bool(const SceneEnd&)> isDimmed; ///< Empty: no port is.
    bool isDark = false;
};

} // namespace shading
