#pragma once

#include "window/canvas/sceneParts.h"

#include <QImage>
#include <QRect>
#include <cstdint>
#include <vector>

namespace shading {

/// 0xFFRRGGBB, as in an image.
using Pixel = std::uint32_t;

/// The one colour laid over the other, from 0 (none of it) to 256.
Pixel mixed(Pixel below, Pixel above, unsigned share);

/// Draws what there are thousands of in a picture of a network, straight into the pixels of an
/// opaque image: several times as fast as a painter, which has to be ready for anything. Places are
/// in pixels of the image; nothing is drawn outside the clip.
class Raster {
public:
    /// How a box with round corners looks.
    struct Plate {
        Pixel body;
        Pixel head;
        Pixel border;
        int headHeight; ///< From the top; 0: all is body.
        double radius;  ///< Of the corners.
        double line;    ///< The width of the border.
        Pixel hatch;    ///< Of stripes over the body.
        int stripe = 0; ///< Their distance; 0: no stripes.
    };
    struct Stroke {
        Pixel colour;
        double width;
        unsigned share;       ///< Of the colour, up to 256.
        bool isRough = false; ///< One pixel wide, with stairs: for thousands seen from far.
    };

    /// Holds no reference: the pixels must outlive it.
    Raster(QImage& image, const QRect& clip);

    const QRect& clip() const { return m_clip; }
    void fill(const QRect& rect, Pixel colour);
    void blend(const QRect& rect, Pixel colour, unsigned share);
    void plate(const QRect& rect, const Plate& look);
    /// Dots all over, in the distances, so that one would be at the origin.
    void dots(const QPointF& origin, const QPointF& distance, int size, Pixel colour);
    void line(const QPointF& from, const QPointF& to, const Stroke& stroke);
    /// The curve, whose points are scaled and moved into the image.
    void curve(const WireCurve& curve, double scale, const QPointF& origin, const Stroke& stroke);
    /// The colour where the mask is, an image of 8 bits a pixel.
    void mask(const QPoint& corner, const QImage& mask, Pixel colour, unsigned share);

private:
    Pixel* row(int y) { return m_pixels + static_cast<std::ptrdiff_t>(y) * m_stride; }
    void touch(int x, int y, Pixel colour, unsigned share);
    void plateRow(const QRect& rect, const Plate& look, int y);
    void flat(const QPointF& from, const QPointF& to, const Stroke& stroke);
    void steep(const QPointF& from, const QPointF& to, const Stroke& stroke);

    Pixel* m_pixels;
    std::ptrdiff_t m_stride; ///< In pixels.
    QRect m_clip;
};

} // namespace shading
