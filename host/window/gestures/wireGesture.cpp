#include "window/gestures/wireGesture.h"

#include "document/names.h"
#include "window/canvas/canvas.h"
#include "window/gestures/connecting.h"
#include "window/workspace/workspace.h"

#include <QObject>

namespace shading {

namespace {

constexpr double kOnDot = 8; ///< From a dot, in pixels of the screen.

using Verdict = CanvasOverlay::Verdict;

QString pathText(ZEL::Port& port)
{
    return QString::fromStdString(pathOf(port));
}

} // namespace

CanvasOverlay::Wire looseWire(const Canvas& canvas, const LooseWire& wire, const QPointF& place)
{
    CanvasOverlay::Wire shown;
    const SceneEnd end = canvas.scene()->endOf(*wire.port);
    QPointF fixed = place;
    if (end.isValid()) {
        fixed = canvas.scene()->dotOf(end);
        shown.type = canvas.scene()->port(end).type;
    }
    shown.from = wire.seeksTarget ? fixed : place;
    shown.to = wire.seeksTarget ? place : fixed;
    return shown;
}

WireGesture::WireGesture(Desk& desk, std::vector<PortPtr> fixed, bool seeksTarget)
    : Gesture(desk),
      m_judge(desk.workspace.edits(), std::move(fixed), seeksTarget)
{
    dim();
}

std::unique_ptr<WireGesture> WireGesture::begin(Desk& desk, const PortPtr& port)
{
    const bool isSource = port->getPortIOType() == ZEL::PortOutput;
    return std::unique_ptr<WireGesture>(new WireGesture(desk, {port}, isSource));
}

std::unique_ptr<WireGesture> WireGesture::grab(Desk& desk, const Wire& wire, bool movesTarget)
{
    const PortPtr& fixed = movesTarget ? wire.first : wire.second;
    std::unique_ptr<WireGesture> gesture(new WireGesture(desk, {fixed}, movesTarget));
    gesture->m_wire = wire;
    return gesture;
}

std::unique_ptr<WireGesture> WireGesture::grabAll(Desk& desk, const PortPtr& output)
{
    std::vector<PortPtr> targets;
    for (ZEL::Port* const target : output->connectedTo())
        targets.emplace_back(target);
    std::unique_ptr<WireGesture> gesture(new WireGesture(desk, std::move(targets), false));
    gesture->m_output = output;
    return gesture;
}

void WireGesture::dim()
{
    const Scene* const scene = desk().canvas.scene();
    desk().canvas.setDimming([this, scene](const SceneEnd& end) {
        const PortPtr& port = scene->port(end).port;
        const std::vector<PortPtr>& fixed = m_judge.fixed();
        return !port ||
               (std::find(fixed.begin(), fixed.end(), port) == fixed.end() && !m_judge.fits(*port));
    });
}

WireGesture::Aim WireGesture::aimAtPort(const SceneEnd& end) const
{
    Aim aim;
    aim.kind = Aim::Kind::Port;
    aim.port = desk().canvas.scene()->port(end).port;
    aim.end = end;
    if (!aim.port) {
        aim.kind = Aim::Kind::Nothing;
        aim.problem = "the network does not show this port";
        return aim;
    }
    aim.subject = pathOf(*aim.port);
    aim.problem = m_judge.problem(*aim.port);
    return aim;
}

WireGesture::Aim WireGesture::aimAt(const Pointer& pointer) const
{
    const Canvas& canvas = desk().canvas;
    const Scene* const scene = canvas.scene();
    const auto isOfSide = [&](const SceneEnd& end) {
        return scene->port(end).takes == m_judge.seeksTarget();
    };
    // A port that fits is caught before one beside it that does not, unless that one is meant: the
    // pointer is in its row, or on its dot.
    const double scale = canvas.view().scale();
    const SceneEnd meant = scene->portAt(pointer.place, scale, {});
    if (meant.isValid() && isOfSide(meant)) {
        const QRectF& rect = scene->boxes()[static_cast<std::size_t>(meant.box)].rect;
        const QPointF way = scene->dotOf(meant) - pointer.place;
        if (rect.contains(pointer.place) || way.manhattanLength() * scale < kOnDot)
            return aimAtPort(meant);
    }
    const SceneEnd near = scene->portAt(pointer.place, scale, [&](const SceneEnd& end) {
        const PortPtr& port = scene->port(end).port;
        return port && m_judge.fits(*port);
    });
    if (near.isValid())
        return aimAtPort(near);
    const Hit hit = canvas.hitAt(pointer.pixel);
    const bool isOnNode =
        hit.box >= 0 && scene->boxes()[static_cast<std::size_t>(hit.box)].isNode();
    if (hit.box >= 0 && hit.port >= 0 && (!isOnNode || isOfSide(hit.end())))
        return aimAtPort(hit.end());
    Aim aim;
    if (hit.box < 0)
        return aim;
    const SceneBox& box = scene->boxes()[static_cast<std::size_t>(hit.box)];
    aim.kind = Aim::Kind::Nothing;
    if (hit.kind == Hit::Kind::BarPlus) {
        const bool isOutput = box.kind == SceneBox::Kind::OutputBar;
        aim.kind = Aim::Kind::NewPort;
        aim.subject = pathOf(*box.node);
        if (isOutput != m_judge.seeksTarget())
            aim.problem = isOutput ? "an output of a graph takes from a source"
                                   : "an input of a graph gives to a target";
    } else if (box.isNode()) {
        aim.subject = pathOf(*box.node);
        aim.port = m_judge.freePort(*box.node, aim.problem);
        aim.kind = Aim::Kind::Port;
        if (aim.port)
            aim.end = scene->endOf(*aim.port);
    }
    return aim;
}

bool WireGesture::isOwnPlace(const Aim& aim) const
{
    if (aim.kind != Aim::Kind::Port || !aim.port)
        return false;
    const std::vector<PortPtr>& fixed = m_judge.fixed();
    return aim.port == m_output || aim.port == m_wire.first || aim.port == m_wire.second ||
           (fixed.size() == 1 && aim.port == fixed.front());
}

QString WireGesture::tipOf(const Aim& aim) const
{
    if (!aim.problem.empty())
        return QString::fromStdString(aim.problem);
    if (aim.kind == Aim::Kind::NewPort)
        return QObject::tr("a new port of type %1").arg(QString::fromStdString(m_judge.dataType()));
    if (aim.kind != Aim::Kind::Port)
        return m_wire.first ? QObject::tr("disconnect") : QString();
    const bool isReplaced = m_judge.seeksTarget() && aim.port->isConnected() &&
                            aim.port->connectedTo()[0] != m_judge.fixed().front();
    return isReplaced ? QObject::tr("%1, in the place of %2")
                            .arg(pathText(*aim.port), pathText(*aim.port->connectedTo()[0]))
                      : pathText(*aim.port);
}

void WireGesture::move(const Pointer& pointer)
{
    const Aim aim = aimAt(pointer);
    const bool isAimed = aim.kind != Aim::Kind::Empty && !isOwnPlace(aim);
    const Verdict verdict = !isAimed              ? Verdict::None
                            : aim.problem.empty() ? Verdict::Good
                                                  : Verdict::Bad;
    CanvasOverlay overlay;
    for (const PortPtr& fixed : m_judge.fixed()) {
        CanvasOverlay::Wire wire =
            looseWire(desk().canvas, {fixed, m_judge.seeksTarget()}, pointer.place);
        if (isAimed && aim.end.isValid() && aim.problem.empty())
            (m_judge.seeksTarget() ? wire.to : wire.from) = desk().canvas.scene()->dotOf(aim.end);
        wire.verdict = verdict;
        overlay.wires.push_back(wire);
    }
    if (m_wire.first) {
        const int wire = desk().canvas.scene()->wireOf(*m_wire.first, *m_wire.second);
        if (wire >= 0 && !isOwnPlace(aim))
            overlay.struck.push_back(wire);
    }
    if (isAimed) {
        overlay.over = aim.end;
        overlay.overVerdict = verdict;
    }
    if (!isOwnPlace(aim)) {
        overlay.tip = tipOf(aim);
        overlay.tipAt = pointer.place;
        overlay.tipVerdict = verdict;
    }
    desk().canvas.setOverlay(std::move(overlay));
}

void WireGesture::finish(const Pointer& pointer)
{
    const Aim aim = aimAt(pointer);
    clear();
    if (!isOwnPlace(aim))
        drop(aim, pointer);
}

void WireGesture::drop(const Aim& aim, const Pointer& pointer)
{
    Workspace& workspace = desk().workspace;
    if (aim.kind == Aim::Kind::Empty) {
        if (m_wire.first)
            workspace.edit(
                [&](Edits& edits) { return edits.disconnect(m_wire.first, m_wire.second); });
        else if (!m_output && desk().search)
            desk().search(
                {pointer.place, LooseWire{m_judge.fixed().front(), m_judge.seeksTarget()}});
        return;
    }
    const bool isWithoutPort = aim.kind == Aim::Kind::Nothing || !aim.port;
    if (aim.kind == Aim::Kind::NewPort && aim.problem.empty()) {
        workspace.edit([&](Edits& edits) { return connectToNewPort(edits); });
    } else if (isWithoutPort) {
        if (!aim.problem.empty())
            workspace.refuse(QString::fromStdString(aim.subject),
                             QString::fromStdString(aim.problem));
    } else {
        workspace.edit([&](Edits& edits) { return connect(edits, aim.port); });
    }
}

bool WireGesture::connect(Edits& edits, const PortPtr& port) const
{
    const PortPtr& fixed = m_judge.fixed().front();
    const bool seeksTarget = m_judge.seeksTarget();
    if (m_output)
        return edits.reroute(m_output, port);
    const PortPtr& source = seeksTarget ? fixed : port;
    const PortPtr& target = seeksTarget ? port : fixed;
    return m_wire.first ? edits.reconnect(m_wire.first, m_wire.second, source, target)
                        : edits.connect(source, target);
}

bool WireGesture::connectToNewPort(Edits& edits) const
{
    const LooseWire wire = {m_judge.fixed().front(), m_judge.seeksTarget()};
    return shading::connectToNewPort(edits, desk().workspace.compound(), wire,
                                     [&](const PortPtr& made) { return connect(edits, made); });
}

} // namespace shading
