#pragma once

#include "window/canvas/canvasOverlay.h"
#include "window/canvas/canvasState.h"
#include "window/canvas/layerPainter.h"

#include <QImage>
#include <QRegion>

class QPainter;

namespace shading {

/// Paints a scene, and keeps the picture: only what looks different or comes into sight is painted
/// again.
class CanvasPainter {
public:
    /// Everything looks different.
    void forget();
    /// This area of the scene does.
    void forget(const CanvasState& state, const QRectF& area);
    /// The picture of the state for a widget, which has so many pixels for one of its own.
    const QImage& picture(const CanvasState& state, double ratio);
    /// What lies on top: the mouse, the focus, flashes and gestures.
    void paintOverlay(QPainter& painter, const CanvasState& state, const CanvasOverlay& overlay);
    /// The picture of a part of the scene on an image of its own, without what is on top.
    static QImage paintAll(const CanvasState& state, const QRectF& area, double scale);

private:
    void scrollTo(const ImagePlace& place);
    void addDirty(const QRect& rect);

    QImage m_picture;
    ImagePlace m_place;
    QRegion m_dirty; ///< In pixels of the picture.
    bool m_isDark = false;
    const Scene* m_scene = nullptr; ///< Of the picture; only compared.
    CanvasText m_text;
    PortMasks m_masks;
};

} // namespace shading
