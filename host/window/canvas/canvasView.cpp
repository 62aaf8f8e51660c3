#include "window/canvas/canvasView.h"

#include <algorithm>

namespace shading {

namespace {

constexpr double kMargin = 40; ///< Around what is framed, in pixels.

} // namespace

void CanvasView::set(double scale, const QPointF& centre)
{
    m_scale = std::clamp(scale, kLeastScale, kMostScale);
    m_centre = centre;
}

void CanvasView::zoomAt(const QPointF& pixel, double factor)
{
    const QPointF fixed = toScene(pixel);
    m_scale = std::clamp(m_scale * factor, kLeastScale, kMostScale);
    m_centre = fixed - (pixel - middle()) / m_scale;
}

void CanvasView::frame(const QRectF& area, double mostScale)
{
    if (area.isNull()) {
        set(1, QPointF());
        return;
    }
    const double width = std::max(1.0, m_size.width() - 2 * kMargin);
    const double height = std::max(1.0, m_size.height() - 2 * kMargin);
    const double fit =
        std::min(width / std::max(area.width(), 1.0), height / std::max(area.height(), 1.0));
    set(std::min(fit, mostScale), area.center());
}

void CanvasView::reveal(const QRectF& area)
{
    const QRectF all = seen();
    const double margin = kMargin / m_scale;
    const QRectF inside = all.adjusted(margin, margin, -margin, -margin);
    if (area.width() > inside.width() || area.height() > inside.height()) {
        if (!all.contains(area))
            frame(area, m_scale);
        return;
    }
    const auto way = [](double low, double high, double least, double most) {
        return low < least ? low - least : std::max(0.0, high - most);
    };
    m_centre += QPointF(way(area.left(), area.right(), inside.left(), inside.right()),
                        way(area.top(), area.bottom(), inside.top(), inside.bottom()));
}

} // namespace shading
