#pragma once

#include <QAbstractListModel>
#include <QString>
#include <vector>

namespace shading {

class Workspace;
struct Change;
struct EditName;

/// The edits of one document as a list: the opened document first, then each edit. Row N is the
/// document with N edits done. It follows the history from its making on, so it knows which state
/// was saved. A child of the workspace, one for each.
class HistoryModel : public QAbstractListModel {
    Q_OBJECT

public:
    /// That of the workspace, made at the first call.
    static HistoryModel& of(Workspace& workspace);

    /// The row of the document as it is.
    int current() const { return m_current; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

Q_SIGNALS:
    void currentChanged();

private:
    /// One edit.
    struct Row {
        QString title;
        QString lines; ///< What the console says to do the same.
    };

    explicit HistoryModel(Workspace& workspace);

    static Row rowOf(const EditName& name);
    void take(const Change& change);
    void takeDone(const Change& change);
    void readAll();
    void noteSaved();
    void moveTo(int current);

    Workspace& m_workspace;
    std::vector<Row> m_rows; ///< Without the opened document.
    int m_current = 0;
    int m_saved = -1; ///< The row that was saved last; -1: it is gone.
};

} // namespace shading
