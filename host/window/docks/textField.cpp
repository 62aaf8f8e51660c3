#include "window/docks/textField.h"

#include <QKeyEvent>
#include <QPointer>

namespace shading {

namespace {

/// It may be a key of an action; in the field it means nothing.
bool isWindowKey(const QKeyEvent& key)
{
    if (key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F35)
        return true;
    const bool isModifier = key.key() == Qt::Key_Control || key.key() == Qt::Key_Shift ||
                            key.key() == Qt::Key_Alt || key.key() == Qt::Key_Meta ||
                            key.key() == Qt::Key_AltGr;
    return !isModifier && key.modifiers().testFlag(Qt::ControlModifier);
}

} // namespace

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
    if (event->type() != QEvent::ShortcutOverride)
        return QLineEdit::event(event);
    auto* const key = static_cast<QKeyEvent*>(event);
    const bool isReplay = key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo);
    if (isReplay && !isModified()) {
        event->ignore();
        return false;
    }
    event->ignore();
    const bool isTaken = QLineEdit::event(event);
    if (!event->isAccepted() && isWindowKey(*key))
        commitTyped();
    return isTaken;
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
