#pragma once

#include <QDialog>
#include <QString>

class QKeySequenceEdit;
class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace shading {

class Actions;

/// All actions with their keys, by their menus, and what the mouse does. Keys are changed here.
class KeySheet : public QDialog {
    Q_OBJECT

public:
    /// The actions must outlive the sheet.
    explicit KeySheet(Actions& actions, QWidget* parent = nullptr);

private:
    void addParts();
    void fill();
    void addMouse();
    void filter();
    void choose();
    /// The id of the action that is chosen; empty: none is.
    QString chosen() const;
    void setKey();
    void resetKey();
    void resetAll();

    Actions& m_actions;
    // Owned by the widget.
    QLineEdit* m_search;
    QTreeWidget* m_tree;
    QKeySequenceEdit* m_edit;
    QLabel* m_message;
    QString m_warned; ///< The key that another action has, after the user was told so.
};

} // namespace shading
