#pragma once

#include <QFrame>
#include <QRect>
#include <QString>
#include <functional>

class QLabel;
class QLineEdit;

namespace shading {

/// A line over the name of a thing on the canvas, to change it there. Enter takes the name; when it
/// is refused, the line stays open with the reason below. Esc leaves it as it was; a click
/// elsewhere takes it, if it may be. Then it deletes itself.
class NameEditor : public QFrame {
    Q_OBJECT

public:
    /// Where the name stands, in pixels of the widget; empty: nowhere any more.
    using Place = std::function<QRect()>;
    /// Gives the thing the name. Returns the reason why not, empty when it has it.
    using Rename = std::function<QString(const QString& name)>;

    /// A child of the widget around the other one.
    NameEditor(QWidget& over, const QString& name, Place place, Rename rename);
    void open();
    /// Goes where the name stands now.
    void follow();
    /// Leaves the name as it is.
    void close();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void take(bool isLast);

    QWidget& m_over;
    QString m_name;
    Place m_place;
    Rename m_rename;
    QLineEdit* m_line; ///< Owned by this widget, as the label.
    QLabel* m_reason;
    bool m_isClosed = false;
};

} // namespace shading
