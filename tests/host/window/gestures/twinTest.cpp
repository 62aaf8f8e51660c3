// What the mouse does, keys do too: the document is the same byte by byte.

#include "gestureFixture.h"
#include "window/canvas/sceneParts.h"
#include "window/gestures/gestures.h"
#include "window/gestures/pickPopup.h"

#include <functional>

namespace shadingTest {

class Twins : public OnCanvas {
protected:
    /// The bytes, the compound and the selection after it; what was edited is undone.
    std::string after(const std::function<void()>& gesture)
    {
        workspace.select({});
        canvas.setFocus();
        gesture();
        settle();
        EXPECT_EQ(refusals, QStringList());
        const std::string state =
            bytesOf(workspace) + workspace.compound()->getName() + ": " + selected();
        workspace.goToEdit(0);
        workspace.enter(node("Top.G")->getAsCompound());
        settle();
        EXPECT_EQ(bytesOf(workspace), first);
        return state;
    }

    void expectTwins(const char* what,
                     const std::function<void()>& mouse,
                     const std::function<void()>& keys)
    {
        SCOPED_TRACE(what);
        const std::string nothing = after([] {});
        const std::string byMouse = after(mouse);
        EXPECT_NE(byMouse, nothing);
        EXPECT_EQ(byMouse, after(keys));
    }

    /// By keys alone: from the node in the upper left corner on.
    void choose(const char* steps)
    {
        for (int i = 0; i < 6; ++i)
            key("Left");
        for (int i = 0; i < 3; ++i)
            key("Up");
        for (const char* step = steps; *step != 0; ++step)
            key(*step == 'r' ? "Right" : *step == 'd' ? "Down" : "Shift+Down");
    }

    void pick(const char* keys, const char* text)
    {
        key(keys);
        ASSERT_NE(window.view()->findChild<shading::PickPopup*>(), nullptr) << keys;
        type(text);
        key("Return");
        settle();
    }
};

TEST_F(Twins, ConnectTheSame)
{
    expectTwins(
        "connect",
        [&] {
            click(header("Top.G.red"));
            drag(port("Top.G.red.out"), port("Top.G.blend.bg"));
        },
        [&] {
            choose("");
            pick("W", "red.out to blend.bg");
        });
    expectTwins(
        "disconnect",
        [&] {
            click(header("Top.G.blend"));
            drag(port("Top.G.blend.fg"), empty());
        },
        [&] {
            choose("r");
            pick("Shift+W", "blend.fg from red.out");
        });
    expectTwins(
        "a new port",
        [&] {
            click(header("Top.G.grey"));
            drag(port("Top.G.grey.out"), barPlus(false));
        },
        [&] {
            choose("d");
            pick("W", "grey.out to a new output");
        });
    expectTwins(
        "move all connections",
        [&] {
            click(header("Top.G.red"));
            drag(port("Top.G.red.out"), port("Top.G.spare.out"), Qt::ControlModifier);
        },
        [&] {
            choose("");
            pick("Ctrl+Shift+W", "spare.out");
        });
}

TEST_F(Twins, SelectAndMoveTheSame)
{
    expectTwins(
        "select two",
        [&] {
            click(header("Top.G.red"));
            click(header("Top.G.grey"), Qt::ShiftModifier);
        },
        [&] { choose("D"); });
    expectTwins(
        "upstream", [&] { click(header("Top.G.blend"), Qt::ShiftModifier | Qt::AltModifier); },
        [&] {
            choose("r");
            key("Shift+Alt+U");
        });
    expectTwins(
        "move",
        [&] {
            const double step = shading::kGridWidth * canvas.view().scale();
            const QPoint at = header("Top.G.red");
            drag(at, at + QPointF(3 * step, 0).toPoint());
        },
        [&] {
            choose("");
            for (int i = 0; i < 3; ++i)
                key("Ctrl+Right");
        });
}

TEST_F(Twins, EditTheSame)
{
    const auto rename = [&](const char* name) {
        type(name);
        key("Return");
    };
    expectTwins(
        "rename",
        [&] {
            shading::doubleClick(canvas, header("Top.G.blend"), {});
            rename("mixed");
        },
        [&] {
            choose("r");
            key("F2");
            rename("mixed");
        });
    expectTwins(
        "delete",
        [&] {
            rightClick(header("Top.G.grey"));
            EXPECT_TRUE(chooseFromMenu("Delete"));
        },
        [&] {
            choose("d");
            key("Del");
        });
    expectTwins(
        "group",
        [&] {
            click(header("Top.G.red"));
            click(header("Top.G.grey"), Qt::ShiftModifier);
            rightClick(header("Top.G.grey"));
            EXPECT_TRUE(chooseFromMenu("Group"));
            rename("both");
        },
        [&] {
            choose("D");
            key("Ctrl+G");
            rename("both");
        });
    expectTwins(
        "leave",
        [&] {
            rightClick(empty());
            EXPECT_TRUE(chooseFromMenu("Leave to the Graph Around"));
        },
        [&] { key("U"); });
}

TEST_F(Twins, InsertTheSameConnections)
{
    const auto connections = [&] {
        return isConnected("Top.G.blend.out", "Top.G.spare.in") &&
               isConnected("Top.G.spare.out", "Top.G.bright.in1");
    };
    click(header("Top.G.spare"));
    pick("I", "blend.out to bright.in1");
    EXPECT_TRUE(connections());
    expectUndone(1);
}

} // namespace shadingTest
