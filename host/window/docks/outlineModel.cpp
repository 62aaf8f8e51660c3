#include "window/docks/outlineModel.h"

#include "document/document.h"
#include "window/workspace/workspace.h"

#include <algorithm>
#include <unordered_set>

namespace shading {

namespace {

constexpr int kBatch = 1000; ///< So many nodes are fetched at once.

/// 0 for a plain node.
int sizeOf(const NodePtr& node)
{
    return node->isCompound() ? node->getAsCompound()->nodes().size() : 0;
}

} // namespace

OutlineModel::~OutlineModel() = default;

void OutlineModel::setWorkspace(Workspace* workspace)
{
    beginResetModel();
    m_items.clear();
    m_root.reset();
    if (workspace) {
        m_root = std::make_unique<Item>(workspace->document().getRootNode(), nullptr);
        m_items[m_root->node.get()] = m_root.get();
    }
    endResetModel();
}

OutlineModel::Item& OutlineModel::itemAt(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<Item*>(index.internalPointer()) : *m_root;
}

OutlineModel::Item* OutlineModel::itemOf(const ZEL::Node& node) const
{
    const auto found = m_items.find(&node);
    return found == m_items.end() ? nullptr : found->second;
}

NodePtr OutlineModel::nodeAt(const QModelIndex& index) const
{
    return index.isValid() ? itemAt(index).node : nullptr;
}

QModelIndex OutlineModel::indexOf(const Item& item, int column) const
{
    return item.parent ? createIndex(item.row, column, &item) : QModelIndex();
}

QModelIndex OutlineModel::indexOf(const NodePtr& node)
{
    if (Item* const item = node ? itemOf(*node) : nullptr)
        return indexOf(*item);
    const CompoundPtr around = node ? node->getParentCompound() : nullptr;
    const NodePtr owner = around ? around->getAsNode() : nullptr;
    if (!owner || !m_root)
        return {};
    if (!itemOf(*owner))
        indexOf(owner);
    Item* const parent = itemOf(*owner);
    if (!parent)
        return {};
    int place = 0;
    for (ZEL::Node* const sibling : around->nodes()) {
        if (sibling == node.get()) {
            fetch(*parent, place + 1);
            Item* const item = itemOf(*node);
            return item ? indexOf(*item) : QModelIndex();
        }
        ++place;
    }
    return {};
}

QModelIndex OutlineModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!m_root || row < 0 || column < 0 || column >= ColumnCount || row >= rowCount(parent))
        return {};
    return createIndex(row, column, itemAt(parent).children[static_cast<std::size_t>(row)].get());
}

QModelIndex OutlineModel::parent(const QModelIndex& index) const
{
    return index.isValid() ? indexOf(*itemAt(index).parent) : QModelIndex();
}

int OutlineModel::rowCount(const QModelIndex& parent) const
{
    return m_root && parent.column() <= 0 ? static_cast<int>(itemAt(parent).children.size()) : 0;
}

int OutlineModel::columnCount(const QModelIndex& /*parent*/) const
{
    return ColumnCount;
}

bool OutlineModel::hasChildren(const QModelIndex& parent) const
{
    return m_root && parent.column() <= 0 && sizeOf(itemAt(parent).node) > 0;
}

bool OutlineModel::canFetchMore(const QModelIndex& parent) const
{
    return m_root && parent.column() <= 0 && rowCount(parent) < sizeOf(itemAt(parent).node);
}

void OutlineModel::fetchMore(const QModelIndex& parent)
{
    Item& item = itemAt(parent);
    fetch(item, static_cast<int>(item.children.size()) + kBatch);
}

void OutlineModel::fetch(Item& item, int count)
{
    if (!item.node->isCompound())
        return;
    const CompoundPtr compound = item.node->getAsCompound();
    ZEL::NodeList& list = compound->nodes();
    std::vector<NodePtr> nodes;
    const int first = static_cast<int>(item.children.size());
    for (int i = first; i < std::min(count, list.size()); ++i) {
        const NodePtr node = list[i];
        // Edits came in between that are not told yet: they will be.
        if (m_items.count(node.get()) > 0)
            break;
        nodes.push_back(node);
    }
    insert(item, first, nodes);
}

