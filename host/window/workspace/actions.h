#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;
class QSettings;
class QWidget;

namespace shading {

/// Everything that the window does on a word or a key: the menus, the key sheet and the settings
/// of the keys are made of this one table.
class Actions : public QObject {
    Q_OBJECT

public:
    /// Where the keys count.
    enum class Scope {
        Window, ///< Everywhere in the window.
        Canvas, ///< While the canvas has the focus: letters are free for text fields.
    };

    struct Entry {
        QString id;   ///< "edit.undo": what settings and tests call it. Used once.
        QString menu; ///< "&Edit", or "&Edit/&Align" for a menu in a menu. Empty: in none.
        QList<QKeySequence> keys; ///< Those that it has without settings.
        std::function<void()> run;
        QAction* action; ///< Owned by the table; has the text.
        Scope scope = Scope::Window;
        std::function<bool()> isEnabled = {}; ///< Empty: always.
        std::function<bool()> isChecked = {}; ///< Empty: it is nothing to check.
        bool startsGroup = false;             ///< A line stands above it in the menu.
    };

    /// What may be said of an action that is being added.
    class Added {
    public:
        explicit Added(Entry& entry) : m_entry(entry) {}
        Added& onCanvas();
        Added& when(std::function<bool()> isEnabled);
        Added& checkedWhen(std::function<bool()> isChecked);
        Added& group();
        Added& help(const QString& text);

    private:
        Entry& m_entry;
    };

    explicit Actions(QObject* parent = nullptr);

    /// Adds an action at the end of its menu, with the keys of the settings if there are some. What
    /// is returned is valid until the next one is added.
    Added add(const QString& id,
              const QString& menu,
              const QString& text,
              const QList<QKeySequence>& keys,
              std::function<void()> run);
    /// Null when there is none.
    QAction* find(const QString& id) const;
    const std::vector<Entry>& entries() const { return m_entries; }
    /// Those of the canvas work in this widget from now on.
    void useIn(QWidget& canvas) const;

    /// Builds the menus in that order, and others behind them in the order in which they were first
    /// named. One without actions is left out.
    void fill(QMenuBar& bar, const QStringList& order = {}) const;
    /// The actions with these ids in a menu of their own; an empty id is a line.
    void fill(QMenu& menu, const QList<QString>& ids) const;
    /// Asks all what is enabled and checked. Called before a menu shows; and when the selection,
    /// the document or its history changed.
    void update() const;

    /// Changes the keys of an action, and keeps that in the settings.
    void setKeys(const QString& id, const QList<QKeySequence>& keys);
    void resetKeys(const QString& id);
    /// The action that has the key where that of the id would count too; null when it is free.
    const Entry* clash(const QString& id, const QKeySequence& key) const;
    /// Menu, action and the keys without settings, of all that have keys: a table in Markdown.
    QString keysTable() const;
    /// "Ctrl+Shift+Z, Ctrl+Y"
    static QString keysText(const QList<QKeySequence>& keys);

Q_SIGNALS:
    void keysChanged();

private:
    const Entry* entry(const QString& id) const;

    std::vector<Entry> m_entries;
};

} // namespace shading
