#include "window/canvas/raster.h"

#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr double kPieceLength = 9; ///< Of a curve's pieces, in pixels.
constexpr int kMostPieces = 16;
constexpr double kBendsFrom = 14; ///< Nobody sees how a shorter curve bends.

/// The pixel of a place. Places between two pixels are common, and must not fall to one or the
/// other by the last digit: it depends on where the picture was moved to.
int stairAt(double place)
{
    return static_cast<int>(std::floor(place + 0.00137));
}

unsigned shareOf(double coverage)
{
    return static_cast<unsigned>(std::clamp(coverage, 0.0, 1.0) * 256);
}

} // namespace

Pixel mixed(Pixel below, Pixel above, unsigned share)
{
    // Red and blue at once, then green.
    const std::uint32_t rest = 256 - share;
    const std::uint32_t redBlue =
        ((below & 0xFF00FFU) * rest + (above & 0xFF00FFU) * share) >> 8U & 0xFF00FFU;
    const std::uint32_t green =
        ((below & 0xFF00U) * rest + (above & 0xFF00U) * share) >> 8U & 0xFF00U;
    return 0xFF000000U | redBlue | green;
}

Raster::Raster(QImage& image, const QRect& clip)
    : m_pixels(reinterpret_cast<Pixel*>(image.bits())),
      m_stride(image.bytesPerLine() / static_cast<std::ptrdiff_t>(sizeof(Pixel))),
      m_clip(clip & image.rect())
{
}

void Raster::fill(const QRect& rect, Pixel colour)
{
    const QRect inside = rect & m_clip;
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        std::fill_n(row(y) + inside.left(), inside.width(), colour | 0xFF000000U);
}

void Raster::blend(const QRect& rect, Pixel colour, unsigned share)
{
    const QRect inside = rect & m_clip;
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        Pixel* const pixels = row(y);
        for (int x = inside.left(); x <= inside.right(); ++x)
            pixels[x] = mixed(pixels[x], colour, share);
    }
}

void Raster::touch(int x, int y, Pixel colour, unsigned share)
{
    if (m_clip.contains(x, y))
        row(y)[x] = mixed(row(y)[x], colour, share);
}

void Raster::plate(const QRect& rect, const Plate& look)
{
    const QRect inside = rect & m_clip;
    for (int y = inside.top(); y <= inside.bottom(); ++y)
        plateRow(rect, look, y);
}

void Raster::plateRow(const QRect& rect, const Plate& look, int y)
{
    const Pixel ground = y < rect.top() + look.headHeight ? look.head : look.body;
    // How far the centre of the row is inside the upper or lower edge.
    const double depth = std::min(y - rect.top(), rect.bottom() - y) + 0.5;
    const int corner = depth < look.radius ? static_cast<int>(std::ceil(look.radius)) : 0;
    const int edge = std::max(corner, static_cast<int>(std::ceil(look.line)));
    Pixel* const pixels = row(y);
    const int first = std::max(rect.left() + edge, m_clip.left());
    const int last = std::min(rect.right() - edge, m_clip.right());
    const unsigned line = shareOf(look.line - depth + 0.5);
    const Pixel inner = mixed(ground, look.border, line);
    if (first <= last)
        std::fill_n(pixels + first, last - first + 1, inner | 0xFF000000U);
    if (look.stripe > 0 && ground == look.body && line == 0) {
        const int offset = y - rect.top() + rect.left();
        for (int x = first; x <= last; ++x) {
            if ((x - rect.left() + offset) % look.stripe < look.stripe / 3)
                pixels[x] = look.hatch | 0xFF000000U;
        }
    }
    for (int i = 0; i < edge; ++i) {
        const double across = i + 0.5;
        double inward = std::min(across, depth); // From the outline.
        if (across < look.radius && depth < look.radius)
            inward = look.radius - std::hypot(look.radius - across, look.radius - depth);
        const Pixel colour = mixed(ground, look.border, shareOf(look.line - inward + 0.5));
        const unsigned share = shareOf(inward + 0.5);
        touch(rect.left() + i, y, colour, share);
        if (rect.right() - i > rect.left() + i)
            touch(rect.right() - i, y, colour, share);
    }
}

void Raster::dots(const QPointF& origin, const QPointF& distance, int size, Pixel colour)
{
    // Each by its number: the same dot is at the same place in every clip.
    const auto number = [](double place, double start, double step) {
        return static_cast<int>(std::floor((place - start) / step));
    };
    const int left = number(m_clip.left() - size, origin.x(), distance.x());
    const int right = number(m_clip.right() + size, origin.x(), distance.x());
    const int top = number(m_clip.top() - size, origin.y(), distance.y());
    const int bottom = number(m_clip.bottom() + size, origin.y(), distance.y());
    for (int row = top; row <= bottom; ++row) {
        const int y = static_cast<int>(std::lround(origin.y() + row * distance.y()));
        for (int column = left; column <= right; ++column)
            fill({static_cast<int>(std::lround(origin.x() + column * distance.x())), y, size, size},
                 colour);
    }
}

