#pragma once

#include "document/pointers.h"
#include "window/workspace/changeMarks.h"

#include <QAbstractItemModel>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace shading {

class Workspace;

/// The nodes of a document at all levels, as a tree. What is in a compound is fetched in pieces
/// when a view comes there, and changes as the document tells. Holds the nodes that it has
/// fetched.
class OutlineModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { NameColumn, TypeColumn, ColumnCount };

    using QAbstractItemModel::QAbstractItemModel;
    ~OutlineModel() override;

    /// Shows this document; null: none.
    void setWorkspace(Workspace* workspace);

    /// Empty for an invalid index.
    NodePtr nodeAt(const QModelIndex& index) const;
    /// Fetches as much as is needed. Invalid for the root node and for what is not in the document.
    QModelIndex indexOf(const NodePtr& node);
    /// What marks tell.
    void take(const Marks& marks);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Item {
        Item(NodePtr shown, Item* around) : node(std::move(shown)), parent(around) {}

        NodePtr node;
        Item* parent;                                ///< Null: the root.
        int row = 0;                                 ///< In its parent.
        std::vector<std::unique_ptr<Item>> children; ///< The first of the compound's nodes.
    };

    Item& itemAt(const QModelIndex& index) const;
    Item* itemOf(const ZEL::Node& node) const;
    QModelIndex indexOf(const Item& item, int column = NameColumn) const;
    void fetch(Item& item, int count);
    void insert(Item& item, int row, const std::vector<NodePtr>& nodes);
    void remove(Item& item, int first, int last);
    void forget(Item& item);
    void sync(Item& item);

    std::unique_ptr<Item> m_root; ///< Null: no document.
    std::unordered_map<const ZEL::Node*, Item*> m_items;
};

} // namespace shading
