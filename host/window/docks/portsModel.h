#pragma once

#include "document/pointers.h"

#include <QAbstractTableModel>
#include <QString>
#include <vector>

namespace shading {

class Workspace;

/// The inputs or the outputs of one compound, to be edited in place. A refused edit is told by
/// refused and changes nothing.
class PortsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { NameColumn, TypeColumn, ValueColumn, ColumnCount };

    explicit PortsModel(ZEL::PortIOType ioType, QObject* parent = nullptr);

    /// Shows those of the compound's node, which is held; empty: none.
    void setNode(Workspace* workspace, const NodePtr& node);
    /// Shows what the node has now.
    void refresh();
    /// Empty past the end.
    PortPtr portAt(int row) const;
    /// Moves the port; the first row is 0. False when that is refused.
    bool movePort(int row, int to);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool dropMimeData(const QMimeData* data,
                      Qt::DropAction action,
                      int row,
                      int column,
                      const QModelIndex& parent) override;

Q_SIGNALS:
    /// The reason; empty: it was done.
    void tried(const QString& reason);

private:
    struct Row {
        PortPtr port;
        QString name;
        QString type;
        QString value;
        QString source;

        bool operator==(const Row& other) const
        {
            return port == other.port && name == other.name && type == other.type &&
                   value == other.value && source == other.source;
        }
    };

    std::vector<Row> read() const;

    ZEL::PortIOType m_ioType;
    Workspace* m_workspace = nullptr; ///< Not owned. Null: nothing is shown.
    NodePtr m_node;
    std::vector<Row> m_rows;
};

} // namespace shading
