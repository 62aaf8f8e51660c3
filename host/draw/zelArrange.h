#pragma once

#include "draw/zelPicture.h"

#include <string>
#include <vector>

namespace zelDraw {

/// Where nodes of one compound may stand, each named once, in their order: the upper left corners,
/// in pixels. They have the sizes that a picture with these options draws them in, the depth aside,
/// and stand in layers along the connections among them, whatever else they are connected to. The
/// upper left corner of all comes to the anchor. The same nodes give the same places. False, with
/// the reason, when the engine fails.
bool arrangeNodes(const std::vector<ZEL::AddRefWrapper<ZEL::Node>>& nodes,
                  const PictureOptions& options,
                  const Point& anchor,
                  std::vector<Point>& places,
                  std::string& problem);

} // namespace zelDraw
