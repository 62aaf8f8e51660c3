#include "window/canvas/portMasks.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr double kOutermost = 7; ///< No shape is wider, in pixels of the scene.
constexpr double kLine = 1.6;    ///< The width of a free port's outline.

} // namespace

void PortMasks::setScale(double scale)
{
    if (scale == m_scale)
        return;
    m_scale = scale;
    m_middle = static_cast<int>(std::ceil(kOutermost * scale)) + 1;
    for (int i = 0; i < zelDraw::kPortShapes; ++i) {
        const auto shape = static_cast<zelDraw::PortShape>(i);
        m_whole[indexOf(shape)] = drawn(shape, 0);
        m_inside[indexOf(shape)] = drawn(shape, std::max(kLine * scale, 1.0));
    }
}

/// The shape without a line of that width along its outline.
QImage PortMasks::drawn(zelDraw::PortShape shape, double line) const
{
    QImage image(2 * m_middle, 2 * m_middle, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPolygonF outline;
    for (const zelDraw::Corner& corner : zelDraw::outlineOf(shape))
        outline << QPointF(corner.x, corner.y) * m_scale;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(m_middle, m_middle);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawPolygon(outline);
    if (line > 0) {
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Qt::black, 2 * line, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
        painter.drawPolygon(outline);
    }
    painter.end();
    return image.convertToFormat(QImage::Format_Alpha8);
}

} // namespace shading
