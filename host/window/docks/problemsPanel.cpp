#include "window/docks/problemsPanel.h"

#include "console/findings.h"
#include "document/document.h"
#include "document/names.h"
#include "document/node.h"
#include "window/docks/problemsModel.h"
#include "window/workspace/workspace.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

namespace shading {

namespace {

using Row = ProblemsModel::Row;

constexpr int kDelayMs = 500;
constexpr int kManyNodes = 20000; ///< A document of more is checked when it is asked for.
const QString kNoteWord = QStringLiteral("note: ");

/// Stops counting there.
int countNodes(ZEL::Compound& compound, int most)
{
    int count = compound.nodes().size();
    for (ZEL::Node* const node : compound.nodes()) {
        if (count >= most)
            break;
        if (node->isCompound())
            count += countNodes(*node->getAsCompound(), most - count);
    }
    return count;
}

/// Nodes whose type nobody knows: they are kept as they are.
void addUnknown(ZEL::Compound& compound, std::vector<Row>& rows)
{
    for (ZEL::Node* const node : compound.nodes()) {
        if (node->isCompound()) {
            addUnknown(*node->getAsCompound(), rows);
            continue;
        }
        const auto* const own = dynamic_cast<const Node*>(node);
        if (own && !own->definition())
            rows.push_back({pathOf(*node), QString::fromStdString(pathOf(*node)),
                            QString("no definition fits a node of type \"%1\": it is kept as it is")
                                .arg(node->getNodeTypeName()),
                            true});
    }
}

std::vector<Row> rowsOf(Workspace& workspace)
{
    std::vector<Row> rows;
    for (const FindingRecord& record : findingsOf(workspace.document()).records) {
        const QString reason = QString::fromStdString(record.reason);
        const bool isNote = reason.startsWith(kNoteWord);
        rows.push_back({record.path, QString::fromStdString(record.path),
                        isNote ? reason.mid(kNoteWord.size()) : reason, isNote});
    }
    addUnknown(*workspace.document().getRootNode()->getAsCompound(), rows);
    for (const Message& message : workspace.messages()) {
        const QString file = QFileInfo(QString::fromStdString(message.file)).fileName();
        rows.push_back({std::string(), QString("%1:%2").arg(file).arg(message.line),
                        QString::fromStdString(message.text), true});
    }
    return rows;
}

} // namespace

ProblemsPanel::ProblemsPanel(QWidget* parent)
    : Panel(parent),
      m_model(new ProblemsModel(this)),
      m_list(new QTreeView),
      m_count(new QLabel),
      m_button(new QPushButton(tr("Check now"))),
      m_timer(new QTimer(this))
{
    m_list->setObjectName("problems.list");
    m_list->setAccessibleName(tr("Problems"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setModel(m_model);
    m_list->header()->resizeSection(1, 260);
    m_count->setObjectName("problems.count");
    m_button->setObjectName("problems.check");
    m_button->setToolTip(tr("Look for what is wrong with the document"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    auto* const line = new QHBoxLayout;
    line->addWidget(m_count, 1);
    line->addWidget(m_button);
    column->addLayout(line);
    column->addWidget(m_list, 1);
    m_timer->setSingleShot(true);
    connect(m_timer, &QTimer::timeout, this, &ProblemsPanel::check);
    connect(m_button, &QPushButton::clicked, this, &ProblemsPanel::check);
    const auto go = [this](const QModelIndex& index) { goTo(index.row()); };
    connect(m_list, &QTreeView::clicked, this, go);
    connect(m_list, &QTreeView::activated, this, go);
    setEnabled(false);
}

void ProblemsPanel::setWorkspace(Workspace* workspace)
{
    if (m_workspace)
        disconnect(m_workspace, nullptr, this, nullptr);
    m_timer->stop();
    m_workspace = workspace;
    m_model->setRows({});
    m_count->clear();
    setEnabled(workspace != nullptr);
    if (!workspace)
        return;
    connect(workspace, &Workspace::edited, this, &ProblemsPanel::noteChange);
    noteChange();
}

void ProblemsPanel::showEvent(QShowEvent* event)
{
    Panel::showEvent(event);
    if (m_isOld && m_workspace)
        askCheck();
}

void ProblemsPanel::noteChange()
{
    m_isOld = true;
    if (isVisible())
        askCheck();
}

void ProblemsPanel::askCheck()
{
    ZEL::Compound& root = *m_workspace->document().getRootNode()->getAsCompound();
    if (countNodes(root, kManyNodes + 1) > kManyNodes) {
        m_count->setText(tr("The document has changed: check it when you want to know"));
        return;
    }
    m_timer->start(kDelayMs);
}

void ProblemsPanel::check()
{
    m_timer->stop();
    // Not in the middle of an edit, which may be one that waits for more.
    if (!m_workspace || m_workspace->history().isOpen())
        return;
    m_isOld = false;
    std::vector<Row> rows = rowsOf(*m_workspace);
    std::size_t notes = 0;
    for (const Row& row : rows)
        notes += row.isNote ? 1 : 0;
    m_count->setText(tr("%1 problems, %2 notes").arg(rows.size() - notes).arg(notes));
    m_model->setRows(std::move(rows));
}

void ProblemsPanel::goTo(int row)
{
    const std::string path = m_model->row(row).path;
    if (m_workspace && !path.empty() && !m_workspace->reveal(path))
        m_workspace->say(tr("It is gone: %1").arg(QString::fromStdString(path)));
}

} // namespace shading
