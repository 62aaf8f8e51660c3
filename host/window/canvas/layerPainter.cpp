#include "window/canvas/layerPainter.h"

#include "draw/zelPictureStyle.h"

#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr double kOverhang = 12; ///< How far dots and rings reach out of a box.
constexpr double kWireWidth = 2;
constexpr unsigned kWireShare = 230;
constexpr unsigned kFadedShare = 80;
constexpr unsigned kDimmedShare = 70;
constexpr int kGridEvery = 5;        ///< Where dots would be too close.
constexpr double kLeastGridGap = 11; ///< In pixels of the widget.

QColor asColour(Pixel pixel)
{
    return QColor::fromRgb(pixel);
}

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
    const QPointF first(std::floor(m_area.left() / gap.x()) * gap.x(),
                        std::floor(m_area.top() / gap.y()) * gap.y());
    m_raster.dots(m_place.of(first), gap * m_place.scale, size, m_theme.grid);
}

void LayerPainter::paintBackdrops()
{
    for (int i = 0; i < static_cast<int>(m_scene.backdrops().size()); ++i) {
        const SceneBackdrop& backdrop = m_scene.backdrops()[static_cast<std::size_t>(i)];
        const bool isMarked = i == m_state.selectedBackdrop;
        const QRect rect = m_place.of(backdrop.rect);
        if (!rect.intersects(m_part))
            continue;
        m_raster.blend(rect, m_theme.backdrop, 36);
        const int header = static_cast<int>(zelDraw::kFrameHeader * m_place.scale);
        m_raster.blend({rect.topLeft(), QSize(rect.width(), header)}, m_theme.backdrop, 50);
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
    // What is selected stands out, and its connections before all others.
    std::vector<int> marked(m_state.selectedWires.begin(), m_state.selectedWires.end());
    const auto isMarked = [this](const SceneWire& wire) {
        return isSelected(wire.source.box) || isSelected(wire.target.box);
    };
    const bool fades = !m_state.selected.empty() || !marked.empty();
    const double margin = kWireWidth + 2 / m_view;
    m_scene.forWires(m_area.adjusted(-margin, -margin, margin, margin), [&](int index) {
        const SceneWire& wire = m_scene.wires()[static_cast<std::size_t>(index)];
        if (m_state.selectedWires.count(index) > 0)
            return;
        if (fades && isMarked(wire))
            marked.push_back(index);
        else
            paintWire(index, fades);
    });
    std::sort(marked.begin(), marked.end());
    for (const int wire : marked)
        paintWire(wire, false);
}

void LayerPainter::paintWire(int index, bool isFaded)
{
    const SceneWire& wire = m_scene.wires()[static_cast<std::size_t>(index)];
    const double least = 1.0 * m_place.ratio;
    Raster::Stroke stroke = {typeColour(wire.type), std::max(kWireWidth * m_place.scale, least),
                             isFaded ? kFadedShare : kWireShare};
    if (m_view < kBarsFrom && !isFaded)
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

void LayerPainter::paintRing(const QRect& rect, Pixel colour, double width)
{
    const int line = std::max(1, static_cast<int>(std::lround(width * m_place.ratio)));
    m_raster.fill({rect.left(), rect.top(), rect.width(), line}, colour);
    m_raster.fill({rect.left(), rect.bottom() - line + 1, rect.width(), line}, colour);
    m_raster.fill({rect.left(), rect.top(), line, rect.height()}, colour);
    m_raster.fill({rect.right() - line + 1, rect.top(), line, rect.height()}, colour);
}

Raster::Plate LayerPainter::plateOf(Ground ground) const
{
    Raster::Plate plate = {};
    plate.body = m_theme.body;
    plate.head = ground == Ground::Compound ? m_theme.compoundHead : m_theme.head;
    plate.border = ground == Ground::Compound  ? m_theme.compoundBorder
                   : ground == Ground::Unknown ? m_theme.unknownBorder
                                               : m_theme.border;
    plate.headHeight = static_cast<int>(std::lround((zelDraw::kBoxHeader - 6) * m_place.scale));
    plate.radius = 6 * m_place.scale;
    plate.line = std::max(1.2 * m_place.scale, m_place.ratio);
    if (ground == Ground::Unknown) {
        plate.hatch = m_theme.hatch;
        plate.stripe = std::max(4, static_cast<int>(std::lround(10 * m_place.scale)));
    } else if (ground == Ground::Stub || ground == Ground::Bar) {
        plate.body = ground == Ground::Stub ? m_theme.stub : m_theme.bar;
        plate.border = ground == Ground::Stub ? m_theme.border : m_theme.frameBorder;
        plate.headHeight = 0;
    }
    return plate;
}

void LayerPainter::paintBox(int index)
{
    const SceneBox& box = m_scene.boxes()[static_cast<std::size_t>(index)];
    const QRect rect = m_place.of(box.rect);
    if (m_view < kTitlesFrom)
        return paintFar(box, rect, isSelected(index));
    if (box.isBar())
        return paintBar(index, box, rect);
    if (box.kind == SceneBox::Kind::Stub)
        return paintStub(index, box, rect);
    if (isSelected(index)) {
        const int wide = static_cast<int>(std::lround(2.5 * m_place.ratio));
        Raster::Plate ring = {};
        ring.body = ring.head = ring.border = m_theme.selection;
        ring.radius = 6 * m_place.scale + wide;
        m_raster.plate(rect.adjusted(-wide, -wide, wide, wide), ring);
    }
    const Ground ground = box.kind == SceneBox::Kind::Compound  ? Ground::Compound
                          : box.kind == SceneBox::Kind::Unknown ? Ground::Unknown
                                                                : Ground::Node;
    m_raster.plate(rect, plateOf(ground));
    paintHeader(box, rect);
    if (box.fold != Fold::Header)
        paintPorts(index, box);
    if (box.fold != Fold::Header && m_view >= kLabelsFrom)
        paintLabels(index, box);
}

void LayerPainter::paintFar(const SceneBox& box, const QRect& rect, bool isSelected)
{
    QRect shown = rect;
    shown.setWidth(std::max(1, rect.width()));
    shown.setHeight(std::max(1, rect.height()));
    const bool isUnknown = box.kind == SceneBox::Kind::Unknown;
    Pixel ground = isUnknown                                         ? m_theme.hatch
                   : box.kind == SceneBox::Kind::Compound            ? m_theme.compoundBorder
                   : box.isBar() || box.kind == SceneBox::Kind::Stub ? m_theme.bar
                                                                     : m_theme.border;
    if (isSelected)
        ground = m_theme.selection;
    if (m_view < kBarsFrom)
        return m_raster.fill(shown, ground);
    m_raster.fill(shown, isSelected ? ground : m_theme.body);
    paintRing(shown, ground, isSelected ? 2 : 1);
    const auto givers = box.ports.begin() + box.takers;
    if (givers != box.ports.end() && box.isNode()) {
        const int height = std::max(2, static_cast<int>(14 * m_place.scale));
        m_raster.fill(
            QRect(shown.topLeft(), QSize(shown.width(), height)).marginsRemoved({1, 1, 1, 0}),
            typeColour(givers->type));
    }
    if (isSelected && m_state.selected.size() <= 60)
        paintTag(box, shown);
}

/// The title of a selected node that would be too small to be read in it.
void LayerPainter::paintTag(const SceneBox& box, const QRect& rect)
{
    const double size = 11 * m_place.ratio;
    const QString& title = m_scene.texts().text(box.title);
    const double width = m_text.width(title, CanvasText::Weight::Bold, size);
    const QRect tag(rect.left(), rect.top() - static_cast<int>(1.6 * size),
                    static_cast<int>(width + size), static_cast<int>(1.5 * size));
    m_raster.blend(tag, m_theme.page, 220);
    m_painter.setPen(asColour(m_theme.name));
    m_text.draw(m_painter, QPointF(tag.left() + size / 2, tag.bottom() - 0.35 * size), title,
                CanvasText::Weight::Bold, size);
}

void LayerPainter::paintLabel(const Label& label)
{
    const double size = label.size * m_place.scale;
    m_painter.setPen(asColour(label.colour));
    m_text.draw(m_painter, m_place.of(label.place), label.text, label.weight, size,
                label.most * m_place.scale);
}

void LayerPainter::paintHeader(const SceneBox& box, const QRect& rect)
{
    const QPointF corner = box.rect.topLeft();
    const double sign = box.kind == SceneBox::Kind::Compound ? zelDraw::kSignWidth : 0;
    const double room = box.rect.width() - 2 * zelDraw::kTextMargin + 3;
    const double titleSize = atLeast(zelDraw::kNameSize);
    const bool hasType = zelDraw::kTypeSize * m_view >= 0.85 * kLeastText;
    paintLabel({corner + QPointF(zelDraw::kTextMargin, hasType ? 17 : 26),
                m_scene.texts().text(box.title), titleSize, CanvasText::Weight::Bold, m_theme.name,
                room - sign});
    if (hasType)
        paintLabel({corner + QPointF(zelDraw::kTextMargin, 31), m_scene.texts().text(box.typeName),
                    atLeast(zelDraw::kTypeSize), CanvasText::Weight::Normal, m_theme.faint, room});
    if (sign > 0)
        paintSign(rect);
    if (box.fold == Fold::Header && !box.ports.empty()) { // A line for the ports that lie in it.
        const auto tick = [&](double x) {
            const QPointF middle(x, corner.y() + zelDraw::kBoxHeader / 2.0);
            m_raster.fill(m_place.of(QRectF(middle - QPointF(1.5, 6), QSizeF(3, 12))),
                          m_theme.faint);
        };
        tick(box.rect.left());
        tick(box.rect.right());
    }
}

void LayerPainter::paintSign(const QRect& rect)
{
    const double scale = m_place.scale;
    const QPointF corner(rect.right() - 25 * scale, rect.top() + 8 * scale);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setPen(QPen(asColour(m_theme.compoundBorder), std::max(1.3 * scale, 1.0)));
    m_painter.drawRoundedRect(QRectF(corner, QSizeF(13, 11) * scale), 2 * scale, 2 * scale);
    m_painter.drawRoundedRect(QRectF(corner + QPointF(3.5, 3.5) * scale, QSizeF(6, 4) * scale),
                              scale, scale);
}

void LayerPainter::paintPorts(int index, const SceneBox& box)
{
    for (int i = 0; i < static_cast<int>(box.ports.size()); ++i) {
        const ScenePort& port = box.ports[static_cast<std::size_t>(i)];
        const QPointF dot = m_place.of(m_scene.dotOf({index, i}));
        const QPoint corner(static_cast<int>(std::lround(dot.x())) - m_masks.middle(),
                            static_cast<int>(std::lround(dot.y())) - m_masks.middle());
        const bool isDim = isDimmed({index, i});
        const zelDraw::PortShape shape = m_shapes[static_cast<std::size_t>(port.type)];
        m_raster.mask(corner, m_masks.whole(shape), m_theme.body, 256);
        m_raster.mask(corner, m_masks.whole(shape), typeColour(port.type),
                      isDim ? kDimmedShare : 256);
        if (!port.isConnected)
            m_raster.mask(corner, m_masks.inside(shape), m_theme.body, 256);
    }
}

void LayerPainter::paintLabels(int index, const SceneBox& box)
{
    const double size = atLeast(zelDraw::kPortSize);
    for (int i = 0; i < static_cast<int>(box.ports.size()); ++i) {
        const ScenePort& port = box.ports[static_cast<std::size_t>(i)];
        const QPointF dot = m_scene.dotOf({index, i});
        if (dot.y() < m_area.top() - kOverhang || dot.y() > m_area.bottom() + kOverhang)
            continue;
        const QString& name = m_scene.texts().text(port.name);
        const double x = port.takes ? dot.x() + zelDraw::kTextMargin
                                    : dot.x() - zelDraw::kTextMargin -
                                          m_text.width(name, CanvasText::Weight::Normal, size);
        const Pixel colour =
            isDimmed({index, i}) ? mixed(m_theme.body, m_theme.text, kDimmedShare) : m_theme.text;
        paintLabel({QPointF(x, dot.y() + 4), name, size, CanvasText::Weight::Normal, colour});
    }
    if (box.omitted > 0) {
        const QString count = QString::fromStdString(zelDraw::omittedText(box.omitted));
        const double y =
            box.rect.top() + zelDraw::kBoxHeader +
            zelDraw::rowMiddle(zelDraw::kRowHeight, static_cast<std::size_t>(box.takers)) + 4;
        paintLabel({QPointF(box.rect.left() + zelDraw::kTextMargin, y), count, size,
                    CanvasText::Weight::Normal, m_theme.faint});
    }
}

void LayerPainter::paintBar(int index, const SceneBox& box, const QRect& rect)
{
    m_raster.plate(rect, plateOf(Ground::Bar));
    for (const SceneEnd& row : m_state.selectedRows) {
        if (row.isValid() && row.box == index)
            m_raster.blend(m_place.of(QRectF(box.rect.left(),
                                             box.rect.top() + row.port * zelDraw::kEdgeRowHeight,
                                             box.rect.width(), zelDraw::kEdgeRowHeight)),
                           m_theme.selection, 70);
    }
    paintPorts(index, box);
    if (m_view < kLabelsFrom)
        return;
    const double size = atLeast(zelDraw::kPortSize);
    for (int i = 0; i <= static_cast<int>(box.ports.size()); ++i) {
        const bool isPlus = i == static_cast<int>(box.ports.size());
        const double y = box.rect.top() +
                         zelDraw::rowMiddle(zelDraw::kEdgeRowHeight, static_cast<std::size_t>(i));
        const QString name =
            isPlus ? QStringLiteral("+")
                   : m_scene.texts().text(box.ports[static_cast<std::size_t>(i)].name);
        const double width = m_text.width(name, CanvasText::Weight::Normal, size);
        const double x = isPlus ? box.rect.center().x() - width / 2
                         : box.kind == SceneBox::Kind::OutputBar
                             ? box.rect.left() + zelDraw::kTextMargin
                             : box.rect.right() - zelDraw::kTextMargin - width;
        const bool isDim = !isPlus && isDimmed({index, i});
        const Pixel colour = isPlus  ? m_theme.faint
                             : isDim ? mixed(m_theme.bar, m_theme.text, kDimmedShare)
                                     : m_theme.text;
        paintLabel({QPointF(x, y + 4), name, size, CanvasText::Weight::Normal, colour});
        if (!isPlus)
            m_raster.fill(
                m_place.of(QRectF(box.rect.left() + 8, y + zelDraw::kEdgeRowHeight / 2.0 - 0.5,
                                  box.rect.width() - 16, 1)),
                mixed(m_theme.bar, m_theme.frameBorder, 128));
    }
}

void LayerPainter::paintStub(int index, const SceneBox& box, const QRect& rect)
{
    Raster::Plate plate = plateOf(Ground::Stub);
    plate.radius = rect.height() / 2.0;
    m_raster.plate(rect, plate);
    paintPorts(index, box);
    if (m_view >= kLabelsFrom)
        paintLabel({QPointF(box.rect.left() + zelDraw::kTextMargin, box.rect.center().y() + 4),
                    m_scene.texts().text(box.title), atLeast(zelDraw::kPortSize),
                    CanvasText::Weight::Normal, m_theme.faint,
                    box.rect.width() - zelDraw::kTextMargin});
}

} // namespace shading
