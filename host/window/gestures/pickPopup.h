#pragma once

#include <QFrame>
#include <QString>
#include <functional>
#include <vector>

class QLineEdit;
class QTreeWidget;

namespace shading {

/// A line to type into, and below it what fits: shown over a widget until something is chosen, by
/// Enter or a click, or until Esc, Tab or a click elsewhere. Then it deletes itself.
class PickPopup : public QFrame {
    Q_OBJECT

public:
    struct Item {
        QString text;
        QString detail; ///< Beside it, paler.
        QString help = {};
    };
    /// What fits the text, the best first.
    using Find = std::function<std::vector<Item>(const QString& text)>;

    /// A child of the widget around the other one, so that no key of that works in it.
    PickPopup(QWidget& over, const QString& what, Find find);

    /// With a corner at that pixel of the widget, where there is room.
    void popUp(const QPoint& pixel);
    int count() const;

Q_SIGNALS:
    /// The row among those that were found last. The text is gone by then.
    void chosen(int row);
    void cancelled();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void fill();
    void choose();
    void step(int rows);
    void close(bool isChosen);

    QWidget& m_over;
    Find m_find;
    QLineEdit* m_line; ///< Owned by this widget, as the list.
    QTreeWidget* m_list;
    bool m_isClosed = false;
};

} // namespace shading
