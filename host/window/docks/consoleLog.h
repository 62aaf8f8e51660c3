#pragma once

#include "console/console.h"
#include "document/change.h"

#include <QObject>
#include <QStringList>
#include <QTextDocument>
#include <sstream>

namespace shading {

class Workspace;

/// The console of one document: what was said, and what was typed. It hears the edits from its
/// making on. A child of the workspace, one for each.
class ConsoleLog : public QObject {
    Q_OBJECT

public:
    /// That of the workspace, made at the first call.
    static ConsoleLog& of(Workspace& workspace);

    /// What was said, a line for each edit and each answer.
    QTextDocument& text() { return m_text; }
    const std::vector<Command>& commands() const { return m_console.commands(); }
    const QStringList& typed() const { return m_typed; }

    /// Runs what was typed, and says what came of it. False when it failed.
    bool run(const QString& line);
    /// Runs the lines of a script; those that were done stay when one fails.
    bool runScript(const QString& path);
    /// The lines that do all edits that are done, ready to be a script.
    QString script();

Q_SIGNALS:
    void said();

private:
    enum class Kind { Line, Answer, Error };

    explicit ConsoleLog(Workspace& workspace);

    void take(const Change& change);
    void say(const QString& text, Kind kind);
    void sayAnswers();
    void removeLastLine();

    Workspace& m_workspace;
    std::ostringstream m_out;
    std::ostringstream m_err;
    Console m_console;
    QTextDocument m_text;
    QStringList m_typed; ///< The oldest first.
    int m_lastLines = 0; ///< Of the edit that was said last, at the end of the text; 0: none is.
    bool m_isRunning = false;
};

} // namespace shading
