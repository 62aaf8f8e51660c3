#pragma once

#include "window/canvas/sceneData.h"

namespace shading {

class Document;

/// What a backdrop shows around boxes: with room for its title.
QRectF aroundBoxes(const QRectF& boxes);

/// Reads the backdrops of the compound into the arrays: those with a frame, and around their nodes,
/// which have their places, those without. Gives the area that looks different now.
QRectF readBackdrops(Document& document, ZEL::Compound& compound, SceneData& data);

} // namespace shading
