#include "window/docks/propertiesPanel.h"

#include "document/document.h"
#include "document/names.h"
#include "document/node.h"
#include "window/docks/propertyRow.h"
#include "window/docks/textField.h"
#include "window/docks/tryEdit.h"
#include "window/workspace/workspace.h"

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace shading {

namespace {

/// More nodes are not edited together: to ask all of them would take too long.
constexpr std::size_t kMostNodes = 2000;
constexpr int kManyRows = 8; ///< More than these are worth a line to search them.

/// The folders in the order of their first input; what lies in none comes first, attributes last.
std::vector<Property> inFolders(std::vector<Property> properties)
{
    std::vector<QString> folders{QString()};
    for (const Property& property : properties) {
        const QString& folder = property.style.folder;
        if (std::find(folders.begin(), folders.end(), folder) == folders.end())
            folders.push_back(folder);
    }
    const auto placeOf = [&](const Property& property) {
        return std::find(folders.begin(), folders.end(), property.style.folder);
    };
    std::stable_sort(properties.begin(), properties.end(),
                     [&](const auto& a, const auto& b) { return placeOf(a) < placeOf(b); });
    return properties;
}

QString typeText(Document& document, const std::vector<NodePtr>& nodes)
{
    ZEL::Node& node = *nodes.front();
    if (nodes.size() > 1)
        return QString("%1 nodes").arg(nodes.size());
    if (nodes.front() == document.getRootNode())
        return QStringLiteral("document");
    const auto* const own = dynamic_cast<const Node*>(&node);
    const QString type = node.getNodeTypeName();
    if (node.isCompound())
        return type.isEmpty() ? QStringLiteral("nodegraph") : type;
    if (own && own->definition())
        return type + " (" + QString::fromStdString(own->definition()->record().name) + ")";
    return type + " (no definition)";
}

} // namespace

PropertiesPanel::PropertiesPanel(QWidget* parent) : Panel(parent), m_timer(new QTimer(this))
{
    setObjectName("properties.panel");
    m_timer->setSingleShot(true);
    m_timer->setInterval(0);
    connect(m_timer, &QTimer::timeout, this, &PropertiesPanel::refresh);
    addParts();
    refresh();
}

PropertiesPanel::~PropertiesPanel()
{
    qDeleteAll(m_rows);
}

void PropertiesPanel::addParts()
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    m_name = new TextField([this](const QString& name) { return rename(name); });
    m_name->setObjectName("properties.name");
    m_name->setAccessibleName(tr("Name"));
    m_name->setToolTip(tr("The name of what is selected"));
    column->addWidget(m_name);
    m_problem = new QLabel;
    m_problem->setObjectName("properties.problem");
    m_problem->setWordWrap(true);
    m_problem->setStyleSheet(QStringLiteral("color: #c8401c"));
    m_problem->hide();
    column->addWidget(m_problem);
    m_type = new QLabel;
    m_type->setObjectName("properties.type");
    m_type->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_type->setWordWrap(true);
    column->addWidget(m_type);
    m_filter = new QLineEdit;
    m_filter->setObjectName("properties.filter");
    m_filter->setPlaceholderText(tr("Search the inputs"));
    m_filter->setAccessibleName(m_filter->placeholderText());
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, this, &PropertiesPanel::filter);
    column->addWidget(m_filter);
    m_scroll = new QScrollArea;
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* const list = new QWidget;
    m_list = new QVBoxLayout(list);
    m_list->setContentsMargins(0, 0, 0, 0);
    m_list->setSpacing(0);
    m_list->addStretch(1);
    m_scroll->setWidget(list);
    column->addWidget(m_scroll, 1);
}

void PropertiesPanel::setWorkspace(Workspace* workspace)
{
    // What is being typed counts, for the document that it was typed for.
    if (auto* const field = qobject_cast<TextField*>(focusWidget()); field && m_workspace)
        field->clearFocus();
    if (m_workspace)
        disconnect(m_workspace, nullptr, this, nullptr);
    m_nodes.clear();
    m_name->discard();
    qDeleteAll(m_rows);
    m_rows.clear();
    m_workspace = workspace;
    if (workspace) {
        connect(workspace, &Workspace::selectionChanged, this, &PropertiesPanel::askRefresh);
        connect(workspace, &Workspace::compoundChanged, this, &PropertiesPanel::askRefresh);
        connect(workspace, &Workspace::changed, this, &PropertiesPanel::askRefresh);
        connect(workspace, &Workspace::edited, this, &PropertiesPanel::askRefresh);
    }
    refresh();
}

void PropertiesPanel::showEvent(QShowEvent* event)
{
    Panel::showEvent(event);
    refresh();
}

void PropertiesPanel::askRefresh()
{
    m_timer->start();
}

