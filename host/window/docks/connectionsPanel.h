#pragma once

#include "window/workspace/panel.h"

class QTreeView;

namespace shading {

class ConnectionsModel;

/// The connections of the compound that is looked at, as a table that a screen reader can read; a
/// click shows both ends.
class ConnectionsPanel : public Panel {
    Q_OBJECT

public:
    explicit ConnectionsPanel(QWidget* parent = nullptr);
    ~ConnectionsPanel() override;

    void setWorkspace(Workspace* workspace) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void read();
    void goTo(int row);

    Workspace* m_workspace = nullptr; ///< Not owned. Null: no document.
    ConnectionsModel* m_model;        ///< Owned by the widget, as the list.
    QTreeView* m_list;
};

} // namespace shading
