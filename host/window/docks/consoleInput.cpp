#include "window/docks/consoleInput.h"

#include "console/completion.h"
#include "window/docks/consoleLog.h"
#include "window/workspace/workspace.h"

#include <QKeyEvent>
#include <QListWidget>
#include <algorithm>

namespace shading {

namespace {

constexpr int kMostShown = 200;
constexpr int kMostRows = 8;

} // namespace

ConsoleInput::ConsoleInput(QWidget& panel) : QLineEdit(&panel), m_list(new QListWidget(&panel))
{
    setObjectName("console.input");
    setPlaceholderText(tr("A command: help lists them, Tab completes"));
    setAccessibleName(tr("Command"));
    m_list->setObjectName("console.candidates");
    m_list->setAccessibleName(tr("What the word may become"));
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setUniformItemSizes(true);
    m_list->setFrameShape(QFrame::Box);
    m_list->hide();
    connect(m_list, &QListWidget::itemClicked, this, &ConsoleInput::choose);
    connect(this, &QLineEdit::textEdited, m_list, &QWidget::hide);
}

void ConsoleInput::setWorkspace(Workspace* workspace)
{
    m_workspace = workspace;
    m_list->hide();
    m_place = workspace ? static_cast<int>(ConsoleLog::of(*workspace).typed().size()) : 0;
}

bool ConsoleInput::event(QEvent* event)
{
    // Before it takes the focus to the next widget; Shift+Tab does.
    if (event->type() == QEvent::KeyPress) {
        auto* const key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier) {
            if (m_list->isVisible())
                pressInList(Qt::Key_Down);
            else
                completeWord();
            return true;
        }
    }
    // With nothing typed they are the document's.
    if (event->type() == QEvent::ShortcutOverride && text().isEmpty()) {
        auto* const key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
            event->ignore();
            return false;
        }
    }
    return QLineEdit::event(event);
}

void ConsoleInput::keyPressEvent(QKeyEvent* event)
{
    if (m_list->isVisible() && pressInList(event->key()))
        return;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        const QString line = text();
        clear();
        Q_EMIT entered(line);
        if (m_workspace)
            m_place = static_cast<int>(ConsoleLog::of(*m_workspace).typed().size());
        return;
    }
    case Qt::Key_Up:
        goTo(m_place - 1);
        return;
    case Qt::Key_Down:
        goTo(m_place + 1);
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void ConsoleInput::focusOutEvent(QFocusEvent* event)
{
    m_list->hide();
    QLineEdit::focusOutEvent(event);
}

bool ConsoleInput::pressInList(int key)
{
    const int count = m_list->count();
    switch (key) {
    case Qt::Key_Down:
        m_list->setCurrentRow((m_list->currentRow() + 1) % count);
        return true;
    case Qt::Key_Up:
        m_list->setCurrentRow((m_list->currentRow() + count - 1) % count);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose();
        return true;
    case Qt::Key_Escape:
        m_list->hide();
        return true;
    default:
        return false;
    }
}

void ConsoleInput::completeWord()
{
    if (!m_workspace)
        return;
    const QString after = text().mid(cursorPosition());
    const std::string before = text().left(cursorPosition()).toStdString();
    const Completion completion =
        complete(ConsoleLog::of(*m_workspace).commands(), m_workspace->document(), before);
    if (completion.text.empty() && completion.candidates.empty())
        return;
    m_wordStart = static_cast<int>(completion.start);
    const QString line =
        QString::fromStdString(before.substr(0, completion.start) + completion.text);
    setText(line + after);
    setCursorPosition(static_cast<int>(line.size()));
    if (completion.candidates.size() < 2)
        return;
    QStringList candidates;
    for (const std::string& candidate : completion.candidates) {
        if (candidates.size() < kMostShown)
            candidates.append(QString::fromStdString(candidate));
    }
    showList(candidates);
}

void ConsoleInput::showList(const QStringList& candidates)
{
    m_list->clear();
    m_list->addItems(candidates);
    m_list->setCurrentRow(0);
    const int rows = std::min(static_cast<int>(candidates.size()), kMostRows);
    const int height = rows * m_list->sizeHintForRow(0) + 2 * m_list->frameWidth();
    const int width = std::min(parentWidget()->width(), m_list->sizeHintForColumn(0) + 40);
    const int top = mapTo(parentWidget(), QPoint(0, 0)).y() - height;
    m_list->setGeometry(x(), std::max(top, 0), width, height);
    m_list->raise();
    m_list->show();
}

void ConsoleInput::choose()
{
    m_list->hide();
    if (!m_list->currentItem())
        return;
    QString word = m_list->currentItem()->text();
    const QString after = text().mid(cursorPosition());
    const std::string before = text().left(cursorPosition()).toStdString();
    if (before.size() < static_cast<std::size_t>(m_wordStart))
        return;
    // More of a path or a folder may follow.
    if (!word.endsWith('.') && !word.endsWith('/'))
        word += ' ';
    const QString line =
        QString::fromStdString(before.substr(0, static_cast<std::size_t>(m_wordStart))) + word;
    setText(line + after);
    setCursorPosition(static_cast<int>(line.size()));
}

void ConsoleInput::goTo(int place)
{
    if (!m_workspace)
        return;
    const QStringList& typed = ConsoleLog::of(*m_workspace).typed();
    const int size = static_cast<int>(typed.size());
    if (place < 0 || place > size)
        return;
    if (m_place >= size)
        m_newLine = text();
    m_place = place;
    setText(place < size ? typed[place] : m_newLine);
}

} // namespace shading
