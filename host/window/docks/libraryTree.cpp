#include "window/docks/libraryTree.h"

#include <QHeaderView>
#include <QMimeData>

namespace shading {

const char* const kNodeTypeMime = "application/x-zel-nodetype";

LibraryTree::LibraryTree(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName("library.tree");
    setAccessibleName(tr("Node types"));
    setColumnCount(2);
    setHeaderLabels({tr("Type"), tr("Makes")});
    setUniformRowHeights(true);
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    setExpandsOnDoubleClick(false);
    header()->resizeSection(0, 160);
}

QStringList LibraryTree::mimeTypes() const
{
    return {QString(kNodeTypeMime)};
}

QMimeData* LibraryTree::mimeData(const QList<QTreeWidgetItem*>& items) const
{
    const QString name = items.isEmpty() ? QString() : items.front()->data(0, kNameRole).toString();
    if (name.isEmpty())
        return nullptr; // A category is not dragged.
    auto* const dragged = new QMimeData;
    dragged->setData(kNodeTypeMime, name.toUtf8());
    return dragged;
}

} // namespace shading
