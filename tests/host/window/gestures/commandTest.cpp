// What keys and menus do with the selection.

#include "gestureFixture.h"
#include "window/gestures/gestures.h"
#include "window/gestures/nameEditor.h"
#include "window/gestures/pickPopup.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>

using shading::NameEditor;
using shading::PickPopup;

namespace shadingTest {

class Commands : public OnCanvas {
protected:
    NameEditor* editor() { return window.view()->findChild<NameEditor*>(); }
    PickPopup* popup() { return window.view()->findChild<PickPopup*>(); }
};

TEST_F(Commands, TabFindsAndMakesANode)
{
    click(empty());
    key("Tab");
    ASSERT_NE(popup(), nullptr);
    type("noise3d float");
    key("Return");
    settle();
    EXPECT_EQ(popup(), nullptr);
    EXPECT_EQ(selected(), "noise3d");
    EXPECT_TRUE(canvas.hasFocus());
    key("Tab");
    key("Return"); // What was made last is the first.
    settle();
    EXPECT_EQ(selected(), "noise3d2");
    shading::doubleClick(canvas, empty(), {});
    ASSERT_NE(popup(), nullptr) << "so does a double click";
    key("Esc");
    settle();
    expectUndone(2);
}

TEST_F(Commands, GroupsUngroupsAndRenames)
{
    click(header("Top.G.red"));
    click(header("Top.G.blend"), Qt::ShiftModifier);
    click(header("Top.G.grey"), Qt::ShiftModifier);
    key("Ctrl+G");
    ASSERT_TRUE(node("Top.G.group.blend"));
    ASSERT_NE(editor(), nullptr) << "its name is asked for";
    type("paint");
    key("Return");
    settle();
    ASSERT_TRUE(node("Top.G.paint.blend"));
    EXPECT_EQ(editor(), nullptr);
    key("F2");
    type("bright");
    key("Return");
    settle();
    ASSERT_NE(editor(), nullptr) << "a refusal keeps it open";
    EXPECT_EQ(editor()->findChild<QLabel*>("rename.reason")->text(), "the name is taken");
    key("Esc");
    settle();
    EXPECT_EQ(editor(), nullptr);
    EXPECT_TRUE(node("Top.G.paint"));
    key("Return");
    EXPECT_STREQ(workspace.compound()->getName(), "paint");
    key("U");
    EXPECT_STREQ(workspace.compound()->getName(), "G");
    EXPECT_EQ(selected(), "paint");
    key("Ctrl+Shift+G");
    EXPECT_EQ(selected(), "blend grey red");
    EXPECT_TRUE(isConnected("Top.G.red.out", "Top.G.blend.fg"));
    expectUndone(3);
}

TEST_F(Commands, ABadgeLeadsIn)
{
    key("U");
    EXPECT_STREQ(workspace.compound()->getName(), "Top");
    settle();
    shading::doubleClick(canvas, header("Top.G"), {});
    EXPECT_STREQ(workspace.compound()->getName(), "G");
    key("Alt+Left");
    EXPECT_STREQ(workspace.compound()->getName(), "Top");
    key("Alt+Right");
    EXPECT_STREQ(workspace.compound()->getName(), "G");
}

TEST_F(Commands, DeleteHealsAndShiftDeleteDoesNot)
{
    workspace.edit(
        [](auto& edits) { return edits.disconnect("Top.G.grey.out", "Top.G.blend.mix"); });
    settle();
    click(header("Top.G.blend"));
    key("Del");
    EXPECT_FALSE(node("Top.G.blend"));
    EXPECT_TRUE(isConnected("Top.G.red.out", "Top.G.bright.in1"));
    key("Ctrl+Z");
    click(header("Top.G.blend"));
    key("Shift+Del");
    EXPECT_FALSE(node("Top.G.blend"));
    EXPECT_FALSE(input("Top.G.bright.in1")->isConnected());
    key("Ctrl+Z");
    click(header("Top.G.blend"));
    key("Backspace");
    EXPECT_FALSE(node("Top.G.blend"));
    expectUndone(2);
}

TEST_F(Commands, CopiesAndPastesWithAndWithoutWires)
{
    click(header("Top.G.blend"));
    click(header("Top.G.bright"), Qt::ShiftModifier);
    key("Ctrl+C");
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains("<materialx"));
    click(empty());
    key("Ctrl+V");
    EXPECT_EQ(selected(), "blend2 bright2");
    EXPECT_TRUE(isConnected("Top.G.blend2.out", "Top.G.bright2.in1"));
    EXPECT_FALSE(input("Top.G.blend2.fg")->isConnected());
    key("Ctrl+Shift+V");
    EXPECT_EQ(selected(), "blend3 bright3");
    EXPECT_TRUE(isConnected("Top.G.red.out", "Top.G.blend3.fg"));
    key("Ctrl+D");
    EXPECT_EQ(workspace.selection().size(), 2U);
    key("Ctrl+X");
    EXPECT_EQ(workspace.selection().size(), 0U);
    expectUndone(4);
    QGuiApplication::clipboard()->setText("no nodes");
    key("Ctrl+V");
    EXPECT_EQ(refusals.last(), "paste: there are no nodes on the clipboard");
}

