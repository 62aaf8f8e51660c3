#pragma once

#include "window/workspace/panel.h"

class QFileDialog;
class QPlainTextEdit;
class QTimer;
class QToolButton;

namespace shading {

class ConsoleInput;
class ConsoleLog;

/// Each edit as the command that does the same, and commands that are typed.
class ConsolePanel : public Panel {
    Q_OBJECT

public:
    explicit ConsolePanel(QWidget* parent = nullptr);
    ~ConsolePanel() override;

    void setWorkspace(Workspace* workspace) override;

    /// Writes what does all edits that are done into a file. False, and told, when that fails.
    bool saveScript(const QString& path);
    /// The typing goes there.
    void focusInput();

private:
    void showEnd();
    QToolButton* addButton(const QString& id, const QString& text, const QString& help);
    QFileDialog* openDialog(const QString& title);
    void chooseScript();
    void chooseFileForScript();

    Workspace* m_workspace = nullptr; ///< Not owned. Null: no document.
    ConsoleLog* m_log = nullptr;      ///< Of the workspace.
    QPlainTextEdit* m_output;
    ConsoleInput* m_input;
    QToolButton* m_save;
    QToolButton* m_run;
    QTimer* m_show; ///< Shows the end of the text when the event loop turns.
};

} // namespace shading
