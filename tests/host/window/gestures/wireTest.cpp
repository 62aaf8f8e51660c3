// Wires by the mouse: made, refused, moved, taken off.

#include "gestureFixture.h"
#include "window/gestures/gestures.h"
#include "window/gestures/pickPopup.h"
#include "window/gestures/wireJudge.h"

#include <QLabel>

using shading::CanvasOverlay;
using shading::PickPopup;
using shading::PortPtr;

namespace shadingTest {

class Wires : public OnCanvas {
protected:
    PickPopup* popup() { return window.view()->findChild<PickPopup*>(); }
    QString status() { return window.findChild<QLabel*>("status")->text(); }
};

TEST_F(Wires, ADragConnectsInOneEdit)
{
    drag(port("Top.G.red.out"), port("Top.G.blend.bg"));
    EXPECT_TRUE(isConnected("Top.G.red.out", "Top.G.blend.bg"));
    EXPECT_TRUE(isConnected("Top.G.red.out", "Top.G.blend.fg")) << "an output feeds several";
    drag(port("Top.G.spare.in"), port("Top.G.red.out")); // From the input, too.
    EXPECT_TRUE(isConnected("Top.G.red.out", "Top.G.spare.in"));
    expectUndone(2);
}

TEST_F(Wires, AClickAndAClickConnect)
{
    click(port("Top.G.red.out"));
    EXPECT_TRUE(window.view()->gestures().isBusy());
    click(port("Top.G.blend.bg"));
    EXPECT_TRUE(isConnected("Top.G.red.out", "Top.G.blend.bg"));
    click(port("Top.G.red.out"));
    key("Esc");
    EXPECT_FALSE(window.view()->gestures().isBusy());
    expectUndone(1);
}

TEST_F(Wires, ADropIsRefusedWithTheReason)
{
    drag(port("Top.G.grey.out"), port("Top.G.blend.fg"));
    EXPECT_FALSE(isConnected("Top.G.grey.out", "Top.G.blend.fg"));
    const QString reason = "Top.G.grey.out is float, Top.G.blend.fg is color3";
    EXPECT_EQ(refusals.size(), 1) << refusals.join('\n').toStdString();
    EXPECT_TRUE(refusals.join("").endsWith(reason)) << refusals.join("").toStdString();
    EXPECT_TRUE(status().endsWith(reason));
    EXPECT_EQ(canvas.overlay().tip, reason);
    EXPECT_TRUE(canvas.overlay().wires.empty());
    EXPECT_EQ(popup(), nullptr) << "on a port nothing opens";
    drag(port("Top.G.bright.out"), port("Top.G.blend.bg"));
    EXPECT_TRUE(canvas.overlay().tip.contains("comes from")) << "a circle";
    EXPECT_EQ(bytesOf(workspace), first);
    EXPECT_EQ(undoCount(), 0);
    expectCanvasIsNew();
}

TEST_F(Wires, OverAPortTheTipHasTheVerdict)
{
    dragOn(port("Top.G.red.out"), port("Top.G.blend.bg"));
    EXPECT_EQ(canvas.overlay().overVerdict, CanvasOverlay::Verdict::Good);
    EXPECT_EQ(canvas.overlay().wires.size(), 1U);
    key("Esc");
    EXPECT_TRUE(canvas.overlay().wires.empty());
    release(port("Top.G.blend.bg"));
    EXPECT_EQ(bytesOf(workspace), first);
    dragOn(port("Top.G.grey.out"), port("Top.G.blend.fg"));
    EXPECT_EQ(canvas.overlay().overVerdict, CanvasOverlay::Verdict::Bad);
    EXPECT_EQ(canvas.overlay().tip, "Top.G.grey.out is float, Top.G.blend.fg is color3");
    release(empty());
}

TEST_F(Wires, AllPortsAreDimmedThatTheEditWouldRefuse)
{
    for (const char* const path : {"Top.G.red.out", "Top.G.bright.in2", "Top.G.blend.out"}) {
        const bool isSource = static_cast<bool>(output(path));
        const PortPtr fixed = isSource ? output(path) : input(path);
        const shading::WireJudge judge(workspace.edits(), {fixed}, isSource);
        for (ZEL::Node* const other : workspace.compound()->nodes()) {
            for (ZEL::PortList* const list : {&other->inputs(), &other->outputs()}) {
                for (ZEL::Port* const end : *list)
                    EXPECT_EQ(judge.fits(*end), judge.problem(*end).empty())
                        << path << ", " << end->getFullPathName().getName();
            }
        }
    }
}

TEST_F(Wires, ANodeTakesItByItsFirstFreePort)
{
    drag(port("Top.G.grey.out"), header("Top.G.spare"));
    EXPECT_TRUE(isConnected("Top.G.grey.out", "Top.G.spare.amount"));
    drag(port("Top.G.spare.amount"), header("Top.G.red"));
    EXPECT_TRUE(isConnected("Top.G.grey.out", "Top.G.spare.amount"));
    EXPECT_TRUE(canvas.overlay().tip.contains("float")) << canvas.overlay().tip.toStdString();
    expectUndone(1);
}

TEST_F(Wires, ADropInTheEmptyMakesANodeThatFits)
{
    drag(port("Top.G.red.out"), empty());
    ASSERT_NE(popup(), nullptr);
    EXPECT_EQ(canvas.overlay().wires.size(), 1U) << "it stays drawn";
    EXPECT_EQ(undoCount(), 0);
    type("mix color3");
    key("Return");
    settle();
    EXPECT_EQ(popup(), nullptr);
    EXPECT_TRUE(canvas.overlay().wires.empty());
    EXPECT_EQ(selected(), "mix");
    EXPECT_EQ(node("Top.G.mix")->inputs()[0]->connectedTo()[0].get(),
              output("Top.G.red.out").get());
    expectUndone(1);
    drag(port("Top.G.red.out"), empty());
    key("Esc");
    settle();
    EXPECT_EQ(popup(), nullptr);
    EXPECT_TRUE(canvas.overlay().wires.empty());
    EXPECT_EQ(undoCount(), 1);
}

TEST_F(Wires, AnEndIsGrabbedAndMoved)
{
    // Near its target; to another port, to the empty, back to where it was.
    drag(wire("Top.G.red.out", "Top.G.blend.fg", 0.8), port("Top.G.spare.in"));
    EXPECT_TRUE(isConnected("Top.G.red.out", "Top.G.spare.in"));
    EXPECT_FALSE(input("Top.G.blend.fg")->isConnected());
    drag(port("Top.G.spare.in"), port("Top.G.spare.in") + QPoint(-14, 0));
    EXPECT_EQ(undoCount(), 1);
    ASSERT_EQ(canvas.hitAt(wire("Top.G.blend.out", "Top.G.bright.in1", 0.3)).kind,
              shading::Hit::Kind::WireSource);
    drag(wire("Top.G.blend.out", "Top.G.bright.in1", 0.3), port("Top.G.red.out"));
    EXPECT_TRUE(isConnected("Top.G.red.out", "Top.G.bright.in1")) << "its source moved";
    drag(port("Top.G.bright.in1"), empty());
    EXPECT_FALSE(input("Top.G.bright.in1")->isConnected());
    EXPECT_EQ(popup(), nullptr);
    expectUndone(3);
}

TEST_F(Wires, AllOfAnOutputMoveWithCtrl)
{
    drag(port("Top.G.red.out"), port("Top.G.spare.in"));
    drag(port("Top.G.red.out"), port("Top.G.blend.bg"));
    workspace.edit(
        [](auto& edits) { return edits.disconnect("Top.G.blend.out", "Top.G.bright.in1"); });
    settle();
    drag(port("Top.G.red.out"), port("Top.G.bright.out"), Qt::ControlModifier);
    for (const char* const target : {"Top.G.spare.in", "Top.G.blend.bg", "Top.G.blend.fg"})
        EXPECT_TRUE(isConnected("Top.G.bright.out", target)) << target;
    EXPECT_FALSE(output("Top.G.red.out")->isConnected());
    expectUndone(4);
}

TEST_F(Wires, ABarTakesANewPort)
{
    drag(port("Top.G.grey.out"), barPlus(false));
    const PortPtr made = workspace.compound()->innerOutputs()["out"];
    ASSERT_TRUE(made);
    EXPECT_EQ(made->connectedTo()[0].get(), output("Top.G.grey.out").get());
    drag(port("Top.G.spare.amount"), barPlus(true));
    EXPECT_TRUE(workspace.compound()->innerInputs()["amount"]);
    EXPECT_TRUE(input("Top.G.spare.amount")->isConnected());
    drag(port("Top.G.spare.in"), barPlus(false));
    EXPECT_EQ(refusals.size(), 1) << "an output takes from a source";
    expectUndone(2);
}

TEST_F(Wires, AWireIsSelectedAndDeleted)
{
    click(wire("Top.G.blend.out", "Top.G.bright.in1"));
    ASSERT_EQ(canvas.selection().wires.size(), 1U);
    click(wire("Top.G.red.out", "Top.G.blend.fg"), Qt::ShiftModifier);
    EXPECT_EQ(canvas.selection().wires.size(), 2U);
    key("Del");
    EXPECT_FALSE(input("Top.G.bright.in1")->isConnected());
    EXPECT_FALSE(input("Top.G.blend.fg")->isConnected());
    EXPECT_TRUE(canvas.selection().wires.empty());
    expectUndone(1);
    click(wire("Top.G.grey.out", "Top.G.blend.mix"));
    EXPECT_EQ(canvas.selection().wires.size(), 1U);
    click(header("Top.G.spare"));
    EXPECT_TRUE(canvas.selection().wires.empty());
}

TEST_F(Wires, ALineCutsWhatItStrikes)
{
    const QPoint top = wire("Top.G.red.out", "Top.G.blend.fg");
    const QPoint low = wire("Top.G.grey.out", "Top.G.blend.mix");
    const QPoint way = low - top;
    key("X");
    dragOn(top - way / 3, low + way / 3);
    EXPECT_EQ(canvas.overlay().struck.size(), 2U);
    release(low + way / 3);
    EXPECT_FALSE(input("Top.G.blend.fg")->isConnected());
    EXPECT_FALSE(input("Top.G.blend.mix")->isConnected());
    EXPECT_TRUE(input("Top.G.bright.in1")->isConnected());
    expectUndone(1);
    drag(empty(), empty() + QPoint(30, 30));
    EXPECT_EQ(undoCount(), 1) << "it cuts once";
}

TEST_F(Wires, TheMenuLeadsToBothEnds)
{
    rightClick(wire("Top.G.blend.out", "Top.G.bright.in1"));
    EXPECT_TRUE(chooseFromMenu("Go to Source"));
    EXPECT_EQ(selected(), "blend");
    rightClick(wire("Top.G.blend.out", "Top.G.bright.in1"));
    EXPECT_TRUE(chooseFromMenu("Go to Target"));
    EXPECT_EQ(selected(), "bright");
    rightClick(wire("Top.G.blend.out", "Top.G.bright.in1"));
    EXPECT_TRUE(chooseFromMenu("Disconnect"));
    EXPECT_FALSE(input("Top.G.bright.in1")->isConnected());
    expectUndone(1);
}

TEST_F(Wires, TheKeyboardConnectsAndDisconnects)
{
    click(header("Top.G.spare"));
    key("W");
    ASSERT_NE(popup(), nullptr);
    type("red.out to spare.in");
    ASSERT_EQ(popup()->count(), 1);
    key("Return");
    settle();
    EXPECT_TRUE(isConnected("Top.G.red.out", "Top.G.spare.in"));
    key("Shift+W");
    ASSERT_NE(popup(), nullptr);
    key("Return");
    settle();
    EXPECT_FALSE(input("Top.G.spare.in")->isConnected());
    expectUndone(2);
}

} // namespace shadingTest
