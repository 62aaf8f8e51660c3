#include "window/files/recoveryDialog.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace shading {

RecoveryDialog::RecoveryDialog(std::vector<Orphan> orphans, QWidget* parent)
    : QDialog(parent),
      m_orphans(std::move(orphans)),
      m_list(new QTreeWidget(this))
{
    setObjectName("recovery");
    setWindowTitle(tr("Recover Documents"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(
        tr("A program ended without saving these documents. Their edits were kept."), this));
    m_list->setObjectName("orphans");
    m_list->setRootIsDecorated(false);
    m_list->setHeaderLabels({tr("Document"), tr("Last edit"), tr("Edits")});
    for (const Orphan& orphan : m_orphans) {
        auto* const row = new QTreeWidgetItem(m_list);
        row->setText(0, QString::fromStdString(orphan.document));
        row->setText(1, QLocale().toString(QDateTime::fromSecsSinceEpoch(orphan.time),
                                           QLocale::ShortFormat));
        row->setText(2, QString::number(orphan.edits));
        row->setCheckState(0, Qt::Checked);
    }
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_list->setMinimumSize(640, 160);
    layout->addWidget(m_list);
    auto* const buttons = new QDialogButtonBox(this);
    QPushButton* const recover = buttons->addButton(tr("Recover"), QDialogButtonBox::AcceptRole);
    recover->setObjectName("recover");
    recover->setDefault(true);
    QPushButton* const discard =
        buttons->addButton(tr("Discard"), QDialogButtonBox::DestructiveRole);
    discard->setObjectName("discardRecovery");
    buttons->addButton(tr("Later"), QDialogButtonBox::RejectRole)->setObjectName("later");
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(recover, &QPushButton::clicked, this, [this] {
        for (const Orphan& orphan : takeTicked())
            Q_EMIT recovers(orphan);
    });
    connect(discard, &QPushButton::clicked, this, [this] {
        for (const Orphan& orphan : takeTicked())
            Q_EMIT discards(orphan);
    });
}

std::vector<Orphan> RecoveryDialog::takeTicked()
{
    std::vector<Orphan> ticked;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        if (m_list->topLevelItem(i)->checkState(0) == Qt::Checked)
            ticked.push_back(m_orphans[static_cast<std::size_t>(i)]);
    }
    accept();
    return ticked;
}

} // namespace shading
