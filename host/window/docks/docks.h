#pragma once

namespace shading {

class MainWindow;

/// Puts all panels into docks of the window, and adds their actions.
void addPanels(MainWindow& window);

} // namespace shading