/// A column of pixels for each x, as high as the line is wide there: pieces that follow each other
/// share no pixel.
void Raster::flat(const QPointF& from, const QPointF& to, const Stroke& stroke)
{
    const double way = to.x() - from.x();
    const double slope = (to.y() - from.y()) / way;
    const double across = 1 / std::hypot(1.0, slope); // Of the line for one pixel of the column.
    const double half = stroke.width / 2;
    const double reach = (half + 0.5) / across;
    const int first = std::max(static_cast<int>(std::ceil(from.x() - 0.5)), m_clip.left());
    const int last = std::min(static_cast<int>(std::ceil(to.x() - 0.5)) - 1, m_clip.right());
    if (stroke.isRough) {
        for (int x = first; x <= last; ++x)
            touch(x, stairAt(from.y() + slope * (x + 0.5 - from.x())), stroke.colour, stroke.share);
        return;
    }
    for (int x = first; x <= last; ++x) {
        const double middle = from.y() + slope * (x + 0.5 - from.x());
        const int top = std::max(static_cast<int>(std::floor(middle - reach)), m_clip.top());
        const int bottom = std::min(static_cast<int>(std::floor(middle + reach)), m_clip.bottom());
        for (int y = top; y <= bottom; ++y) {
            const double off = std::abs(y + 0.5 - middle) * across;
            const double coverage = std::min(half + 0.5 - off, std::min(1.0, stroke.width));
            if (coverage <= 0)
                continue;
            Pixel& pixel = row(y)[x];
            pixel = mixed(pixel, stroke.colour, static_cast<unsigned>(coverage * stroke.share));
        }
    }
}

/// The same by rows.
void Raster::steep(const QPointF& from, const QPointF& to, const Stroke& stroke)
{
    const double way = to.y() - from.y();
    const double slope = (to.x() - from.x()) / way;
    const double across = 1 / std::hypot(1.0, slope);
    const double half = stroke.width / 2;
    const double reach = (half + 0.5) / across;
    const int first = std::max(static_cast<int>(std::ceil(from.y() - 0.5)), m_clip.top());
    const int last = std::min(static_cast<int>(std::ceil(to.y() - 0.5)) - 1, m_clip.bottom());
    if (stroke.isRough) {
        for (int y = first; y <= last; ++y)
            touch(stairAt(from.x() + slope * (y + 0.5 - from.y())), y, stroke.colour, stroke.share);
        return;
    }
    for (int y = first; y <= last; ++y) {
        const double middle = from.x() + slope * (y + 0.5 - from.y());
        const int left = std::max(static_cast<int>(std::floor(middle - reach)), m_clip.left());
        const int right = std::min(static_cast<int>(std::floor(middle + reach)), m_clip.right());
        Pixel* const pixels = row(y);
        for (int x = left; x <= right; ++x) {
            const double off = std::abs(x + 0.5 - middle) * across;
            const double coverage = std::min(half + 0.5 - off, std::min(1.0, stroke.width));
            if (coverage > 0)
                pixels[x] =
                    mixed(pixels[x], stroke.colour, static_cast<unsigned>(coverage * stroke.share));
        }
    }
}

void Raster::line(const QPointF& from, const QPointF& to, const Stroke& stroke)
{
    const QPointF way = to - from;
    if (std::abs(way.x()) >= std::abs(way.y())) {
        if (way.x() > 0)
            flat(from, to, stroke);
        else if (way.x() < 0)
            flat(to, from, stroke);
    } else if (way.y() > 0) {
        steep(from, to, stroke);
    } else {
        steep(to, from, stroke);
    }
}

void Raster::curve(const WireCurve& curve,
                   double scale,
                   const QPointF& origin,
                   const Stroke& stroke)
{
    WireCurve shown;
    for (std::size_t i = 0; i < shown.control.size(); ++i)
        shown.control[i] = curve.control[i] * scale + origin;
    const QRectF bounds = shown.bounds();
    const double margin = stroke.width + 1;
    if (bounds.right() < m_clip.left() - margin || bounds.left() > m_clip.right() + margin ||
        bounds.bottom() < m_clip.top() - margin || bounds.top() > m_clip.bottom() + margin)
        return;
    const double length = bounds.width() + bounds.height();
    const bool isStraight = length < kBendsFrom ||
                            (bounds.height() < 0.3 && shown.control[3].x() > shown.control[0].x());
    const int pieces =
        isStraight ? 1 : std::clamp(static_cast<int>(length / kPieceLength), 2, kMostPieces);
    QPointF last = shown.control[0];
    for (int i = 1; i <= pieces; ++i) {
        // Shorter ones at the ends, where it bends.
        const double share = static_cast<double>(i) / pieces;
        const double part = share * share * (3 - 2 * share);
        const QPointF next = i == pieces ? shown.control[3] : shown.at((share + 2 * part) / 3);
        line(last, next, stroke);
        last = next;
    }
}

void Raster::mask(const QPoint& corner, const QImage& mask, Pixel colour, unsigned share)
{
    const QRect inside = QRect(corner, mask.size()) & m_clip;
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        const uchar* const shares = mask.constScanLine(y - corner.y()) - corner.x();
        Pixel* const pixels = row(y);
        for (int x = inside.left(); x <= inside.right(); ++x) {
            const unsigned part = shares[x];
            if (part > 0)
                pixels[x] = mixed(pixels[x], colour, (part + (part >> 7U)) * share >> 8U);
        }
    }
}

} // namespace shading