void OutlineModel::insert(Item& item, int row, const std::vector<NodePtr>& nodes)
{
    if (nodes.empty())
        return;
    beginInsertRows(indexOf(item), row, row + static_cast<int>(nodes.size()) - 1);
    std::vector<std::unique_ptr<Item>> made;
    made.reserve(nodes.size());
    for (const NodePtr& node : nodes) {
        made.push_back(std::make_unique<Item>(node, &item));
        m_items[node.get()] = made.back().get();
    }
    item.children.insert(item.children.begin() + row, std::make_move_iterator(made.begin()),
                         std::make_move_iterator(made.end()));
    for (std::size_t i = static_cast<std::size_t>(row); i < item.children.size(); ++i)
        item.children[i]->row = static_cast<int>(i);
    endInsertRows();
}

void OutlineModel::remove(Item& item, int first, int last)
{
    beginRemoveRows(indexOf(item), first, last);
    const auto from = item.children.begin() + first;
    const auto to = item.children.begin() + last + 1;
    std::for_each(from, to, [this](const auto& child) { forget(*child); });
    item.children.erase(from, to);
    for (std::size_t i = static_cast<std::size_t>(first); i < item.children.size(); ++i)
        item.children[i]->row = static_cast<int>(i);
    endRemoveRows();
}

void OutlineModel::forget(Item& item)
{
    m_items.erase(item.node.get());
    for (const auto& child : item.children)
        forget(*child);
}

void OutlineModel::take(const Marks& marks)
{
    if (!m_root)
        return;
    // First what left, wherever it was: it may stand elsewhere now.
    for (const CompoundMarks& mark : marks) {
        for (const NodePtr& node : mark.nodes) {
            Item* const item = itemOf(*node);
            const CompoundPtr around = node->getParentCompound();
            const bool hasMoved =
                item && item->parent && (!around || around->getAsNode() != item->parent->node);
            if (hasMoved)
                remove(*item->parent, item->row, item->row);
        }
    }
    for (const CompoundMarks& mark : marks) {
        Item* const item = itemOf(*mark.compound->getAsNode());
        if (item && mark.hasOtherNodes)
            sync(*item);
        for (const NodePtr& node : mark.nodes) {
            if (Item* const changed = itemOf(*node); changed && changed->parent)
                Q_EMIT dataChanged(indexOf(*changed), indexOf(*changed, TypeColumn));
        }
    }
}

/// Brings the children to what the compound has now.
void OutlineModel::sync(Item& item)
{
    ZEL::NodeList& list = item.node->getAsCompound()->nodes();
    std::unordered_set<const ZEL::Node*> present;
    for (ZEL::Node* const node : list)
        present.insert(node);
    for (int row = static_cast<int>(item.children.size()) - 1; row >= 0; --row) {
        const int last = row;
        const auto isGone = [&](int at) {
            return present.count(item.children[static_cast<std::size_t>(at)]->node.get()) == 0;
        };
        while (row >= 0 && isGone(row))
            --row;
        if (row < last)
            remove(item, row + 1, last);
    }
    const bool hasAll = static_cast<int>(item.children.size()) + kBatch >= list.size();
    const int wanted = hasAll ? list.size() : static_cast<int>(item.children.size());
    for (int row = 0; row < wanted; ++row) {
        std::vector<NodePtr> added;
        while (row + static_cast<int>(added.size()) < wanted) {
            const NodePtr node = list[row + static_cast<int>(added.size())];
            if (m_items.count(node.get()) > 0)
                break;
            added.push_back(node);
        }
        insert(item, row, added);
        row += static_cast<int>(added.size());
        const std::size_t at = static_cast<std::size_t>(row);
        if (row < wanted &&
            (at >= item.children.size() || item.children[at]->node.get() != list[row].get())) {
            // They stand in another order: anew.
            if (!item.children.empty())
                remove(item, 0, static_cast<int>(item.children.size()) - 1);
            fetch(item, wanted);
            return;
        }
    }
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    const NodePtr& node = itemAt(index).node;
    if (index.column() == NameColumn)
        return QString(node->getName());
    const QString type = node->getNodeTypeName();
    return type.isEmpty() && node->isCompound() ? QStringLiteral("nodegraph") : type;
}

QVariant OutlineModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == NameColumn ? tr("Name") : tr("Type");
}

} // namespace shading
