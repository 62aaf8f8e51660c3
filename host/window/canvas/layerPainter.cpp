#include "window/canvas/layerPainter.h"

#include "draw/zelPictureStyle.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace shading {

namespace {

constexpr double kOverhang = 12; ///< How far dots and rings reach out of a box.
constexpr double kWireWidth = 2;
constexpr unsigned kWireShare = 230;
constexpr unsigned kFadedShare = 80;
constexpr int kGridEvery = 5;        ///< Where dots would be too close.
constexpr double kLeastGridGap = 11; ///< In pixels of the widget.

} // namespace

QRect ImagePlace::of(const QRectF& rect) const
{
    const QPointF low = of(rect.topLeft());
    const QPointF high = of(rect.bottomRight());
    const QPoint corner(static_cast<int>(std::lround(low.x())),
                        static_cast<int>(std::lround(low.y())));
    return {corner, QPoint(static_cast<int>(std::lround(high.x())) - 1,
                           static_cast<int>(std::lround(high.y())) - 1)};
}

QRectF ImagePlace::toScene(const QRect& pixels) const
{
    return {(QPointF(pixels.topLeft()) - origin) / scale, QSizeF(pixels.size()) / scale};
}

LayerPainter::LayerPainter(QImage& image,
                           const QRect& part,
                           const ImagePlace& place,
                           const CanvasState& state,
                           CanvasText& text,
                           PortMasks& masks)
    : m_place(place),
      m_state(state),
      m_scene(*state.scene),
      m_theme(zelDraw::theme(state.isDark)),
      m_text(text),
      m_masks(masks),
      m_raster(image, part),
      m_painter(&image),
      m_part(part),
      m_area(place.toScene(part)),
      m_view(place.scale / place.ratio)
{
    m_painter.setClipRect(part);
    m_masks.setScale(place.scale);
    for (int i = 0; i < m_scene.texts().typeCount(); ++i) {
        const std::string& type = m_scene.texts().type(i);
        m_types.push_back(zelDraw::typeColour(type, state.isDark));
        m_shapes.push_back(zelDraw::shapeOf(type));
    }
}

void LayerPainter::paint(bool withPage)
{
    if (withPage)
        paintPage();
    paintBackdrops();
    paintWires();
    paintBoxes();
}

/// The size in pixels of the scene at which a text of that size can be read.
double LayerPainter::atLeast(double size) const
{
    return std::max(size, kLeastText / m_view);
}

void LayerPainter::paintPage()
{
    m_raster.fill(m_part, m_theme.page);
    QPointF gap = QPointF(kGridWidth, kGridHeight);
    if (kGridHeight * m_view < kLeastGridGap)
        gap *= kGridEvery;
    if (gap.y() * m_view < kLeastGridGap)
        return;
    const int size = std::max(1, static_cast<int>(std::lround(1.4 * m_place.ratio)));
    m_raster.dots(m_place.origin, gap * m_place.scale, size, m_theme.grid);
}

void LayerPainter::paintBackdrops()
{
    for (int i = 0; i < static_cast<int>(m_scene.backdrops().size()); ++i) {
        const SceneBackdrop& backdrop = m_scene.backdrops()[static_cast<std::size_t>(i)];
        const QRect rect = m_place.of(backdrop.rect);
        if (!rect.intersects(m_part))
            continue;
        m_raster.blend(rect, m_theme.backdrop, 36);
        const int header = static_cast<int>(zelDraw::kFrameHeader * m_place.scale);
        m_raster.blend({rect.topLeft(), QSize(rect.width(), header)}, m_theme.backdrop, 50);
        const bool isMarked = i == m_state.selectedBackdrop;
        paintRing(rect, isMarked ? m_theme.selection : m_theme.backdropBorder, isMarked ? 2 : 1);
        if (m_view >= kBarsFrom)
            paintLabel({backdrop.rect.topLeft() + QPointF(zelDraw::kTextMargin, 22),
                        m_scene.texts().text(backdrop.title), atLeast(zelDraw::kNameSize + 2),
                        CanvasText::Weight::Bold, m_theme.name,
                        backdrop.rect.width() - 2 * zelDraw::kTextMargin});
    }
}

void LayerPainter::paintWires()
{
    std::vector<int> wires;
    const double margin = kWireWidth + 2 / m_view;
    m_scene.forWires(m_area.adjusted(-margin, -margin, margin, margin),
                     [&](int wire) { wires.push_back(wire); });
    // In one order, however the scene came about: each part of a picture fits the others.
    if (m_view >= kBarsFrom)
        std::sort(wires.begin(), wires.end(), [this](int a, int b) { return isBelow(a, b); });
    const auto isMarked = [this](int index) {
        const SceneWire& wire = m_scene.wires()[static_cast<std::size_t>(index)];
        return m_state.selectedWires.count(index) > 0 || isSelected(wire.source.box) ||
               isSelected(wire.target.box);
    };
    // What is selected stands out, and its connections before all others.
    const bool fades = !m_state.selected.empty() || !m_state.selectedWires.empty();
    const auto firstMarked = fades
                                 ? std::stable_partition(wires.begin(), wires.end(),
                                                         [&](int wire) { return !isMarked(wire); })
                                 : wires.end();
    for (auto wire = wires.begin(); wire != wires.end(); ++wire)
        paintWire(*wire, fades && wire < firstMarked);
}

bool LayerPainter::isBelow(int a, int b) const
{
    const auto order = [this](int index) {
        const SceneWire& wire = m_scene.wires()[static_cast<std::size_t>(index)];
        return std::make_tuple(wire.from.y(), wire.to.y(), wire.from.x(), wire.to.x());
    };
    return order(a) < order(b);
}

void LayerPainter::paintWire(int index, bool isFaded)
{
    const SceneWire& wire = m_scene.wires()[static_cast<std::size_t>(index)];
    if (!isShown(wire.source.box) || !isShown(wire.target.box))
        return;
    const double least = 1.0 * m_place.ratio;
    Raster::Stroke stroke = {typeColour(wire.type), std::max(kWireWidth * m_place.scale, least),
                             isFaded ? kFadedShare : kWireShare};
    stroke.isRough = m_view < kBarsFrom && !isSelected(wire.source.box) &&
                     !isSelected(wire.target.box) && m_state.selectedWires.count(index) == 0;
    if (stroke.isRough && !isFaded)
        stroke.share /= 2;
    if (m_state.selectedWires.count(index) > 0) {
        m_raster.curve(wire.curve(), m_place.scale, m_place.origin,
                       {m_theme.selection, stroke.width + 4 * m_place.ratio, 200});
        stroke.share = 256;
    }
    m_raster.curve(wire.curve(), m_place.scale, m_place.origin, stroke);
}

void LayerPainter::paintBoxes()
{
    std::vector<int> raised;
    m_scene.forBoxes(m_area.adjusted(-kOverhang, -kOverhang, kOverhang, kOverhang), [&](int box) {
        if (isSelected(box))
            raised.push_back(box);
        else
            paintBox(box);
    });
    for (const int box : raised)
        paintBox(box);
}

} // namespace shading
