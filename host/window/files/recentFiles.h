#pragma once

#include <QStringList>

namespace shading {

/// The files that were opened or saved last, the latest first: kept in the settings.
class RecentFiles {
public:
    static constexpr int kMost = 10;

    static QStringList paths();
    /// Puts the file, by its whole path, before all others.
    static void add(const QString& path);
    static void remove(const QString& path);
    static void clear();
};

} // namespace shading
