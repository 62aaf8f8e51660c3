// What a gesture works on changes or goes under it.

#include "gestureFixture.h"
#include "window/gestures/gestures.h"
#include "window/gestures/nameEditor.h"
#include "window/gestures/pickPopup.h"

#include <QApplication>
#include <functional>

namespace shadingTest {

class Closing : public OnCanvas {
protected:
    /// The document goes in the middle of it.
    void expectToClose(const std::function<void()>& gesture)
    {
        gesture();
        window.removeDocument(window.view());
        settle();
        EXPECT_EQ(window.view(), nullptr);
        if (QWidget* const menu = QApplication::activePopupWidget())
            menu->close();
        settle();
    }
};

TEST_F(Closing, InTheMiddleOfADrag)
{
    expectToClose([&] { dragOn(port("Top.G.red.out"), port("Top.G.blend.bg")); });
}

TEST_F(Closing, WithASearchOpen)
{
    expectToClose([&] {
        drag(port("Top.G.red.out"), empty());
        type("mix");
        ASSERT_NE(window.view()->findChild<shading::PickPopup*>(), nullptr);
    });
}

TEST_F(Closing, WithANameBeingEdited)
{
    expectToClose([&] {
        click(header("Top.G.red"));
        key("F2");
        type("ruby");
        ASSERT_NE(window.view()->findChild<shading::NameEditor*>(), nullptr);
    });
}

TEST_F(Closing, WithAMenuOpen)
{
    expectToClose([&] { rightClick(port("Top.G.blend.mix")); });
}

TEST_F(Closing, AnEditFromElsewhereEndsADrag)
{
    dragOn(header("Top.G.spare"), header("Top.G.spare") + QPoint(60, 30));
    EXPECT_TRUE(window.view()->gestures().isBusy());
    ASSERT_TRUE(workspace.edit([](auto& edits) { return edits.deleteNode("Top.G.spare"); }));
    settle();
    EXPECT_FALSE(window.view()->gestures().isBusy());
    release(empty());
    expectUndone(1);
    workspace.undo();
    settle();
    // Before the views heard of it.
    dragOn(port("Top.G.spare.out"), port("Top.G.blend.bg"));
    workspace.edit([](auto& edits) { return edits.deleteNode("Top.G.spare"); });
    release(port("Top.G.blend.bg"));
    EXPECT_FALSE(input("Top.G.blend.bg")->isConnected());
    EXPECT_EQ(undoCount(), 1);
    expectCanvasIsNew();
}

TEST_F(Closing, ASearchWhosePortIsGoneIsRefused)
{
    drag(port("Top.G.spare.out"), empty());
    workspace.edit([](auto& edits) { return edits.deleteNode("Top.G.spare"); });
    settle();
    type("mix");
    key("Return");
    settle();
    EXPECT_EQ(refusals.size(), 1);
    EXPECT_FALSE(node("Top.G.mix"));
    EXPECT_EQ(undoCount(), 1);
    expectCanvasIsNew();
}

TEST_F(Closing, LeavingTheCompoundEndsAWireByClicks)
{
    click(port("Top.G.red.out"));
    EXPECT_TRUE(window.view()->gestures().isBusy());
    workspace.leave();
    settle();
    EXPECT_FALSE(window.view()->gestures().isBusy());
    click(header("Top.G"));
    EXPECT_EQ(selected(), "G");
    EXPECT_EQ(bytesOf(workspace), first);
}

} // namespace shadingTest
