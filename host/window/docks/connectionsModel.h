#pragma once

#include "document/pointers.h"

#include <QAbstractTableModel>
#include <vector>

class QTimer;

namespace shading {

/// The connections inside one compound, as a table. They are read a little at each turn of the
/// event loop, and shown when all are there. Holds their ports.
class ConnectionsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    struct Row {
        PortPtr source;
        PortPtr target;
    };

    explicit ConnectionsModel(QObject* parent = nullptr);

    /// Reads those of the compound anew; empty: there are none. What is shown stays until then,
    /// unless it is of another compound.
    void read(const CompoundPtr& compound);
    /// Must be in the table. The ports may be gone from the document.
    const Row& row(int index) const { return m_rows[static_cast<std::size_t>(index)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void runSlice();
    void addSources(ZEL::Port& target);
    void show(std::vector<Row> rows);

    CompoundPtr m_compound;
    std::vector<Row> m_rows;
    std::vector<Row> m_next; ///< Those that were read so far.
    int m_place = 0;         ///< Of the node that is read next.
    QTimer* m_timer;
};

} // namespace shading
