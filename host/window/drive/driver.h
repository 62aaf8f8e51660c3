#pragma once

#include "window/drive/target.h"

#include <QObject>
#include <QString>
#include <iosfwd>

namespace shading {

class MainWindow;
class Workspace;

/// Runs scripts on the window: a line is a click, a drag, a key or what is expected then. They go
/// through the windows as those of a person do.
class Driver : public QObject {
    Q_OBJECT

public:
    /// Nothing given is owned; all must outlive the driver. With isVerbose, each edit is printed as
    /// the console's commands that do the same.
    Driver(MainWindow& window, std::ostream& out, std::ostream& err, bool isVerbose);

    /// Runs a file of lines until one fails. False then, or when it cannot be read; what was
    /// expected and what was found is on err, behind "FILE:LINE: ".
    bool run(const QString& path);
    /// Runs one line. Empty when it did what it says; else what was expected and found.
    QString runLine(const QString& line);

private:
    QString runMouse(const QStringList& words);
    QString runMenu(const QString& path);
    QString runEnter(const QString& path);
    QString save(const QString& path);
    QString takeScreenshot(const QString& path);
    void listen(Workspace* workspace);

    MainWindow& m_window;
    std::ostream& m_out;
    std::ostream& m_err;
    bool m_isVerbose;
};

/// Waits until the front document is shown whole and the event loop has nothing to do.
void waitUntilShown(MainWindow& window);

} // namespace shading
