#include "window/drive/driver.h"

#include "base/commandLine.h"
#include "document/document.h"
#include "window/canvas/canvas.h"
#include "window/documentView.h"
#include "window/drive/expectations.h"
#include "window/mainWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QThread>
#include <ostream>

namespace shading {

namespace {

/// As a window manager does when a dialog has closed: without one no window has the keys then.
void activate(QWidget& window)
{
    if (QApplication::activeWindow())
        return;
    QWidget* const modal = QApplication::activeModalWidget();
    (modal ? *modal : window).activateWindow();
    settle();
}

/// As a person reads it: without the sign of the key and what follows the name.
QString plainText(QString text)
{
    return text.remove('&').remove("...").remove(QChar(0x2026)).trimmed();
}

/// Takes the words as the console does.
bool splitLine(const QString& line, QStringList& words, QString& problem)
{
    std::vector<std::string> parts;
    std::string text;
    if (!splitCommand(line.toStdString(), parts, text)) {
        problem = QString::fromStdString(text);
        return false;
    }
    for (const std::string& part : parts)
        words.append(QString::fromStdString(part));
    return true;
}

} // namespace

Driver::Driver(MainWindow& window, std::ostream& out, std::ostream& err, bool isVerbose)
    : m_window(window),
      m_out(out),
      m_err(err),
      m_isVerbose(isVerbose)
{
    for (DocumentView* const view : window.views())
        listen(&view->workspace());
    connect(&window, &MainWindow::workspaceChanged, this, &Driver::listen);
}

void Driver::listen(Workspace* workspace)
{
    if (!m_isVerbose || !workspace)
        return;
    disconnect(workspace, nullptr, this, nullptr); // One that was in front before.
    connect(workspace, &Workspace::edited, this, [this](const Change& change) {
        if (change.kind == Change::Kind::Done) {
            for (const std::string& line : change.name.lines)
                m_out << line << std::endl;
        } else if (change.kind != Change::Kind::Outside) {
            m_out << (change.kind == Change::Kind::Undone ? "undo" : "redo") << std::endl;
        }
    });
}

bool Driver::run(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_err << path.toStdString() << ": " << file.errorString().toStdString() << std::endl;
        return false;
    }
    int number = 0;
    while (!file.atEnd()) {
        ++number;
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        const QString problem = runLine(line);
        if (!problem.isEmpty()) {
            m_err << path.toStdString() << ":" << number << ": " << problem.toStdString()
                  << std::endl;
            return false;
        }
    }
    return true;
}

QString Driver::runLine(const QString& line)
{
    waitUntilShown(m_window);
    activate(m_window);
    QString problem;
    QStringList words;
    // What is typed is taken as it stands.
    if (line.startsWith("type ")) {
        type(line.mid(5));
    } else if (!splitLine(line, words, problem)) {
        return "expected a line, found " + problem;
    } else if (words.isEmpty()) {
        return {};
    } else if (words[0] == "key" && words.size() == 2) {
        const QKeySequence keys(words[1], QKeySequence::PortableText);
        if (keys.isEmpty() || keys[0].key() == Qt::Key_unknown)
            return "expected a key, found " + words[1];
        press(keys);
    } else if (words[0] == "menu" && words.size() > 1) {
        problem = runMenu(words.mid(1).join(' '));
    } else if (words[0] == "enter" && words.size() == 2) {
        problem = runEnter(words[1]);
    } else if (words[0] == "leave" && words.size() == 1) {
        problem = m_window.workspace() && m_window.workspace()->leave()
                      ? QString()
                      : "expected a compound around, found none";
    } else if (words[0] == "expect") {
        problem = askExpectation(m_window, words.mid(1));
    } else if (words[0] == "save" && words.size() == 2) {
        problem = save(words[1]);
    } else if (words[0] == "screenshot" && words.size() == 2) {
        problem = takeScreenshot(words[1]);
    } else {
        problem = runMouse(words);
    }
    waitUntilShown(m_window);
    return problem;
}

QString Driver::runMouse(const QStringList& words)
{
    const bool isDrag = words[0] == "drag";
    const bool isKnown =
        isDrag || words[0] == "click" || words[0] == "doubleclick" || words[0] == "rightclick";
    const int targets = isDrag ? 2 : 1;
    if (!isKnown || words.size() <= targets)
        return "expected a line of the script, found " + words.join(' ');
    QString problem;
    Held held;
    if (!readHeld(words.mid(targets + 1), held, problem))
        return "expected modifiers, found " + problem;
    Target first;
    Target second;
    if (!findTarget(m_window, words[1], first, problem))
        return "expected " + words[1] + ", found: " + problem;
    if (isDrag) {
        if (!findTarget(m_window, words[2], second, problem))
            return "expected " + words[2] + ", found: " + problem;
        // To find the second, the view may have moved.
        if (!findTarget(m_window, words[1], first, problem))
            return "expected " + words[1] + ", found: " + problem;
        drag(*first.widget, first.at, *second.widget, second.at, held);
    } else if (words[0] == "doubleclick") {
        doubleClick(*first.widget, first.at, held);
    } else {
        click(*first.widget, first.at, words[0] == "click" ? Qt::LeftButton : Qt::RightButton,
              held);
    }
    return {};
}

QString Driver::runMenu(const QString& path)
{
    QWidget* place = m_window.menuBar();
    const QStringList names = path.split('/');
    for (const QString& name : names) {
        QAction* found = nullptr;
        for (QAction* const action : place->actions()) {
            if (plainText(action->text()) == name)
                found = action;
        }
        auto* const menu = qobject_cast<QMenu*>(place);
        if (!found || !found->isEnabled()) {
            while (QWidget* const open = QApplication::activePopupWidget())
                open->close();
            return "expected the menu " + path + ", found " + name +
                   (found ? " not enabled" : " not there");
        }
        const QRect area =
            menu ? menu->actionGeometry(found) : m_window.menuBar()->actionGeometry(found);
        click(*place, area.center(), Qt::LeftButton, {});
        place = found->menu();
        if (!place && name != names.last())
            return "expected a menu, found " + name;
    }
    return {};
}

QString Driver::runEnter(const QString& path)
{
    Workspace* const workspace = m_window.workspace();
    const NodePtr node =
        workspace ? workspace->document().findNodeFromPath(path.toUtf8()) : nullptr;
    if (!node || !node->isCompound())
        return "expected the compound " + path + ", found " +
               (node ? "a node without one" : "no such node");
    workspace->enter(node->getAsCompound());
    return {};
}

QString Driver::save(const QString& path)
{
    Workspace* const workspace = m_window.workspace();
    if (!workspace)
        return "expected a document, found none";
    std::vector<SaveProblem> problems;
    const bool isSaved = workspace->session().save(path.toStdString(), problems);
    workspace->noteFile();
    if (isSaved)
        return {};
    return "expected " + path + " to be saved, found " +
           QString::fromStdString(problems.front().path + ": " + problems.front().reason);
}

QString Driver::takeScreenshot(const QString& path)
{
    return m_window.grab().save(path) ? QString()
                                      : "expected a picture " + path + ", found no way to write it";
}

void waitUntilShown(MainWindow& window)
{
    settle();
    auto* const canvas = window.view() ? window.view()->findChild<Canvas*>() : nullptr;
    while (canvas && canvas->compound() && !canvas->scene()) {
        QThread::msleep(1);
        settle();
    }
}

} // namespace shading
