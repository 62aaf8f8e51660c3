#include "window/files/recentFiles.h"

#include <QFileInfo>
#include <QSettings>

namespace shading {

namespace {

const char* const kRecentFilesKey = "files/recent";

} // namespace

QStringList RecentFiles::paths()
{
    return QSettings().value(kRecentFilesKey).toStringList().mid(0, kMost);
}

void RecentFiles::add(const QString& path)
{
    const QString whole = QFileInfo(path).absoluteFilePath();
    QStringList paths = RecentFiles::paths();
    paths.removeAll(whole);
    paths.prepend(whole);
    QSettings().setValue(kRecentFilesKey, paths.mid(0, kMost));
}

void RecentFiles::remove(const QString& path)
{
    QStringList paths = RecentFiles::paths();
    paths.removeAll(path);
    QSettings().setValue(kRecentFilesKey, paths);
}

void RecentFiles::clear()
{
    QSettings().remove(kRecentFilesKey);
}

} // namespace shading
