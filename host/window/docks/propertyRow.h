#pragma once

#include "window/docks/property.h"
#include "window/docks/valueEditors.h"

class QLabel;
class QPushButton;
class QStackedWidget;
class QToolButton;

namespace shading {

/// A line of the panel of properties: name, editor or source, the way back, and below why a value
/// was refused.
class PropertyRow : public QWidget, private ValueTaker {
    Q_OBJECT

public:
    PropertyRow(Workspace& workspace, const Property& property, QWidget* parent = nullptr);
    ~PropertyRow() override;

    const Property& property() const { return m_property; }
    /// Takes the place of one that is like it. What is being typed for another node is given up.
    void setProperty(const Property& property);
    /// Shows what holds now.
    void refresh();

private:
    bool takeValue(const QString& value) override;
    bool passValue(const QString& value) override;
    void endGesture(bool isKept) override;

    void addParts();
    void showHelp();
    /// True when there is no problem.
    bool report(const QString& problem);
    QString folder() const;

    Workspace& m_workspace; ///< Outlives the row: the panel lets go of rows before.
    Property m_property;
    PropertyState m_state;
    // All owned by the widget.
    QLabel* m_name = nullptr;
    QStackedWidget* m_ways = nullptr; ///< The editor, or the source.
    ValueEditor* m_editor = nullptr;
    QPushButton* m_source = nullptr;
    QToolButton* m_reset = nullptr;
    QLabel* m_problem = nullptr;
    int m_gesture = 0;     ///< A number for the one that goes on; 0: none does.
    int m_countBefore = 0; ///< The edits that were done when it began.
};

} // namespace shading
