#pragma once

#include "window/docks/documentSearch.h"

#include <QAbstractTableModel>

namespace shading {

/// What a search found, as a list. Holds the nodes.
class HitsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void clear();
    void add(const std::vector<DocumentSearch::Hit>& hits);
    /// Empty past the end.
    NodePtr nodeAt(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<DocumentSearch::Hit> m_hits;
};

} // namespace shading
