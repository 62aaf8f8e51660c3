#include "window/docks/problemsModel.h"

namespace shading {

void ProblemsModel::setRows(std::vector<Row> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

int ProblemsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ProblemsModel::columnCount(const QModelIndex& /*parent*/) const
{
    return 3;
}

QVariant ProblemsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const Row& shown = row(index.row());
    switch (index.column()) {
    case 0:
        return shown.isNote ? tr("note") : tr("problem");
    case 1:
        return shown.place;
    default:
        return shown.reason;
    }
}

QVariant ProblemsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QString titles[] = {tr("Kind"), tr("Where"), tr("What")};
    return section < 3 ? titles[section] : QVariant();
}

} // namespace shading
