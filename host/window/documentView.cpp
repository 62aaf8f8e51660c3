#include "window/documentView.h"

#include <QVBoxLayout>

namespace shading {

DocumentView::DocumentView(std::unique_ptr<Workspace> workspace,
                           Actions& /*actions*/,
                           QWidget* parent)
    : QWidget(parent),
      m_workspace(std::move(workspace))
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_bars = new QVBoxLayout;
    layout->addLayout(m_bars);
    layout->addStretch(1);
}

DocumentView::~DocumentView()
{
    qDeleteAll(findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
}

void DocumentView::addBar(QWidget* bar)
{
    m_bars->addWidget(bar);
}

} // namespace shading
