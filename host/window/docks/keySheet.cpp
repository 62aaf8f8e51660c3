#include "window/docks/keySheet.h"

#include "window/workspace/actions.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace shading {

namespace {

constexpr int kIdRole = Qt::UserRole;

/// What the mouse does on the canvas.
const struct {
    const char* what;
    const char* how;
} kMouse[] = {
    {"Add a node", "double click an empty place"},
    {"Select", "click; Shift adds, Ctrl toggles; drag a rectangle"},
    {"Select all that feeds a node", "Shift+Alt and click"},
    {"Select all that a node feeds", "Ctrl+Alt and click"},
    {"Move", "drag a node; with it go the other selected ones"},
    {"Insert into a wire", "drop an unconnected node on it; Alt suspends that"},
    {"Connect", "drag from port to port; or click one, then the other"},
    {"Connect to any port that fits", "drop the wire on the node's body"},
    {"Add a node to a wire", "drop the wire in an empty place"},
    {"Rewire", "grab a wire near one end and drag it"},
    {"Take a wire off", "grab it near one end and drop it in an empty place"},
    {"Move all wires of an output", "Ctrl and drag from it"},
    {"Cut wires", "X and drag across them"},
    {"Enter a compound", "double click its badge"},
    {"Move the ports of a compound", "drag them along their bar"},
    {"Make a port of a compound", "drop a wire on the bar's +"},
    {"Move a backdrop with what is on it", "drag its title"},
    {"Pan", "middle button and drag; Space and drag; Alt and drag; right button and drag"},
    {"Zoom", "wheel; Ctrl and wheel where two fingers scroll"},
    {"Menu", "right click"},
    {"Change a number", "drag over it; Shift is finer, Ctrl coarser"},
};

QString plain(QString text)
{
    return text.remove('&').replace('/', QLatin1String(" / "));
}

} // namespace

KeySheet::KeySheet(Actions& actions, QWidget* parent)
    : QDialog(parent),
      m_actions(actions),
      m_search(new QLineEdit),
      m_tree(new QTreeWidget),
      m_edit(new QKeySequenceEdit),
      m_message(new QLabel)
{
    setObjectName("keys");
    setWindowTitle(tr("Keys and mouse"));
    resize(620, 640);
    addParts();
    fill();
    connect(&m_actions, &Actions::keysChanged, this, &KeySheet::fill);
    connect(m_search, &QLineEdit::textChanged, this, &KeySheet::filter);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &KeySheet::choose);
    choose();
}

void KeySheet::addParts()
{
    auto* const column = new QVBoxLayout(this);
    m_search->setObjectName("keys.search");
    m_search->setPlaceholderText(tr("Search actions and keys"));
    m_search->setAccessibleName(m_search->placeholderText());
    m_search->setClearButtonEnabled(true);
    column->addWidget(m_search);
    m_tree->setObjectName("keys.tree");
    m_tree->setAccessibleName(tr("Actions and their keys"));
    m_tree->setColumnCount(2);
    m_tree->setHeaderLabels({tr("Action"), tr("Keys")});
    m_tree->header()->resizeSection(0, 300);
    m_tree->setUniformRowHeights(true);
    column->addWidget(m_tree, 1);
    auto* const line = new QHBoxLayout;
    m_edit->setObjectName("keys.edit");
    m_edit->setAccessibleName(tr("Press the new keys"));
    m_edit->setToolTip(m_edit->accessibleName());
    line->addWidget(m_edit, 1);
    const auto addButton = [&](const char* id, const QString& text, void (KeySheet::*run)()) {
        auto* const button = new QPushButton(text);
        button->setObjectName(id);
        button->setAutoDefault(false);
        line->addWidget(button);
        connect(button, &QPushButton::clicked, this, run);
    };
    addButton("keys.set", tr("Set"), &KeySheet::setKey);
    addButton("keys.reset", tr("Reset"), &KeySheet::resetKey);
    addButton("keys.resetAll", tr("Reset all"), &KeySheet::resetAll);
    column->addLayout(line);
    m_message->setObjectName("keys.message");
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    column->addWidget(m_message);
}

