#include "window/docks/hitsModel.h"

#include "document/names.h"

namespace shading {

void HitsModel::clear()
{
    beginResetModel();
    m_hits.clear();
    endResetModel();
}

void HitsModel::add(const std::vector<DocumentSearch::Hit>& hits)
{
    const int first = static_cast<int>(m_hits.size());
    beginInsertRows({}, first, first + static_cast<int>(hits.size()) - 1);
    m_hits.insert(m_hits.end(), hits.begin(), hits.end());
    endInsertRows();
}

NodePtr HitsModel::nodeAt(int row) const
{
    const auto place = static_cast<std::size_t>(row);
    return row >= 0 && place < m_hits.size() ? m_hits[place].node : nullptr;
}

int HitsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_hits.size());
}

int HitsModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 2;
}

QVariant HitsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const DocumentSearch::Hit& hit = m_hits[static_cast<std::size_t>(index.row())];
    return index.column() == 0 ? QString::fromStdString(pathOf(*hit.node)) : hit.what;
}

QVariant HitsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == 0 ? tr("Path") : tr("Found in");
}

} // namespace shading
