#pragma once

#include "window/workspace/panel.h"

class QLabel;
class QPushButton;
class QTimer;
class QTreeView;

namespace shading {

class ProblemsModel;

/// What is wrong with the document, and what was said when it was opened; a click goes there. It is
/// looked for after edits, while the panel is seen; in a big document on the press of a button.
class ProblemsPanel : public Panel {
    Q_OBJECT

public:
    explicit ProblemsPanel(QWidget* parent = nullptr);

    void setWorkspace(Workspace* workspace) override;

    /// Looks now.
    void check();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void noteChange();
    void askCheck();
    void goTo(int row);

    Workspace* m_workspace = nullptr; ///< Not owned. Null: no document.
    ProblemsModel* m_model;           ///< Owned by the widget, as all below.
    QTreeView* m_list;
    QLabel* m_count;
    QPushButton* m_button;
    QTimer* m_timer;
    bool m_isOld = false; ///< The document changed since it was looked at.
};

} // namespace shading
