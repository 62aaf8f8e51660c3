#include "window/mainWindow.h"

#include "console/recovery.h"
#include "document/names.h"
#include "window/appearance.h"
#include "window/canvas/canvas.h"
#include "window/canvas/pictureActions.h"
#include "window/docks/docks.h"
#include "window/documentView.h"
#include "window/files/documentFiles.h"
#include "window/files/fileActions.h"
#include "window/files/progressBox.h"
#include "window/gestures/canvasActions.h"
#include "window/workspace/panel.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>

namespace shading {

namespace {

const char* const kLayoutKey = "window/layout";

} // namespace

MainWindow::MainWindow(std::shared_ptr<Environment> environment, QWidget* parent)
    : QMainWindow(parent),
      m_environment(std::move(environment)),
      m_actions(new Actions(this)),
      m_files(new DocumentFiles(*this, Recovery::defaultFolder())),
      m_tabs(new QTabWidget(this)),
      m_welcome(new QLabel(this)),
      m_message(new QLabel(this))
{
    setObjectName("window");
    m_tabs->setObjectName("documents");
    m_tabs->setDocumentMode(true);
    m_tabs->setTabsClosable(true);
    m_tabs->setMovable(true);
    // Where no document is there, what to do about that.
    m_welcome->setObjectName("welcome");
    m_welcome->setAlignment(Qt::AlignCenter);
    m_welcome->setTextFormat(Qt::RichText);
    m_welcome->setText(tr("<p><b>No document is open.</b></p><p>Ctrl+O opens one, Ctrl+N begins "
                          "one; or drag a file here.</p><p>F1 shows all keys.</p>"));
    auto* const middle = new QStackedWidget(this);
    middle->addWidget(m_welcome);
    middle->addWidget(m_tabs);
    setCentralWidget(middle);
    m_message->setObjectName("status");
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    statusBar()->addWidget(m_message, 1);
    setDockNestingEnabled(true);
    addFileActions(*this, *m_files);
    addActions();
    addCanvasActions(*m_actions, [this] { return view() ? &view()->gestures() : nullptr; });
    addPictureActions(*m_actions, [this] { return view(); });
    addPanels(*this);
    m_actions->fill(*menuBar(), {"&File", "&Edit", "&View", "&Node", "&Connection", "&Help"});
    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::turnTo);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this,
            [this](int index) { m_files->close(views()[static_cast<std::size_t>(index)]); });
    resize(1440, 900);
    readLayout();
    showTitle();
}

MainWindow::~MainWindow()
{
    QSettings().setValue(kLayoutKey, saveState());
    // The documents go before the panels, which look at them, and before the environment.
    for (DocumentView* const view : views())
        takeOut(view);
}