TEST_F(Commands, PastesIntoAnotherDocument)
{
    click(header("Top.G.blend"));
    click(header("Top.G.red"), Qt::ShiftModifier);
    key("Ctrl+C");
    shading::Workspace& other = open("weathered_brick_wall.mtlx");
    window.view()->canvas().setFocus();
    key("Ctrl+V");
    EXPECT_EQ(other.selection().size(), 2U);
    EXPECT_EQ(other.history().undoCount(), 1);
}

TEST_F(Commands, FoldsInThreeStates)
{
    click(header("Top.G.red"));
    click(header("Top.G.blend"));
    const auto height = [&] { return canvas.scene()->nodeRect("Top.G.blend")->height(); };
    const double brief = height();
    key("H");
    EXPECT_GE(height(), brief);
    key("H");
    EXPECT_LT(height(), brief);
    expectCanvasIsNew();
    key("H");
    EXPECT_EQ(height(), brief);
    EXPECT_EQ(undoCount(), 0) << "it is in no history";
}

TEST_F(Commands, RowsOfABarAreMovedRenamedAndDeleted)
{
    const QPoint from = bar("Top.G.level");
    drag(from, bar("Top.G.tint") - QPoint(0, 20));
    EXPECT_STREQ(workspace.compound()->innerInputs()[0]->getName(), "level");
    drag(bar("Top.G.level"), bar("Top.G.tint") + QPoint(0, 12));
    EXPECT_STREQ(workspace.compound()->innerInputs()[0]->getName(), "tint");
    click(bar("Top.G.level"));
    key("F2");
    ASSERT_NE(editor(), nullptr);
    type("amount");
    key("Return");
    settle();
    ASSERT_TRUE(workspace.compound()->innerInputs()["amount"]);
    click(bar("Top.G.amount"));
    key("Del");
    EXPECT_FALSE(workspace.compound()->innerInputs()["amount"]);
    expectUndone(4);
}

TEST_F(Commands, KeysAreLettersInATextField)
{
    click(header("Top.G.red"));
    key("F2");
    ASSERT_NE(editor(), nullptr);
    type("cUhxa");
    key("Ctrl+A");
    key("Del");
    type("ruby");
    key("Return");
    settle();
    EXPECT_TRUE(node("Top.G.ruby"));
    EXPECT_EQ(undoCount(), 1);
    EXPECT_STREQ(workspace.compound()->getName(), "G");
}

TEST_F(Commands, MenusHaveWhatTheMouseNeeds)
{
    rightClick(empty());
    EXPECT_TRUE(chooseFromMenu("Select All"));
    EXPECT_EQ(workspace.selection().size(), 5U);
    rightClick(empty());
    EXPECT_TRUE(chooseFromMenu("Add Node..."));
    EXPECT_NE(popup(), nullptr);
    key("Esc");
    settle();
    click(empty());
    rightClick(header("Top.G.blend"));
    EXPECT_EQ(selected(), "blend");
    EXPECT_TRUE(chooseFromMenu("Duplicate"));
    EXPECT_EQ(selected(), "blend2");
    rightClick(port("Top.G.blend.mix"));
    EXPECT_TRUE(chooseFromMenu("Disconnect All"));
    EXPECT_FALSE(input("Top.G.blend.mix")->isConnected());
    rightClick(bar("Top.G.level"));
    EXPECT_TRUE(chooseFromMenu("Delete Port"));
    rightClick(barPlus(true));
    EXPECT_TRUE(chooseFromMenu("Add Port..."));
    type("vector3");
    key("Return");
    settle();
    EXPECT_TRUE(workspace.compound()->innerInputs()["in"]);
    expectUndone(4);
}

TEST_F(Commands, ABackdropWrapsMovesAndIsRenamed)
{
    click(header("Top.G.red"));
    click(header("Top.G.grey"), Qt::ShiftModifier);
    key("C");
    ASSERT_EQ(canvas.scene()->backdrops().size(), 1U);
    ASSERT_NE(editor(), nullptr) << "its name is asked for";
    type("sources");
    key("Return");
    settle();
    const auto rect = [&] { return canvas.scene()->backdrops().front().rect; };
    const auto node = [&](const char* path) { return *canvas.scene()->nodeRect(path); };
    EXPECT_TRUE(rect().contains(node("Top.G.red") | node("Top.G.grey")));
    canvas.frameAll();
    const QRectF before = rect();
    const QPointF apart = node("Top.G.grey").topLeft() - before.topLeft();
    const QPointF blend = node("Top.G.blend").topLeft();
    const QPoint title = canvas.toPixel(before.topLeft() + QPointF(60, 8)).toPoint();
    drag(title, title + QPoint(-70, 50));
    EXPECT_NE(rect().topLeft(), before.topLeft());
    const QPointF kept = node("Top.G.grey").topLeft() - rect().topLeft();
    EXPECT_LT((kept - apart).manhattanLength(), 0.1) << "what it contains goes with it";
    EXPECT_EQ(node("Top.G.blend").topLeft(), blend);
    const QPoint corner = canvas.toPixel(rect().bottomRight()).toPoint() - QPoint(1, 1);
    const QSizeF size = rect().size();
    drag(corner, corner + QPoint(60, 70));
    EXPECT_GT(rect().width(), size.width());
    EXPECT_GT(rect().height(), size.height());
    EXPECT_EQ(undoCount(), 4);
    click(canvas.toPixel(rect().topLeft() + QPointF(60, 8)).toPoint());
    key("Del");
    EXPECT_TRUE(canvas.scene()->backdrops().empty());
    expectUndone(5);
}

} // namespace shadingTest
