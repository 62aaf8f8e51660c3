#pragma once

#include "window/drive/inputEvents.h"

#include <QPoint>
#include <QString>
#include <QStringList>

class QWidget;

namespace shading {

class MainWindow;

/// A place in the window that a script names.
struct Target {
    QWidget* widget = nullptr; ///< Not owned.
    QPoint at;                 ///< A point of it.
};

/// Finds `port:PATH` (with `:in` or `:out` behind it where both exist), `node:PATH`,
/// `wire:PATH->PATH`, `bar:PATH`, `empty`, `at:X,Y` and `widget:OBJECTNAME`; what is out of sight
/// on the canvas is brought into it. False, with the problem, when it is not there.
bool findTarget(MainWindow& window, const QString& word, Target& target, QString& problem);

/// Reads words such as `Ctrl`, `Shift+Alt`, `X`. False, with the problem, for another one.
bool readHeld(const QStringList& words, Held& held, QString& problem);

} // namespace shading
