#include "window/files/fileWatch.h"

#include "window/documentView.h"
#include "window/files/progressBox.h"

#include <QFileInfo>
#include <QGuiApplication>

namespace shading {

namespace {

constexpr int kWait = 150; ///< In milliseconds.

} // namespace

FileWatch::FileWatch(QObject* parent) : QObject(parent)
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(kWait);
    const auto soon = [this] { m_soon.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, soon);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, soon);
    connect(&m_soon, &QTimer::timeout, this, &FileWatch::check);
    // Some file systems tell nothing.
    if (auto* const application = qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        connect(application, &QGuiApplication::applicationStateChanged, this, soon);
}

void FileWatch::watch(DocumentView* view)
{
    Watched watched;
    watched.path =
        QFileInfo(QString::fromStdString(view->workspace().session().path())).absoluteFilePath();
    m_watched[view] = watched;
    follow();
}

void FileWatch::forget(DocumentView* view)
{
    m_watched.erase(view);
    follow();
}

/// The files that there are, and their folders: a new file may take the place of one.
void FileWatch::follow()
{
    QStringList wanted;
    for (const auto& [view, watched] : m_watched) {
        wanted.append(QFileInfo(watched.path).absolutePath());
        if (QFileInfo::exists(watched.path))
            wanted.append(watched.path);
    }
    wanted.removeDuplicates();
    const QStringList present = m_watcher.files() + m_watcher.directories();
    for (const QString& path : present) {
        if (!wanted.removeOne(path))
            m_watcher.removePath(path);
    }
    if (!wanted.isEmpty())
        m_watcher.addPaths(wanted);
}

void FileWatch::check()
{
    if (ProgressBox::isBusy()) {
        m_soon.start(); // It may be this program that writes.
        return;
    }
    std::vector<DocumentView*> views;
    for (const auto& [view, watched] : m_watched)
        views.push_back(view);
    for (DocumentView* const view : views) {
        const auto found = m_watched.find(view);
        if (found == m_watched.end())
            continue; // Who was told closed it.
        Session& session = view->workspace().session();
        const Session::FileState state = session.fileState();
        const std::optional<FileStamp> stamp = stampOf(session.path());
        const bool isNews = state != found->second.state ||
                            (state == Session::FileState::Changed && stamp != found->second.stamp);
        found->second.state = state;
        found->second.stamp = stamp;
        if (isNews)
            Q_EMIT noticed(view, state);
    }
    follow();
}

} // namespace shading
