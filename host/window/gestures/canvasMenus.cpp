#include "window/gestures/canvasMenus.h"

#include "document/backdrops.h"
#include "window/canvas/canvas.h"
#include "window/gestures/connecting.h"
#include "window/gestures/gestures.h"
#include "window/workspace/actions.h"
#include "window/workspace/workspace.h"

#include <QMenu>

namespace shading {

namespace {

const QString kLine; ///< Between groups.

Desk& deskOf(const MenuPlace& place)
{
    return place.gestures.desk();
}

QString nameOf(ZEL::Port& port)
{
    return QString::fromUtf8(port.getName());
}

void addSearch(QMenu& menu, const MenuPlace& place, const NodeWish& wish)
{
    Desk* const desk = &deskOf(place);
    menu.addAction(wish.wire ? QObject::tr("Add a Node for It...") : QObject::tr("&Add Node..."),
                   &desk->canvas, [desk, wish] { desk->search(wish); });
}

void fillForEmpty(QMenu& menu, const MenuPlace& place)
{
    addSearch(menu, place, {place.place, {}});
    place.actions.fill(menu, {kLine, "edit.paste", "edit.pasteWires", "edit.selectAll", kLine,
                              "view.all", "view.selection", "canvas.cut", "canvas.snap", kLine,
                              "canvas.leave", "view.back", "view.forward"});
}

void fillForNode(QMenu& menu, const MenuPlace& place)
{
    place.actions.fill(menu, {"canvas.enter",      "edit.rename",
                              "canvas.fold",       kLine,
                              "edit.cut",          "edit.copy",
                              "edit.duplicate",    "edit.delete",
                              "edit.deleteOnly",   kLine,
                              "canvas.group",      "canvas.ungroup",
                              "canvas.backdrop",   kLine,
                              "canvas.wire",       "canvas.unwire",
                              "canvas.insert",     "canvas.upstream",
                              "canvas.downstream", kLine,
                              "canvas.arrange"});
    QMenu* const align = menu.addMenu(QObject::tr("A&lign"));
    place.actions.fill(*align,
                       {"align.left", "align.centre", "align.right", "align.top", "align.middle",
                        "align.bottom", kLine, "distribute.across", "distribute.down"});
}

/// Goes where the port's connections lead.
void addGoing(QMenu& menu, const MenuPlace& place, const PortPtr& port, const QString& text)
{
    Desk* const desk = &deskOf(place);
    menu.addAction(text, &desk->canvas, [desk, port] { goTo(*desk, *port); });
}

void fillForWire(QMenu& menu, const MenuPlace& place)
{
    Desk* const desk = &deskOf(place);
    const Scene& scene = *desk->canvas.scene();
    const SceneWire& wire = scene.wires()[static_cast<std::size_t>(place.hit.wire)];
    const PortPtr source = scene.port(wire.source).port;
    const PortPtr target = scene.port(wire.target).port;
    if (source)
        addGoing(menu, place, source, QObject::tr("Go to &Source"));
    if (target)
        addGoing(menu, place, target, QObject::tr("Go to &Target"));
    if (!source || !target)
        return;
    menu.addSeparator();
    menu.addAction(QObject::tr("&Disconnect"), &desk->canvas, [desk, source, target] {
        desk->workspace.edit([&](Edits& edits) { return edits.disconnect(source, target); });
    });
    addSearch(menu, place, {place.place, LooseWire{source, true}});
}

void fillForInnerPort(QMenu& menu, const MenuPlace& place, const PortPtr& port, int row, int count)
{
    Desk* const desk = &deskOf(place);
    CanvasCommands* const commands = &place.gestures.commands();
    const auto move = [&](const QString& text, int to) {
        QAction* const action = menu.addAction(text, &desk->canvas, [desk, port, to] {
            desk->workspace.edit([&](Edits& edits) { return edits.movePort(port, to); });
        });
        action->setEnabled(to >= 1 && to <= count);
    };
    menu.addSeparator();
    menu.addAction(QObject::tr("&Rename..."), &desk->canvas, [commands, port] {
        commands->selectPort(port);
        commands->rename();
    });
    move(QObject::tr("Move &Up"), row);
    move(QObject::tr("Move Dow&n"), row + 2);
    menu.addAction(QObject::tr("De&lete Port"), &desk->canvas, [desk, port] {
        desk->workspace.edit([&](Edits& edits) { return edits.deletePort(port); });
    });
}

void fillForPort(QMenu& menu, const MenuPlace& place)
{
    Desk* const desk = &deskOf(place);
    const SceneEnd end = place.hit.end();
    const SceneBox& box = desk->canvas.scene()->boxes()[static_cast<std::size_t>(end.box)];
    const ScenePort& shown = desk->canvas.scene()->port(end);
    const PortPtr port = shown.port;
    if (!port)
        return;
    menu.addAction(QObject::tr("&Connect %1...").arg(nameOf(*port)), &desk->canvas,
                   [desk, port] { pickConnection(*desk, {port}); });
    addSearch(menu, place, {place.place, LooseWire{port, !shown.takes}});
    if (port->isConnected()) {
        menu.addAction(QObject::tr("&Disconnect..."), &desk->canvas,
                       [desk, port] { pickDisconnection(*desk, {port}); });
        menu.addAction(QObject::tr("Disconnect &All"), &desk->canvas, [desk, port] {
            desk->workspace.edit([&](Edits& edits) { return edits.disconnectAll(port); });
        });
        if (!shown.takes)
            menu.addAction(QObject::tr("&Move All Connections..."), &desk->canvas,
                           [desk, port] { pickReroute(*desk, port); });
        addGoing(menu, place, port->connectedTo()[0],
                 shown.takes ? QObject::tr("Go to &Source") : QObject::tr("Go to &Target"));
    }
    if (box.isBar())
        fillForInnerPort(menu, place, port, end.port, static_cast<int>(box.ports.size()));
    if (!box.isNode())
        return;
    menu.addSeparator();
    fillForNode(*menu.addMenu(QString::fromUtf8(box.node->getName())), place);
}

void fillForBackdrop(QMenu& menu, const MenuPlace& place)
{
    Desk* const desk = &deskOf(place);
    const BackdropPtr backdrop =
        desk->canvas.scene()->backdrops()[static_cast<std::size_t>(place.hit.backdrop)].backdrop;
    place.actions.fill(menu, {"edit.rename", "edit.delete", kLine});
    menu.addAction(QObject::tr("&Select What It Contains"), &desk->canvas,
                   [desk, backdrop] { desk->workspace.select(backdrop->nodes()); });
    const std::vector<NodePtr> selection = desk->workspace.selection();
    QAction* const take = menu.addAction(QObject::tr("&Contain the Selected Nodes"), &desk->canvas,
                                         [desk, backdrop, selection] {
                                             desk->workspace.edit([&](Edits& edits) {
                                                 return edits.setBackdropNodes(backdrop, selection);
                                             });
                                         });
    take->setEnabled(!selection.empty());
}

} // namespace

void fillCanvasMenu(QMenu& menu, const MenuPlace& place)
{
    const Desk& desk = deskOf(place);
    const Hit& hit = place.hit;
    if (hit.isWire()) {
        fillForWire(menu, place);
    } else if (hit.box >= 0 && hit.port >= 0) {
        fillForPort(menu, place);
    } else if (hit.kind == Hit::Kind::BarPlus) {
        const bool isInput = desk.canvas.scene()->boxes()[static_cast<std::size_t>(hit.box)].kind ==
                             SceneBox::Kind::InputBar;
        Desk* const owner = &deskOf(place);
        menu.addAction(QObject::tr("&Add Port..."), &owner->canvas,
                       [owner, isInput] { pickNewPort(*owner, isInput); });
    } else if (hit.box >= 0) {
        fillForNode(menu, place);
    } else if (hit.kind == Hit::Kind::BackdropTitle || hit.kind == Hit::Kind::BackdropEdge) {
        fillForBackdrop(menu, place);
    } else {
        fillForEmpty(menu, place);
    }
}

} // namespace shading
