#include "window/gestures/gesture.h"

#include "window/canvas/canvas.h"

namespace shading {

Gesture::~Gesture()
{
    clear();
}

void Gesture::clear()
{
    m_desk.canvas.setOverlay({});
    m_desk.canvas.setDimming(nullptr);
    m_desk.canvas.setOffset({}, {});
}

} // namespace shading
