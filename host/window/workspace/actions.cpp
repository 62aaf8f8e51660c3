#include "window/workspace/actions.h"

#include <QAction>
#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QStringList>
#include <QWidget>
#include <algorithm>

namespace shading {

namespace {

const QString kKeysGroup = QStringLiteral("keys/");

QList<QKeySequence> readKeys(const QString& id, const QList<QKeySequence>& defaults)
{
    const QVariant value = QSettings().value(kKeysGroup + id);
    if (!value.isValid())
        return defaults;
    QList<QKeySequence> keys;
    for (const QString& text : value.toStringList())
        keys.append(QKeySequence(text, QKeySequence::PortableText));
    return keys;
}

} // namespace

Actions::Actions(QObject* parent) : QObject(parent) {}

Actions::Added& Actions::Added::onCanvas()
{
    m_entry.scope = Scope::Canvas;
    m_entry.action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    return *this;
}

Actions::Added& Actions::Added::when(std::function<bool()> isEnabled)
{
    m_entry.isEnabled = std::move(isEnabled);
    return *this;
}

Actions::Added& Actions::Added::checkedWhen(std::function<bool()> isChecked)
{
    m_entry.isChecked = std::move(isChecked);
    m_entry.action->setCheckable(true);
    return *this;
}

Actions::Added& Actions::Added::group()
{
    m_entry.startsGroup = true;
    return *this;
}

Actions::Added& Actions::Added::help(const QString& text)
{
    m_entry.action->setStatusTip(text);
    return *this;
}

Actions::Added Actions::add(const QString& id,
                            const QString& menu,
                            const QString& text,
                            const QList<QKeySequence>& keys,
                            std::function<void()> run)
{
    auto* const action = new QAction(text, this);
    action->setObjectName(id);
    action->setShortcuts(readKeys(id, keys));
    // Asked again: what was enabled when a menu was last shown may not be now.
    connect(action, &QAction::triggered, this, [this, id] {
        const Entry* const found = entry(id);
        if (!found->isEnabled || found->isEnabled())
            found->run();
        update();
    });
    m_entries.push_back({id, menu, keys, std::move(run), action});
    return Added(m_entries.back());
}

QAction* Actions::find(const QString& id) const
{
    const Entry* const found = entry(id);
    return found ? found->action : nullptr;
}

const Actions::Entry* Actions::entry(const QString& id) const
{
    for (const Entry& entry : m_entries) {
        if (entry.id == id)
            return &entry;
    }
    return nullptr;
}

void Actions::useIn(QWidget& canvas) const
{
    for (const Entry& entry : m_entries) {
        if (entry.scope == Scope::Canvas)
            canvas.addAction(entry.action);
    }
}

void Actions::fill(QMenuBar& bar, const QStringList& order) const
{
    QMap<QString, QMenu*> menus;
    const auto rank = [&order](const Entry* entry) {
        const qsizetype place = order.indexOf(entry->menu.split('/').first());
        return place < 0 ? order.size() : place;
    };
    std::vector<const Entry*> entries;
    for (const Entry& entry : m_entries) {
        if (!entry.menu.isEmpty())
            entries.push_back(&entry);
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [&rank](const Entry* a, const Entry* b) { return rank(a) < rank(b); });
    for (const Entry* const entry : entries) {
        QString path;
        QMenu* menu = nullptr;
        for (const QString& name : entry->menu.split('/')) {
            path += '/' + name;
            QMenu*& known = menus[path];
            if (!known) {
                known = menu ? menu->addMenu(name) : bar.addMenu(name);
                known->setObjectName("menu" + path);
                connect(known, &QMenu::aboutToShow, this, &Actions::update);
            }
            menu = known;
        }
        if (entry->startsGroup)
            menu->addSeparator();
        menu->addAction(entry->action);
    }
}

void Actions::fill(QMenu& menu, const QList<QString>& ids) const
{
    update();
    for (const QString& id : ids) {
        if (id.isEmpty())
            menu.addSeparator();
        else if (QAction* const action = find(id))
            menu.addAction(action);
    }
}

void Actions::update() const
{
    for (const Entry& entry : m_entries) {
        if (entry.isEnabled)
            entry.action->setEnabled(entry.isEnabled());
        if (entry.isChecked)
            entry.action->setChecked(entry.isChecked());
    }
}

void Actions::setKeys(const QString& id, const QList<QKeySequence>& keys)
{
    QStringList texts;
    for (const QKeySequence& key : keys)
        texts.append(key.toString(QKeySequence::PortableText));
    QSettings().setValue(kKeysGroup + id, texts);
    find(id)->setShortcuts(keys);
    Q_EMIT keysChanged();
}

void Actions::resetKeys(const QString& id)
{
    QSettings().remove(kKeysGroup + id);
    const Entry* const found = entry(id);
    found->action->setShortcuts(found->keys);
    Q_EMIT keysChanged();
}

const Actions::Entry* Actions::clash(const QString& id, const QKeySequence& key) const
{
    for (const Entry& entry : m_entries) {
        if (entry.id != id && entry.action->shortcuts().contains(key))
            return &entry;
    }
    return nullptr;
}

QString Actions::keysTable() const
{
    QString table = "| menu | action | keys |\n|---|---|---|\n";
    for (const Entry& entry : m_entries) {
        QStringList keys;
        for (const QKeySequence& key : entry.keys) {
            if (!key.isEmpty())
                keys.append('`' + key.toString(QKeySequence::PortableText) + '`');
        }
        QString text = entry.menu + "| " + entry.action->text();
        if (!keys.isEmpty())
            table += "| " + text.remove('&').replace("|", " |") + " | " + keys.join(", ") + " |\n";
    }
    return table;
}

QString Actions::keysText(const QList<QKeySequence>& keys)
{
    QStringList texts;
    for (const QKeySequence& key : keys)
        texts.append(key.toString(QKeySequence::NativeText));
    return texts.join(QStringLiteral(", "));
}

} // namespace shading
