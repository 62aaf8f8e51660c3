#include "window/gestures/nameEditor.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace shading {

namespace {

constexpr int kLeastWidth = 140;

} // namespace

NameEditor::NameEditor(QWidget& over, const QString& name, Place place, Rename rename)
    : QFrame(over.parentWidget() ? over.parentWidget() : &over),
      m_over(over),
      m_name(name),
      m_place(std::move(place)),
      m_rename(std::move(rename)),
      m_line(new QLineEdit(name, this)),
      m_reason(new QLabel(this))
{
    setObjectName(QStringLiteral("rename"));
    setAutoFillBackground(true);
    m_line->setObjectName(QStringLiteral("rename.text"));
    m_line->setAccessibleName(tr("Name"));
    m_reason->setObjectName(QStringLiteral("rename.reason"));
    m_reason->setWordWrap(true);
    m_reason->hide();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_line);
    layout->addWidget(m_reason);
    m_line->installEventFilter(this);
    connect(m_line, &QLineEdit::textEdited, m_reason, &QLabel::hide);
}

void NameEditor::open()
{
    follow();
    if (m_isClosed)
        return;
    show();
    raise();
    m_line->selectAll();
    m_line->setFocus(Qt::PopupFocusReason);
}

void NameEditor::follow()
{
    const QRect place = m_place();
    if (place.isEmpty()) {
        close();
        return;
    }
    const int width = std::max(kLeastWidth, place.width());
    m_reason->setFixedWidth(width);
    const int height = m_line->sizeHint().height() +
                       (m_reason->isHidden() ? 0 : m_reason->heightForWidth(width) + 4);
    setGeometry(QRect(m_over.mapTo(parentWidget(), place.topLeft()), QSize(width, height)));
}

void NameEditor::take(bool isLast)
{
    const QString name = m_line->text();
    const QString reason = name == m_name ? QString() : m_rename(name);
    if (reason.isEmpty() || isLast) {
        close();
        return;
    }
    m_reason->setText(reason);
    m_reason->show();
    follow();
}

void NameEditor::close()
{
    if (std::exchange(m_isClosed, true))
        return;
    const bool hadFocus = m_line->hasFocus();
    hide();
    deleteLater();
    if (hadFocus)
        m_over.setFocus(Qt::PopupFocusReason);
}

bool NameEditor::eventFilter(QObject* object, QEvent* event)
{
    if (m_isClosed)
        return QFrame::eventFilter(object, event);
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            take(true);
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return QFrame::eventFilter(object, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        take(false);
        return true;
    case Qt::Key_Escape:
        close();
        return true;
    default:
        return false;
    }
}

} // namespace shading
