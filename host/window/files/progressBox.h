#pragma once

#include "base/progress.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>
#include <QString>

class QProgressBar;

namespace shading {

/// Lets the window live while one long work is done: the work tells how far it is, and then events
/// are handled. Once it lasts a dialog shows that, which can cancel it where it may; until then
/// what the user does waits.
class ProgressBox {
public:
    enum class Kind {
        Cancellable,
        Certain, ///< It is finished, whatever is wished.
    };

    /// The window is not owned and must outlive the work.
    ProgressBox(QWidget& window, QString title, Kind kind = Kind::Cancellable);
    ProgressBox(const ProgressBox&) = delete;
    ProgressBox& operator=(const ProgressBox&) = delete;
    ~ProgressBox();

    /// To be given to the work, which must end before this goes.
    Progress::Tell tell();
    bool isCancelled() const { return m_isCancelled; }
    /// To be called once, when the program begins, so that no single release of memory lasts.
    static void prepare();
    /// Some work is being done: what would change documents has to wait.
    static bool isBusy();

private:
    bool note(int permille);
    void show();

    QWidget& m_window;
    QString m_title;
    Kind m_kind;
    QElapsedTimer m_begun;
    QElapsedTimer m_handled; ///< Since events were handled last.
    QPointer<QDialog> m_dialog;
    QPointer<QProgressBar> m_bar;
    bool m_isCancelled = false;
};

} // namespace shading
