#include "window/canvas/pictureActions.h"

#include "window/canvas/canvas.h"
#include "window/canvas/minimap.h"
#include "window/canvas/pictureExport.h"
#include "window/documentView.h"
#include "window/workspace/actions.h"

#include <QFileDialog>
#include <QFileInfo>

namespace shading {

namespace {

QString suggestedFile(DocumentView& view)
{
    Workspace& workspace = view.workspace();
    const QFileInfo document(QString::fromStdString(workspace.session().path()));
    const QString name = workspace.compound()->getAsNode() == workspace.document().getRootNode()
                             ? document.completeBaseName()
                             : QString::fromUtf8(workspace.compound()->getName());
    return document.absolutePath() + '/' + name + ".svg";
}

void askAndExport(DocumentView& view, bool onlySelection)
{
    auto* const dialog = new QFileDialog(&view, Canvas::tr("Export a Picture"), suggestedFile(view),
                                         Canvas::tr("Pictures (*.svg *.png)"));
    dialog->setObjectName(QStringLiteral("exportDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("svg"));
    // The view owns the dialog: it closes with the document.
    QObject::connect(dialog, &QFileDialog::fileSelected, &view,
                     [&view, onlySelection](const QString& file) {
                         QString problem;
                         if (exportPicture(view.canvas(), onlySelection, file, problem))
                             view.workspace().say(Canvas::tr("Written: %1").arg(file));
                         else
                             view.workspace().refuse(file, problem);
                     });
    dialog->open();
}

} // namespace

void addPictureActions(Actions& actions, const std::function<DocumentView*()>& front)
{
    const auto isShown = [front] { return front() && front()->canvas().scene(); };
    actions
        .add("file.export", "&File", "&Export a Picture...", {},
             [front] { askAndExport(*front(), false); })
        .when(isShown)
        .group()
        .help(Canvas::tr("Write what the canvas shows as SVG or PNG"));
    actions
        .add("file.exportSelection", "&File", "Export a Picture of the Se&lection...", {},
             [front] { askAndExport(*front(), true); })
        .when([front, isShown] { return isShown() && !front()->workspace().selection().empty(); });
    actions
        .add("view.minimap", "&View", "&Minimap", {},
             [front] {
                 Minimap::setWanted(!Minimap::isWanted());
                 if (front())
                     front()->minimap().follow();
             })
        .checkedWhen([] { return Minimap::isWanted(); });
}

} // namespace shading
