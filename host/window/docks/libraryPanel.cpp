#include "window/docks/libraryPanel.h"

#include "window/docks/libraryTree.h"
#include "window/docks/nodeDrop.h"
#include "window/documentView.h"
#include "window/gestures/nodeSearch.h"
#include "window/mainWindow.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

namespace shading {

namespace {

QTreeWidgetItem* itemOf(const NodeCatalogue::Entry& entry, const QString& text)
{
    auto* const item = new QTreeWidgetItem({text, entry.output});
    item->setData(0, LibraryTree::kNameRole, entry.name());
    item->setToolTip(0, entry.name());
    return item;
}

} // namespace

LibraryPanel::LibraryPanel(MainWindow& window, QWidget* parent)
    : Panel(parent),
      m_window(window),
      m_line(new QLineEdit),
      m_tree(new LibraryTree)
{
    m_line->setObjectName("library.search");
    m_line->setPlaceholderText(tr("Search node types"));
    m_line->setAccessibleName(m_line->placeholderText());
    m_line->setToolTip(tr("Enter makes the first one"));
    m_line->setClearButtonEnabled(true);
    m_line->installEventFilter(this);
    m_tree->setToolTip(tr("Drag a type onto the canvas, or double click it"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(m_line);
    column->addWidget(m_tree, 1);
    connect(m_line, &QLineEdit::textChanged, this, &LibraryPanel::showHits);
    connect(m_tree, &QTreeWidget::itemActivated, this, &LibraryPanel::make);
    setEnabled(false);
}

LibraryPanel::~LibraryPanel() = default;

void LibraryPanel::setWorkspace(Workspace* workspace)
{
    m_catalogue.reset(workspace ? new NodeCatalogue(workspace->document()) : nullptr);
    setEnabled(workspace != nullptr);
    if (DocumentView* const view = m_window.view(); view && workspace)
        NodeDrop::acceptIn(*view);
    showHits(m_line->text());
}

void LibraryPanel::showHits(const QString& text)
{
    m_tree->clear();
    if (!m_catalogue)
        return;
    if (text.trimmed().isEmpty()) {
        showAll();
        return;
    }
    QList<QTreeWidgetItem*> items;
    for (const NodeCatalogue::Hit& hit : m_catalogue->search(text, {}, recentNodes())) {
        const NodeCatalogue::Entry& entry = m_catalogue->entry(hit);
        items.append(itemOf(entry, entry.type));
    }
    m_tree->addTopLevelItems(items);
    if (!items.isEmpty())
        m_tree->setCurrentItem(items.front());
}

/// Libraries, in them types, and the variants of a type that has several.
void LibraryPanel::showAll()
{
    const std::vector<NodeCatalogue::Entry>& entries = m_catalogue->entries();
    QTreeWidgetItem* category = nullptr;
    QTreeWidgetItem* type = nullptr;
    QList<QTreeWidgetItem*> categories;
    for (const NodeCatalogue::Entry& entry : entries) {
        if (!category || category->text(0) != entry.category) {
            category = new QTreeWidgetItem({entry.category});
            categories.append(category);
            type = nullptr;
        }
        if (!type || type->text(0) != entry.type) {
            type = itemOf(entry, entry.type);
            category->addChild(type);
            continue;
        }
        // Under the first of them, which stands for the type, with it.
        if (type->childCount() == 0)
            type->addChild(new QTreeWidgetItem(*type));
        type->addChild(itemOf(entry, entry.type));
    }
    m_tree->addTopLevelItems(categories);
}

void LibraryPanel::make(QTreeWidgetItem* item)
{
    const QString name = item ? item->data(0, LibraryTree::kNameRole).toString() : QString();
    if (item && name.isEmpty())
        item->setExpanded(!item->isExpanded());
    else if (m_window.view() && !name.isEmpty())
        makeNode(*m_window.view(), name);
}

bool LibraryPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_line || event->type() != QEvent::KeyPress)
        return Panel::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!m_line->text().trimmed().isEmpty())
            make(m_tree->topLevelItem(0));
        return true;
    case Qt::Key_Down:
        m_tree->setFocus(Qt::OtherFocusReason);
        return true;
    case Qt::Key_Escape:
        m_line->clear();
        return true;
    default:
        return false;
    }
}

} // namespace shading
