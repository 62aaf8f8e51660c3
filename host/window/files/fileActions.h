#pragma once

namespace shading {

class DocumentFiles;
class MainWindow;

/// Adds the actions of the menu File to the window's, and takes the files that are dropped on it.
/// Neither is owned; the files must outlive the window's actions.
void addFileActions(MainWindow& window, DocumentFiles& files);

} // namespace shading
