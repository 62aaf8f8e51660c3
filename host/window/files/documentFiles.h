#pragma once

#include "session/session.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace shading {

class DocumentView;
class FileWatch;
class MainWindow;
class RecoveryKeeper;

/// What the window does with the files of its documents: opens, saves, closes, and notices what
/// others do with them. Where something is to be asked a dialog shows, and the rest follows when
/// it is answered.
class DocumentFiles : public QObject {
    Q_OBJECT

public:
    /// False: it was given up, by the user or because it was refused.
    using Then = std::function<void(bool isDone)>;

    /// Belongs to the window. The folder is for what is not saved.
    DocumentFiles(MainWindow& window, std::string recoveryFolder);
    ~DocumentFiles() override;

    /// A new, empty document, which gets its file when it is saved.
    void makeNew();
    /// Asks which files.
    void choose();
    /// Opens a document, or shows the one that is open. Null, and said why, when it does not open.
    DocumentView* open(const QString& path);
    /// Saves into the document's file; asks for one that has none, and whether a file that somebody
    /// changed is replaced.
    void save(DocumentView* view, const Then& then = {});
    void saveAs(DocumentView* view, const Then& then = {});
    /// Saves into that file; shows the problems where that is refused.
    bool saveTo(DocumentView* view, const QString& path, ChangedFile changed = ChangedFile::Keep);
    /// Asks what becomes of what is not saved.
    void close(DocumentView* view, const Then& then = {});
    /// Closes all, one after the other, until one is not to be closed.
    void closeAll(const Then& then);
    /// Reads the file once more. What is not saved is lost.
    void reload(DocumentView* view);

    RecoveryKeeper& recovery() { return *m_recovery; }
    FileWatch& watch() { return *m_watch; }

Q_SIGNALS:
    /// Another file was opened or saved last.
    void recentChanged();

private:
    void begin(DocumentView* view);
    void end(DocumentView* view);
    void notice(DocumentView* view, Session::FileState state);
    std::unique_ptr<Session> read(const QString& path, std::vector<Message>& messages);
    QString newPath() const;

    MainWindow& m_window;
    RecoveryKeeper* m_recovery; ///< Both are owned by the window.
    FileWatch* m_watch;
    std::set<const DocumentView*> m_unnamed; ///< New documents that got no file from the user yet.
};

} // namespace shading
