#pragma once

#include <functional>

namespace shading {

class Actions;
class Gestures;

/// Adds all that keys and menus do on the canvas. The function gives the gestures of the document
/// in front, null when there is none.
void addCanvasActions(Actions& actions, const std::function<Gestures*()>& front);

} // namespace shading
