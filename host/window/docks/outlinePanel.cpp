#include "window/docks/outlinePanel.h"

#include "document/document.h"
#include "window/docks/hitsModel.h"
#include "window/docks/outlineModel.h"
#include "window/workspace/workspace.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

namespace shading {

namespace {

constexpr int kAgainMs = 400;
/// A selection of more nodes is not looked up in the tree.
constexpr std::size_t kMostFollowed = 200;

} // namespace

OutlinePanel::OutlinePanel(QWidget* parent)
    : Panel(parent),
      m_model(new OutlineModel(this)),
      m_hits(new HitsModel(this)),
      m_search(new DocumentSearch(this)),
      m_tree(new QTreeView),
      m_list(new QTreeView),
      m_pages(new QStackedWidget),
      m_line(new QLineEdit),
      m_count(new QLabel),
      m_again(new QTimer(this)),
      m_follow(new QTimer(this))
{
    addParts();
    addTree();
    addHits();
    m_again->setSingleShot(true);
    m_again->setInterval(kAgainMs);
    connect(m_again, &QTimer::timeout, this, &OutlinePanel::search);
    m_follow->setSingleShot(true);
    m_follow->setInterval(0);
    connect(m_follow, &QTimer::timeout, this, &OutlinePanel::showSelection);
    connect(m_search, &DocumentSearch::found, this, &OutlinePanel::takeHits);
    connect(m_search, &DocumentSearch::finished, this, &OutlinePanel::showCount);
    setEnabled(false);
}

OutlinePanel::~OutlinePanel()
{
    setWorkspace(nullptr);
}

void OutlinePanel::addParts()
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    m_line->setObjectName("outline.search");
    m_line->setPlaceholderText(tr("Find names, types, values and paths"));
    m_line->setAccessibleName(tr("Find in the document"));
    m_line->setToolTip(tr("Enter goes to the next one, Shift+Enter to the one before"));
    m_line->setClearButtonEnabled(true);
    m_line->installEventFilter(this);
    column->addWidget(m_line);
    m_count->setObjectName("outline.count");
    m_count->hide();
    column->addWidget(m_count);
    m_pages->addWidget(m_tree);
    m_pages->addWidget(m_list);
    column->addWidget(m_pages, 1);
    connect(m_line, &QLineEdit::textChanged, this, &OutlinePanel::search);
}

void OutlinePanel::addTree()
{
    m_tree->setObjectName("outline.tree");
    m_tree->setAccessibleName(tr("Nodes of the document"));
    m_tree->setUniformRowHeights(true);
    m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_tree->setExpandsOnDoubleClick(false);
    m_tree->setModel(m_model);
    m_tree->header()->resizeSection(OutlineModel::NameColumn, 170);
    connect(m_tree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &OutlinePanel::takeSelection);
    connect(m_tree, &QTreeView::activated, this, &OutlinePanel::enter);
}

void OutlinePanel::addHits()
{
    m_list->setObjectName("outline.hits");
    m_list->setAccessibleName(tr("What was found"));
    m_list->setUniformRowHeights(true);
    m_list->setRootIsDecorated(false);
    m_list->setModel(m_hits);
    m_list->header()->resizeSection(0, 200);
    const auto go = [this](const QModelIndex& index) { goToHit(index.row()); };
    connect(m_list, &QTreeView::clicked, this, go);
    connect(m_list, &QTreeView::activated, this, go);
}

void OutlinePanel::setWorkspace(Workspace* workspace)
{
    if (m_workspace)
        disconnect(m_workspace, nullptr, this, nullptr);
    m_follow->stop();
    m_again->stop();
    m_search->stop();
    m_hits->clear();
    m_workspace = workspace;
    m_model->setWorkspace(workspace);
    setEnabled(workspace != nullptr);
    if (!workspace)
        return;
    connect(workspace, &Workspace::changed, this, [this](const Marks& marks) {
        m_isFollowing = true;
        m_model->take(marks);
        m_isFollowing = false;
        if (hasSearch())
            m_again->start();
        follow();
    });
    connect(workspace, &Workspace::selectionChanged, this, &OutlinePanel::follow);
    connect(workspace, &Workspace::compoundChanged, this, &OutlinePanel::follow);
    follow();
    search();
}

void OutlinePanel::showEvent(QShowEvent* event)
{
    Panel::showEvent(event);
    follow();
}

void OutlinePanel::follow()
{
    if (!m_isTaking)
        m_follow->start();
}

