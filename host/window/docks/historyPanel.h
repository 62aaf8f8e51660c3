#pragma once

#include "window/workspace/panel.h"

class QListView;
class QTimer;

namespace shading {

class HistoryModel;

/// All edits of the document; a click goes there.
class HistoryPanel : public Panel {
    Q_OBJECT

public:
    explicit HistoryPanel(QWidget* parent = nullptr);

    void setWorkspace(Workspace* workspace) override;

private:
    void showCurrent();

    Workspace* m_workspace = nullptr; ///< Not owned. Null: no document.
    HistoryModel* m_model = nullptr;  ///< Of the workspace.
    QListView* m_list;
    QTimer* m_show; ///< Shows where the document is when the event loop turns.
};

} // namespace shading
