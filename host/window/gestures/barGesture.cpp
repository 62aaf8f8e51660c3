#include "window/gestures/barGesture.h"

#include "draw/zelPictureStyle.h"
#include "window/canvas/canvas.h"
#include "window/workspace/workspace.h"

#include <algorithm>
#include <cmath>

namespace shading {

/// The row before which the port would come to stand.
int BarGesture::gapAt(const Pointer& pointer, const SceneEnd& end) const
{
    const SceneBox& box = desk().canvas.scene()->boxes()[static_cast<std::size_t>(end.box)];
    const double rows = (pointer.place.y() - box.rect.top()) / zelDraw::kEdgeRowHeight;
    return std::clamp(static_cast<int>(std::lround(rows)), 0, static_cast<int>(box.ports.size()));
}

void BarGesture::move(const Pointer& pointer)
{
    CanvasOverlay overlay;
    const SceneEnd end = desk().canvas.scene()->endOf(*m_port);
    if (end.isValid()) {
        overlay.barGapBox = end.box;
        overlay.barGap = gapAt(pointer, end);
    }
    desk().canvas.setOverlay(std::move(overlay));
}

void BarGesture::finish(const Pointer& pointer)
{
    const SceneEnd end = desk().canvas.scene()->endOf(*m_port);
    if (!end.isValid())
        return;
    const int gap = gapAt(pointer, end);
    clear();
    if (gap == end.port || gap == end.port + 1)
        return;
    // Places count from 1; without the port, those behind it move up.
    const int place = gap > end.port ? gap : gap + 1;
    desk().workspace.edit([&](Edits& edits) { return edits.movePort(m_port, place); });
}

} // namespace shading
