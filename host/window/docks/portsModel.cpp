#include "window/docks/portsModel.h"

#include "document/names.h"
#include "window/docks/property.h"
#include "window/docks/tryEdit.h"
#include "window/workspace/workspace.h"

#include <QMimeData>

namespace shading {

namespace {

const char* const kRowMime = "application/x-zel-portrow";

} // namespace

PortsModel::PortsModel(ZEL::PortIOType ioType, QObject* parent)
    : QAbstractTableModel(parent),
      m_ioType(ioType)
{
}

void PortsModel::setNode(Workspace* workspace, const NodePtr& node)
{
    if (m_workspace == workspace && m_node == node) {
        refresh();
        return;
    }
    beginResetModel();
    m_workspace = workspace;
    m_node = node;
    m_rows = read();
    endResetModel();
}

std::vector<PortsModel::Row> PortsModel::read() const
{
    std::vector<Row> rows;
    if (!m_node)
        return rows;
    for (ZEL::Port* const port :
         m_ioType == ZEL::PortInput ? m_node->inputs() : m_node->outputs()) {
        Row row;
        row.port = PortPtr(port);
        row.name = port->getName();
        row.type = QString::fromStdString(typeNameOf(*port));
        if (m_ioType == ZEL::PortInput) {
            row.value = port->getPortDefaultValue();
            row.source = port->isConnected() ? sourceText(*port->connectedTo()[0])
                                             : QString::fromStdString(hiddenSourceOf(*port));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

void PortsModel::refresh()
{
    std::vector<Row> rows = read();
    if (rows == m_rows)
        return;
    // As many as before: an editor that is open stays.
    if (rows.size() == m_rows.size()) {
        m_rows = std::move(rows);
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
        return;
    }
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

PortPtr PortsModel::portAt(int row) const
{
    const auto place = static_cast<std::size_t>(row);
    return row >= 0 && place < m_rows.size() ? m_rows[place].port : nullptr;
}

bool PortsModel::movePort(int row, int to)
{
    const PortPtr port = portAt(row);
    if (!port)
        return false;
    const QString problem = tryEdit(*m_workspace, [&] {
        return m_workspace->edit([&](Edits& edits) { return edits.movePort(port, to + 1); });
    });
    Q_EMIT tried(problem);
    refresh();
    return problem.isEmpty();
}

int PortsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int PortsModel::columnCount(const QModelIndex& /*parent*/) const
{
    return m_ioType == ZEL::PortInput ? ColumnCount : ValueColumn;
}

QVariant PortsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::ToolTipRole && !row.source.isEmpty())
        return tr("from %1").arg(row.source);
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    switch (index.column()) {
    case NameColumn:
        return row.name;
    case TypeColumn:
        return row.type;
    default:
        return row.source.isEmpty() || role == Qt::EditRole ? row.value
                                                            : QChar(0x2190) + (" " + row.source);
    }
}

bool PortsModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const PortPtr port = index.isValid() && role == Qt::EditRole ? portAt(index.row()) : nullptr;
    if (!port || value == data(index, Qt::EditRole))
        return false;
    const std::string text = value.toString().toStdString();
    const int column = index.column();
    const QString problem = tryEdit(*m_workspace, [&] {
        return m_workspace->edit([&](Edits& edits) {
            if (column == NameColumn)
                return edits.renamePort(port, text);
            return column == TypeColumn ? edits.setPortType(port, text)
                                        : edits.setValue(port, text);
        });
    });
    Q_EMIT tried(problem);
    refresh();
    return problem.isEmpty();
}

QVariant PortsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    const QString titles[] = {m_ioType == ZEL::PortInput ? tr("Input") : tr("Output"), tr("Type"),
                              tr("Value")};
    return section < ColumnCount ? titles[section] : QVariant();
}

Qt::ItemFlags PortsModel::flags(const QModelIndex& index) const
{
    // Between rows only is something dropped.
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    const bool hasValue = index.column() != ValueColumn ||
                          m_rows[static_cast<std::size_t>(index.row())].source.isEmpty();
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
    return hasValue ? flags | Qt::ItemIsEditable : flags;
}

QStringList PortsModel::mimeTypes() const
{
    return {QString(kRowMime)};
}

QMimeData* PortsModel::mimeData(const QModelIndexList& indexes) const
{
    auto* const data = new QMimeData;
    data->setData(kRowMime, QByteArray::number(indexes.isEmpty() ? -1 : indexes.front().row()));
    return data;
}

/// Says that nothing was dropped: the view would take the row out, which the edit has moved.
bool PortsModel::dropMimeData(const QMimeData* data,
                              Qt::DropAction /*action*/,
                              int row,
                              int /*column*/,
                              const QModelIndex& parent)
{
    const int from = data->data(kRowMime).toInt();
    const int before = row >= 0 ? row : parent.isValid() ? parent.row() : rowCount();
    const int to = before > from ? before - 1 : before;
    if (to != from)
        movePort(from, to);
    return false;
}

} // namespace shading
