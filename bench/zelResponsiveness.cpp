// How long the window cannot be used at a time while a large document is opened, looked into,
// edited, saved and closed.
//   zelResponsiveness [NODES]     (default: 300000, in graphs of 100)
// Prints a table: how long each thing lasts, and the longest time between two turns of the event
// loop.

#include "session/session.h"
#include "window/canvas/canvas.h"
#include "window/documentView.h"
#include "window/drive/driver.h"
#include "window/files/documentFiles.h"
#include "window/files/progressBox.h"
#include "window/mainWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>

namespace {

constexpr int kNodesInGraph = 100;
constexpr int kTick = 10; ///< In milliseconds: a gap is known that exactly.

/// Chains of nodes as in real documents: one input from the node before, one with a value.
void writeDocument(const std::string& path, int nodes)
{
    std::ofstream file(path, std::ios::binary);
    file << "<?xml version=\"1.0\"?>\n<materialx version=\"1.39\" colorspace=\"lin_rec709\">\n";
    for (int graph = 0; graph * kNodesInGraph < nodes; ++graph) {
        file << "  <nodegraph name=\"g" << graph << "\">\n";
        for (int i = 0; i < kNodesInGraph; ++i) {
            file << "    <add name=\"n" << i << "\" type=\"color3\">\n";
            if (i > 0)
                file << "      <input name=\"in1\" type=\"color3\" nodename=\"n" << i - 1
                     << "\" />\n";
            file << "      <input name=\"in2\" type=\"color3\" value=\"0.1, 0.2, 0.3\" />\n"
                 << "    </add>\n";
        }
        file << "  </nodegraph>\n";
    }
    file << "</materialx>\n";
}

/// The longest time between two turns of the event loop.
class Gaps {
public:
    Gaps()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { note(); });
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.start(kTick);
    }
    /// Does it, and lets what comes of it be shown.
    void measure(const char* what, shading::MainWindow& window, const std::function<void()>& work)
    {
        QElapsedTimer all;
        all.start();
        m_longest = 0;
        m_since.start();
        work();
        shading::waitUntilShown(window);
        note();
        std::printf("| %-38s | %7lld | %5lld |\n", what, static_cast<long long>(all.elapsed()),
                    static_cast<long long>(m_longest));
        std::fflush(stdout);
    }

private:
    void note() { m_longest = std::max(m_longest, m_since.restart()); }

    QTimer m_timer;
    QElapsedTimer m_since;
    qint64 m_longest = 0;
};

void run(shading::MainWindow& window, const QString& path)
{
    Gaps gaps;
    const auto node = [&](const char* name) {
        return window.workspace()->document().findNodeFromPath(name);
    };
    std::printf("| %-38s | %7s | %5s |\n|---|---|---|\n", "what", "ms", "longest gap, ms");
    gaps.measure("open", window, [&] { window.files().open(path); });
    if (!window.workspace())
        std::exit(1);
    shading::Workspace& workspace = *window.workspace();
    gaps.measure("look into a graph", window,
                 [&] { workspace.enter(node("Top.g7")->getAsCompound()); });
    gaps.measure("rename a node, the first edit", window, [&] {
        workspace.edit([](shading::Edits& edits) { return edits.renameNode("Top.g7.n3", "m"); });
    });
    gaps.measure("delete a node", window, [&] {
        workspace.edit([](shading::Edits& edits) { return edits.deleteNode("Top.g7.n9"); });
    });
    gaps.measure("undo", window, [&] { workspace.undo(); });
    gaps.measure("go back to the document", window, [&] { workspace.leave(); });
    gaps.measure("delete a graph", window, [&] {
        workspace.edit([](shading::Edits& edits) { return edits.deleteNode("Top.g8"); });
    });
    gaps.measure("select all and copy", window, [&] {
        workspace.enter(node("Top.g9")->getAsCompound());
        window.actions().find("edit.selectAll")->trigger();
        window.actions().find("edit.copy")->trigger();
    });
    gaps.measure("save", window, [&] { window.files().save(window.view()); });
    gaps.measure("close", window, [&] { window.files().close(window.view()); });
}

} // namespace

int main(int argc, char** argv)
{
    shading::ProgressBox::prepare();
    const QTemporaryDir home;
    for (const char* const name : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"})
        qputenv(name, home.path().toLocal8Bit());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setStyle("Fusion");
    const QString path = home.filePath("large.mtlx");
    writeDocument(path.toStdString(), argc > 1 ? std::atoi(argv[1]) : 300000);
    std::string problem;
    shading::MainWindow window(std::make_shared<shading::Environment>(SHADING_PLUGIN, problem));
    window.resize(1920, 1080);
    window.show();
    shading::waitUntilShown(window);
    run(window, path);
    return 0;
}
