#include "gestureFixture.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <algorithm>

namespace shadingTest {

namespace {

const char* const kDocument = R"(<?xml version="1.0"?>
<materialx version="1.39">
  <nodegraph name="G" xpos="0" ypos="0">
    <input name="tint" type="color3" value="1, 0, 0" />
    <input name="level" type="float" value="0.5" />
    <constant name="red" type="color3" xpos="0" ypos="0">
      <input name="value" type="color3" value="1, 0, 0" />
    </constant>
    <constant name="grey" type="float" xpos="0" ypos="1.5">
      <input name="value" type="float" value="0.2" />
    </constant>
    <mix name="blend" type="color3" xpos="2" ypos="0">
      <input name="fg" type="color3" nodename="red" />
      <input name="bg" type="color3" value="0, 0, 1" />
      <input name="mix" type="float" nodename="grey" />
    </mix>
    <multiply name="bright" type="color3" xpos="4" ypos="0">
      <input name="in1" type="color3" nodename="blend" />
      <input name="in2" type="color3" value="2, 2, 2" />
    </multiply>
    <saturate name="spare" type="color3" xpos="2" ypos="2">
      <input name="in" type="color3" value="0.1, 0.2, 0.3" />
      <input name="amount" type="float" value="0.7" />
    </saturate>
    <output name="colour" type="color3" nodename="bright" />
  </nodegraph>
</materialx>
)";

} // namespace

OnCanvas::OnCanvas() : workspace(openText(kDocument)), canvas(window.view()->canvas())
{
    workspace.enter(node("Top.G")->getAsCompound());
    settle();
    canvas.frameAll();
    canvas.setFocus();
    settle();
    first = bytesOf(workspace);
}

QPoint OnCanvas::port(const std::string& path, std::optional<bool> isInput)
{
    const auto place = canvas.scene()->portCentre(path, isInput);
    EXPECT_TRUE(place) << path;
    return canvas.toPixel(place.value_or(QPointF())).toPoint();
}

QPoint OnCanvas::header(const std::string& path)
{
    const auto rect = canvas.scene()->nodeRect(path);
    EXPECT_TRUE(rect) << path;
    const QRectF place = rect.value_or(QRectF());
    return canvas.toPixel(place.topLeft() + QPointF(place.width() / 3, 12)).toPoint();
}

QPoint OnCanvas::wire(const std::string& source, const std::string& target, double part)
{
    const shading::Scene& scene = *canvas.scene();
    const shading::NodePtr owner = workspace.compound()->getAsNode();
    const auto at = [&](const std::string& path) {
        const auto place = scene.portCentre(path);
        return place ? place : scene.barCentre(path);
    };
    EXPECT_TRUE(at(source) && at(target)) << source << " > " << target;
    for (const shading::SceneWire& wire : scene.wires()) {
        const auto is = [&](const shading::SceneEnd& end, const std::string& path) {
            const shading::PortPtr& port = scene.port(end).port;
            return port && path == port->getFullPathName().getName();
        };
        if (wire.isAlive && is(wire.source, source) && is(wire.target, target))
            return canvas.toPixel(wire.curve().at(part)).toPoint();
    }
    ADD_FAILURE() << source << " > " << target;
    return {};
}

QPoint OnCanvas::bar(const std::string& path)
{
    const auto place = canvas.scene()->barCentre(path);
    EXPECT_TRUE(place) << path;
    return canvas.toPixel(place.value_or(QPointF())).toPoint();
}

QPoint OnCanvas::barPlus(bool isInput)
{
    const shading::Scene& scene = *canvas.scene();
    return canvas.toPixel(scene.barPlus(scene.bar(isInput)).center()).toPoint();
}

QPoint OnCanvas::empty()
{
    for (int y = 30; y < canvas.height() - 30; y += 10) {
        for (int x = 30; x < canvas.width() - 30; x += 10) {
            const QPoint steps[] = {{0, 0}, {25, 0}, {-25, 0}, {0, 25}, {0, -25}};
            if (std::all_of(std::begin(steps), std::end(steps), [&](const QPoint& step) {
                    return canvas.hitAt(QPoint(x, y) + step).kind == shading::Hit::Kind::Empty;
                }))
                return {x, y};
        }
    }
    ADD_FAILURE() << "no place is empty";
    return {};
}

void OnCanvas::click(const QPoint& at, Qt::KeyboardModifiers modifiers)
{
    shading::click(canvas, at, Qt::LeftButton, {modifiers, 0});
}

void OnCanvas::rightClick(const QPoint& at)
{
    shading::click(canvas, at, Qt::RightButton, {});
}

void OnCanvas::drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers)
{
    shading::drag(canvas, from, to, {modifiers, 0});
}

void OnCanvas::dragOn(const QPoint& from,
                      const QPoint& to,
                      Qt::MouseButton button,
                      Qt::KeyboardModifiers modifiers)
{
    constexpr int kMoves = 12;
    QWindow* const target = window.windowHandle();
    const auto send = [&](QTest::MouseAction action, Qt::MouseButton with, const QPoint& at) {
        QTest::mouseEvent(action, target, with, modifiers,
                          target->mapFromGlobal(canvas.mapToGlobal(at)));
        settle();
    };
    send(QTest::MouseMove, Qt::NoButton, from);
    send(QTest::MousePress, button, from);
    for (int i = 1; i <= kMoves; ++i)
        send(QTest::MouseMove, Qt::NoButton, from + (to - from) * i / kMoves);
}

void OnCanvas::release(const QPoint& at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    QWindow* const target = window.windowHandle();
    QTest::mouseEvent(QTest::MouseRelease, target, button, modifiers,
                      target->mapFromGlobal(canvas.mapToGlobal(at)));
    settle();
}

void OnCanvas::key(const char* keys)
{
    shading::press(QKeySequence(keys));
}

void OnCanvas::type(const char* text)
{
    shading::type(text);
}

bool OnCanvas::chooseFromMenu(const QString& text)
{
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu)
        return false;
    for (QAction* const action : menu->actions()) {
        if (action->text().remove('&') == text && action->isEnabled()) {
            menu->close();
            action->trigger();
            settle();
            return true;
        }
    }
    menu->close();
    return false;
}

bool OnCanvas::isConnected(const std::string& source, const std::string& target)
{
    const shading::PortPtr from = output(source);
    const shading::PortPtr to = input(target);
    return from && to && from->connectedTo().findPort(to) >= 0;
}

std::string OnCanvas::selected()
{
    std::vector<std::string> names;
    for (const shading::NodePtr& node : workspace.selection())
        names.emplace_back(node->getName());
    std::sort(names.begin(), names.end());
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : " ") + name;
    return text;
}

void OnCanvas::expectCanvasIsNew()
{
    settle();
    ASSERT_TRUE(canvas.scene());
    shading::ScreenMemory memory = window.view()->memory();
    shading::Scene scene(workspace.document(), workspace.compound(), memory);
    ASSERT_TRUE(scene.build());
    EXPECT_EQ(scene.dump(), canvas.scene()->dump());
}

void OnCanvas::expectUndone(int edits)
{
    ASSERT_EQ(edits, undoCount());
    const std::string last = bytesOf(workspace);
    while (undoCount() > 0)
        ASSERT_TRUE(workspace.undo());
    EXPECT_EQ(first, bytesOf(workspace));
    while (workspace.history().redoCount() > 0)
        ASSERT_TRUE(workspace.redo());
    EXPECT_EQ(last, bytesOf(workspace));
    expectCanvasIsNew();
}

} // namespace shadingTest
