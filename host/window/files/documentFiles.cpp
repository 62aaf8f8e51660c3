#include "window/files/documentFiles.h"

#include "window/documentView.h"
#include "window/files/fileDialogs.h"
#include "window/files/fileWatch.h"
#include "window/files/noticeBar.h"
#include "window/files/problemsBar.h"
#include "window/files/progressBox.h"
#include "window/files/recentFiles.h"
#include "window/files/recoveryKeeper.h"
#include "window/mainWindow.h"

#include <QDir>
#include <QFileInfo>

namespace shading {

namespace {

QString pathOfFile(DocumentView& view)
{
    return QString::fromStdString(view.workspace().session().path());
}

QString nameOfFile(DocumentView& view)
{
    return QFileInfo(pathOfFile(view)).fileName();
}

/// The same for all ways to name one file.
QString wholePath(const QString& path)
{
    return QString::fromStdString(canonicalPath(QFileInfo(path).absoluteFilePath().toStdString()));
}

void finish(const DocumentFiles::Then& then, bool isDone)
{
    if (then)
        then(isDone);
}

} // namespace

DocumentFiles::DocumentFiles(MainWindow& window, std::string recoveryFolder)
    : QObject(&window),
      m_window(window),
      m_recovery(new RecoveryKeeper(window, std::move(recoveryFolder))),
      m_watch(new FileWatch(&window))
{
    connect(&window, &MainWindow::documentAdded, this, &DocumentFiles::begin);
    connect(&window, &MainWindow::documentClosing, this, &DocumentFiles::end);
    connect(m_watch, &FileWatch::noticed, this, &DocumentFiles::notice);
}

DocumentFiles::~DocumentFiles() = default;

void DocumentFiles::begin(DocumentView* view)
{
    m_recovery->keep(view);
    m_watch->watch(view);
    connect(&view->workspace(), &Workspace::fileChanged, this, [this, view] {
        if (view->workspace().session().isSaved())
            m_watch->watch(view); // It may have been saved elsewhere.
    });
}

void DocumentFiles::end(DocumentView* view)
{
    m_watch->forget(view);
    m_recovery->forget(view);
    m_unnamed.erase(view);
}

/// A name that no file and no document has.
QString DocumentFiles::newPath() const
{
    const QDir folder = QDir::current();
    for (int i = 1;; ++i) {
        const QString path =
            folder.filePath("untitled" + (i > 1 ? QString::number(i) : QString()) + ".mtlx");
        bool isTaken = QFileInfo::exists(path);
        for (DocumentView* const view : m_window.views())
            isTaken = isTaken || pathOfFile(*view) == path;
        if (!isTaken)
            return path;
    }
}

void DocumentFiles::makeNew()
{
    const QString path = newPath();
    std::vector<Message> messages;
    std::unique_ptr<Session> session =
        Session::createNew(m_window.environment(), path.toStdString(), messages);
    if (!session)
        return tellProblem(m_window, path, QString::fromStdString(messages.front().text));
    m_unnamed.insert(m_window.addDocument(std::move(session), std::move(messages)));
}

void DocumentFiles::choose()
{
    DocumentView* const view = m_window.view();
    const QString folder = view ? QFileInfo(pathOfFile(*view)).absolutePath() : QDir::currentPath();
    chooseToOpen(m_window, folder, [this](const QStringList& paths) {
        for (const QString& path : paths)
            open(path);
    });
}

/// Null, and said why, when it does not open.
std::unique_ptr<Session> DocumentFiles::read(const QString& path, std::vector<Message>& messages)
{
    std::unique_ptr<Session> session;
    bool isCancelled = false;
    {
        ProgressBox box(m_window, tr("Opening %1").arg(QFileInfo(path).fileName()));
        OpenOptions options;
        options.progress = box.tell();
        session = Session::open(m_window.environment(), path.toStdString(), options, messages);
        isCancelled = box.isCancelled();
    }
    if (session || isCancelled)
        return session;
    QStringList texts;
    for (const Message& message : messages) {
        if (texts.size() < 10)
            texts.append(QString::fromStdString(messageText(message)));
    }
    tellProblem(m_window, tr("%1 was not opened.").arg(QFileInfo(path).fileName()),
                texts.join('\n'));
    return nullptr;
}

DocumentView* DocumentFiles::open(const QString& path)
{
    if (ProgressBox::isBusy())
        return nullptr;
    for (DocumentView* const view : m_window.views()) {
        if (wholePath(pathOfFile(*view)) == wholePath(path)) {
            m_window.showDocument(view);
            return view;
        }
    }
    std::vector<Message> messages;
    std::unique_ptr<Session> session = read(path, messages);
    if (!session)
        return nullptr;
    RecentFiles::add(path);
    Q_EMIT recentChanged();
    return m_window.addDocument(std::move(session), std::move(messages));
}

void DocumentFiles::save(DocumentView* view, const Then& then)
{
    Session& session = view->workspace().session();
    const QString path = pathOfFile(*view);
    if (m_unnamed.count(view) > 0)
        return saveAs(view, then);
    if (session.isNew() || session.fileState() != Session::FileState::Changed)
        return finish(then, saveTo(view, path));
    askToReplace(m_window, path, [this, path, then, held = QPointer<DocumentView>(view)] {
        if (held)
            finish(then, saveTo(held, path, ChangedFile::Replace));
    });
}

void DocumentFiles::saveAs(DocumentView* view, const Then& then)
{
    chooseToSave(m_window, pathOfFile(*view),
                 [this, then, held = QPointer<DocumentView>(view)](const QString& path) {
                     finish(then, held && !path.isEmpty() && saveTo(held, path));
                 });
}

bool DocumentFiles::saveTo(DocumentView* view, const QString& path, ChangedFile changed)
{
    if (ProgressBox::isBusy())
        return false;
    Workspace& workspace = view->workspace();
    const QString name = QFileInfo(path).fileName();
    std::vector<SaveProblem> problems;
    bool isSaved = false;
    bool isCancelled = false;
    {
        ProgressBox box(m_window, tr("Saving %1").arg(name));
        isSaved = workspace.session().save(path.toStdString(), problems, changed, box.tell());
        isCancelled = box.isCancelled();
    }
    for (ProblemsBar* const bar : view->findChildren<ProblemsBar*>())
        delete bar;
    if (isSaved) {
        m_unnamed.erase(view);
        RecentFiles::add(path);
        Q_EMIT recentChanged();
        workspace.noteFile();
        m_watch->check();
        workspace.say(tr("Saved %1").arg(name));
    } else if (isCancelled) {
        workspace.say(tr("%1 was not saved: cancelled").arg(name));
    } else {
        view->addBar(new ProblemsBar(workspace, problems, view));
        workspace.say(tr("%1 was not saved").arg(name));
    }
    return isSaved;
}

void DocumentFiles::close(DocumentView* view, const Then& then)
{
    if (ProgressBox::isBusy())
        return finish(then, false);
    const auto remove = [this, then](DocumentView* closed) {
        m_window.removeDocument(closed);
        finish(then, true);
    };
    if (view->workspace().session().isSaved())
        return remove(view);
    m_window.showDocument(view);
    const auto answer = [this, remove, then, held = QPointer<DocumentView>(view)](SaveAnswer a) {
        if (held && a == SaveAnswer::Discard)
            return remove(held);
        if (!held || a == SaveAnswer::Cancel)
            return finish(then, false);
        save(held, [remove, then, held](bool isSaved) {
            held&& isSaved ? remove(held) : finish(then, false);
        });
    };
    askToSave(m_window, nameOfFile(*view), answer);
}

void DocumentFiles::closeAll(const Then& then)
{
    const std::vector<DocumentView*> views = m_window.views();
    if (views.empty())
        return finish(then, true);
    close(views.back(), [this, then](bool isClosed) {
        if (isClosed)
            closeAll(then);
        else
            finish(then, false);
    });
}

void DocumentFiles::reload(DocumentView* view)
{
    if (ProgressBox::isBusy())
        return;
    std::vector<Message> messages;
    std::unique_ptr<Session> session = read(pathOfFile(*view), messages);
    if (session)
        m_window.replaceDocument(view, std::move(session), std::move(messages));
}

void DocumentFiles::notice(DocumentView* view, Session::FileState state)
{
    for (NoticeBar* const bar : view->findChildren<NoticeBar*>("notice"))
        delete bar;
    if (state == Session::FileState::Same)
        return;
    const bool isGone = state == Session::FileState::Gone;
    const bool isSaved = view->workspace().session().isSaved();
    QString text = isGone ? tr("%1 is gone from disk.") : tr("%1 changed on disk.");
    if (!isGone && !isSaved)
        text += ' ' + tr("Reloading drops the edits that are not saved.");
    auto* const bar = new NoticeBar(text.arg(nameOfFile(*view)), view);
    const QPointer<DocumentView> held(view);
    if (isGone)
        bar->addButton("saveAgain", tr("Save Again"), [this, held] {
            if (held)
                saveTo(held, pathOfFile(*held));
        });
    else
        bar->addButton("reload", tr("Reload"), [this, held] {
            if (held)
                reload(held);
        });
    bar->addButton("keep", tr("Keep"), [] {});
    view->addBar(bar);
}

} // namespace shading
