#pragma once

#include "document/pointers.h"
#include "window/workspace/panel.h"

#include <QStringList>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class QTimer;

namespace shading {

class PortsModel;

/// The ports of the compound that is selected, or else of the one that is looked at: added,
/// renamed, moved, given another type or value, deleted.
class PortsPanel : public Panel {
    Q_OBJECT

public:
    explicit PortsPanel(QWidget* parent = nullptr);
    ~PortsPanel() override;

    void setWorkspace(Workspace* workspace) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// Inputs or outputs.
    struct Table {
        PortsModel* model;
        QTableView* view;
    };

    Table addTable(ZEL::PortIOType ioType, const QString& id, const QString& title);
    void addButtons();
    void addLineForNew();
    QPushButton* newButton(const QString& id, const QString& text, const QString& help);
    void askRefresh();
    void refresh();
    Table& current();
    void move(int step);
    void deletePort();
    void addPort(ZEL::PortIOType ioType);
    void tell(const QString& problem);
    QStringList typeNames() const;

    Workspace* m_workspace = nullptr; ///< Not owned. Null: no document.
    NodePtr m_node;                   ///< Of the compound; empty: none.
    // Owned by the widget.
    QLabel* m_title;
    QLabel* m_problem;
    Table m_inputs;
    Table m_outputs;
    QLineEdit* m_name = nullptr;
    QComboBox* m_type = nullptr;
    QTimer* m_timer;
    bool m_isOutput = false; ///< The table that was used last.
};

} // namespace shading
