#include "window/gestures/clipboard.h"

#include "edits/pasteOptions.h"
#include "window/canvas/canvas.h"
#include "window/files/progressBox.h"
#include "window/workspace/workspace.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace shading {

namespace {

/// What other programs may know the text by.
const QString kMimeType = QStringLiteral("application/mtlx+xml");

bool refuseNone(Desk& desk, const QString& what)
{
    if (!desk.workspace.selection().empty())
        return false;
    desk.workspace.refuse(what, QObject::tr("no node is selected"));
    return true;
}

bool report(Desk& desk, const std::vector<SaveProblem>& problems)
{
    if (!problems.empty())
        desk.workspace.refuse(QString::fromStdString(problems.front().path),
                              QString::fromStdString(problems.front().reason));
    return problems.empty();
}

} // namespace

bool copySelection(Desk& desk)
{
    if (refuseNone(desk, QObject::tr("copy")))
        return false;
    Session& session = desk.workspace.session();
    std::vector<SaveProblem> problems;
    ProgressBox box(*desk.canvas.window(), QObject::tr("Copying"));
    if (!session.copy(desk.workspace.selection(), problems, box.tell()))
        return report(desk, problems);
    const QByteArray bytes = QByteArray::fromStdString(session.copied());
    auto* const data = new QMimeData;
    data->setText(QString::fromUtf8(bytes));
    data->setData(kMimeType, bytes);
    QGuiApplication::clipboard()->setMimeData(data);
    const auto count = desk.workspace.selection().size();
    desk.workspace.say(
        count == 1 ? QObject::tr("Copied %1")
                         .arg(QString::fromUtf8(desk.workspace.selection().front()->getName()))
                   : QObject::tr("Copied %1 nodes").arg(count));
    return true;
}

bool cutSelection(Desk& desk)
{
    if (!copySelection(desk))
        return false;
    const std::vector<NodePtr> nodes = desk.workspace.selection();
    return desk.workspace.editAs(
        nodes.size() == 1 ? QObject::tr("Cut %1").arg(QString::fromUtf8(nodes.front()->getName()))
                          : QObject::tr("Cut %1 nodes").arg(nodes.size()),
        [&](Edits& edits) { return edits.deleteNodes(nodes, false); });
}

bool canPaste()
{
    return QGuiApplication::clipboard()->text().contains(QStringLiteral("<materialx"),
                                                         Qt::CaseInsensitive);
}

bool paste(Desk& desk, bool withIncoming)
{
    Workspace& workspace = desk.workspace;
    if (!canPaste()) {
        workspace.refuse(QObject::tr("paste"), QObject::tr("there are no nodes on the clipboard"));
        return false;
    }
    const std::string text = QGuiApplication::clipboard()->text().toStdString();
    const QPointF place = placeOfMouse(desk);
    PasteOptions options;
    options.at = positionAt(isSnapping() && desk.mouse ? snapped(place) : place);
    options.isMiddleAt = !desk.mouse;
    options.isInner = !withIncoming;
    std::vector<NodePtr> made;
    if (!workspace.edit(
            [&](Edits& edits) { return edits.paste(workspace.compound(), text, options, made); }))
        return false;
    workspace.select(made);
    return true;
}

bool duplicate(Desk& desk)
{
    if (refuseNone(desk, QObject::tr("duplicate")))
        return false;
    std::vector<NodePtr> made;
    std::vector<SaveProblem> problems;
    ProgressBox box(*desk.canvas.window(), QObject::tr("Duplicating"));
    if (!desk.workspace.session().duplicate(desk.workspace.selection(), {}, made, problems,
                                            box.tell()))
        return report(desk, problems);
    desk.workspace.select(made);
    return true;
}

} // namespace shading
