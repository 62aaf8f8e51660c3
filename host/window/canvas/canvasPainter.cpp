#include "window/canvas/canvasPainter.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace shading {

namespace {

constexpr double kAround = 14; ///< Rings and dots reach out of what they belong to.
constexpr int kMostParts = 12; ///< More of them are painted as one.

ImagePlace placeOf(const CanvasView& view, double ratio)
{
    ImagePlace place;
    place.scale = view.scale() * ratio;
    place.ratio = ratio;
    const QPointF origin = view.toPixel(QPointF()) * ratio;
    place.origin = {std::round(origin.x()), std::round(origin.y())};
    return place;
}

void moveRows(QImage& image, int right, int down)
{
    const int height = image.height() - std::abs(down);
    const auto bytes = static_cast<std::size_t>(image.width() - std::abs(right)) * sizeof(Pixel);
    const int from = std::max(0, -right);
    const int to = std::max(0, right);
    for (int i = 0; i < height; ++i) {
        const int y = down > 0 ? height - 1 - i : i - down;
        auto* const source = reinterpret_cast<Pixel*>(image.scanLine(y)) + from;
        auto* const target = reinterpret_cast<Pixel*>(image.scanLine(y + down)) + to;
        std::memmove(target, source, bytes);
    }
}

} // namespace

void CanvasPainter::forget()
{
    m_dirty = m_picture.rect();
}

void CanvasPainter::forget(const CanvasState& state, const QRectF& area)
{
    if (area.isNull() || m_scene != state.scene)
        return;
    const double margin = kAround + 3 / state.view.scale();
    addDirty(m_place.of(area.adjusted(-margin, -margin, margin, margin)));
}

void CanvasPainter::addDirty(const QRect& rect)
{
    m_dirty += rect & m_picture.rect();
    if (m_dirty.rectCount() > kMostParts)
        m_dirty = m_dirty.boundingRect();
}

void CanvasPainter::scrollTo(const ImagePlace& place)
{
    const QPointF way = place.origin - m_place.origin;
    const double farthest = std::max(std::abs(way.x()), std::abs(way.y()));
    m_place = place;
    if (farthest == 0)
        return;
    if (farthest >= std::min(m_picture.width(), m_picture.height())) {
        forget();
        return;
    }
    const auto right = static_cast<int>(way.x());
    const auto down = static_cast<int>(way.y());
    moveRows(m_picture, right, down);
    m_dirty.translate(right, down);
    m_dirty &= m_picture.rect();
    const QRect all = m_picture.rect();
    m_dirty += QRegion(all) - all.translated(right, down);
}

const QImage& CanvasPainter::picture(const CanvasState& state, double ratio)
{
    const QSize size(std::max(1, static_cast<int>(std::ceil(state.view.size().width() * ratio))),
                     std::max(1, static_cast<int>(std::ceil(state.view.size().height() * ratio))));
    const ImagePlace place = placeOf(state.view, ratio);
    if (size != m_picture.size()) {
        m_picture = QImage(size, QImage::Format_RGB32);
        forget();
    }
    if (place.scale != m_place.scale || state.isDark != m_isDark || state.scene != m_scene) {
        m_place = place;
        forget();
    }
    m_isDark = state.isDark;
    m_scene = state.scene;
    scrollTo(place);
    if (!state.scene) {
        m_picture.fill(0xFF000000U | zelDraw::theme(state.isDark).page);
        m_dirty = QRegion();
    }
    m_picture.setDevicePixelRatio(1);
    for (const QRect& part : m_dirty)
        LayerPainter(m_picture, part, m_place, state, m_text, m_masks).paint(true);
    m_dirty = QRegion();
    m_picture.setDevicePixelRatio(ratio);
    return m_picture;
}

QImage CanvasPainter::paintAll(const CanvasState& state, const QRectF& area, double scale)
{
    const QSizeF size = area.size() * scale;
    QImage image(std::max(1, static_cast<int>(std::ceil(size.width()))),
                 std::max(1, static_cast<int>(std::ceil(size.height()))), QImage::Format_RGB32);
    if (image.isNull())
        return image;
    ImagePlace place;
    place.scale = scale;
    place.origin = {std::round(-area.left() * scale), std::round(-area.top() * scale)};
    CanvasText text;
    PortMasks masks;
    LayerPainter(image, image.rect(), place, state, text, masks).paint(true);
    return image;
}

} // namespace shading
