// Nodes by the mouse and by keys: selected, moved, inserted, arranged.

#include "edits/positions.h"
#include "gestureFixture.h"
#include "window/gestures/desk.h"
#include "window/gestures/gestures.h"

#include <QWheelEvent>
#include <cmath>
#include <sstream>

namespace shadingTest {

class Nodes : public OnCanvas {
protected:
    QRectF rect(const std::string& path)
    {
        return canvas.scene()->nodeRect(path).value_or(QRectF());
    }
    /// Lines that differ.
    static int differences(const std::string& a, const std::string& b)
    {
        std::istringstream left(a);
        std::istringstream right(b);
        int count = 0;
        std::string x;
        std::string y;
        while (std::getline(left, x) && std::getline(right, y))
            count += x == y ? 0 : 1;
        return count;
    }
};

TEST_F(Nodes, AreSelectedByClicksAndABand)
{
    click(header("Top.G.red"));
    EXPECT_EQ(selected(), "red");
    click(header("Top.G.grey"), Qt::ShiftModifier);
    EXPECT_EQ(selected(), "grey red");
    click(header("Top.G.red"), Qt::ControlModifier);
    EXPECT_EQ(selected(), "grey");
    key("Ctrl+A");
    EXPECT_EQ(workspace.selection().size(), 5U);
    click(empty());
    EXPECT_EQ(selected(), "");
    const QRect left =
        canvas.view().toPixel(rect("Top.G.red") | rect("Top.G.grey")).toAlignedRect();
    const QRect band = left.adjusted(-12, -12, 12, 12);
    drag(band.topLeft(), band.bottomRight());
    EXPECT_EQ(selected(), "grey red");
    drag(band.topLeft(), band.bottomRight(), Qt::ControlModifier);
    EXPECT_EQ(selected(), "");
    click(header("Top.G.spare"));
    drag(band.topLeft(), band.bottomRight(), Qt::ShiftModifier);
    EXPECT_EQ(selected(), "grey red spare");
    EXPECT_EQ(undoCount(), 0) << "the selection is in no history";
    EXPECT_EQ(bytesOf(workspace), first);
}

TEST_F(Nodes, StreamsAreSelected)
{
    click(header("Top.G.blend"), Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_EQ(selected(), "blend grey red");
    click(header("Top.G.blend"), Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(selected(), "blend bright");
}

TEST_F(Nodes, AMoveChangesTwoAttributes)
{
    const QPoint from = header("Top.G.blend");
    drag(from, from + QPoint(83, 41));
    EXPECT_EQ(differences(first, bytesOf(workspace)), 1) << "one line: both are in it";
    const QPointF corner = rect("Top.G.blend").topLeft();
    EXPECT_NEAR(corner.x(), shading::snapped(corner).x(), 0.01);
    EXPECT_NEAR(corner.y(), shading::snapped(corner).y(), 0.01);
    const auto position = shading::positionOf(workspace.document(), node("Top.G.blend"));
    ASSERT_TRUE(position);
    EXPECT_NE(position->x, 2);
    expectUndone(1);
}

TEST_F(Nodes, CtrlLeavesTheGrid)
{
    const QPointF before = rect("Top.G.spare").topLeft();
    const QPoint from = header("Top.G.spare");
    drag(from, from + QPoint(37, 23), Qt::ControlModifier | Qt::AltModifier);
    const QPointF way = rect("Top.G.spare").topLeft() - before;
    EXPECT_NEAR(way.x(), 37 / canvas.view().scale(), 0.01);
    EXPECT_NEAR(way.y(), 23 / canvas.view().scale(), 0.01);
    expectUndone(1);
}

TEST_F(Nodes, SelectedOnesMoveTogetherAndKeepTheirPlaces)
{
    click(header("Top.G.red"));
    click(header("Top.G.grey"), Qt::ShiftModifier);
    const QPointF apart = rect("Top.G.grey").topLeft() - rect("Top.G.red").topLeft();
    drag(header("Top.G.red"), header("Top.G.red") + QPoint(-60, 30));
    EXPECT_EQ(differences(first, bytesOf(workspace)), 2);
    const QPointF after = rect("Top.G.grey").topLeft() - rect("Top.G.red").topLeft();
    EXPECT_NEAR(apart.x(), after.x(), 0.01);
    EXPECT_NEAR(apart.y(), after.y(), 0.01);
    EXPECT_EQ(selected(), "grey red");
    expectUndone(1);
}

TEST_F(Nodes, EscLeavesNoTraceOfAMove)
{
    const std::string dump = canvas.scene()->dump();
    dragOn(header("Top.G.blend"), header("Top.G.blend") + QPoint(90, 60));
    EXPECT_NE(canvas.scene()->dump(), dump);
    key("Esc");
    EXPECT_EQ(canvas.scene()->dump(), dump);
    release(empty());
    EXPECT_EQ(undoCount(), 0);
    EXPECT_EQ(bytesOf(workspace), first);
}

TEST_F(Nodes, OneOnItsOwnIsInsertedIntoAWire)
{
    const QPoint grip = header("Top.G.spare");
    const QPoint middle = canvas.toPixel(rect("Top.G.spare").center()).toPoint();
    const QPoint to = wire("Top.G.blend.out", "Top.G.bright.in1") + grip - middle;
    dragOn(grip, to);
    EXPECT_GE(canvas.overlay().insertion, 0) << "the wire lights up first";
    release(to);
    EXPECT_TRUE(isConnected("Top.G.blend.out", "Top.G.spare.in"));
    EXPECT_TRUE(isConnected("Top.G.spare.out", "Top.G.bright.in1"));
    expectUndone(1);
    workspace.undo();
    settle();
    drag(header("Top.G.spare"), to, Qt::AltModifier);
    EXPECT_FALSE(input("Top.G.spare.in")->isConnected()) << "Alt suspends it";
    EXPECT_EQ(undoCount(), 1);
}

TEST_F(Nodes, NudgesWithinASecondAreOneEdit)
{
    click(header("Top.G.spare"));
    const QPointF before = rect("Top.G.spare").topLeft();
    key("Ctrl+Right");
    key("Ctrl+Right");
    key("Ctrl+Down");
    const QPointF way = rect("Top.G.spare").topLeft() - before;
    EXPECT_NEAR(way.x(), 2 * shading::kGridWidth, 0.01);
    EXPECT_NEAR(way.y(), shading::kGridHeight, 0.01);
    expectUndone(1);
}

TEST_F(Nodes, ArrowsGoToTheNearest)
{
    click(header("Top.G.red"));
    key("Right");
    EXPECT_EQ(selected(), "blend");
    key("Right");
    EXPECT_EQ(selected(), "bright");
    key("Left");
    key("Down");
    EXPECT_EQ(selected(), "spare");
}

TEST_F(Nodes, AreAlignedDistributedAndArranged)
{
    click(header("Top.G.red"));
    click(header("Top.G.blend"), Qt::ShiftModifier);
    click(header("Top.G.spare"), Qt::ShiftModifier);
    const auto run = [&](const char* id) {
        window.actions().find(id)->trigger();
        settle();
    };
    run("distribute.across");
    EXPECT_NEAR(rect("Top.G.blend").left() - rect("Top.G.red").right(),
                rect("Top.G.spare").left() - rect("Top.G.blend").right(), 0.01);
    run("align.left");
    EXPECT_NEAR(rect("Top.G.red").left(), rect("Top.G.spare").left(), 0.01);
    EXPECT_NEAR(rect("Top.G.red").left(), rect("Top.G.blend").left(), 0.01);
    run("align.bottom");
    EXPECT_NEAR(rect("Top.G.red").bottom(), rect("Top.G.spare").bottom(), 0.01);
    key("Ctrl+L");
    EXPECT_LT(rect("Top.G.red").right(), rect("Top.G.blend").left());
    expectUndone(4);
}

TEST_F(Nodes, TheViewMovesWithoutAnEdit)
{
    const QPoint start = empty();
    const auto pan = [&](Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
        const QPointF before = canvas.toScene(QPointF(0, 0));
        dragOn(start, start + QPoint(50, 20), button, modifiers);
        release(start + QPoint(50, 20), button, modifiers);
        const QPointF way = (before - canvas.toScene(QPointF(0, 0))) * canvas.view().scale();
        dragOn(start, start - QPoint(50, 20), button, modifiers);
        release(start - QPoint(50, 20), button, modifiers);
        return way.toPoint();
    };
    EXPECT_EQ(pan(Qt::MiddleButton, {}), QPoint(50, 20));
    EXPECT_EQ(pan(Qt::RightButton, {}), QPoint(50, 20));
    EXPECT_EQ(pan(Qt::LeftButton, Qt::AltModifier), QPoint(50, 20));
    shading::drag(canvas, header("Top.G.red"), header("Top.G.red") + QPoint(5, 40),
                  {Qt::NoModifier, Qt::Key_Space});
    EXPECT_EQ(selected(), "") << "with Space a node is only ground";
    const double scale = canvas.view().scale();
    const QPointF under = canvas.toScene(QPointF(start));
    QWheelEvent wheel(start, canvas.mapToGlobal(start), {}, {0, 240}, {}, Qt::ControlModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&canvas, &wheel);
    EXPECT_GT(canvas.view().scale(), scale);
    EXPECT_LT((canvas.toScene(QPointF(start)) - under).manhattanLength(), 0.01);
    key("A");
    EXPECT_LE(canvas.view().scale(), 1);
    EXPECT_EQ(undoCount(), 0);
}

} // namespace shadingTest
