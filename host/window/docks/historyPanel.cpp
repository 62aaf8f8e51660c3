#include "window/docks/historyPanel.h"

#include "window/docks/historyModel.h"
#include "window/workspace/workspace.h"

#include <QListView>
#include <QTimer>
#include <QVBoxLayout>

namespace shading {

HistoryPanel::HistoryPanel(QWidget* parent)
    : Panel(parent),
      m_list(new QListView),
      m_show(new QTimer(this))
{
    m_show->setSingleShot(true);
    m_show->setInterval(0);
    connect(m_show, &QTimer::timeout, this, &HistoryPanel::showCurrent);
    m_list->setObjectName("history.list");
    m_list->setAccessibleName(tr("History"));
    m_list->setUniformItemSizes(true);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setToolTip(tr("Click an edit to go there"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_list);
    const auto go = [this](const QModelIndex& index) {
        if (m_workspace && index.isValid() && !m_workspace->goToEdit(index.row()))
            showCurrent();
    };
    connect(m_list, &QListView::clicked, this, go);
    connect(m_list, &QListView::activated, this, go);
}

void HistoryPanel::setWorkspace(Workspace* workspace)
{
    if (m_model)
        disconnect(m_model, nullptr, m_show, nullptr);
    m_show->stop();
    m_workspace = workspace;
    m_model = workspace ? &HistoryModel::of(*workspace) : nullptr;
    m_list->setModel(m_model);
    if (m_model) {
        // A click goes back by thousands of edits, and each of them is told.
        connect(m_model, &HistoryModel::currentChanged, m_show, qOverload<>(&QTimer::start));
        showCurrent();
    }
}

void HistoryPanel::showCurrent()
{
    if (m_model)
        m_list->setCurrentIndex(m_model->index(m_model->current()));
}

} // namespace shading
