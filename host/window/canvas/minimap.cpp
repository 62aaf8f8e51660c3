#include "window/canvas/minimap.h"

#include "window/canvas/canvas.h"

#include <QMouseEvent>
#include <QPainter>
#include <QSettings>
#include <algorithm>

namespace shading {

namespace {

const char* const kWantedKey = "canvas/minimap";
constexpr int kMapWidth = 220;
constexpr int kMapHeight = 150;
constexpr int kMapGap = 12; ///< To the edges of the canvas.
constexpr int kMapMargin = 6;

} // namespace

Minimap::Minimap(Canvas& canvas) : QWidget(&canvas), m_canvas(canvas)
{
    setObjectName(QStringLiteral("minimap"));
    setAccessibleName(tr("Minimap"));
    setCursor(Qt::PointingHandCursor);
    resize(kMapWidth, kMapHeight);
    canvas.installEventFilter(this);
    connect(&canvas, &Canvas::sceneChanged, this, &Minimap::forget);
    connect(&canvas, &Canvas::themeChanged, this, &Minimap::forget);
    connect(&canvas, &Canvas::viewChanged, this, [this] { update(); });
    follow();
}

bool Minimap::isWanted()
{
    return QSettings().value(kWantedKey, false).toBool();
}

void Minimap::setWanted(bool isWanted)
{
    QSettings().setValue(kWantedKey, isWanted);
}

void Minimap::follow()
{
    place();
    setVisible(isWanted());
}

void Minimap::place()
{
    move(m_canvas.width() - width() - kMapGap, m_canvas.height() - height() - kMapGap);
}

bool Minimap::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_canvas && event->type() == QEvent::Resize)
        place();
    else if (watched == &m_canvas && event->type() == QEvent::Show)
        follow();
    return QWidget::eventFilter(watched, event);
}

void Minimap::forget()
{
    m_picture = QImage();
    update();
}

void Minimap::draw()
{
    const zelDraw::Theme& theme = zelDraw::theme(m_canvas.isDark());
    m_picture = QImage(size(), QImage::Format_RGB32);
    m_picture.fill(0xFF000000U | theme.stub);
    const Scene* const scene = m_canvas.scene();
    if (!scene)
        return;
    m_area = scene->bounds();
    const double room = std::min((width() - 2 * kMapMargin) / std::max(m_area.width(), 1.0),
                                 (height() - 2 * kMapMargin) / std::max(m_area.height(), 1.0));
    m_scale = std::min(room, 0.5);
    Raster raster(m_picture, m_picture.rect());
    const QPointF origin = QPointF(width(), height()) / 2 - m_area.center() * m_scale;
    const ImagePlace place = {m_scale, 1, origin};
    for (const SceneBackdrop& backdrop : scene->backdrops())
        raster.blend(place.of(backdrop.rect), theme.backdrop, 80);
    for (const SceneBox& box : scene->boxes()) {
        if (!box.isAlive)
            continue;
        QRect rect = place.of(box.rect);
        rect.setSize(rect.size().expandedTo({2, 2}));
        const Pixel colour = box.kind == SceneBox::Kind::Compound  ? theme.compoundBorder
                             : box.kind == SceneBox::Kind::Unknown ? theme.unknownBorder
                             : box.isNode()                        ? theme.faint
                                                                   : theme.border;
        raster.fill(rect, colour);
    }
}

void Minimap::paintEvent(QPaintEvent* /*event*/)
{
    if (m_picture.isNull())
        draw();
    const zelDraw::Theme& theme = zelDraw::theme(m_canvas.isDark());
    QPainter painter(this);
    painter.drawImage(0, 0, m_picture);
    const QRectF seen = m_canvas.view().seen();
    const QPointF middle = QPointF(width(), height()) / 2;
    const QRectF frame(middle + (seen.topLeft() - m_area.center()) * m_scale,
                       seen.size() * m_scale);
    QColor inside = QColor::fromRgb(theme.selection);
    painter.setPen(QPen(inside, 1.5));
    inside.setAlpha(26);
    painter.setBrush(inside);
    if (m_canvas.scene())
        painter.drawRect(frame & QRectF(rect()).adjusted(1, 1, -1, -1));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QColor::fromRgb(theme.border));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void Minimap::goTo(const QPointF& pixel)
{
    const QPointF middle = QPointF(width(), height()) / 2;
    if (m_canvas.scene())
        m_canvas.setView(m_canvas.view().scale(), m_area.center() + (pixel - middle) / m_scale);
}

void Minimap::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        goTo(event->position());
}

void Minimap::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton)
        goTo(event->position());
}

} // namespace shading
