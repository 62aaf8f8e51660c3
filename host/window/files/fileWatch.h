#pragma once

#include "session/session.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <map>

namespace shading {

class DocumentView;

/// Notices when the files of open documents are changed by others, or are gone.
class FileWatch : public QObject {
    Q_OBJECT

public:
    explicit FileWatch(QObject* parent = nullptr);

    /// Watches the file of the document, from now on or again: after it was saved elsewhere.
    void watch(DocumentView* view);
    void forget(DocumentView* view);
    /// Asks all files now. What was told is told again only when it changes.
    void check();

Q_SIGNALS:
    /// Same: what was told before is no longer so.
    void noticed(shading::DocumentView* view, shading::Session::FileState state);

private:
    struct Watched {
        QString path;
        Session::FileState state = Session::FileState::Same;
        std::optional<FileStamp> stamp; ///< When it was told last.
    };

    void follow();

    QFileSystemWatcher m_watcher;
    QTimer m_soon; ///< Files are written in several steps.
    std::map<DocumentView*, Watched> m_watched;
};

} // namespace shading
