#include "draw/zelPictureStyle.h"
#include "window/canvas/canvasPainter.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace shading {

namespace {

constexpr double kTipGap = 16; ///< From the mouse, in pixels.
constexpr double kTipMargin = 6;

QColor overlayColour(zelDraw::Colour colour, int alpha = 255)
{
    QColor made = QColor::fromRgb(colour);
    made.setAlpha(alpha);
    return made;
}

/// One painting of what lies on top, in pixels of the widget.
class OverlayPainter {
public:
    OverlayPainter(QPainter& painter, const CanvasState& state)
        : m_painter(painter),
          m_state(state),
          m_scene(*state.scene),
          m_view(state.view),
          m_theme(zelDraw::theme(state.isDark))
    {
        m_painter.setRenderHint(QPainter::Antialiasing);
        m_painter.setBrush(Qt::NoBrush);
    }

    void paintMarks()
    {
        for (const int box : m_state.flashing) {
            ring(box, m_theme.selection, 5, static_cast<int>(220 * m_state.flash));
            const QRectF rect = m_view.toPixel(boxAt(box).rect);
            m_painter.fillRect(
                rect, overlayColour(m_theme.selection, static_cast<int>(90 * m_state.flash)));
        }
        if (m_state.focus >= 0)
            ring(m_state.focus, m_theme.focus, 1.5, 255, Qt::DashLine);
        const Hit& hover = m_state.hover;
        if (hover.isWire())
            curve(m_scene.wires()[static_cast<std::size_t>(hover.wire)].curve(), m_theme.hover,
                  kWide, 150);
        else if (hover.end().isValid() && m_view.scale() >= kPortsFrom)
            dotRing(hover.end(), m_theme.hover);
        else if (hover.box >= 0 && boxAt(hover.box).isNode())
            ring(hover.box, m_theme.hover, 1.5, 200);
    }

    void paint(const CanvasOverlay& overlay)
    {
        for (const int wire : overlay.struck)
            curve(m_scene.wires()[static_cast<std::size_t>(wire)].curve(), m_theme.error, kWide,
                  230);
        if (overlay.insertion >= 0)
            curve(m_scene.wires()[static_cast<std::size_t>(overlay.insertion)].curve(),
                  m_theme.good, kWide + 1, 220);
        for (const CanvasOverlay::Wire& wire : overlay.wires)
            paintWire(wire);
        if (overlay.over.isValid())
            dotRing(overlay.over, colourOf(overlay.overVerdict, m_theme.hover));
        for (const QLineF& guide : overlay.guides) {
            m_painter.setPen(QPen(overlayColour(m_theme.selection), 1, Qt::DashLine));
            m_painter.drawLine(m_view.toPixel(guide.p1()), m_view.toPixel(guide.p2()));
        }
        paintBarGap(overlay);
        paintCut(overlay);
        if (overlay.rubberBand) {
            m_painter.setPen(QPen(overlayColour(m_theme.selection), 1));
            m_painter.setBrush(overlayColour(m_theme.selection, 36));
            m_painter.drawRect(m_view.toPixel(*overlay.rubberBand));
            m_painter.setBrush(Qt::NoBrush);
        }
        if (!overlay.tip.isEmpty())
            paintTip(overlay);
    }

private:
    static constexpr double kWide = 4;

    const SceneBox& boxAt(int box) const { return m_scene.boxes()[static_cast<std::size_t>(box)]; }

    zelDraw::Colour colourOf(CanvasOverlay::Verdict verdict, zelDraw::Colour none) const
    {
        return verdict == CanvasOverlay::Verdict::Good  ? m_theme.good
               : verdict == CanvasOverlay::Verdict::Bad ? m_theme.error
                                                        : none;
    }

    void ring(int box,
              zelDraw::Colour colour,
              double width,
              int alpha,
              Qt::PenStyle style = Qt::SolidLine)
    {
        const double out = 3 + width / 2;
        const QRectF rect = m_view.toPixel(boxAt(box).rect).adjusted(-out, -out, out, out);
        const double radius = 6 * m_view.scale() + out;
        m_painter.setPen(QPen(overlayColour(colour, alpha), width, style));
        m_painter.drawRoundedRect(rect, radius, radius);
    }

