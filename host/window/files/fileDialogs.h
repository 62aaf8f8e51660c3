#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace shading {

// Questions about files. Each shows a dialog and returns; the function is called with the answer,
// unless the window goes before. Nothing given is owned.

enum class SaveAnswer {
    Save,
    Discard,
    Cancel,
};

/// What becomes of what is not saved in a file of that name.
void askToSave(QWidget& window, const QString& name, std::function<void(SaveAnswer)> then);
/// Whether a file that somebody changed is replaced. Called only when it is.
void askToReplace(QWidget& window, const QString& path, std::function<void()> then);
/// Which documents to open. Not called without one.
void chooseToOpen(QWidget& window,
                  const QString& folder,
                  std::function<void(const QStringList&)> then);
/// Which file to save into; the dialog asks before it gives one that is there. `then` is called
/// with an empty path when there is none.
void chooseToSave(QWidget& window, const QString& path, std::function<void(const QString&)> then);
/// Says what is wrong.
void tellProblem(QWidget& window, const QString& title, const QString& text);

} // namespace shading
