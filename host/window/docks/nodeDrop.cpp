#include "window/docks/nodeDrop.h"

#include "window/canvas/canvas.h"
#include "window/docks/libraryTree.h"
#include "window/documentView.h"
#include "window/gestures/gestures.h"
#include "window/gestures/nodeSearch.h"

#include <QDropEvent>
#include <QMimeData>
#include <algorithm>

namespace shading {

namespace {

bool makeNodeAt(DocumentView& view, const QString& name, const QPointF& place)
{
    const NodeCatalogue catalogue(view.workspace().document());
    const auto found = std::find_if(catalogue.entries().begin(), catalogue.entries().end(),
                                    [&](const auto& entry) { return entry.name() == name; });
    return found != catalogue.entries().end() &&
           createNode(view.gestures().desk(), *found, {place, {}});
}

} // namespace

void NodeDrop::acceptIn(DocumentView& view)
{
    if (!view.canvas().findChild<NodeDrop*>(QString(), Qt::FindDirectChildrenOnly))
        new NodeDrop(view);
}

NodeDrop::NodeDrop(DocumentView& view) : QObject(&view.canvas()), m_view(view)
{
    view.canvas().setAcceptDrops(true);
    view.canvas().installEventFilter(this);
}

bool NodeDrop::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        break;
    default:
        return QObject::eventFilter(watched, event);
    }
    auto* const drop = static_cast<QDropEvent*>(event);
    if (!drop->mimeData()->hasFormat(kNodeTypeMime))
        return QObject::eventFilter(watched, event);
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop) {
        const QString name = QString::fromUtf8(drop->mimeData()->data(kNodeTypeMime));
        makeNodeAt(m_view, name, m_view.canvas().toScene(drop->position()));
        m_view.canvas().setFocus(Qt::MouseFocusReason);
    }
    return true;
}

bool makeNode(DocumentView& view, const QString& name)
{
    const QPointF middle = QRectF(view.canvas().rect()).center();
    return makeNodeAt(view, name, view.canvas().toScene(middle));
}

} // namespace shading
