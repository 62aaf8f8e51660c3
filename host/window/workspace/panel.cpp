#include "window/workspace/panel.h"

namespace shading {

Panel::~Panel() = default;

} // namespace shading