    void dotRing(const SceneEnd& end, zelDraw::Colour colour)
    {
        const double radius = 8 * m_view.scale() + 2;
        m_painter.setPen(QPen(overlayColour(colour), 2));
        m_painter.drawEllipse(m_view.toPixel(m_scene.dotOf(end)), radius, radius);
    }

    void curve(const WireCurve& curve, zelDraw::Colour colour, double width, int alpha)
    {
        QPainterPath path(m_view.toPixel(curve.control[0]));
        path.cubicTo(m_view.toPixel(curve.control[1]), m_view.toPixel(curve.control[2]),
                     m_view.toPixel(curve.control[3]));
        m_painter.setPen(QPen(overlayColour(colour, alpha), width, Qt::SolidLine, Qt::RoundCap));
        m_painter.drawPath(path);
    }

    void paintWire(const CanvasOverlay::Wire& wire)
    {
        const zelDraw::Colour type =
            zelDraw::typeColour(m_scene.texts().type(wire.type), m_state.isDark);
        curve(WireCurve(wire.from, wire.to), m_theme.page, 5, 200);
        curve(WireCurve(wire.from, wire.to), colourOf(wire.verdict, type), 2.5, 255);
    }

    void paintBarGap(const CanvasOverlay& overlay)
    {
        if (overlay.barGap < 0 || overlay.barGapBox < 0)
            return;
        const QRectF& bar = boxAt(overlay.barGapBox).rect;
        const double y = bar.top() + zelDraw::kEdgeRowHeight * overlay.barGap;
        m_painter.setPen(QPen(overlayColour(m_theme.selection), 3, Qt::SolidLine, Qt::RoundCap));
        m_painter.drawLine(m_view.toPixel(QPointF(bar.left() + 4, y)),
                           m_view.toPixel(QPointF(bar.right() - 4, y)));
    }

    void paintCut(const CanvasOverlay& overlay)
    {
        QPolygonF line;
        for (const QPointF& point : overlay.cut)
            line << m_view.toPixel(point);
        m_painter.setPen(QPen(overlayColour(m_theme.error), 1.5, Qt::DashLine));
        m_painter.drawPolyline(line);
    }

    void paintTip(const CanvasOverlay& overlay)
    {
        const QFontMetricsF metrics(m_painter.font());
        QRectF text = metrics.boundingRect(QRectF(0, 0, 360, 400), Qt::TextWordWrap, overlay.tip);
        const QPointF at = m_view.toPixel(overlay.tipAt) + QPointF(kTipGap, kTipGap);
        text.moveTo(at);
        QRectF plate = text.adjusted(-kTipMargin, -kTipMargin, kTipMargin, kTipMargin);
        const QSizeF size = m_view.size();
        const QPointF back(std::max(0.0, plate.right() + 2 - size.width()),
                           plate.bottom() + 2 > size.height() ? plate.height() + 2 * kTipGap : 0.0);
        text.translate(-back);
        plate.translate(-back);
        m_painter.setPen(QPen(overlayColour(colourOf(overlay.tipVerdict, m_theme.border)), 1.5));
        m_painter.setBrush(overlayColour(m_theme.body, 245));
        m_painter.drawRoundedRect(plate, 5, 5);
        m_painter.setBrush(Qt::NoBrush);
        m_painter.setPen(overlayColour(m_theme.name));
        m_painter.drawText(text, Qt::TextWordWrap, overlay.tip);
    }

    QPainter& m_painter;
    const CanvasState& m_state;
    const Scene& m_scene;
    const CanvasView& m_view;
    const zelDraw::Theme& m_theme;
};

} // namespace

void CanvasPainter::paintOverlay(QPainter& painter,
                                 const CanvasState& state,
                                 const CanvasOverlay& overlay)
{
    OverlayPainter top(painter, state);
    top.paintMarks();
    top.paint(overlay);
}

} // namespace shading
