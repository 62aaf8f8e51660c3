#include "window/docks/consoleLog.h"

#include "base/commandLine.h"
#include "window/workspace/workspace.h"

#include <QPlainTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>

namespace shading {

namespace {

constexpr int kMostLines = 20000;
constexpr int kMostTyped = 500;

QString textOf(const EditName& name)
{
    QStringList lines;
    for (const std::string& line : name.lines)
        lines.append(QString::fromStdString(line));
    return lines.isEmpty() ? "# " + QString::fromStdString(name.title) : lines.join('\n');
}

QString take(std::ostringstream& stream)
{
    QString text = QString::fromStdString(stream.str());
    stream.str({});
    while (text.endsWith('\n'))
        text.chop(1);
    return text;
}

} // namespace

ConsoleLog& ConsoleLog::of(Workspace& workspace)
{
    auto* log = workspace.findChild<ConsoleLog*>(QString(), Qt::FindDirectChildrenOnly);
    return log ? *log : *new ConsoleLog(workspace);
}

ConsoleLog::ConsoleLog(Workspace& workspace)
    : QObject(&workspace),
      m_workspace(workspace),
      m_console(workspace.session(), m_out, m_err)
{
    addAllCommands(m_console);
    m_text.setDocumentLayout(new QPlainTextDocumentLayout(&m_text));
    m_text.setMaximumBlockCount(kMostLines);
    connect(&workspace, &Workspace::edited, this, &ConsoleLog::take);
}

bool ConsoleLog::run(const QString& line)
{
    if (line.trimmed().isEmpty() || m_isRunning)
        return true;
    m_typed.removeAll(line);
    m_typed.append(line);
    if (m_typed.size() > kMostTyped)
        m_typed.removeFirst();
    say(line, Kind::Line);
    m_lastLines = 0;
    m_isRunning = true;
    const bool isDone = m_console.run(line.toStdString());
    m_isRunning = false;
    sayAnswers();
    if (m_console.hasQuit()) {
        m_console.resume();
        say(tr("The document stays open: close its tab to leave it."), Kind::Answer);
    }
    // The command may have been one that saves.
    m_workspace.noteFile();
    return isDone;
}

bool ConsoleLog::runScript(const QString& path)
{
    return run(QString::fromStdString(lineOf({"source", path.toStdString()})));
}

QString ConsoleLog::script()
{
    m_console.run("history --commands");
    const QString text = shading::take(m_out);
    shading::take(m_err);
    return text.isEmpty() ? text : text + '\n';
}

void ConsoleLog::take(const Change& change)
{
    // What is typed stands there already.
    if (m_isRunning)
        return;
    const int lastLines = std::exchange(m_lastLines, 0);
    switch (change.kind) {
    case Change::Kind::GoneOn:
        for (int i = 0; i < lastLines; ++i)
            removeLastLine();
        [[fallthrough]];
    case Change::Kind::Done: {
        const QString text = textOf(change.name);
        say(text, Kind::Line);
        m_lastLines = static_cast<int>(text.count('\n')) + 1;
        break;
    }
    case Change::Kind::Undone:
        say(QStringLiteral("undo"), Kind::Line);
        break;
    case Change::Kind::Redone:
        say(QStringLiteral("redo"), Kind::Line);
        break;
    case Change::Kind::Outside:
        say(tr("# The document was changed past its history."), Kind::Line);
        break;
    }
}

void ConsoleLog::sayAnswers()
{
    const QString answer = shading::take(m_out);
    const QString error = shading::take(m_err);
    if (!answer.isEmpty())
        say(answer, Kind::Answer);
    if (!error.isEmpty())
        say(error, Kind::Error);
}

void ConsoleLog::say(const QString& text, Kind kind)
{
    QTextCursor cursor(&m_text);
    cursor.movePosition(QTextCursor::End);
    QTextCharFormat format;
    if (kind == Kind::Line)
        format.setFontWeight(QFont::Bold);
    if (kind == Kind::Error)
        format.setForeground(QColor(0xC8401C));
    cursor.beginEditBlock();
    if (!m_text.isEmpty())
        cursor.insertBlock();
    cursor.insertText(text, format);
    cursor.endEditBlock();
    Q_EMIT said();
}

void ConsoleLog::removeLastLine()
{
    QTextCursor cursor(m_text.lastBlock());
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.deletePreviousChar(); // The end of the line before.
}

} // namespace shading
