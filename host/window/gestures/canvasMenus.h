#pragma once

#include "window/canvas/sceneParts.h"

#include <QPointF>

class QMenu;

namespace shading {

class Actions;
class Gestures;

/// What a menu is about.
struct MenuPlace {
    Gestures& gestures;
    Actions& actions;
    Hit hit;
    QPointF place; ///< In pixels of the scene.
};

/// All that can be done with what lies there, so that the mouse alone does everything.
void fillCanvasMenu(QMenu& menu, const MenuPlace& place);

} // namespace shading