void MainWindow::addActions()
{
    const auto hasDocument = [this] { return workspace() != nullptr; };
    m_actions
        ->add("edit.undo", "&Edit", "&Undo", {QKeySequence("Ctrl+Z")},
              [this] { workspace()->undo(); })
        .when([=] { return hasDocument() && workspace()->history().undoCount() > 0; });
    m_actions
        ->add("edit.redo", "&Edit", "&Redo", {QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")},
              [this] { workspace()->redo(); })
        .when([=] { return hasDocument() && workspace()->history().redoCount() > 0; });
    const std::pair<ThemeChoice, const char*> themes[] = {{ThemeChoice::System, "&System"},
                                                          {ThemeChoice::Light, "&Light"},
                                                          {ThemeChoice::Dark, "&Dark"}};
    for (const auto& [choice, text] : themes) {
        const QString id = "view.theme" + QString(text).remove('&');
        m_actions->add(id, "&View/&Theme", text, {}, [c = choice] { chooseTheme(c); })
            .checkedWhen([c = choice] { return chosenTheme() == c; });
    }
}

DocumentView*
MainWindow::addDocument(std::unique_ptr<Session> session, std::vector<Message> messages, int place)
{
    auto* const view = new DocumentView(
        std::make_unique<Workspace>(std::move(session), std::move(messages)), *m_actions);
    Workspace& workspace = view->workspace();
    connect(&workspace, &Workspace::fileChanged, this, &MainWindow::showTitle);
    connect(&workspace, &Workspace::said, m_message, &QLabel::setText);
    connect(&workspace, &Workspace::refused, this,
            [this](const QString& subject, const QString& reason) {
                m_message->setText(subject + ": " + reason);
            });
    connect(&workspace, &Workspace::edited, m_actions, &Actions::update);
    connect(&workspace, &Workspace::selectionChanged, m_actions, &Actions::update);
    connect(&workspace, &Workspace::compoundChanged, m_actions, &Actions::update);
    m_tabs->setCurrentIndex(m_tabs->insertTab(place, view, QString()));
    showTitle();
    Q_EMIT documentAdded(view);
    return view;
}

void MainWindow::removeDocument(DocumentView* view)
{
    std::unique_ptr<Session> session = takeOut(view);
    showTitle();
    ProgressBox box(*this, tr("Closing %1").arg(QString::fromStdString(session->path())),
                    ProgressBox::Kind::Certain);
    Session::close(std::move(session), box.tell());
}

/// What is left of the document when all that shows it is gone.
std::unique_ptr<Session> MainWindow::takeOut(DocumentView* view)
{
    Q_EMIT documentClosing(view);
    m_tabs->removeTab(m_tabs->indexOf(view));
    const std::unique_ptr<Workspace> workspace = view->takeWorkspace();
    delete view;
    return workspace->takeSession();
}

void MainWindow::replaceDocument(DocumentView* view,
                                 std::unique_ptr<Session> session,
                                 std::vector<Message> messages)
{
    Workspace& before = view->workspace();
    const std::string path = pathOf(*before.compound()->getAsNode());
    const CanvasView seen = view->canvas().view();
    std::vector<std::string> selected;
    for (const NodePtr& node : before.selection())
        selected.push_back(pathOf(*node));
    DocumentView* const after =
        addDocument(std::move(session), std::move(messages), m_tabs->indexOf(view));
    removeDocument(view);
    Workspace& workspace = after->workspace();
    const NodePtr node = workspace.document().findNodeFromPath(path.c_str());
    if (!node || !node->isCompound())
        return;
    workspace.enter(node->getAsCompound());
    std::vector<NodePtr> nodes;
    for (const std::string& name : selected)
        nodes.push_back(workspace.document().findNodeFromPath(name.c_str()));
    workspace.select(nodes);
    after->showAgain(seen);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (ProgressBox::isBusy())
        return event->ignore();
    if (views().empty())
        return event->accept();
    event->ignore();
    m_files->closeAll([this](bool isClosed) {
        if (isClosed)
            QTimer::singleShot(0, this, &QWidget::close);
    });
}

void MainWindow::showDocument(DocumentView* view)
{
    m_tabs->setCurrentWidget(view);
}

DocumentView* MainWindow::view() const
{
    return qobject_cast<DocumentView*>(m_tabs->currentWidget());
}

Workspace* MainWindow::workspace() const
{
    return view() ? &view()->workspace() : nullptr;
}

std::vector<DocumentView*> MainWindow::views() const
{
    std::vector<DocumentView*> views;
    for (int i = 0; i < m_tabs->count(); ++i)
        views.push_back(qobject_cast<DocumentView*>(m_tabs->widget(i)));
    return views;
}

void MainWindow::addPanel(Panel* panel,
                          const QString& id,
                          const QString& title,
                          Qt::DockWidgetArea area)
{
    QDockWidget* last = nullptr;
    int count = 0;
    for (QDockWidget* const other :
         findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (dockWidgetArea(other) == area) {
            last = other;
            ++count;
        }
    }
    auto* const dock = new QDockWidget(title, this);
    dock->setObjectName(id);
    dock->setWidget(panel);
    addDockWidget(area, dock);
    if (count > 1 || (last && area == Qt::BottomDockWidgetArea))
        tabifyDockWidget(last, dock);
    addPanelAction(dock);
    panel->setWorkspace(m_front);
    m_panels.push_back(panel);
}

void MainWindow::addPanelAction(QDockWidget* dock)
{
    const auto isShut = [dock] { return !dock->toggleViewAction()->isChecked(); };
    m_actions
        ->add("view." + dock->objectName(), "&View/&Panels", dock->windowTitle(), {},
              [this, dock, isShut] {
                  // One that lies behind another is looked for, not shut.
                  const bool isSeen = !isShut() && !dock->visibleRegion().isEmpty();
                  isSeen ? dock->hide() : showPanel(dock->objectName());
              })
        .checkedWhen([isShut] { return !isShut(); });
}

void MainWindow::showPanel(const QString& id)
{
    auto* const dock = findChild<QDockWidget*>(id, Qt::FindDirectChildrenOnly);
    if (!dock)
        return;
    dock->show();
    dock->raise();
}

/// As the window was left the last time.
void MainWindow::readLayout()
{
    const QByteArray layout = QSettings().value(kLayoutKey).toByteArray();
    if (!layout.isEmpty())
        restoreState(layout);
}

void MainWindow::turnTo()
{
    Workspace* const front = workspace();
    if (front == m_front)
        return;
    m_front = front;
    for (Panel* const panel : m_panels)
        panel->setWorkspace(front);
    m_message->clear();
    m_actions->update();
    showTitle();
    Q_EMIT workspaceChanged(front);
}

/// The file's name and [*] in the title and, for each document, in its tab.
void MainWindow::showTitle()
{
    auto* const middle = qobject_cast<QStackedWidget*>(centralWidget());
    middle->setCurrentWidget(m_tabs->count() == 0 ? static_cast<QWidget*>(m_welcome) : m_tabs);
    for (DocumentView* const view : views()) {
        Session& session = view->workspace().session();
        const QString path = QString::fromStdString(session.path());
        const int index = m_tabs->indexOf(view);
        m_tabs->setTabText(index, QFileInfo(path).fileName() + (session.isSaved() ? "" : " *"));
        m_tabs->setTabToolTip(index, path);
    }
    Workspace* const front = workspace();
    const QString file =
        front ? QFileInfo(QString::fromStdString(front->session().path())).fileName() : QString();
    setWindowTitle(front ? file + "[*] - zeledit" : QString("zeledit"));
    setWindowModified(front && !front->session().isSaved());
}

} // namespace shading
