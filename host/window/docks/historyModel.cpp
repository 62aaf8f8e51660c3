#include "window/docks/historyModel.h"

#include "document/history.h"
#include "window/workspace/workspace.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStringList>

namespace shading {

HistoryModel& HistoryModel::of(Workspace& workspace)
{
    auto* model = workspace.findChild<HistoryModel*>(QString(), Qt::FindDirectChildrenOnly);
    return model ? *model : *new HistoryModel(workspace);
}

HistoryModel::HistoryModel(Workspace& workspace)
    : QAbstractListModel(&workspace),
      m_workspace(workspace)
{
    connect(&workspace, &Workspace::edited, this, &HistoryModel::take);
    connect(&workspace, &Workspace::fileChanged, this, &HistoryModel::noteSaved);
    readAll();
}

HistoryModel::Row HistoryModel::rowOf(const EditName& name)
{
    QStringList lines;
    for (const std::string& line : name.lines)
        lines.append(QString::fromStdString(line));
    return {QString::fromStdString(name.title), lines.join('\n')};
}

void HistoryModel::readAll()
{
    beginResetModel();
    m_rows.clear();
    for (const EditName& name : m_workspace.history().names())
        m_rows.push_back(rowOf(name));
    m_current = m_workspace.history().undoCount();
    m_saved = -1;
    endResetModel();
    noteSaved();
    Q_EMIT currentChanged();
}

void HistoryModel::take(const Change& change)
{
    if (change.kind == Change::Kind::Done || change.kind == Change::Kind::GoneOn)
        takeDone(change);
    // An edit may be made while another one is told: then the rows came in another way.
    History& history = m_workspace.history();
    if (static_cast<int>(m_rows.size()) != history.undoCount() + history.redoCount()) {
        readAll();
        return;
    }
    moveTo(history.undoCount());
    noteSaved();
}

void HistoryModel::takeDone(const Change& change)
{
    if (change.kind == Change::Kind::GoneOn && m_current > 0) {
        m_rows[static_cast<std::size_t>(m_current) - 1] = rowOf(change.name);
        Q_EMIT dataChanged(index(m_current), index(m_current));
        return;
    }
    const int size = static_cast<int>(m_rows.size());
    if (size > m_current) {
        beginRemoveRows({}, m_current + 1, size);
        m_rows.resize(static_cast<std::size_t>(m_current));
        endRemoveRows();
        if (m_saved > m_current)
            m_saved = -1;
    }
    beginInsertRows({}, m_current + 1, m_current + 1);
    m_rows.push_back(rowOf(change.name));
    endInsertRows();
}

void HistoryModel::moveTo(int current)
{
    const int before = std::exchange(m_current, current);
    Q_EMIT dataChanged(index(std::min(before, current)), index(std::max(before, current)));
    Q_EMIT currentChanged();
}

void HistoryModel::noteSaved()
{
    const bool isSaved = m_workspace.session().isSaved();
    if (isSaved == (m_saved == m_current))
        return;
    const int before = m_saved;
    m_saved = isSaved ? m_current : -1;
    for (const int row : {before, m_saved}) {
        if (row >= 0)
            Q_EMIT dataChanged(index(row), index(row));
    }
}

int HistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size()) + 1;
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const
{
    const int number = index.row();
    const Row* const row = number > 0 ? &m_rows[static_cast<std::size_t>(number) - 1] : nullptr;
    const bool isUndone = number > m_current;
    switch (role) {
    case Qt::DisplayRole: {
        QString text = row ? row->title : tr("(opened)");
        if (number == m_saved)
            text += tr(" (saved)");
        return isUndone ? text + tr(" (undone)") : text;
    }
    case Qt::ToolTipRole:
        return row ? row->lines : QVariant();
    case Qt::ForegroundRole:
        return isUndone ? QApplication::palette().brush(QPalette::Disabled, QPalette::Text)
                        : QVariant();
    case Qt::FontRole: {
        QFont font;
        font.setBold(number == m_current);
        font.setItalic(isUndone);
        return font;
    }
    default:
        return {};
    }
}

} // namespace shading