/// The tree selects what the document has selected, and shows it.
void OutlinePanel::showSelection()
{
    if (!m_workspace || !m_tree->isVisible())
        return;
    m_isFollowing = true;
    const std::vector<NodePtr>& nodes = m_workspace->selection();
    QItemSelection selection;
    QModelIndex last;
    for (std::size_t i = 0; i < nodes.size() && nodes.size() <= kMostFollowed; ++i) {
        last = m_model->indexOf(nodes[i]);
        if (last.isValid())
            selection.select(last, last.siblingAtColumn(OutlineModel::TypeColumn));
    }
    m_tree->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (nodes.empty())
        last = m_model->indexOf(m_workspace->compound()->getAsNode());
    if (last.isValid()) {
        m_tree->scrollTo(last);
        m_tree->selectionModel()->setCurrentIndex(last, QItemSelectionModel::NoUpdate);
    }
    if (last.isValid() && nodes.empty())
        m_tree->expand(last);
    m_isFollowing = false;
}

/// The document selects what the user selects in the tree: it has one compound only, that of the
/// node that came last.
void OutlinePanel::takeSelection()
{
    if (m_isFollowing || !m_workspace)
        return;
    const QModelIndexList indexes =
        m_tree->selectionModel()->selectedRows(OutlineModel::NameColumn);
    NodePtr current = m_model->nodeAt(m_tree->currentIndex());
    if (!m_tree->selectionModel()->isSelected(m_tree->currentIndex()) && !indexes.isEmpty())
        current = m_model->nodeAt(indexes.last());
    std::vector<NodePtr> nodes;
    for (const QModelIndex& index : indexes)
        nodes.push_back(m_model->nodeAt(index));
    m_isTaking = true;
    if (current && m_workspace->document().has(current))
        m_workspace->enter(current->getParentCompound());
    m_workspace->select(nodes);
    if (!nodes.empty())
        Q_EMIT m_workspace->revealed();
    m_isTaking = false;
}

void OutlinePanel::enter(const QModelIndex& index)
{
    const NodePtr node = m_model->nodeAt(index);
    if (!m_workspace || !node || !m_workspace->document().has(node))
        return;
    if (node->isCompound())
        m_workspace->enter(node->getAsCompound());
    else
        m_workspace->reveal(node);
}

void OutlinePanel::focusSearch()
{
    m_line->setFocus(Qt::ShortcutFocusReason);
    m_line->selectAll();
}

bool OutlinePanel::hasSearch() const
{
    return !m_line->text().trimmed().isEmpty();
}

bool OutlinePanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_line || event->type() != QEvent::KeyPress)
        return Panel::eventFilter(watched, event);
    const auto* const key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        findNext(!key->modifiers().testFlag(Qt::ShiftModifier));
        return true;
    case Qt::Key_Escape:
        m_line->clear();
        return true;
    case Qt::Key_Down:
        m_pages->currentWidget()->setFocus(Qt::OtherFocusReason);
        return true;
    default:
        return false;
    }
}

void OutlinePanel::search()
{
    m_again->stop();
    m_hits->clear();
    m_wantsHit = false;
    m_pages->setCurrentWidget(hasSearch() ? m_list : m_tree);
    m_count->setVisible(hasSearch());
    if (!m_workspace)
        return;
    m_search->start(m_workspace->document(), m_line->text());
    showCount();
    if (!hasSearch())
        follow();
}

void OutlinePanel::takeHits(const std::vector<DocumentSearch::Hit>& hits)
{
    m_hits->add(hits);
    if (std::exchange(m_wantsHit, false))
        goToHit(0);
    showCount();
}

void OutlinePanel::showCount()
{
    const int count = m_hits->rowCount();
    m_count->setText(m_search->isRunning() ? tr("%1 found so far").arg(count)
                                           : tr("%1 found").arg(count));
    if (!m_search->isRunning() && std::exchange(m_wantsHit, false) && m_workspace)
        m_workspace->say(tr("Nothing was found: %1").arg(m_line->text()));
}

void OutlinePanel::findNext(bool isForward)
{
    const int count = m_hits->rowCount();
    if (count == 0) {
        m_wantsHit = m_search->isRunning();
        showCount();
        return;
    }
    const QModelIndex current = m_list->currentIndex();
    const int step = isForward ? 1 : count - 1;
    goToHit(current.isValid() ? (current.row() + step) % count : isForward ? 0 : count - 1);
}

void OutlinePanel::goToHit(int row)
{
    const NodePtr node = m_hits->nodeAt(row);
    if (!m_workspace || !node)
        return;
    m_list->setCurrentIndex(m_hits->index(row, 0));
    if (m_workspace->document().has(node))
        m_workspace->reveal(node);
    else
        m_workspace->say(tr("The node is gone: %1").arg(node->getName()));
}

} // namespace shading