void PropertiesPanel::refresh()
{
    if (!m_workspace) {
        setEnabled(false);
        showHeader();
        showRows({});
        return;
    }
    if (!isVisible())
        return;
    // What is gone is told at the next turn: it is not asked for its properties before.
    m_workspace->flush();
    setEnabled(true);
    std::vector<NodePtr> nodes = m_workspace->selection();
    if (nodes.empty())
        nodes.push_back(m_workspace->compound()->getAsNode());
    if (nodes != m_nodes) {
        m_name->discard();
        m_problem->hide();
    }
    m_nodes = std::move(nodes);
    showHeader();
    if (m_nodes.size() > kMostNodes)
        showRows({});
    else
        showRows(inFolders(propertiesOf(*m_workspace, m_nodes)));
}

void PropertiesPanel::showHeader()
{
    if (m_nodes.empty()) {
        m_name->showText(QString());
        m_type->setText(tr("No document"));
        return;
    }
    const bool isOne = m_nodes.size() == 1;
    const bool isDocument = m_nodes.front() == m_workspace->document().getRootNode();
    m_name->showText(isOne ? QString(m_nodes.front()->getName()) : QString());
    m_name->setPlaceholderText(isOne ? QString() : tr("several nodes"));
    m_name->setReadOnly(!isOne || isDocument);
    m_type->setText(typeText(m_workspace->document(), m_nodes));
}

void PropertiesPanel::showRows(const std::vector<Property>& properties)
{
    std::vector<PropertyRow*> old = std::exchange(m_rows, {});
    const auto takeLike = [&old](const Property& property) -> PropertyRow* {
        const auto found = std::find_if(old.begin(), old.end(), [&](PropertyRow* row) {
            return row && row->property().isLike(property);
        });
        return found == old.end() ? nullptr : std::exchange(*found, nullptr);
    };
    for (const Property& property : properties) {
        PropertyRow* row = takeLike(property);
        if (row) {
            row->setProperty(property);
            row->refresh();
        } else {
            row = new PropertyRow(*m_workspace, property, m_scroll->widget());
        }
        m_rows.push_back(row);
    }
    for (PropertyRow* const row : old)
        delete row;
    showFolds();
    filter();
    // All of a row is to be seen.
    m_scroll->setMinimumWidth(m_scroll->widget()->minimumSizeHint().width() +
                              m_scroll->verticalScrollBar()->sizeHint().width());
}

/// Puts rows and headers in their order; those that are there already stay.
void PropertiesPanel::showFolds()
{
    int place = 0;
    const auto put = [&](QWidget* widget) {
        if (m_list->indexOf(widget) != place) {
            m_list->removeWidget(widget);
            m_list->insertWidget(place, widget);
        }
        ++place;
    };
    QSet<QString> used;
    for (PropertyRow* const row : m_rows) {
        const QString folder = row->property().style.folder;
        if (!folder.isEmpty() && !used.contains(folder)) {
            used.insert(folder);
            put(foldOf(folder));
        }
        put(row);
    }
    for (auto fold = m_folds.begin(); fold != m_folds.end();) {
        if (used.contains(fold.key())) {
            ++fold;
            continue;
        }
        delete fold.value();
        fold = m_folds.erase(fold);
    }
    setTabOrder(m_name, m_filter);
}

QToolButton* PropertiesPanel::foldOf(const QString& folder)
{
    QToolButton*& fold = m_folds[folder];
    if (fold)
        return fold;
    fold = new QToolButton(m_scroll->widget());
    fold->setObjectName("properties.fold." + folder);
    fold->setText(folder);
    fold->setAutoRaise(true);
    fold->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    fold->setArrowType(m_folded.contains(folder) ? Qt::RightArrow : Qt::DownArrow);
    fold->setToolTip(tr("Show or hide these"));
    connect(fold, &QToolButton::clicked, this, [this, folder] {
        if (!m_folded.remove(folder))
            m_folded.insert(folder);
        m_folds[folder]->setArrowType(m_folded.contains(folder) ? Qt::RightArrow : Qt::DownArrow);
        filter();
    });
    return fold;
}

bool PropertiesPanel::rename(const QString& name)
{
    if (m_nodes.size() != 1 || !m_workspace)
        return true;
    const QString problem = tryEdit(*m_workspace, [&] {
        return name == m_nodes.front()->getName() || m_workspace->edit([&](Edits& edits) {
            return edits.renameNode(m_nodes.front(), name.toStdString());
        });
    });
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    if (problem.isEmpty())
        m_name->showText(name);
    return problem.isEmpty();
}

void PropertiesPanel::filter()
{
    m_filter->setVisible(m_rows.size() > kManyRows || !m_filter->text().isEmpty());
    const QString wanted = m_filter->text();
    for (PropertyRow* const row : m_rows) {
        const Property& property = row->property();
        const bool isFound = property.name.contains(wanted, Qt::CaseInsensitive) ||
                             property.style.label.contains(wanted, Qt::CaseInsensitive);
        // A search looks into folders that are shut.
        const bool isShut = wanted.isEmpty() && m_folded.contains(property.style.folder);
        row->setVisible(isFound && !isShut);
    }
}

} // namespace shading
