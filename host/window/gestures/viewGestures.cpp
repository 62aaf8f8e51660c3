#include "window/gestures/viewGestures.h"

#include "window/canvas/canvas.h"
#include "window/gestures/selecting.h"

namespace shading {

void PanGesture::move(const Pointer& pointer)
{
    desk().canvas.panBy(pointer.pixel - m_last);
    m_last = pointer.pixel;
}

void PanGesture::finish(const Pointer& pointer)
{
    move(pointer);
}

void BandGesture::move(const Pointer& pointer)
{
    CanvasOverlay overlay;
    overlay.rubberBand = QRectF(m_start, pointer.place).normalized();
    desk().canvas.setOverlay(std::move(overlay));
}

void BandGesture::finish(const Pointer& pointer)
{
    const Scene* const scene = desk().canvas.scene();
    std::vector<NodePtr> nodes;
    scene->forBoxes(QRectF(m_start, pointer.place).normalized(), [&](int index) {
        const SceneBox& box = scene->boxes()[static_cast<std::size_t>(index)];
        if (box.isNode())
            nodes.push_back(box.node);
    });
    selectBy(desk().workspace, nodes, pointer.modifiers);
}

} // namespace shading
