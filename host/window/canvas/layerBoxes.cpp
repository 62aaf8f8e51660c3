#include "draw/zelPictureStyle.h"
#include "window/canvas/layerPainter.h"

#include <algorithm>
#include <cmath>

namespace shading {

namespace {

constexpr double kLabelReach = 12; ///< Of a port's label, above and below its dot.
constexpr unsigned kDimmedShare = 70;
constexpr std::size_t kMostTags = 60; ///< With more selected, their titles would be a heap.

QColor asColour(Pixel pixel)
{
    return QColor::fromRgb(pixel);
}

} // namespace

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
    if (!isShown(index))
        return;
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
    if (isSelected && m_state.selected.size() <= kMostTags)
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
    // Far away the letters are larger than the box was made for.
    const double margin = m_view < kLabelsFrom ? zelDraw::kTextMargin / 2.0 : zelDraw::kTextMargin;
    const double room = box.rect.width() - 2 * margin + 3;
    const double titleSize = atLeast(zelDraw::kNameSize);
    const bool hasType = zelDraw::kTypeSize * m_view >= 0.85 * kLeastText;
    paintLabel({corner + QPointF(margin, hasType ? 17 : 26), m_scene.texts().text(box.title),
                titleSize, CanvasText::Weight::Bold, m_theme.name, room - sign});
    if (hasType)
        paintLabel({corner + QPointF(margin, 31), m_scene.texts().text(box.typeName),
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
        if (dot.y() < m_area.top() - kLabelReach || dot.y() > m_area.bottom() + kLabelReach)
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
