#include "window/docks/textField.h"

#include <QKeyEvent>
#include <QPointer>

namespace shading {

TextField::TextField(Take take, QWidget* parent) : QLineEdit(parent), m_take(std::move(take)) {}

void TextField::showText(const QString& text)
{
    m_shown = text;
    if (isModified() || this->text() == text)
        return;
    const int cursor = cursorPosition();
    setText(text);
    // A line that is read begins at its start; one with the cursor in it keeps it.
    setCursorPosition(hasFocus() ? cursor : 0);
}

void TextField::discard()
{
    setModified(false);
    setText(m_shown);
    setCursorPosition(0);
}

bool TextField::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && !isModified()) {
        auto* const key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
            event->ignore();
            return false;
        }
    }
    return QLineEdit::event(event);
}

void TextField::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        commitTyped();
        return;
    case Qt::Key_Escape:
        // Once more is for the window.
        if (!isModified())
            break;
        discard();
        selectAll();
        return;
    default:
        break;
    }
    QLineEdit::keyPressEvent(event);
}

void TextField::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // A menu of its own takes the focus too, and gives it back.
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        commitTyped();
}

void TextField::commitTyped()
{
    if (isModified())
        commit(text());
}

bool TextField::commit(const QString& text)
{
    if (m_isCommitting)
        return false;
    m_isCommitting = true;
    const QPointer<TextField> self(this);
    const bool isTaken = m_take(text);
    if (!self)
        return isTaken;
    m_isCommitting = false;
    if (isTaken) {
        setModified(false);
        setText(m_shown);
    } else if (this->text() == text) {
        setModified(true);
    }
    return isTaken;
}

} // namespace shading
