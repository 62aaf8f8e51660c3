#include "window/docks/docks.h"

#include "window/docks/consolePanel.h"
#include "window/docks/historyPanel.h"
#include "window/docks/propertiesPanel.h"
#include "window/mainWindow.h"

namespace shading {

void addPanels(MainWindow& window)
{
    window.addPanel(new PropertiesPanel, "properties", "Properties", Qt::RightDockWidgetArea);
    window.addPanel(new HistoryPanel, "history", "History", Qt::RightDockWidgetArea);
    window.addPanel(new ConsolePanel, "console", "Console", Qt::BottomDockWidgetArea);
}

} // namespace shading
