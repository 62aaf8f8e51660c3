#pragma once

#include "console/recovery.h"

#include <QDialog>
#include <vector>

class QTreeWidget;

namespace shading {

/// Shows what was left of documents when a program died: to be recovered, discarded, or looked at
/// later. Deletes itself when it is closed.
class RecoveryDialog : public QDialog {
    Q_OBJECT

public:
    explicit RecoveryDialog(std::vector<Orphan> orphans, QWidget* parent = nullptr);

Q_SIGNALS:
    void recovers(const shading::Orphan& orphan);
    void discards(const shading::Orphan& orphan);

private:
    /// Those that are ticked, when the dialog has closed.
    std::vector<Orphan> takeTicked();

    std::vector<Orphan> m_orphans;
    QTreeWidget* m_list; ///< Owned by the dialog; a row for each.
};

} // namespace shading