void KeySheet::fill()
{
    const QString before = chosen();
    m_tree->clear();
    QMap<QString, QTreeWidgetItem*> groups;
    QTreeWidgetItem* current = nullptr;
    for (const Actions::Entry& entry : m_actions.entries()) {
        const QString title = entry.menu.isEmpty() ? tr("Without a menu") : plain(entry.menu);
        QTreeWidgetItem*& group = groups[title];
        if (!group)
            group = new QTreeWidgetItem(m_tree, {title});
        auto* const item = new QTreeWidgetItem(
            group, {plain(entry.action->text()), Actions::keysText(entry.action->shortcuts())});
        item->setData(0, kIdRole, entry.id);
        item->setToolTip(0, entry.action->statusTip());
        if (entry.action->shortcuts() != entry.keys) {
            QFont font = item->font(1);
            font.setBold(true);
            item->setFont(1, font);
        }
        if (entry.id == before)
            current = item;
    }
    addMouse();
    m_tree->expandAll();
    m_tree->setCurrentItem(current);
    filter();
}

void KeySheet::addMouse()
{
    auto* const group = new QTreeWidgetItem(m_tree, {tr("Mouse")});
    for (const auto& [what, how] : kMouse) {
        auto* const item = new QTreeWidgetItem(group, {QString(what), QString(how)});
        item->setToolTip(1, how);
    }
}

void KeySheet::filter()
{
    const QString wanted = m_search->text().trimmed();
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* const group = m_tree->topLevelItem(i);
        bool hasAny = false;
        for (int j = 0; j < group->childCount(); ++j) {
            QTreeWidgetItem* const item = group->child(j);
            const bool isFound = item->text(0).contains(wanted, Qt::CaseInsensitive) ||
                                 item->text(1).contains(wanted, Qt::CaseInsensitive);
            item->setHidden(!isFound);
            hasAny = hasAny || isFound;
        }
        group->setHidden(!hasAny);
    }
}

QString KeySheet::chosen() const
{
    const QTreeWidgetItem* const item = m_tree->currentItem();
    return item ? item->data(0, kIdRole).toString() : QString();
}

void KeySheet::choose()
{
    const QString id = chosen();
    m_warned.clear();
    m_message->clear();
    m_edit->setEnabled(!id.isEmpty());
    QAction* const action = m_actions.find(id);
    m_edit->setKeySequence(action ? action->shortcut() : QKeySequence());
}

/// The key takes the place of all that the action had; no key: it has none.
void KeySheet::setKey()
{
    const QString id = chosen();
    const QKeySequence key = m_edit->keySequence();
    if (id.isEmpty())
        return;
    const Actions::Entry* const other = key.isEmpty() ? nullptr : m_actions.clash(id, key);
    if (other && m_warned != key.toString()) {
        m_warned = key.toString();
        m_message->setText(
            tr("%1 is the key of \"%2\": press Set again to take it from there")
                .arg(key.toString(QKeySequence::NativeText), plain(other->action->text())));
        return;
    }
    if (other) {
        QList<QKeySequence> left = other->action->shortcuts();
        left.removeAll(key);
        m_actions.setKeys(other->id, left);
    }
    m_warned.clear();
    m_actions.setKeys(id, key.isEmpty() ? QList<QKeySequence>() : QList<QKeySequence>{key});
    m_message->setText(tr("It is remembered."));
}

void KeySheet::resetKey()
{
    if (const QString id = chosen(); !id.isEmpty())
        m_actions.resetKeys(id);
}

void KeySheet::resetAll()
{
    QStringList ids;
    for (const Actions::Entry& entry : m_actions.entries())
        ids.append(entry.id);
    for (const QString& id : ids)
        m_actions.resetKeys(id);
}

} // namespace shading
