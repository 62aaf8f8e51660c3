#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace shading {

/// Which part of the scene a canvas shows. Pixels are those of the widget, which a screen may
/// divide further.
class CanvasView {
public:
    static constexpr double kLeastScale = 0.001;
    static constexpr double kMostScale = 4;

    /// Pixels for one of the scene.
    double scale() const { return m_scale; }
    /// The point of the scene in the middle.
    QPointF centre() const { return m_centre; }
    QSizeF size() const { return m_size; }
    void setSize(const QSizeF& size) { m_size = size; }
    /// The scale is kept between the least and the most.
    void set(double scale, const QPointF& centre);
    void zoomAt(const QPointF& pixel, double factor);
    void panBy(const QPointF& pixels) { m_centre -= pixels / m_scale; }
    /// Shows all of the area with a margin around it, at most at the given scale.
    void frame(const QRectF& area, double mostScale = 1);
    void reveal(const QRectF& area);

    QPointF toScene(const QPointF& pixel) const { return m_centre + (pixel - middle()) / m_scale; }
    QPointF toPixel(const QPointF& point) const { return (point - m_centre) * m_scale + middle(); }
    QRectF toScene(const QRectF& pixels) const
    {
        return {toScene(pixels.topLeft()), toScene(pixels.bottomRight())};
    }
    QRectF toPixel(const QRectF& area) const
    {
        return {toPixel(area.topLeft()), toPixel(area.bottomRight())};
    }
    /// What is seen of the scene.
    QRectF seen() const { return toScene(QRectF(QPointF(), m_size)); }

private:
    QPointF middle() const { return {m_size.width() / 2, m_size.height() / 2}; }

    double m_scale = 1;
    QPointF m_centre;
    QSizeF m_size = {1, 1};
};

} // namespace shading
