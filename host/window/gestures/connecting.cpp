#include "window/gestures/connecting.h"

#include "document/document.h"
#include "document/names.h"
#include "document/rules.h"
#include "window/canvas/canvas.h"
#include "window/gestures/pickPopup.h"
#include "window/gestures/wireJudge.h"
#include "window/workspace/workspace.h"

#include <QObject>
#include <algorithm>
#include <cmath>
#include <memory>

namespace shading {

namespace {

/// Something to choose, and what is done then.
struct Choice {
    PickPopup::Item item;
    std::function<bool(Edits& edits)> edit;
    double distance = 0; ///< Those that are less far come first.
};

using Choices = std::vector<Choice>;

QString text(const std::string& bytes)
{
    return QString::fromStdString(bytes);
}

/// "mix.fg"; of an inner port its name alone.
QString labelOf(ZEL::Port& port)
{
    const QString name = QString::fromUtf8(port.getName());
    const bool isInner = port.isCompoundInternalPort();
    return isInner ? name : QString::fromUtf8(port.getParentNode()->getName()) + '.' + name;
}

PickPopup* pick(Desk& desk, const QString& name, const QString& what, Choices choices)
{
    if (choices.empty()) {
        desk.workspace.refuse(what, QObject::tr("there is nothing to choose"));
        return nullptr;
    }
    std::stable_sort(choices.begin(), choices.end(),
                     [](const Choice& a, const Choice& b) { return a.distance < b.distance; });
    struct State {
        Choices all;
        std::vector<std::size_t> found;
    };
    const auto state = std::make_shared<State>(State{std::move(choices), {}});
    auto* const popup = new PickPopup(desk.canvas, what, [state](const QString& typed) {
        std::vector<PickPopup::Item> items;
        state->found.clear();
        for (std::size_t i = 0; i < state->all.size(); ++i) {
            const PickPopup::Item& item = state->all[i].item;
            if (!item.text.contains(typed.trimmed(), Qt::CaseInsensitive) &&
                !item.detail.contains(typed.trimmed(), Qt::CaseInsensitive))
                continue;
            state->found.push_back(i);
            items.push_back(item);
        }
        return items;
    });
    popup->setObjectName(name);
    Workspace* const workspace = &desk.workspace;
    QObject::connect(popup, &PickPopup::chosen, &desk.canvas, [state, workspace](int row) {
        workspace->edit(state->all[state->found[static_cast<std::size_t>(row)]].edit);
    });
    popup->popUp(desk.canvas.toPixel(placeOfMouse(desk)).toPoint());
    return popup;
}

double distanceBetween(const Desk& desk, ZEL::Port& a, ZEL::Port& b)
{
    const Scene* const scene = desk.canvas.scene();
    if (!scene)
        return 0;
    const auto middleOf = [&](ZEL::Port& port) {
        const int box = port.isCompoundInternalPort()
                            ? scene->bar(port.getPortIOType() == ZEL::PortOutput)
                            : scene->boxOf(port.getParentNode().get());
        return box < 0 ? QPointF() : scene->boxes()[static_cast<std::size_t>(box)].rect.center();
    };
    const QPointF way = middleOf(a) - middleOf(b);
    return std::hypot(way.x(), way.y());
}

/// The ports of the compound's nodes and its own ones that take, or that give.
void forPorts(const CompoundPtr& compound,
              bool takes,
              const std::function<void(ZEL::Port& port)>& call)
{
    for (ZEL::Node* const node : compound->nodes()) {
        for (ZEL::Port* const port : takes ? node->inputs() : node->outputs())
            call(*port);
    }
    for (ZEL::Port* const port : takes ? compound->innerOutputs() : compound->innerInputs())
        call(*port);
}

Choice connectionChoice(const Desk& desk, const PortPtr& port, const PortPtr& other, bool isSource)
{
    const PortPtr& source = isSource ? port : other;
    const PortPtr& target = isSource ? other : port;
    QString detail = text(typeNameOf(*source));
    if (target->isConnected())
        detail += QObject::tr(", instead of %1").arg(labelOf(*target->connectedTo()[0]));
    return {{QObject::tr("%1 to %2").arg(labelOf(*source), labelOf(*target)), detail},
            [=](Edits& edits) { return edits.connect(source, target); },
            // What is free comes before what would be replaced.
            distanceBetween(desk, *port, *other) + (target->isConnected() ? 1e6 : 0)};
}

Choice newPortChoice(const Desk& desk, const PortPtr& port, bool isSource)
{
    const CompoundPtr compound = desk.workspace.compound();
    const auto connect = [=](Edits& edits) {
        const LooseWire wire = {port, isSource};
        return connectToNewPort(edits, compound, wire, [&](const PortPtr& made) {
            return isSource ? edits.connect(port, made) : edits.connect(made, port);
        });
    };
    const QString kind =
        isSource ? QObject::tr("%1 to a new output") : QObject::tr("a new input to %1");
    return {{kind.arg(labelOf(*port)), text(typeNameOf(*port))}, connect, 1e9};
}

} // namespace

bool connectToNewPort(Edits& edits,
                      const CompoundPtr& compound,
                      const LooseWire& wire,
                      const std::function<bool(const PortPtr& made)>& connect)
{
    const std::string name = uniqueName(*compound, wire.port->getName());
    History::Group group(edits.history(),
                         {"Connect " + labelOf(*wire.port).toStdString() + " to a new port", {}});
    bool isDone = edits.addPort(compound, wire.seeksTarget ? ZEL::PortOutput : ZEL::PortInput, name,
                                typeNameOf(*wire.port));
    if (isDone) {
        ZEL::PortList& ports =
            wire.seeksTarget ? compound->innerOutputs() : compound->innerInputs();
        isDone = connect(ports[ports.size() - 1]);
    }
    std::string problem;
    return group.finish(isDone, problem);
}

PickPopup* pickConnection(Desk& desk, const std::vector<PortPtr>& ports)
{
    Choices choices;
    const CompoundPtr compound = desk.workspace.compound();
    for (const PortPtr& port : ports) {
        const bool isSource = port->getPortIOType() == ZEL::PortOutput;
        const WireJudge judge(desk.workspace.edits(), {port}, isSource);
        forPorts(compound, isSource, [&](ZEL::Port& other) {
            if (judge.fits(other) && port->connectedTo().findPort(&other) < 0)
                choices.push_back(connectionChoice(desk, port, &other, isSource));
        });
        // Inside of a graph alone: the document itself has no ports to speak of.
        if (compound->getAsNode()->getParentCompound() && !port->isCompoundInternalPort())
            choices.push_back(newPortChoice(desk, port, isSource));
    }
    return pick(desk, QStringLiteral("connect"), QObject::tr("Connect"), std::move(choices));
}

PickPopup* pickDisconnection(Desk& desk, const std::vector<PortPtr>& ports)
{
    Choices choices;
    for (const PortPtr& port : ports) {
        const bool isSource = port->getPortIOType() == ZEL::PortOutput;
        for (ZEL::Port* const other : port->connectedTo()) {
            const PortPtr source = isSource ? port : PortPtr(other);
            const PortPtr target = isSource ? PortPtr(other) : port;
            choices.push_back({{QObject::tr("%1 from %2").arg(labelOf(*target), labelOf(*source)),
                                text(typeNameOf(*source))},
                               [=](Edits& edits) { return edits.disconnect(source, target); }});
        }
    }
    return pick(desk, QStringLiteral("disconnect"), QObject::tr("Disconnect"), std::move(choices));
}

PickPopup* pickReroute(Desk& desk, const PortPtr& output)
{
    std::vector<PortPtr> targets;
    for (ZEL::Port* const target : output->connectedTo())
        targets.emplace_back(target);
    Choices choices;
    if (!targets.empty()) {
        const WireJudge judge(desk.workspace.edits(), targets, false);
        forPorts(desk.workspace.compound(), false, [&](ZEL::Port& other) {
            const PortPtr to(&other);
            if (to != output && judge.fits(other))
                choices.push_back({{labelOf(other), text(typeNameOf(other))},
                                   [=](Edits& edits) { return edits.reroute(output, to); },
                                   distanceBetween(desk, *output, other)});
        });
    }
    return pick(desk, QStringLiteral("reroute"), QObject::tr("Move all connections to"),
                std::move(choices));
}

PickPopup* pickInsertion(Desk& desk, const NodePtr& node)
{
    Choices choices;
    forPorts(desk.workspace.compound(), true, [&](ZEL::Port& target) {
        if (!target.isConnected())
            return;
        const PortPtr source = target.connectedTo()[0];
        const PortPtr to(&target);
        if (!desk.workspace.edits().insertionFor(node, source, to).problem.empty())
            return;
        choices.push_back(
            {{QObject::tr("%1 to %2").arg(labelOf(*source), labelOf(target)),
              text(typeNameOf(target))},
             [=](Edits& edits) { return edits.insertNode(node, source, to); },
             node->inputs().size() == 0 ? 0 : distanceBetween(desk, *node->inputs()[0], target)});
    });
    return pick(desk, QStringLiteral("insert"), QObject::tr("Insert into"), std::move(choices));
}

PickPopup* pickNewPort(Desk& desk, bool isInput)
{
    Choices choices;
    const CompoundPtr compound = desk.workspace.compound();
    ZEL::Runtime& runtime = *desk.workspace.document().getRuntime();
    for (int i = 0; i < runtime.getNumberOfPortDataTypes(); ++i) {
        const std::string type = runtime.getPortDataType(i)->getName();
        const auto add = [=](Edits& edits) {
            return edits.addPort(compound, isInput ? ZEL::PortInput : ZEL::PortOutput,
                                 uniqueName(*compound, isInput ? "in" : "out"), type);
        };
        choices.push_back({{text(type), QString()}, add});
    }
    return pick(desk, QStringLiteral("addPort"),
                isInput ? QObject::tr("Type of the new input")
                        : QObject::tr("Type of the new output"),
                std::move(choices));
}

std::vector<PortPtr> portsOfSelection(const Desk& desk)
{
    std::vector<PortPtr> ports;
    for (const NodePtr& node : desk.workspace.selection()) {
        for (ZEL::PortList* const list : {&node->outputs(), &node->inputs()}) {
            for (ZEL::Port* const port : *list)
                ports.emplace_back(port);
        }
    }
    return ports;
}

void goTo(Desk& desk, ZEL::Port& port)
{
    if (!port.isCompoundInternalPort()) {
        desk.workspace.reveal(port.getParentNode());
        return;
    }
    desk.workspace.enter(port.getParentCompound());
    const Scene* const scene = desk.canvas.scene();
    const SceneEnd end = scene ? scene->endOf(port) : SceneEnd{};
    if (!end.isValid())
        return;
    desk.canvas.reveal(scene->boxes()[static_cast<std::size_t>(end.box)].rect);
    CanvasSelection selection;
    selection.ports = {&port};
    desk.canvas.setSelection(selection);
}

} // namespace shading
