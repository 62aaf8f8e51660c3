#include "window/docks/portsPanel.h"

#include "document/document.h"
#include "document/names.h"
#include "window/docks/portsModel.h"
#include "window/docks/tryEdit.h"
#include "window/workspace/workspace.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>

namespace shading {

namespace {

/// Chooses among the data types; nothing else is one.
class TypeDelegate : public QStyledItemDelegate {
public:
    TypeDelegate(std::function<QStringList()> names, QObject* parent)
        : QStyledItemDelegate(parent),
          m_names(std::move(names))
    {
    }

    QWidget* createEditor(QWidget* parent,
                          const QStyleOptionViewItem& /*option*/,
                          const QModelIndex& /*index*/) const override
    {
        auto* const box = new QComboBox(parent);
        box->setObjectName("ports.typeEditor");
        box->addItems(m_names());
        return box;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        static_cast<QComboBox*>(editor)->setCurrentText(index.data(Qt::EditRole).toString());
    }

    void setModelData(QWidget* editor,
                      QAbstractItemModel* model,
                      const QModelIndex& index) const override
    {
        model->setData(index, static_cast<QComboBox*>(editor)->currentText(), Qt::EditRole);
    }

private:
    std::function<QStringList()> m_names;
};

} // namespace

PortsPanel::PortsPanel(QWidget* parent)
    : Panel(parent),
      m_title(new QLabel),
      m_problem(new QLabel),
      m_timer(new QTimer(this))
{
    m_timer->setSingleShot(true);
    m_timer->setInterval(0);
    connect(m_timer, &QTimer::timeout, this, &PortsPanel::refresh);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(3);
    m_title->setObjectName("ports.title");
    m_title->setTextFormat(Qt::PlainText);
    column->addWidget(m_title);
    m_inputs = addTable(ZEL::PortInput, "ports.inputs", tr("Inputs"));
    m_outputs = addTable(ZEL::PortOutput, "ports.outputs", tr("Outputs"));
    addButtons();
    addLineForNew();
    m_problem->setObjectName("ports.problem");
    m_problem->setWordWrap(true);
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setStyleSheet(QStringLiteral("color: #c8401c"));
    m_problem->hide();
    column->addWidget(m_problem);
    setEnabled(false);
}

PortsPanel::~PortsPanel()
{
    setWorkspace(nullptr);
}

PortsPanel::Table
PortsPanel::addTable(ZEL::PortIOType ioType, const QString& id, const QString& title)
{
    const Table table{new PortsModel(ioType, this), new QTableView};
    QTableView& view = *table.view;
    view.setObjectName(id);
    view.setAccessibleName(title);
    view.setModel(table.model);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setSelectionMode(QAbstractItemView::SingleSelection);
    view.setDragDropMode(QAbstractItemView::InternalMove);
    view.setDragDropOverwriteMode(false);
    view.setTabKeyNavigation(false);
    view.setToolTip(tr("Double click or F2 edits; drag a row to move the port"));
    view.horizontalHeader()->setStretchLastSection(true);
    view.horizontalHeader()->resizeSection(PortsModel::NameColumn, 110);
    view.horizontalHeader()->resizeSection(PortsModel::TypeColumn, 80);
    view.verticalHeader()->setDefaultSectionSize(22);
    view.setItemDelegateForColumn(PortsModel::TypeColumn,
                                  new TypeDelegate([this] { return typeNames(); }, &view));
    view.installEventFilter(this);
    layout()->addWidget(&view);
    connect(table.model, &PortsModel::tried, this, &PortsPanel::tell);
    connect(view.selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this, ioType] { m_isOutput = ioType == ZEL::PortOutput; });
    return table;
}

QPushButton* PortsPanel::newButton(const QString& id, const QString& text, const QString& help)
{
    auto* const button = new QPushButton(text);
    button->setObjectName(id);
    button->setToolTip(help);
    button->setAutoDefault(false);
    return button;
}

void PortsPanel::addButtons()
{
    auto* const line = new QHBoxLayout;
    auto* const up = newButton("ports.up", tr("Up"), tr("Move the port up"));
    auto* const down = newButton("ports.down", tr("Down"), tr("Move the port down"));
    auto* const remove = newButton("ports.delete", tr("Delete"), tr("Delete the port"));
    for (QPushButton* const button : {up, down, remove})
        line->addWidget(button);
    static_cast<QVBoxLayout*>(layout())->addLayout(line);
    connect(up, &QPushButton::clicked, this, [this] { move(-1); });
    connect(down, &QPushButton::clicked, this, [this] { move(1); });
    connect(remove, &QPushButton::clicked, this, &PortsPanel::deletePort);
}

