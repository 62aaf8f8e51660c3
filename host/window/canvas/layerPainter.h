#pragma once

#include "draw/zelTheme.h"
#include "window/canvas/canvasState.h"
#include "window/canvas/canvasText.h"
#include "window/canvas/portMasks.h"
#include "window/canvas/raster.h"

#include <QPainter>
#include <vector>

namespace shading {

/// Where a scene lies in an image.
struct ImagePlace {
    double scale = 1; ///< Pixels of the image for one of the scene.
    double ratio = 1; ///< And for one of the widget.
    QPointF origin;   ///< Of the scene, in whole pixels of the image.

    QPointF of(const QPointF& point) const { return point * scale + origin; }
    QRect of(const QRectF& rect) const;
    QRectF toScene(const QRect& pixels) const;
};

/// Paints one part of an image of a scene, layer by layer from the page up.
class LayerPainter {
public:
    /// All are kept by reference. The image is opaque and covers its part of the scene.
    LayerPainter(QImage& image,
                 const QRect& part,
                 const ImagePlace& place,
                 const CanvasState& state,
                 CanvasText& text,
                 PortMasks& masks);

    void paint(bool withPage);

private:
    enum class Ground { Node, Compound, Unknown, Stub, Bar };
    struct Label {
        QPointF place;
        const QString& text;
        double size; ///< In pixels of the scene.
        CanvasText::Weight weight;
        Pixel colour;
        double most = 0;
    };

    void paintPage();
    void paintBackdrops();
    void paintWires();
    bool isBelow(int a, int b) const;
    void paintWire(int wire, bool isFaded);
    void paintBoxes();
    void paintBox(int box);
    void paintFar(const SceneBox& box, const QRect& rect, bool isSelected);
    void paintHeader(const SceneBox& box, const QRect& rect);
    void paintSign(const QRect& rect);
    void paintPorts(int box, const SceneBox& shown);
    void paintLabels(int box, const SceneBox& shown);
    void paintBar(int box, const SceneBox& shown, const QRect& rect);
    void paintStub(int box, const SceneBox& shown, const QRect& rect);
    void paintRing(const QRect& rect, Pixel colour, double width);
    void paintTag(const SceneBox& box, const QRect& rect);
    void paintLabel(const Label& label);
    Raster::Plate plateOf(Ground ground) const;
    Pixel typeColour(int type) const { return m_types[static_cast<std::size_t>(type)]; }
    bool isSelected(int box) const
    {
        return m_state.isSelected[static_cast<std::size_t>(box)] != 0;
    }
    bool isShown(int box) const
    {
        return m_state.isShown.empty() || m_state.isShown[static_cast<std::size_t>(box)] != 0;
    }
    bool isDimmed(const SceneEnd& end) const { return m_state.isDimmed && m_state.isDimmed(end); }
    double atLeast(double size) const;

    const ImagePlace& m_place;
    const CanvasState& m_state;
    const Scene& m_scene;
    const zelDraw::Theme& m_theme;
    CanvasText& m_text;
    PortMasks& m_masks;
    Raster m_raster; ///< Before the painter: it takes the pixels.
    QPainter m_painter;
    QRect m_part;
    QRectF m_area;                            ///< The part, in the scene.
    double m_view;                            ///< Pixels of the widget for one of the scene.
    std::vector<Pixel> m_types;               ///< Their colours, by type.
    std::vector<zelDraw::PortShape> m_shapes; ///< By type.
};

} // namespace shading
