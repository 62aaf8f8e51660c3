#pragma once

#include "session/environment.h"
#include "window/workspace/actions.h"
#include "window/workspace/workspace.h"

#include <QMainWindow>
#include <memory>
#include <vector>

class QDockWidget;
class QLabel;
class QTabWidget;

namespace shading {

class DocumentFiles;
class DocumentView;
class Panel;

/// The window: documents in tabs, panels in docks around them, and the actions.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// What documents are opened with is shared with them.
    explicit MainWindow(std::shared_ptr<Environment> environment, QWidget* parent = nullptr);
    ~MainWindow() override;

    const std::shared_ptr<Environment>& environment() const { return m_environment; }
    Actions& actions() { return *m_actions; }

    DocumentFiles& files() { return *m_files; }

    /// Puts a document into a tab, in front: a new one, or that place.
    DocumentView*
    addDocument(std::unique_ptr<Session> session, std::vector<Message> messages, int place = -1);
    /// Takes it out and destroys it; nobody is asked.
    void removeDocument(DocumentView* view);
    /// The same document, read anew, takes its place; what of it is seen stays.
    void replaceDocument(DocumentView* view,
                         std::unique_ptr<Session> session,
                         std::vector<Message> messages);
    void showDocument(DocumentView* view);
    /// That in front; null when there is none.
    DocumentView* view() const;
    Workspace* workspace() const;
    std::vector<DocumentView*> views() const;

    /// Puts a panel into a dock, with an action `view.ID` in the menu View that shows and hides it.
    /// The window owns it. A second one of an area stands below the first, further ones behind the
    /// last.
    void addPanel(Panel* panel, const QString& id, const QString& title, Qt::DockWidgetArea area);
    /// Shows the panel of that id in front of others.
    void showPanel(const QString& id);

Q_SIGNALS:
    /// Another document is in front, or none.
    void workspaceChanged(shading::Workspace* workspace);
    void documentAdded(shading::DocumentView* view);
    /// It is whole until this was told.
    void documentClosing(shading::DocumentView* view);

protected:
    /// Asks what becomes of what is not saved.
    void closeEvent(QCloseEvent* event) override;

private:
    void addActions();
    std::unique_ptr<Session> takeOut(DocumentView* view);
    void addPanelAction(QDockWidget* dock);
    void readLayout();
    void showTitle();
    void turnTo();

    std::shared_ptr<Environment> m_environment;
    Actions* m_actions; ///< All are owned by the window.
    DocumentFiles* m_files;
    QTabWidget* m_tabs;
    QLabel* m_welcome; ///< Instead of the tabs while there is no document.
    QLabel* m_message; ///< In the status bar.
    std::vector<Panel*> m_panels;
    Workspace* m_front = nullptr;
};

} // namespace shading
