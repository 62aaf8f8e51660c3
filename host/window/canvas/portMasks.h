#pragma once

#include "draw/zelTheme.h"

#include <QImage>
#include <array>

namespace shading {

/// The shapes of ports as masks of 8 bits a pixel, drawn once for a scale. Their middle is the
/// place of the port.
class PortMasks {
public:
    /// In pixels of the image for one of the scene.
    void setScale(double scale);
    /// The whole shape.
    const QImage& whole(zelDraw::PortShape shape) const { return m_whole[indexOf(shape)]; }
    /// What of it is ground where the port is free.
    const QImage& inside(zelDraw::PortShape shape) const { return m_inside[indexOf(shape)]; }
    /// From the corner of a mask to its middle.
    int middle() const { return m_middle; }

private:
    static std::size_t indexOf(zelDraw::PortShape shape) { return static_cast<std::size_t>(shape); }
    QImage drawn(zelDraw::PortShape shape, double line) const;

    double m_scale = 0;
    int m_middle = 0;
    std::array<QImage, zelDraw::kPortShapes> m_whole;
    std::array<QImage, zelDraw::kPortShapes> m_inside;
};

} // namespace shading
