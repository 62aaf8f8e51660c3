#include "window/files/problemsBar.h"

#include "window/workspace/workspace.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace shading {

namespace {

constexpr int kRows = 5; ///< That are seen at once.

} // namespace

ProblemsBar::ProblemsBar(Workspace& workspace,
                         const std::vector<SaveProblem>& problems,
                         QWidget* parent)
    : QFrame(parent)
{
    setObjectName("refusedSave");
    setFrameShape(QFrame::StyledPanel);
    auto* const layout = new QVBoxLayout(this);
    auto* const head = new QHBoxLayout;
    auto* const title = new QLabel(tr("The document was not saved:"), this);
    head->addWidget(title, 1);
    auto* const close = new QPushButton(tr("Close"), this);
    close->setObjectName("closeProblems");
    connect(close, &QPushButton::clicked, this, &QObject::deleteLater);
    head->addWidget(close);
    layout->addLayout(head);
    auto* const list = new QListWidget(this);
    list->setObjectName("saveProblems");
    list->setAccessibleName(title->text());
    for (const SaveProblem& problem : problems) {
        const QString path = QString::fromStdString(problem.path);
        auto* const item =
            new QListWidgetItem(path + ": " + QString::fromStdString(problem.reason), list);
        item->setData(Qt::UserRole, path);
    }
    const int rows = qMin<int>(kRows, static_cast<int>(problems.size()));
    list->setFixedHeight(rows * list->sizeHintForRow(0) + 2 * list->frameWidth());
    const auto lead = [&workspace](QListWidgetItem* item) {
        workspace.reveal(item->data(Qt::UserRole).toString().toStdString());
    };
    connect(list, &QListWidget::itemClicked, this, lead);
    connect(list, &QListWidget::itemActivated, this, lead);
    layout->addWidget(list);
}

} // namespace shading
