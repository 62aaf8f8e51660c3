#include "window/gestures/gestures.h"

#include "window/canvas/canvas.h"
#include "window/gestures/backdropGesture.h"
#include "window/gestures/barGesture.h"
#include "window/gestures/cutGesture.h"
#include "window/gestures/moveGesture.h"
#include "window/gestures/nodeSearch.h"
#include "window/gestures/pickPopup.h"
#include "window/gestures/viewGestures.h"
#include "window/gestures/wireGesture.h"
#include "window/workspace/actions.h"
#include "window/workspace/workspace.h"

#include <QApplication>
#include <algorithm>

namespace shading {

namespace {

constexpr int kTipTime = 6000; ///< Milliseconds that a reason stands beside the cursor.

} // namespace

Gestures::Gestures(Canvas& canvas, Workspace& workspace, ScreenMemory& memory, Actions& actions)
    : m_desk{canvas, workspace, memory, {}, [this](const NodeWish& wish) { openSearch(wish); }},
      m_commands(m_desk),
      m_actions(actions)
{
    canvas.setInput(this);
    canvas.installEventFilter(this);
    m_tipTimer.setSingleShot(true);
    m_tipTimer.setInterval(kTipTime);
    connect(&m_tipTimer, &QTimer::timeout, this, [this] {
        m_tip.clear();
        showRest();
    });
    connect(&workspace, &Workspace::refused, this,
            [this](const QString& /*subject*/, const QString& reason) { noteRefusal(reason); });
    connect(&workspace, &Workspace::selectionChanged, &canvas, [this] {
        if (!m_desk.workspace.selection().empty())
            m_commands.selectNoWires();
    });
    connect(&canvas, &Canvas::selectionChanged, &actions, &Actions::update);
    connect(&canvas, &Canvas::viewChanged, this, [this] { m_commands.follow(); });
}

Gestures::~Gestures()
{
    m_desk.canvas.setInput(nullptr);
}

const SceneBox& Gestures::boxOf(const Hit& hit) const
{
    return m_desk.canvas.scene()->boxes()[static_cast<std::size_t>(hit.box)];
}

const std::shared_ptr<Backdrop>& Gestures::backdropOf(const Hit& hit) const
{
    return m_desk.canvas.scene()->backdrops()[static_cast<std::size_t>(hit.backdrop)].backdrop;
}

// Beginning and ending.

void Gestures::begin(const Press& press, const Pointer& pointer)
{
    m_gesture = gestureFor(press);
    m_isCutting = m_isCutting && press.button != Qt::LeftButton;
    if (!m_gesture)
        return;
    m_desk.canvas.setHover({});
    m_desk.canvas.setCursor(m_gesture->cursor());
    m_gesture->move(pointer);
}

std::unique_ptr<Gesture> Gestures::gestureFor(const Press& press)
{
    const Hit& hit = press.hit;
    const bool isOnGround = hit.kind == Hit::Kind::Empty || hit.kind == Hit::Kind::BackdropBody;
    const bool isAlt = (press.pointer.modifiers & Qt::AltModifier) != 0;
    if (press.button != Qt::LeftButton || m_isSpaceDown || (isAlt && isOnGround))
        return std::make_unique<PanGesture>(m_desk, press.pointer);
    if (!m_desk.canvas.scene())
        return nullptr;
    if (m_isCutting)
        return std::make_unique<CutGesture>(m_desk, press.pointer);
    if (hit.isWire())
        return gestureForWire(press);
    if (hit.box >= 0)
        return gestureForBox(press);
    if (hit.kind == Hit::Kind::BackdropTitle || hit.kind == Hit::Kind::BackdropEdge)
        return std::make_unique<BackdropGesture>(m_desk, hit, press.pointer);
    return std::make_unique<BandGesture>(m_desk, press.pointer);
}

std::unique_ptr<Gesture> Gestures::gestureForBox(const Press& press)
{
    const SceneBox& box = boxOf(press.hit);
    const bool isControl = (press.pointer.modifiers & Qt::ControlModifier) != 0;
    if (press.hit.kind == Hit::Kind::BarRow)
        return std::make_unique<BarGesture>(
            m_desk, box.ports[static_cast<std::size_t>(press.hit.port)].port);
    if (press.hit.kind == Hit::Kind::Port) {
        const ScenePort& port = box.ports[static_cast<std::size_t>(press.hit.port)];
        if (!port.port)
            return nullptr;
        if (!port.takes && isControl && port.isConnected)
            return WireGesture::grabAll(m_desk, port.port);
        // A wire that ends here comes off with the mouse.
        if (port.takes && port.port->isConnected())
            return WireGesture::grab(m_desk, {port.port->connectedTo()[0], port.port}, true);
        return WireGesture::begin(m_desk, port.port);
    }
    if (!box.isNode())
        return nullptr;
    std::vector<NodePtr> nodes = m_desk.workspace.selection();
    const auto own = std::find(nodes.begin(), nodes.end(), box.node);
    if (own == nodes.end())
        nodes = {box.node};
    else
        std::rotate(nodes.begin(), own, own + 1);
    return std::make_unique<MoveGesture>(m_desk, std::move(nodes), press.pointer);
}

std::unique_ptr<Gesture> Gestures::gestureForWire(const Press& press)
{
    const Scene* const scene = m_desk.canvas.scene();
    const SceneWire& wire = scene->wires()[static_cast<std::size_t>(press.hit.wire)];
    const PortPtr source = scene->port(wire.source).port;
    const PortPtr target = scene->port(wire.target).port;
    if (!source || !target || press.hit.kind == Hit::Kind::WireMiddle)
        return nullptr;
    return WireGesture::grab(m_desk, {source, target}, press.hit.kind == Hit::Kind::WireTarget);
}

/// The gesture makes its edit, and goes before the views hear of it.
void Gestures::finish(const Pointer& pointer)
{
    std::unique_ptr<Gesture> gesture = std::move(m_gesture);
    m_isFollowing = false;
    m_press.reset();
    gesture->finish(pointer);
    gesture.reset();
    m_desk.workspace.flush();
    showRest();
    hover(pointer);
}

void Gestures::drop()
{
    m_gesture.reset();
    m_press.reset();
    m_isFollowing = false;
}

void Gestures::cancel()
{
    m_isCutting = false;
    m_tip.clear();
    if (!m_gesture && !m_press)
        m_commands.selectNoWires();
    drop();
    showRest();
    showCursor(m_desk.canvas.hover());
}

void Gestures::prepareToCut()
{
    if (m_gesture)
        return;
    m_isCutting = true;
    m_desk.canvas.setCursor(Qt::CrossCursor);
    m_desk.workspace.say(tr("Drag a line across wires to cut them; Esc cancels"));
}

void Gestures::openSearch(const NodeWish& wish)
{
    PickPopup* const popup = searchNode(m_desk, wish);
    m_wish = wish;
    const auto forget = [this] {
        m_wish.reset();
        showRest();
    };
    connect(popup, &PickPopup::chosen, this, forget);
    connect(popup, &PickPopup::cancelled, this, forget);
    showRest();
}

void Gestures::noteRefusal(const QString& reason)
{
    if (!m_desk.canvas.isVisible())
        return;
    m_tip = reason;
    m_tipAt = placeOfMouse(m_desk);
    m_tipTimer.start();
    if (!m_gesture)
        showRest();
}

/// What stays on the canvas when no gesture goes on: the wire that a search is open for, and why
/// something was refused.
void Gestures::showRest()
{
    if (m_gesture)
        return;
    CanvasOverlay overlay;
    if (m_wish && m_wish->wire && m_desk.canvas.scene())
        overlay.wires.push_back(looseWire(m_desk.canvas, *m_wish->wire, m_wish->place));
    overlay.tip = m_tip;
    overlay.tipAt = m_tipAt;
    overlay.tipVerdict =
        m_tip.isEmpty() ? CanvasOverlay::Verdict::None : CanvasOverlay::Verdict::Bad;
    m_desk.canvas.setOverlay(std::move(overlay));
}

void Gestures::sceneChanged()
{
    drop();
    showRest();
    m_commands.follow();
}

} // namespace shading
