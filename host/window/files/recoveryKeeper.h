#pragma once

#include "console/recovery.h"

#include <QObject>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace shading {

class DocumentView;
class MainWindow;

/// Keeps what is not saved of all documents of the window, and brings back what was left of those
/// that a program had when it died.
class RecoveryKeeper : public QObject {
    Q_OBJECT

public:
    /// The window is not owned and must outlive this.
    RecoveryKeeper(MainWindow& window, std::string folder);

    /// From now on what is not saved of the document is kept.
    void keep(DocumentView* view);
    /// The document is closed.
    void forget(DocumentView* view);

    std::vector<Orphan> orphans() const { return findOrphans(m_folder); }
    /// Opens the document with its edits; says so where that does not go.
    void recover(const Orphan& orphan);
    /// Offers what was left, if there is something, in a dialog. False when there is nothing.
    bool offer();

private:
    MainWindow& m_window;
    std::string m_folder;
    std::map<DocumentView*, std::unique_ptr<Recovery>> m_kept;
};

} // namespace shading
