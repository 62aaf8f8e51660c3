#pragma once

#include <QKeySequence>
#include <QPoint>
#include <Qt>

class QWidget;

namespace shading {

// Events as they come from a mouse and a keyboard: through the windows, with focus, shortcuts,
// popups and grabs as for a person. Each returns when the program has dealt with it.

/// What is held down meanwhile: modifiers, and a key such as X.
struct Held {
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    int key = 0; ///< 0: none.
};

/// Runs the event loop until it has nothing to do, timers of no length included.
void settle();

/// At a point of the widget.
void click(QWidget& widget, const QPoint& at, Qt::MouseButton button, const Held& held);
void doubleClick(QWidget& widget, const QPoint& at, const Held& held);
/// Press, fifteen moves, release. Both points are the widget's.
void drag(QWidget& widget, const QPoint& from, const QPoint& to, const Held& held);
/// From a point of a widget to one of another widget of the same window.
void drag(QWidget& widget, const QPoint& from, QWidget& other, const QPoint& to, const Held& held);

/// To what has the focus. The keys of a sequence come one after another.
void press(const QKeySequence& keys);
void type(const QString& text);

} // namespace shading
