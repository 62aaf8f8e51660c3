#include "window/gestures/nodeSearch.h"

#include "document/document.h"
#include "document/names.h"
#include "document/rules.h"
#include "draw/zelPictureStyle.h"
#include "window/canvas/canvas.h"
#include "window/gestures/pickPopup.h"
#include "window/workspace/workspace.h"

#include <QObject>
#include <QSettings>
#include <memory>

namespace shading {

namespace {

constexpr std::size_t kMostRecent = 8;
constexpr double kUsualWidth = 150; ///< Of a node, in pixels of the scene.
const QString kRecentKey = QStringLiteral("search/recent");

std::optional<NodeCatalogue::Filter> filterOf(const NodeWish& wish)
{
    if (!wish.wire)
        return {};
    return NodeCatalogue::Filter{typeNameOf(*wish.wire->port), wish.wire->seeksTarget};
}

/// A new port comes to lie where the wire ends.
QPointF cornerFor(const NodeWish& wish)
{
    if (!wish.wire)
        return wish.place;
    const double row = zelDraw::kBoxHeader + zelDraw::kRowHeight / 2.0;
    return wish.place - QPointF(wish.wire->seeksTarget ? 0 : kUsualWidth, row);
}

bool connectMade(Edits& edits, const HostNodePtr& node, const LooseWire& wire)
{
    const std::string type = typeNameOf(*wire.port);
    std::string problem;
    for (ZEL::Port* const port : wire.seeksTarget ? node->inputs() : node->outputs()) {
        const PortPtr own(port);
        if (typeNameOf(*port) == type)
            return wire.seeksTarget ? edits.connect(wire.port, own) : edits.connect(own, wire.port);
    }
    return false;
}

PickPopup::Item itemOf(const NodeCatalogue& catalogue, const NodeCatalogue::Hit& hit)
{
    const NodeCatalogue::Entry& entry = catalogue.entry(hit);
    const QString port = hit.port.empty() ? QString() : '.' + QString::fromStdString(hit.port);
    QString detail = entry.output;
    if (!entry.inputs.isEmpty() && hit.variants == 1)
        detail += QObject::tr(" of %1").arg(entry.inputs);
    if (hit.variants > 1)
        detail += QObject::tr(" and %1 more").arg(hit.variants - 1);
    if (!entry.category.isEmpty())
        detail += (detail.isEmpty() ? QString() : QStringLiteral(" · ")) + entry.category;
    return {entry.type + port, detail, entry.name()};
}

} // namespace

bool createNode(Desk& desk, const NodeCatalogue::Entry& entry, const NodeWish& wish)
{
    Workspace& workspace = desk.workspace;
    const CompoundPtr compound = workspace.compound();
    const std::string name = uniqueName(*compound, entry.stem());
    const QPointF corner = isSnapping() ? snapped(cornerFor(wish)) : cornerFor(wish);
    HostNodePtr created;
    const bool isMade = workspace.editAs(
        QObject::tr("Create %1").arg(QString::fromStdString(name)), [&](Edits& edits) {
            const bool isThere = entry.definition
                                     ? edits.createNode(compound, entry.definition, name, created)
                                     : edits.createGraph(compound, name, created);
            return isThere && edits.moveNode(created.get(), positionAt(corner)) &&
                   (!wish.wire || connectMade(edits, created, *wish.wire));
        });
    if (!isMade)
        return false;
    noteRecentNode(entry.name());
    workspace.select({created.get()});
    return true;
}

PickPopup* searchNode(Desk& desk, const NodeWish& wish)
{
    struct Search {
        NodeCatalogue catalogue;
        std::vector<NodeCatalogue::Hit> hits;
    };
    const auto search =
        std::make_shared<Search>(Search{NodeCatalogue(desk.workspace.document()), {}});
    const auto filter = filterOf(wish);
    auto* const popup =
        new PickPopup(desk.canvas, QObject::tr("Add a node"), [=](const QString& text) {
            search->hits = search->catalogue.search(text, filter, recentNodes());
            std::vector<PickPopup::Item> items;
            for (const NodeCatalogue::Hit& hit : search->hits)
                items.push_back(itemOf(search->catalogue, hit));
            return items;
        });
    popup->setObjectName(QStringLiteral("search"));
    Desk* const place = &desk;
    QObject::connect(popup, &PickPopup::chosen, &desk.canvas, [=](int row) {
        const NodeCatalogue::Hit hit = search->hits[static_cast<std::size_t>(row)];
        createNode(*place, search->catalogue.entry(hit), wish);
    });
    popup->popUp(desk.canvas.toPixel(wish.place).toPoint());
    return popup;
}

std::vector<QString> recentNodes()
{
    std::vector<QString> names;
    for (const QString& name : QSettings().value(kRecentKey).toStringList())
        names.push_back(name);
    return names;
}

void noteRecentNode(const QString& name)
{
    QStringList names = QSettings().value(kRecentKey).toStringList();
    names.removeAll(name);
    names.prepend(name);
    while (static_cast<std::size_t>(names.size()) > kMostRecent)
        names.removeLast();
    QSettings().setValue(kRecentKey, names);
}

} // namespace shading
