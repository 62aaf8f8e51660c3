#pragma once

#include "document/pointers.h"
#include "window/docks/property.h"
#include "window/workspace/panel.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <vector>

class QLabel;
class QLineEdit;
class QScrollArea;
class QTimer;
class QToolButton;
class QVBoxLayout;

namespace shading {

class PropertyRow;
class TextField;

/// What is selected: its name, type, inputs and attributes. With nothing selected, the compound
/// that is looked at. Widgets stay where they are while values change, and serve the next node of
/// the same type.
class PropertiesPanel : public Panel {
    Q_OBJECT

public:
    explicit PropertiesPanel(QWidget* parent = nullptr);
    ~PropertiesPanel() override;

    void setWorkspace(Workspace* workspace) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void addParts();
    void askRefresh();
    void refresh();
    void showHeader();
    void showRows(const std::vector<Property>& properties);
    void showFolds();
    QToolButton* foldOf(const QString& folder);
    bool rename(const QString& name);
    void filter();

    Workspace* m_workspace = nullptr;     ///< Not owned. Null: no document.
    std::vector<NodePtr> m_nodes;         ///< What is shown.
    std::vector<PropertyRow*> m_rows;     ///< Owned by the widget, as all below.
    QHash<QString, QToolButton*> m_folds; ///< The headers of folders.
    QSet<QString> m_folded;               ///< Those that are shut.
    TextField* m_name = nullptr;
    QLabel* m_type = nullptr;
    QLabel* m_problem = nullptr;
    QLineEdit* m_filter = nullptr;
    QScrollArea* m_scroll = nullptr;
    QVBoxLayout* m_list = nullptr;
    QTimer* m_timer = nullptr; ///< Runs out when the event loop turns.
};

} // namespace shading