void PortsPanel::addLineForNew()
{
    auto* const line = new QHBoxLayout;
    m_name = new QLineEdit;
    m_name->setObjectName("ports.name");
    m_name->setPlaceholderText(tr("New port"));
    m_name->setAccessibleName(tr("Name of a new port"));
    m_type = new QComboBox;
    m_type->setObjectName("ports.type");
    m_type->setAccessibleName(tr("Type of a new port"));
    auto* const input = newButton("ports.addInput", tr("Add input"), tr("Add it as an input"));
    auto* const output = newButton("ports.addOutput", tr("Add output"), tr("Add it as an output"));
    line->addWidget(m_name, 1);
    line->addWidget(m_type);
    static_cast<QVBoxLayout*>(layout())->addLayout(line);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(input);
    buttons->addWidget(output);
    static_cast<QVBoxLayout*>(layout())->addLayout(buttons);
    connect(input, &QPushButton::clicked, this, [this] { addPort(ZEL::PortInput); });
    connect(output, &QPushButton::clicked, this, [this] { addPort(ZEL::PortOutput); });
    connect(m_name, &QLineEdit::returnPressed, this,
            [this] { addPort(m_isOutput ? ZEL::PortOutput : ZEL::PortInput); });
}

void PortsPanel::setWorkspace(Workspace* workspace)
{
    if (m_workspace)
        disconnect(m_workspace, nullptr, this, nullptr);
    m_timer->stop();
    m_workspace = workspace;
    m_node = nullptr;
    m_inputs.model->setNode(nullptr, nullptr);
    m_outputs.model->setNode(nullptr, nullptr);
    m_type->clear();
    m_problem->hide();
    setEnabled(workspace != nullptr);
    if (!workspace) {
        m_title->setText(tr("No document"));
        return;
    }
    m_type->addItems(typeNames());
    m_type->setCurrentText("float");
    connect(workspace, &Workspace::selectionChanged, this, &PortsPanel::askRefresh);
    connect(workspace, &Workspace::compoundChanged, this, &PortsPanel::askRefresh);
    connect(workspace, &Workspace::changed, this, &PortsPanel::askRefresh);
    connect(workspace, &Workspace::edited, this, &PortsPanel::askRefresh);
    refresh();
}

void PortsPanel::showEvent(QShowEvent* event)
{
    Panel::showEvent(event);
    refresh();
}

void PortsPanel::askRefresh()
{
    m_timer->start();
}

void PortsPanel::refresh()
{
    if (!m_workspace || !isVisible())
        return;
    m_workspace->flush();
    NodePtr node = m_workspace->compound()->getAsNode();
    const std::vector<NodePtr>& selection = m_workspace->selection();
    if (selection.size() == 1 && selection.front()->isCompound())
        node = selection.front();
    if (node != m_node)
        m_problem->hide();
    m_node = node;
    m_title->setText(tr("Ports of %1").arg(QString::fromStdString(pathOf(*node))));
    m_inputs.model->setNode(m_workspace, node);
    m_outputs.model->setNode(m_workspace, node);
}

PortsPanel::Table& PortsPanel::current()
{
    return m_isOutput ? m_outputs : m_inputs;
}

void PortsPanel::move(int step)
{
    Table& table = current();
    const QModelIndex index = table.view->currentIndex();
    const int to = index.row() + step;
    if (index.isValid() && to >= 0 && to < table.model->rowCount() &&
        table.model->movePort(index.row(), to))
        table.view->setCurrentIndex(table.model->index(to, index.column()));
}

void PortsPanel::deletePort()
{
    const Table& table = current();
    const PortPtr port = table.model->portAt(table.view->currentIndex().row());
    if (port && m_workspace)
        tell(tryEdit(*m_workspace, [&] {
            return m_workspace->edit([&](Edits& edits) { return edits.deletePort(port); });
        }));
    refresh();
}

void PortsPanel::addPort(ZEL::PortIOType ioType)
{
    if (!m_workspace || !m_node)
        return;
    const CompoundPtr compound = m_node->getAsCompound();
    const QString problem = tryEdit(*m_workspace, [&] {
        return m_workspace->edit([&](Edits& edits) {
            return edits.addPort(compound, ioType, m_name->text().toStdString(),
                                 m_type->currentText().toStdString());
        });
    });
    tell(problem);
    if (problem.isEmpty())
        m_name->clear();
    refresh();
}

void PortsPanel::tell(const QString& problem)
{
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
}

QStringList PortsPanel::typeNames() const
{
    QStringList names;
    ZEL::Runtime& runtime = *m_workspace->document().getRuntime();
    for (int i = 0; i < runtime.getNumberOfPortDataTypes(); ++i)
        names.append(runtime.getPortDataType(i)->getName());
    names.sort(Qt::CaseInsensitive);
    return names;
}

bool PortsPanel::eventFilter(QObject* watched, QEvent* event)
{
    const bool isDelete = event->type() == QEvent::KeyPress &&
                          static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete;
    if (isDelete && (watched == m_inputs.view || watched == m_outputs.view)) {
        m_isOutput = watched == m_outputs.view;
        deletePort();
        return true;
    }
    return Panel::eventFilter(watched, event);
}

} // namespace shading
