#include "window/docks/connectionsPanel.h"

#include "document/document.h"
#include "window/docks/connectionsModel.h"
#include "window/workspace/workspace.h"

#include <QHeaderView>
#include <QTreeView>
#include <QVBoxLayout>

namespace shading {

ConnectionsPanel::ConnectionsPanel(QWidget* parent)
    : Panel(parent),
      m_model(new ConnectionsModel(this)),
      m_list(new QTreeView)
{
    m_list->setObjectName("connections.list");
    m_list->setAccessibleName(tr("Connections"));
    m_list->setToolTip(tr("Click a connection to show both ends"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setModel(m_model);
    m_list->header()->resizeSection(0, 220);
    m_list->header()->resizeSection(1, 220);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_list);
    const auto go = [this](const QModelIndex& index) { goTo(index.row()); };
    connect(m_list, &QTreeView::clicked, this, go);
    connect(m_list, &QTreeView::activated, this, go);
    setEnabled(false);
}

ConnectionsPanel::~ConnectionsPanel()
{
    setWorkspace(nullptr);
}

void ConnectionsPanel::setWorkspace(Workspace* workspace)
{
    if (m_workspace)
        disconnect(m_workspace, nullptr, this, nullptr);
    m_workspace = workspace;
    m_model->read(nullptr);
    setEnabled(workspace != nullptr);
    if (!workspace)
        return;
    connect(workspace, &Workspace::compoundChanged, this, &ConnectionsPanel::read);
    connect(workspace, &Workspace::changed, this, [this](const Marks& marks) {
        for (const CompoundMarks& mark : marks) {
            const bool isTold = mark.hasOtherNodes || mark.hasOtherWires || mark.hasOtherPorts;
            if (mark.compound == m_workspace->compound() && isTold)
                read();
        }
    });
    read();
}

void ConnectionsPanel::showEvent(QShowEvent* event)
{
    Panel::showEvent(event);
    read();
}

void ConnectionsPanel::read()
{
    // Of another compound nothing is kept, for it may be about to go.
    if (m_workspace)
        m_model->read(isVisible() ? m_workspace->compound() : nullptr);
}

void ConnectionsPanel::goTo(int row)
{
    if (!m_workspace || row < 0)
        return;
    const ConnectionsModel::Row ends = m_model->row(row);
    m_workspace->flush();
    // Inner ports are the bars of the compound: they select nothing.
    m_workspace->select({ends.source->getParentNode(), ends.target->getParentNode()});
    Q_EMIT m_workspace->revealed();
}

} // namespace shading
