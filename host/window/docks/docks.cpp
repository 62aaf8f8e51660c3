#include "window/docks/docks.h"

#include "window/docks/connectionsPanel.h"
#include "window/docks/consolePanel.h"
#include "window/docks/historyPanel.h"
#include "window/docks/keySheet.h"
#include "window/docks/libraryPanel.h"
#include "window/docks/outlinePanel.h"
#include "window/docks/portsPanel.h"
#include "window/docks/problemsPanel.h"
#include "window/docks/propertiesPanel.h"
#include "window/mainWindow.h"

#include <QAction>
#include <QDockWidget>

namespace shading {

namespace {

const char* const kEdit = "&Edit";

void addSearchActions(MainWindow& window, OutlinePanel& outline)
{
    const auto hasDocument = [&window] { return window.workspace() != nullptr; };
    const auto find = [&outline](bool isForward) {
        // Without a text there is nothing to go on with.
        outline.hasSearch() ? outline.findNext(isForward) : outline.focusSearch();
    };
    Actions& actions = window.actions();
    actions
        .add("edit.find", kEdit, "&Find...", {QKeySequence("Ctrl+F")},
             [&window, &outline] {
                 window.showPanel("outline");
                 outline.focusSearch();
             })
        .when(hasDocument)
        .group()
        .help("Look for names, types, values and paths in the whole document");
    actions.add("edit.findNext", kEdit, "Find &next", {QKeySequence("F3")}, [=] { find(true); })
        .when(hasDocument);
    actions
        .add("edit.findPrevious", kEdit, "Find pre&vious", {QKeySequence("Shift+F3")},
             [=] { find(false); })
        .when(hasDocument);
}

void addKeySheet(MainWindow& window)
{
    Actions& actions = window.actions();
    actions
        .add("help.keys", "&Help", "&Keys and Mouse...", {QKeySequence("F1")},
             [&window] {
                 auto* sheet = window.findChild<KeySheet*>();
                 if (!sheet)
                     sheet = new KeySheet(window.actions(), &window);
                 sheet->show();
                 sheet->raise();
                 sheet->activateWindow();
             })
        .help("All keys, to be looked up and changed, and what the mouse does");
    // In dialogs too.
    actions.find("help.keys")->setShortcutContext(Qt::ApplicationShortcut);
}

void setSizes(MainWindow& window)
{
    window.setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    window.setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    const auto dock = [&](const char* id) { return window.findChild<QDockWidget*>(id); };
    window.resizeDocks({dock("outline"), dock("properties")}, {250, 320}, Qt::Horizontal);
    window.resizeDocks({dock("console")}, {170}, Qt::Vertical);
    window.resizeDocks({dock("properties"), dock("ports")}, {480, 300}, Qt::Vertical);
}

} // namespace

void addPanels(MainWindow& window)
{
    auto* const outline = new OutlinePanel;
    window.addPanel(outline, "outline", "Outline", Qt::LeftDockWidgetArea);
    window.addPanel(new LibraryPanel(window), "library", "Node Library", Qt::LeftDockWidgetArea);
    window.addPanel(new PropertiesPanel, "properties", "Properties", Qt::RightDockWidgetArea);
    window.addPanel(new PortsPanel, "ports", "Ports", Qt::RightDockWidgetArea);
    window.addPanel(new HistoryPanel, "history", "History", Qt::RightDockWidgetArea);
    window.addPanel(new ConsolePanel, "console", "Console", Qt::BottomDockWidgetArea);
    window.addPanel(new ProblemsPanel, "problems", "Problems", Qt::BottomDockWidgetArea);
    window.addPanel(new ConnectionsPanel, "connections", "Connections", Qt::BottomDockWidgetArea);
    window.showPanel("console");
    window.showPanel("ports");
    addSearchActions(window, *outline);
    addKeySheet(window);
    setSizes(window);
}

} // namespace shading
