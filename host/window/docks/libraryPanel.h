#pragma once

#include "window/workspace/nodeCatalogue.h"
#include "window/workspace/panel.h"

#include <memory>

class QLineEdit;
class QTreeWidgetItem;

namespace shading {

class LibraryTree;
class MainWindow;

/// The types that nodes can be made of, by their libraries, and a search among them. One is dragged
/// onto the canvas; a double click and Enter make it in the middle of what is seen.
class LibraryPanel : public Panel {
    Q_OBJECT

public:
    /// The window must outlive the panel.
    explicit LibraryPanel(MainWindow& window, QWidget* parent = nullptr);
    ~LibraryPanel() override;

    void setWorkspace(Workspace* workspace) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showAll();
    void showHits(const QString& text);
    void make(QTreeWidgetItem* item);

    MainWindow& m_window;
    std::unique_ptr<NodeCatalogue> m_catalogue; ///< Null: no document.
    // Owned by the widget.
    QLineEdit* m_line;
    LibraryTree* m_tree;
};

} // namespace shading
