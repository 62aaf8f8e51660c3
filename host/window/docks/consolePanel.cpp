#include "window/docks/consolePanel.h"

#include "window/docks/consoleInput.h"
#include "window/docks/consoleLog.h"
#include "window/workspace/workspace.h"

#include <QFileDialog>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QSaveFile>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace shading {

ConsolePanel::ConsolePanel(QWidget* parent)
    : Panel(parent),
      m_output(new QPlainTextEdit),
      m_input(new ConsoleInput(*this)),
      m_show(new QTimer(this))
{
    m_show->setSingleShot(true);
    m_show->setInterval(0);
    connect(m_show, &QTimer::timeout, this, &ConsolePanel::showEnd);
    m_output->setObjectName("console.output");
    m_output->setAccessibleName(tr("Commands and answers"));
    m_output->setReadOnly(true);
    m_output->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_output->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_input->setFont(m_output->font());
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(m_output, 1);
    auto* const line = new QHBoxLayout;
    line->addWidget(m_input, 1);
    m_run = addButton("console.run", tr("Run script..."), tr("Run the commands of a file"));
    m_save = addButton("console.save", tr("Save as script..."),
                       tr("Save the commands that do all edits"));
    line->addWidget(m_run);
    line->addWidget(m_save);
    column->addLayout(line);
    connect(m_run, &QToolButton::clicked, this, &ConsolePanel::chooseScript);
    connect(m_save, &QToolButton::clicked, this, &ConsolePanel::chooseFileForScript);
    connect(m_input, &ConsoleInput::entered, this, [this](const QString& text) {
        if (m_log)
            m_log->run(text);
    });
    setEnabled(false);
}

ConsolePanel::~ConsolePanel()
{
    // The text may be gone before this is.
    setWorkspace(nullptr);
}

QToolButton* ConsolePanel::addButton(const QString& id, const QString& text, const QString& help)
{
    auto* const button = new QToolButton;
    button->setObjectName(id);
    button->setText(text);
    button->setToolTip(help);
    return button;
}

void ConsolePanel::setWorkspace(Workspace* workspace)
{
    if (m_log)
        disconnect(m_log, nullptr, m_show, nullptr);
    m_workspace = workspace;
    m_log = workspace ? &ConsoleLog::of(*workspace) : nullptr;
    // Without a document it makes an empty one of its own.
    m_output->setDocument(m_log ? &m_log->text() : nullptr);
    m_output->document()->setDefaultFont(m_output->font());
    m_input->setWorkspace(workspace);
    setEnabled(workspace != nullptr);
    if (m_log)
        connect(m_log, &ConsoleLog::said, m_show, qOverload<>(&QTimer::start));
    showEnd();
}

void ConsolePanel::focusInput()
{
    m_input->setFocus(Qt::ShortcutFocusReason);
}

void ConsolePanel::showEnd()
{
    QScrollBar* const bar = m_output->verticalScrollBar();
    bar->setValue(bar->maximum());
}

bool ConsolePanel::saveScript(const QString& path)
{
    QSaveFile file(path);
    const QByteArray script = m_log->script().toUtf8();
    const bool isSaved =
        file.open(QIODevice::WriteOnly) && file.write(script) == script.size() && file.commit();
    if (!isSaved)
        m_workspace->refuse(path, file.errorString());
    else
        m_workspace->say(tr("The script is saved: %1").arg(path));
    return isSaved;
}

QFileDialog* ConsolePanel::openDialog(const QString& title)
{
    const QString path = QString::fromStdString(m_workspace->session().path());
    auto* const dialog = new QFileDialog(this, title, QFileInfo(path).absolutePath());
    dialog->setObjectName("chooseScript");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    // It is about the document that is in front now.
    connect(m_log, &QObject::destroyed, dialog, &QDialog::reject);
    dialog->open();
    return dialog;
}

void ConsolePanel::chooseScript()
{
    QFileDialog* const dialog = openDialog(tr("Run a script"));
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, m_log,
            [log = m_log](const QString& path) { log->runScript(path); });
}

void ConsolePanel::chooseFileForScript()
{
    QFileDialog* const dialog = openDialog(tr("Save the edits as a script"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    connect(dialog, &QFileDialog::fileSelected, this, [this, log = m_log](const QString& path) {
        if (log == m_log)
            saveScript(path);
    });
}

} // namespace shading
