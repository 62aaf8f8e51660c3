#include "window/files/recoveryKeeper.h"

#include "window/documentView.h"
#include "window/files/fileDialogs.h"
#include "window/files/progressBox.h"
#include "window/files/recoveryDialog.h"
#include "window/mainWindow.h"

#include <algorithm>

namespace shading {

RecoveryKeeper::RecoveryKeeper(MainWindow& window, std::string folder)
    : QObject(&window),
      m_window(window),
      m_folder(std::move(folder))
{
}

void RecoveryKeeper::keep(DocumentView* view)
{
    m_kept[view] = std::make_unique<Recovery>(view->workspace().session(), m_folder);
    connect(&view->workspace(), &Workspace::fileChanged, this, [this, view] {
        const auto kept = m_kept.find(view);
        if (kept != m_kept.end())
            kept->second->update();
    });
}

void RecoveryKeeper::forget(DocumentView* view)
{
    m_kept.erase(view);
}

void RecoveryKeeper::recover(const Orphan& orphan)
{
    std::vector<Message> messages;
    std::unique_ptr<Session> session;
    {
        ProgressBox box(m_window, tr("Recovering %1").arg(QString::fromStdString(orphan.document)));
        OpenOptions options;
        options.progress = box.tell();
        session = shading::recover(orphan, m_window.environment(), options, messages);
        if (box.isCancelled())
            return; // It is offered again.
    }
    QStringList errors;
    for (const Message& message : messages) {
        if (message.isError)
            errors.append(QString::fromStdString(message.text));
    }
    if (!errors.isEmpty())
        tellProblem(m_window, QString::fromStdString(orphan.document), errors.join('\n'));
    if (!session)
        return;
    m_window.addDocument(std::move(session), std::move(messages));
    // What could be recovered is kept anew by now; the rest somebody may still look into.
    if (errors.isEmpty())
        discard(orphan);
}

bool RecoveryKeeper::offer()
{
    const std::vector<Orphan> found = orphans();
    if (found.empty())
        return false;
    auto* const dialog = new RecoveryDialog(found, &m_window);
    connect(dialog, &RecoveryDialog::recovers, this, &RecoveryKeeper::recover);
    connect(dialog, &RecoveryDialog::discards, this, [](const Orphan& orphan) { discard(orphan); });
    dialog->open();
    return true;
}

} // namespace shading
