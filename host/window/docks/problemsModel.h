#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <string>
#include <vector>

namespace shading {

/// What is wrong with a document, as a list.
class ProblemsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    struct Row {
        std::string path; ///< Where it leads to. Empty: nowhere.
        QString place;    ///< What is shown of that.
        QString reason;
        bool isNote = false;
    };

    using QAbstractTableModel::QAbstractTableModel;

    void setRows(std::vector<Row> rows);
    const Row& row(int index) const { return m_rows[static_cast<std::size_t>(index)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<Row> m_rows;
};

} // namespace shading
