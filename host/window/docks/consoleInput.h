#pragma once

#include <QLineEdit>
#include <QStringList>

class QListWidget;

namespace shading {

class ConsoleLog;
class Workspace;

/// The line that commands are typed in: Tab completes, with a list to choose from where there are
/// several; Up and Down go through what was typed before.
class ConsoleInput : public QLineEdit {
    Q_OBJECT

public:
    /// The list is shown above the line, in the panel that is given.
    explicit ConsoleInput(QWidget& panel);

    /// Null: there is no document.
    void setWorkspace(Workspace* workspace);

Q_SIGNALS:
    void entered(const QString& line);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool pressInList(int key);
    void completeWord();
    void showList(const QStringList& candidates);
    void choose();
    void goTo(int place);

    Workspace* m_workspace = nullptr; ///< Not owned. Null: no document.
    QListWidget* m_list;              ///< Owned by the panel.
    int m_wordStart = 0;              ///< Of what is completed, in bytes.
    int m_place = 0;                  ///< Among what was typed; behind the last: a new line.
    QString m_newLine;
};

} // namespace shading
