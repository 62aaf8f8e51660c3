#include "window/canvas/canvas.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QWheelEvent>

namespace shading {

CanvasInput::~CanvasInput() = default;

void Canvas::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.drawImage(QPointF(), m_painter->picture(m_state, devicePixelRatioF()));
    if (m_state.scene) {
        m_painter->paintOverlay(painter, m_state, m_overlay);
    } else if (m_scene) {
        painter.setPen(QColor::fromRgb(zelDraw::theme(m_state.isDark).faint));
        painter.drawText(rect(), Qt::AlignCenter,
                         tr("Drawing %1, %2 %")
                             .arg(QString::fromUtf8(m_scene->compound()->getName()))
                             .arg(m_scene->builtPermille() / 10));
    }
}

void Canvas::resizeEvent(QResizeEvent* /*event*/)
{
    m_state.view.setSize(size());
    if (m_isFresh && scene())
        m_state.view.frame(scene()->bounds());
    Q_EMIT viewChanged();
}

void Canvas::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        chooseTheme();
    QWidget::changeEvent(event);
}

void Canvas::mousePressEvent(QMouseEvent* event)
{
    if (m_input)
        m_input->mousePress(event);
}

void Canvas::mouseMoveEvent(QMouseEvent* event)
{
    if (m_input)
        m_input->mouseMove(event);
}

void Canvas::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_input)
        m_input->mouseRelease(event);
}

void Canvas::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (m_input)
        m_input->mouseDoubleClick(event);
}

void Canvas::wheelEvent(QWheelEvent* event)
{
    if (m_input)
        m_input->wheel(event);
    else
        event->ignore();
}

void Canvas::keyPressEvent(QKeyEvent* event)
{
    if (m_input)
        m_input->keyPress(event);
    else
        QWidget::keyPressEvent(event);
}

void Canvas::keyReleaseEvent(QKeyEvent* event)
{
    if (m_input)
        m_input->keyRelease(event);
    else
        QWidget::keyReleaseEvent(event);
}

void Canvas::contextMenuEvent(QContextMenuEvent* event)
{
    if (m_input)
        m_input->contextMenu(event);
    else
        event->ignore();
}

void Canvas::leaveEvent(QEvent* /*event*/)
{
    if (m_input)
        m_input->leave();
}

void Canvas::focusInEvent(QFocusEvent* event)
{
    if (m_input)
        m_input->focusIn(event);
    QWidget::update();
}

void Canvas::focusOutEvent(QFocusEvent* event)
{
    if (m_input)
        m_input->focusOut(event);
    QWidget::update();
}

/// Tab is a key of the canvas, not the way to the next widget.
bool Canvas::focusNextPrevChild(bool next)
{
    return !m_input && QWidget::focusNextPrevChild(next);
}

} // namespace shading
