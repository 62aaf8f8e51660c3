#include "window/gestures/breadcrumb.h"

#include "document/document.h"
#include "document/names.h"
#include "window/workspace/workspace.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <algorithm>

namespace shading {

Breadcrumb::Breadcrumb(Workspace& workspace, QWidget* parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_layout(new QHBoxLayout(this))
{
    setObjectName(QStringLiteral("breadcrumb"));
    m_layout->setContentsMargins(4, 2, 4, 2);
    m_layout->setSpacing(2);
    connect(&workspace, &Workspace::compoundChanged, this, &Breadcrumb::fill);
    connect(&workspace, &Workspace::changed, this, [this](const Marks& marks) {
        // A graph around may have got another name.
        if (std::any_of(marks.begin(), marks.end(), [](const auto& m) { return m.hasOtherNodes; }))
            fill();
    });
    fill();
}

void Breadcrumb::fill()
{
    while (QLayoutItem* const item = m_layout->takeAt(0)) {
        if (item->widget()) {
            item->widget()->hide();
            item->widget()->deleteLater(); // It may be the one that was clicked.
        }
        delete item;
    }
    std::vector<CompoundPtr> way;
    for (CompoundPtr compound = m_workspace.compound(); compound;
         compound = compound->getAsNode()->getParentCompound())
        way.insert(way.begin(), compound);
    for (const CompoundPtr& compound : way) {
        if (compound != way.front())
            m_layout->addWidget(new QLabel(QStringLiteral("›"), this));
        auto* const button = new QToolButton(this);
        button->setAutoRaise(true);
        button->setText(QString::fromUtf8(compound->getName()));
        button->setObjectName("breadcrumb." + button->text());
        button->setToolTip(QString::fromStdString(pathOf(*compound->getAsNode())));
        button->setCheckable(true);
        button->setChecked(compound == m_workspace.compound());
        connect(button, &QToolButton::clicked, this, [this, button, compound] {
            button->setChecked(compound == m_workspace.compound());
            m_workspace.enter(compound);
        });
        m_layout->addWidget(button);
    }
    m_layout->addStretch(1);
}

} // namespace shading
