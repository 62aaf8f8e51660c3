#include "window/gestures/canvasCommands.h"

#include "document/backdrops.h"
#include "document/document.h"
#include "document/names.h"
#include "document/rules.h"
#include "draw/zelPictureStyle.h"
#include "edits/positions.h"
#include "window/canvas/canvas.h"
#include "window/canvas/sceneBackdrops.h"
#include "window/gestures/connecting.h"
#include "window/gestures/nameEditor.h"
#include "window/workspace/workspace.h"

#include <QObject>
#include <algorithm>

namespace shading {

namespace {

Fold nextFold(Fold fold)
{
    switch (fold) {
    case Fold::Brief:
        return Fold::All;
    case Fold::All:
        return Fold::Header;
    case Fold::Header:
        break;
    }
    return Fold::Brief;
}

bool isCompoundNode(const NodePtr& node)
{
    return node->isCompound();
}

} // namespace

void CanvasCommands::selectWire(const PortPtr& source,
                                const PortPtr& target,
                                Qt::KeyboardModifiers modifiers)
{
    m_desk.workspace.select({});
    const std::pair<PortPtr, PortPtr> wire(source, target);
    CanvasSelection selection = m_desk.canvas.selection();
    selection.ports.clear();
    selection.backdrop.reset();
    const auto place = std::find(selection.wires.begin(), selection.wires.end(), wire);
    const bool isToggle = (modifiers & Qt::ControlModifier) != 0;
    if (!isToggle && (modifiers & Qt::ShiftModifier) == 0)
        selection.wires = {wire};
    else if (place == selection.wires.end())
        selection.wires.push_back(wire);
    else if (isToggle)
        selection.wires.erase(place);
    m_desk.canvas.setSelection(std::move(selection));
}

void CanvasCommands::selectPort(const PortPtr& port)
{
    m_desk.workspace.select({});
    CanvasSelection selection = m_desk.canvas.selection();
    selection.wires.clear();
    selection.backdrop.reset();
    selection.ports = {port};
    m_desk.canvas.setSelection(std::move(selection));
}

void CanvasCommands::selectBackdrop(const BackdropPtr& backdrop)
{
    m_desk.workspace.select({});
    CanvasSelection selection = m_desk.canvas.selection();
    selection.wires.clear();
    selection.ports.clear();
    selection.backdrop = backdrop;
    m_desk.canvas.setSelection(std::move(selection));
}

void CanvasCommands::selectNoWires()
{
    CanvasSelection selection = m_desk.canvas.selection();
    if (selection.wires.empty() && selection.ports.empty() && !selection.backdrop)
        return;
    selection.wires.clear();
    selection.ports.clear();
    selection.backdrop.reset();
    m_desk.canvas.setSelection(std::move(selection));
}

bool CanvasCommands::hasWires() const
{
    return !m_desk.canvas.selection().wires.empty();
}

PortPtr CanvasCommands::selectedPort() const
{
    const std::vector<PortPtr>& ports = m_desk.canvas.selection().ports;
    const bool isHere =
        !ports.empty() && ports.front()->getParentCompound() == m_desk.workspace.compound();
    return isHere ? ports.front() : PortPtr();
}

BackdropPtr CanvasCommands::selectedBackdrop() const
{
    const BackdropPtr& backdrop = m_desk.canvas.selection().backdrop;
    const bool isHere = backdrop && backdrop->owner() &&
                        backdrop->owner()->getAsCompound() == m_desk.workspace.compound();
    return isHere ? backdrop : nullptr;
}

std::vector<PortPtr> CanvasCommands::ports() const
{
    if (const PortPtr port = selectedPort())
        return {port};
    return portsOfSelection(m_desk);
}

bool CanvasCommands::hasSelection() const
{
    return !m_desk.workspace.selection().empty() || hasWires() || selectedPort() ||
           selectedBackdrop();
}

void CanvasCommands::add()
{
    m_desk.search({placeOfMouse(m_desk), {}});
}

void CanvasCommands::group()
{
    Workspace& workspace = m_desk.workspace;
    const CompoundPtr compound = workspace.compound();
    const std::vector<NodePtr> nodes = workspace.selection();
    NodePtr created;
    const bool isDone = workspace.edit([&](Edits& edits) {
        return edits.collapse(compound, uniqueName(*compound, "group"), nodes, created);
    });
    if (!isDone)
        return;
    workspace.select({created});
    workspace.flush();
    rename();
}

bool CanvasCommands::canUngroup() const
{
    const std::vector<NodePtr>& nodes = m_desk.workspace.selection();
    return std::any_of(nodes.begin(), nodes.end(), isCompoundNode);
}

void CanvasCommands::ungroup()
{
    Workspace& workspace = m_desk.workspace;
    std::vector<NodePtr> graphs;
    std::vector<NodePtr> freed;
    for (const NodePtr& node : workspace.selection()) {
        if (!node->isCompound())
            continue;
        graphs.push_back(node);
        for (ZEL::Node* const inner : node->getAsCompound()->nodes())
            freed.emplace_back(inner);
    }
    const auto expand = [&](Edits& edits) {
        return std::all_of(graphs.begin(), graphs.end(), [&](const NodePtr& graph) {
            Renamings renamed;
            return edits.expand(graph, renamed);
        });
    };
    const bool isDone =
        graphs.size() == 1
            ? workspace.edit(expand)
            : workspace.editAs(QObject::tr("Expand %1 graphs").arg(graphs.size()), expand);
    if (isDone)
        workspace.select(freed);
}

void CanvasCommands::remove(bool isHealed)
{
    Workspace& workspace = m_desk.workspace;
    const std::vector<std::pair<PortPtr, PortPtr>> wires = m_desk.canvas.selection().wires;
    const auto cut = [&](Edits& edits) {
        return std::all_of(wires.begin(), wires.end(), [&](const auto& wire) {
            return edits.disconnect(wire.first, wire.second);
        });
    };
    if (const PortPtr port = selectedPort()) {
        if (workspace.edit([&](Edits& edits) { return edits.deletePort(port); }))
            selectNoWires();
    } else if (const BackdropPtr backdrop = selectedBackdrop()) {
        if (workspace.edit([&](Edits& edits) { return edits.deleteBackdrop(backdrop); }))
            selectNoWires();
    } else if (!wires.empty()) {
        const bool isDone =
            wires.size() == 1
                ? workspace.edit(cut)
                : workspace.editAs(QObject::tr("Cut %1 wires").arg(wires.size()), cut);
        if (isDone)
            selectNoWires();
    } else {
        const std::vector<NodePtr> nodes = workspace.selection();
        workspace.edit([&](Edits& edits) { return edits.deleteNodes(nodes, isHealed); });
    }
}

void CanvasCommands::fold()
{
    const std::vector<NodePtr>& nodes = m_desk.workspace.selection();
    if (nodes.empty())
        return;
    const Fold fold = nextFold(m_desk.memory.fold(nodes.front()));
    SceneMarks marks;
    for (const NodePtr& node : nodes) {
        m_desk.memory.setFold(node, fold);
        marks.nodes.push_back(node);
    }
    m_desk.canvas.update(marks);
    m_desk.workspace.say(fold == Fold::All     ? QObject::tr("All ports")
                         : fold == Fold::Brief ? QObject::tr("Connected ports and own values")
                                               : QObject::tr("No ports"));
}

bool CanvasCommands::canEnter() const
{
    const std::vector<NodePtr>& nodes = m_desk.workspace.selection();
    return nodes.size() == 1 && nodes.front()->isCompound();
}

void CanvasCommands::enter()
{
    const NodePtr node = m_desk.workspace.selection().front();
    m_desk.workspace.enter(node->getAsCompound());
}

bool CanvasCommands::canRename() const
{
    return selectedPort() || selectedBackdrop() || m_desk.workspace.selection().size() == 1;
}

void CanvasCommands::rename()
{
    if (const PortPtr port = selectedPort())
        renamePort(port);
    else if (const BackdropPtr backdrop = selectedBackdrop())
        renameBackdrop(backdrop);
    else if (m_desk.workspace.selection().size() == 1)
        renameNode(m_desk.workspace.selection().front());
}

void CanvasCommands::editName(
    const QString& name,
    const std::function<QRectF()>& place,
    const std::function<bool(Edits& edits, const std::string& name)>& rename)
{
    if (m_editor)
        m_editor->close();
    Desk* const desk = &m_desk;
    desk->canvas.reveal(place());
    const auto pixels = [=] {
        const QRectF rect = place();
        return rect.isNull() ? QRect() : desk->canvas.view().toPixel(rect).toAlignedRect();
    };
    const auto take = [=](const QString& text) {
        Workspace& workspace = desk->workspace;
        const bool isDone =
            workspace.edit([&](Edits& edits) { return rename(edits, text.toStdString()); });
        return isDone ? QString() : QString::fromStdString(workspace.edits().problem().reason);
    };
    m_editor = new NameEditor(desk->canvas, name, pixels, take);
    m_editor->open();
}

void CanvasCommands::renameNode(const NodePtr& node)
{
    const Canvas* const canvas = &m_desk.canvas;
    const auto place = [=] {
        const int box = canvas->scene() ? canvas->scene()->boxOf(node.get()) : -1;
        if (box < 0)
            return QRectF();
        const QRectF rect = canvas->scene()->boxes()[static_cast<std::size_t>(box)].rect;
        return QRectF(rect.topLeft(), QSizeF(rect.width(), zelDraw::kBoxHeader));
    };
    editName(QString::fromUtf8(node->getName()), place,
             [=](Edits& edits, const std::string& name) { return edits.renameNode(node, name); });
}

void CanvasCommands::renamePort(const PortPtr& port)
{
    const Canvas* const canvas = &m_desk.canvas;
    const auto place = [=] {
        const SceneEnd end = canvas->scene() ? canvas->scene()->endOf(*port) : SceneEnd{};
        if (!end.isValid())
            return QRectF();
        const QRectF rect = canvas->scene()->boxes()[static_cast<std::size_t>(end.box)].rect;
        const double row = zelDraw::kEdgeRowHeight;
        return QRectF(rect.left(), rect.top() + end.port * row, rect.width(), row);
    };
    editName(QString::fromUtf8(port->getName()), place,
             [=](Edits& edits, const std::string& name) { return edits.renamePort(port, name); });
}

void CanvasCommands::renameBackdrop(const BackdropPtr& backdrop)
{
    const Canvas* const canvas = &m_desk.canvas;
    const auto place = [=] {
        if (!canvas->scene())
            return QRectF();
        for (const SceneBackdrop& shown : canvas->scene()->backdrops()) {
            if (shown.backdrop == backdrop)
                return QRectF(shown.rect.topLeft(),
                              QSizeF(shown.rect.width(), zelDraw::kFrameHeader));
        }
        return QRectF();
    };
    editName(QString::fromStdString(backdrop->name()), place,
             [=](Edits& edits, const std::string& name) {
                 return edits.renameBackdrop(backdrop, name);
             });
}

void CanvasCommands::wrap()
{
    Workspace& workspace = m_desk.workspace;
    const CompoundPtr compound = workspace.compound();
    const std::vector<NodePtr> nodes = workspace.selection();
    QRectF around;
    for (const int box : boxesOf(m_desk.canvas, nodes))
        around |= m_desk.canvas.scene()->boxes()[static_cast<std::size_t>(box)].rect;
    if (around.isNull())
        return;
    BackdropPtr created;
    const bool isDone = workspace.edit([&](Edits& edits) {
        return edits.createBackdrop(compound, uniqueName(*compound, "backdrop"), nodes,
                                    frameFor(aroundBoxes(around)), "", created);
    });
    if (!isDone)
        return;
    workspace.flush();
    selectBackdrop(created);
    rename();
}

void CanvasCommands::connect()
{
    pickConnection(m_desk, ports());
}

void CanvasCommands::disconnect()
{
    pickDisconnection(m_desk, ports());
}

void CanvasCommands::reroute()
{
    for (const PortPtr& port : ports()) {
        if (port->getPortIOType() == ZEL::PortOutput && port->isConnected()) {
            pickReroute(m_desk, port);
            return;
        }
    }
    m_desk.workspace.refuse(QObject::tr("move connections"),
                            QObject::tr("no output with connections is selected"));
}

void CanvasCommands::insert()
{
    pickInsertion(m_desk, m_desk.workspace.selection().front());
}

void CanvasCommands::goToEnd(bool isSource)
{
    if (!hasWires())
        return;
    const auto [source, target] = m_desk.canvas.selection().wires.front();
    goTo(m_desk, isSource ? *source : *target);
}

void CanvasCommands::follow()
{
    if (m_editor)
        m_editor->follow();
}

} // namespace shading
