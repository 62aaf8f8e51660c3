// Random gestures on whole documents: the canvas is what a new one would be, after each of them.

#include "gestureFixture.h"
#include "window/gestures/gestures.h"
#include "window/gestures/nameEditor.h"
#include "window/gestures/pickPopup.h"

#include <QApplication>
#include <QDirIterator>
#include <random>

namespace shadingTest {

namespace {

int numberFrom(const char* variable, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? number : otherwise;
}

} // namespace

class RandomGestures : public Window {
protected:
    /// Gestures until the canvas is no longer what a new one is. Returns how many edits were made.
    int play(const std::string& path, unsigned seed, int steps)
    {
        shading::Workspace& workspace = open(path);
        const std::string before = bytesOf(workspace);
        m_random.seed(seed);
        for (int i = 0; i < steps && !HasFailure(); ++i) {
            const std::string what = step(workspace);
            SCOPED_TRACE(path + ", seed " + std::to_string(seed) + ", " + std::to_string(i) + ": " +
                         what);
            settle();
            compare(workspace);
        }
        while (workspace.history().redoCount() > 0)
            workspace.redo();
        const std::string last = bytesOf(workspace);
        const int edits = workspace.history().undoCount();
        workspace.goToEdit(0);
        EXPECT_EQ(before, bytesOf(workspace)) << path << ", seed " << seed;
        workspace.goToEdit(edits);
        EXPECT_EQ(last, bytesOf(workspace)) << path << ", seed " << seed;
        settle();
        compare(workspace);
        window.removeDocument(window.view());
        return edits;
    }

private:
    int number(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    void compare(shading::Workspace& workspace)
    {
        shading::ScreenMemory memory = window.view()->memory();
        shading::Scene scene(workspace.document(), workspace.compound(), memory);
        scene.build();
        ASSERT_TRUE(canvas().scene());
        EXPECT_EQ(scene.dump(), canvas().scene()->dump());
    }

    shading::Canvas& canvas() { return window.view()->canvas(); }

    /// Somewhere on a box, or on its header, or on one of its ports.
    QPoint anyPlace(bool isPort)
    {
        const shading::Scene& scene = *canvas().scene();
        for (int tries = 0; tries < 20 && !scene.boxes().empty(); ++tries) {
            const int index = number(static_cast<int>(scene.boxes().size()));
            const shading::SceneBox& box = scene.boxes()[static_cast<std::size_t>(index)];
            if (!box.isAlive || (isPort && box.ports.empty()))
                continue;
            const QPointF place =
                isPort ? scene.dotOf({index, number(static_cast<int>(box.ports.size()))})
                       : box.rect.topLeft() + QPointF(box.rect.width() / 3, 12);
            const QPoint pixel = canvas().toPixel(place).toPoint();
            if (canvas().rect().contains(pixel))
                return pixel;
        }
        return anyPoint();
    }
    QPoint anyPoint() { return {number(canvas().width()), number(canvas().height())}; }

    QPoint anyWire()
    {
        const shading::Scene& scene = *canvas().scene();
        for (int tries = 0; tries < 20 && !scene.wires().empty(); ++tries) {
            const shading::SceneWire& wire = scene.wires()[static_cast<std::size_t>(
                number(static_cast<int>(scene.wires().size())))];
            if (wire.isAlive)
                return canvas().toPixel(wire.curve().at(0.15 + 0.1 * number(8))).toPoint();
        }
        return anyPoint();
    }

    void drag(const QPoint& from, const QPoint& to)
    {
        const Qt::KeyboardModifiers kinds[] = {Qt::NoModifier,    Qt::NoModifier,
                                               Qt::NoModifier,    Qt::ControlModifier,
                                               Qt::ShiftModifier, Qt::AltModifier};
        shading::drag(canvas(), from, to, {kinds[number(6)], 0});
    }

    void key(const char* keys) { shading::press(QKeySequence(keys)); }

    /// What was opened by a gesture is answered or left.
    void answer()
    {
        settle();
        if (window.view()->findChild<shading::PickPopup*>())
            key(number(3) > 0 ? "Return" : "Esc");
        settle();
        if (window.view()->findChild<shading::NameEditor*>()) {
            if (number(2) > 0)
                shading::type(QString("name%1").arg(number(50)));
            key("Return");
            settle();
            if (window.view()->findChild<shading::NameEditor*>())
                key("Esc");
        }
        if (QWidget* const menu = QApplication::activePopupWidget())
            menu->close();
        key("Esc");
        settle();
    }

    std::string press(const char* keys)
    {
        key(keys);
        return keys;
    }

    std::string step(shading::Workspace& workspace)
    {
        if (number(4) == 0)
            canvas().frameAll();
        canvas().setFocus();
        std::string what;
        switch (number(14)) {
        case 0:
        case 1:
            drag(anyPlace(true), anyPlace(true));
            what = "wire";
            break;
        case 2:
            drag(anyPlace(true), anyPlace(false));
            what = "wire to a node";
            break;
        case 3:
            drag(anyPlace(true), anyPoint());
            what = "wire to anywhere";
            break;
        case 4:
        case 5:
            drag(anyPlace(false), anyPoint());
            what = "move";
            break;
        case 6:
            drag(anyWire(), anyPlace(true));
            what = "grab a wire";
            break;
        case 7:
            key("X");
            drag(anyPoint(), anyPoint());
            what = "cut";
            break;
        case 8:
            shading::click(canvas(), anyPlace(false), Qt::LeftButton, {});
            shading::click(canvas(), anyPlace(false), Qt::LeftButton, {Qt::ShiftModifier, 0});
            what = pressAny();
            break;
        case 9:
            drag(anyPoint(), anyPoint());
            what = "band, " + pressAny();
            break;
        case 10:
            shading::doubleClick(canvas(), anyPlace(false), {});
            what = "double click";
            break;
        case 11:
            what = press(number(3) > 0 ? "Ctrl+Z" : "Ctrl+Y");
            break;
        case 12:
            what = press(number(2) > 0 ? "Tab" : "W");
            break;
        default:
            shading::click(canvas(), anyWire(), Qt::LeftButton, {});
            what = "wire and " + press("Del");
        }
        answer();
        // Not lost in an empty graph.
        if (workspace.compound()->nodes().size() == 0)
            workspace.leave();
        return what;
    }

    std::string pressAny()
    {
        const char* const kKeys[] = {
            "Ctrl+G",  "Ctrl+Shift+G", "Ctrl+D",     "Ctrl+C", "Ctrl+V",    "Ctrl+Shift+V",
            "Ctrl+X",  "Del",          "F2",         "H",      "Shift+Del", "Ctrl+L",
            "Return",  "Ctrl+Up",      "Ctrl+Right", "U",      "Left",      "W",
            "Shift+W", "Ctrl+Shift+W", "Alt+Left"};
        return press(kKeys[number(static_cast<int>(std::size(kKeys)))]);
    }

    std::mt19937 m_random;
};

TEST_F(RandomGestures, LeaveTheCanvasAsANewOne)
{
    const int steps = numberFrom("ZELEDIT_GESTURES", 60);
    const unsigned seed = static_cast<unsigned>(numberFrom("ZELEDIT_SEED", 1));
    for (const char* const name :
         {"rusty_painted_gate.mtlx", "weathered_brick_wall.mtlx", "stained_glass_window.mtlx"})
        EXPECT_GT(play(name, seed, steps), steps / 10) << name;
}

TEST_F(RandomGestures, InAFolderOfChoiceLeaveTheCanvasAsANewOne)
{
    const QString documents = qEnvironmentVariable("SHADING_EXTRA_DOCUMENTS");
    if (documents.isEmpty())
        GTEST_SKIP() << "SHADING_EXTRA_DOCUMENTS names no folder";
    const int steps = numberFrom("ZELEDIT_GESTURES", 40);
    const unsigned seed = static_cast<unsigned>(numberFrom("ZELEDIT_SEED", 1));
    QDirIterator files(documents, {"*.mtlx"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext() && !HasFailure())
        play(files.next().toStdString(), seed, steps);
}

} // namespace shadingTest
