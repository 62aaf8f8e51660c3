#include "window/files/fileActions.h"

#include "window/documentView.h"
#include "window/files/documentFiles.h"
#include "window/files/fileDialogs.h"
#include "window/files/recentFiles.h"
#include "window/files/recoveryKeeper.h"
#include "window/mainWindow.h"

#include <QAction>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

namespace shading {

namespace {

const QString kRecentMenu = QStringLiteral("&File/Open &Recent");

QStringList filesOf(const QMimeData& data)
{
    QStringList files;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    return files;
}

/// Opens the files that are dropped on the window, when the drag is over.
class FileDrop : public QObject {
public:
    FileDrop(MainWindow& window, DocumentFiles& files) : QObject(&window), m_files(files)
    {
        window.setAcceptDrops(true);
        window.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const QEvent::Type type = event->type();
        if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
            return QObject::eventFilter(watched, event);
        auto* const drop = static_cast<QDropEvent*>(event);
        const QStringList files = filesOf(*drop->mimeData());
        if (files.isEmpty())
            return false;
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        if (type == QEvent::Drop)
            QTimer::singleShot(0, this, [this, files] {
                for (const QString& file : files)
                    m_files.open(file);
            });
        return true;
    }

private:
    DocumentFiles& m_files;
};

QString recentId(int i)
{
    return "file.recent" + QString::number(i + 1);
}

/// The actions say what they open.
void fillRecent(Actions& actions)
{
    const QStringList paths = RecentFiles::paths();
    for (int i = 0; i < RecentFiles::kMost; ++i) {
        QAction* const action = actions.find(recentId(i));
        action->setVisible(i < paths.size());
        if (i >= paths.size())
            continue;
        action->setText(QFileInfo(paths[i]).fileName().replace('&', "&&"));
        action->setStatusTip(paths[i]);
        action->setToolTip(paths[i]);
    }
}

void openRecent(MainWindow& window, DocumentFiles& files, int i)
{
    const QString path = RecentFiles::paths().value(i);
    if (path.isEmpty())
        return;
    if (QFileInfo::exists(path)) {
        files.open(path);
        return;
    }
    RecentFiles::remove(path);
    fillRecent(window.actions());
    tellProblem(window, QObject::tr("%1 is gone.").arg(QFileInfo(path).fileName()), path);
}

void addRecent(MainWindow& window, DocumentFiles& files)
{
    for (int i = 0; i < RecentFiles::kMost; ++i) {
        window.actions()
            .add(recentId(i), kRecentMenu, QString(), {},
                 [&window, &files, i] { openRecent(window, files, i); })
            .when([i] { return i < RecentFiles::paths().size(); });
    }
    const auto clear = [&window] {
        RecentFiles::clear();
        fillRecent(window.actions());
    };
    window.actions().add("file.clearRecent", kRecentMenu, "&Clear", {}, clear).group();
    QObject::connect(&files, &DocumentFiles::recentChanged, &window,
                     [&window] { fillRecent(window.actions()); });
    fillRecent(window.actions());
}

} // namespace

void addFileActions(MainWindow& window, DocumentFiles& files)
{
    Actions& actions = window.actions();
    const auto hasDocument = [&window] { return window.view() != nullptr; };
    actions.add("file.new", "&File", "&New", {QKeySequence("Ctrl+N")}, [&] { files.makeNew(); });
    actions.add("file.open", "&File", "&Open...", {QKeySequence("Ctrl+O")},
                [&] { files.choose(); });
    addRecent(window, files);
    actions
        .add("file.save", "&File", "&Save", {QKeySequence("Ctrl+S")},
             [&] { files.save(window.view()); })
        .when(hasDocument)
        .group();
    actions
        .add("file.saveAs", "&File", "Save &As...", {QKeySequence("Ctrl+Shift+S")},
             [&] { files.saveAs(window.view()); })
        .when(hasDocument);
    actions
        .add("file.recover", "&File", "Reco&ver Documents...", {},
             [&] {
                 if (!files.recovery().offer())
                     tellProblem(window, QObject::tr("There is nothing to recover."), {});
             })
        .group();
    actions
        .add("file.close", "&File", "&Close", {QKeySequence("Ctrl+W")},
             [&] { files.close(window.view()); })
        .when(hasDocument)
        .group();
    actions.add("file.quit", "&File", "&Quit", {QKeySequence("Ctrl+Q")}, [&] { window.close(); });
    new FileDrop(window, files);
}

} // namespace shading
