#include "window/files/fileDialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

namespace shading {

namespace {

QMessageBox* makeBox(QWidget& window, const QString& name, const QString& text)
{
    auto* const box = new QMessageBox(&window);
    box->setObjectName(name);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    return box;
}

QFileDialog* makeChooser(QWidget& window, const QString& name, const QString& title)
{
    auto* const dialog = new QFileDialog(&window, title);
    dialog->setObjectName(name);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setNameFilters(
        {QObject::tr("Shading documents (*.mtlx)"), QObject::tr("All files (*)")});
    return dialog;
}

} // namespace

void askToSave(QWidget& window, const QString& name, std::function<void(SaveAnswer)> then)
{
    QMessageBox* const box =
        makeBox(window, "askToSave", QObject::tr("%1 has edits that are not saved.").arg(name));
    box->setInformativeText(QObject::tr("Without saving they are lost."));
    box->setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box->setDefaultButton(QMessageBox::Save);
    // On every desktop the same words and keys.
    const auto describe = [box](QMessageBox::StandardButton which, const char* id,
                                const QString& said) {
        box->button(which)->setObjectName(id);
        box->button(which)->setText(said);
    };
    describe(QMessageBox::Save, "save", QObject::tr("&Save"));
    describe(QMessageBox::Discard, "discard", QObject::tr("&Discard"));
    describe(QMessageBox::Cancel, "cancel", QObject::tr("Cancel"));
    QObject::connect(box, &QMessageBox::finished, &window, [run = std::move(then)](int answer) {
        run(answer == QMessageBox::Save      ? SaveAnswer::Save
            : answer == QMessageBox::Discard ? SaveAnswer::Discard
                                             : SaveAnswer::Cancel);
    });
    box->open();
}

void askToReplace(QWidget& window, const QString& path, std::function<void()> then)
{
    QMessageBox* const box = makeBox(
        window, "askToReplace",
        QObject::tr("%1 was changed since it was read or saved.").arg(QFileInfo(path).fileName()));
    box->setInformativeText(QObject::tr("If it is replaced, what others wrote is lost."));
    QPushButton* const replace = box->addButton(QObject::tr("Replace"), QMessageBox::AcceptRole);
    replace->setObjectName("replace");
    QPushButton* const cancel = box->addButton(QMessageBox::Cancel);
    cancel->setObjectName("cancel");
    box->setDefaultButton(cancel);
    QObject::connect(box, &QMessageBox::finished, &window, [box, replace, run = std::move(then)] {
        if (box->clickedButton() == replace)
            run();
    });
    box->open();
}

void chooseToOpen(QWidget& window,
                  const QString& folder,
                  std::function<void(const QStringList&)> then)
{
    QFileDialog* const dialog = makeChooser(window, "chooseToOpen", QObject::tr("Open"));
    dialog->setDirectory(folder);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    QObject::connect(dialog, &QFileDialog::filesSelected, &window, std::move(then));
    dialog->open();
}

void chooseToSave(QWidget& window, const QString& path, std::function<void(const QString&)> then)
{
    QFileDialog* const dialog = makeChooser(window, "chooseToSave", QObject::tr("Save As"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix("mtlx");
    dialog->setDirectory(QFileInfo(path).absolutePath());
    dialog->selectFile(QFileInfo(path).fileName());
    QObject::connect(
        dialog, &QFileDialog::finished, &window, [dialog, run = std::move(then)](int result) {
            const QStringList files = dialog->selectedFiles();
            run(result == QDialog::Accepted && !files.isEmpty() ? files.front() : QString());
        });
    dialog->open();
}

void tellProblem(QWidget& window, const QString& title, const QString& text)
{
    QMessageBox* const box = makeBox(window, "problem", title);
    box->setIcon(QMessageBox::Warning);
    box->setInformativeText(text);
    box->setStandardButtons(QMessageBox::Ok);
    box->button(QMessageBox::Ok)->setObjectName("ok");
    box->open();
}

} // namespace shading
