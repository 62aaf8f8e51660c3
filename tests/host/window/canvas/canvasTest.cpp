#include "window/canvas/canvas.h"

#include "document/names.h"
#include "window/canvas/minimap.h"
#include "window/canvas/pictureExport.h"
#include "windowFixture.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <fstream>

namespace shadingTest {

using shading::Canvas;

class CanvasTest : public Window {
protected:
    void show(const std::string& path)
    {
        shading::Workspace& workspace = *window.workspace();
        canvas.resize(700, 500);
        canvas.showCompound(workspace.document(), node(path)->getAsCompound(), memory);
        while (!canvas.scene())
            settle();
    }
    QImage picture() { return pictureOf(canvas); }
    static QImage pictureOf(Canvas& painted)
    {
        QImage image(painted.size(), QImage::Format_RGB32);
        painted.render(&image);
        return image;
    }
    /// The picture of a canvas that has nothing to remember.
    QImage pictureAnew()
    {
        Canvas other;
        other.setTheme(canvas.isDark() ? Canvas::Theme::Dark : Canvas::Theme::Light);
        other.resize(canvas.size());
        shading::ScreenMemory copy = memory;
        other.showCompound(canvas.scene()->document(), canvas.compound(), copy);
        while (!other.scene())
            settle();
        other.setSelection(canvas.selection());
        other.setView(canvas.view().scale(), canvas.view().centre());
        return pictureOf(other);
    }
    static int differing(const QImage& a, const QImage& b)
    {
        int count = a.size() == b.size() ? 0 : 1000000;
        for (int y = 0; y < a.height() && count < 1000000; ++y) {
            for (int x = 0; x < a.width(); ++x)
                count += a.pixel(x, y) != b.pixel(x, y);
        }
        return count;
    }

    ~CanvasTest() override
    {
        canvas.showNothing();
        memory.clear();
    }

    shading::ScreenMemory memory;
    Canvas canvas;
};

} // namespace shadingTest

using shading::Canvas;
using shadingTest::CanvasTest;

TEST_F(CanvasTest, APictureThatWasMovedEqualsOnePaintedAnew)
{
    open("rusty_painted_gate.mtlx");
    show("Top.NG_gate");
    for (const double scale : {0.1, 0.3, 0.5, 1.0, 2.0}) {
        canvas.setView(scale, canvas.scene()->bounds().center());
        picture();
        for (const QPointF& step : {QPointF(7, 0), QPointF(-20, 13), QPointF(0.4, -31.7),
                                    QPointF(150, 90), QPointF(-499, 1)}) {
            canvas.panBy(step);
            EXPECT_EQ(0, differing(pictureAnew(), picture())) << scale << " by " << step.x();
        }
    }
}

TEST_F(CanvasTest, APictureThatWasRepairedEqualsOnePaintedAnew)
{
    shading::Workspace& workspace = open("rusty_painted_gate.mtlx");
    show("Top.NG_gate");
    canvas.frameAll();
    picture();
    QObject::connect(&workspace, &shading::Workspace::changed, &canvas,
                     [this](const shading::Marks& marks) {
                         for (const shading::CompoundMarks& mark : marks) {
                             if (mark.compound == canvas.compound())
                                 canvas.update(shading::SceneMarks(mark));
                         }
                     });
    const std::vector<std::function<bool(shading::Edits&)>> edits = {
        [](shading::Edits& e) {
            return e.moveNode("Top.NG_gate.rust", {3, 0.5});
        },
        [](shading::Edits& e) { return e.renameNode("Top.NG_gate.rust", "r"); },
        [](shading::Edits& e) { return e.deleteNode("Top.NG_gate.gate_color"); },
        [](shading::Edits& e) { return e.addPort("Top.NG_gate", ZEL::PortInput, "p", "color3"); },
    };
    for (const auto& edit : edits) {
        ASSERT_TRUE(workspace.edit(edit));
        workspace.flush();
        EXPECT_EQ(0, differing(pictureAnew(), picture()));
    }
    while (workspace.history().undoCount() > 0) {
        workspace.undo();
        workspace.flush();
        EXPECT_EQ(0, differing(pictureAnew(), picture()));
    }
    const int box = canvas.scene()->boxOf(node("Top.NG_gate.paint").get());
    canvas.setOffset({box}, {80, 60});
    picture();
    canvas.setOffset({}, {});
    EXPECT_EQ(0, differing(pictureAnew(), picture()));
}

TEST_F(CanvasTest, ShowsThemesSelectionAndWhatGesturesAdd)
{
    open("rusty_painted_gate.mtlx");
    canvas.setTheme(Canvas::Theme::Light);
    show("Top.NG_gate");
    const QImage plain = picture();
    EXPECT_EQ(QColor(0xf4, 0xf6, 0xf9), plain.pixelColor(3, 495));
    shading::CanvasSelection selection;
    selection.nodes = {node("Top.NG_gate.rust")};
    canvas.setSelection(selection);
    EXPECT_LT(100, differing(plain, picture()));
    EXPECT_EQ(std::vector<int>{canvas.scene()->boxOf(selection.nodes.front().get())},
              canvas.selectedBoxes());
    canvas.setSelection({});
    EXPECT_EQ(0, differing(plain, picture()));

    canvas.setDimming([](const shading::SceneEnd&) { return true; });
    EXPECT_LT(100, differing(plain, picture()));
    canvas.setDimming({});
    shading::CanvasOverlay overlay;
    overlay.rubberBand = canvas.scene()->bounds();
    canvas.setOverlay(overlay);
    EXPECT_LT(100, differing(plain, picture()));
    overlay = {};
    overlay.tip = "Types differ";
    overlay.tipAt = canvas.scene()->bounds().center();
    canvas.setOverlay(overlay);
    EXPECT_LT(100, differing(plain, picture()));
    canvas.setOverlay({});
    EXPECT_EQ(0, differing(plain, picture()));
    canvas.setTheme(Canvas::Theme::Dark);
    EXPECT_TRUE(canvas.isDark());
    EXPECT_EQ(QColor(0x1b, 0x1e, 0x24), picture().pixelColor(3, 495));
}

TEST_F(CanvasTest, KeepsTheViewOfEachCompound)
{
    open("rusty_painted_gate.mtlx");
    show("Top.NG_gate");
    canvas.setView(0.7, {33, 44});
    show("Top.NG_gate.rust");
    EXPECT_TRUE(canvas.view().seen().contains(canvas.scene()->bounds()));
    show("Top.NG_gate");
    EXPECT_EQ(0.7, canvas.view().scale());
    EXPECT_EQ(QPointF(33, 44), canvas.view().centre());

    const QPointF under = canvas.toScene(QPointF(100, 100));
    canvas.zoomAt({100, 100}, 1.7);
    EXPECT_NEAR(under.x(), canvas.toScene(QPointF(100, 100)).x(), 1e-9);
    canvas.zoomAt({100, 100}, 1e9);
    EXPECT_EQ(shading::CanvasView::kMostScale, canvas.view().scale());
    canvas.reveal(*canvas.scene()->nodeRect("Top.NG_gate.rust"));
    EXPECT_TRUE(canvas.view().seen().contains(*canvas.scene()->nodeRect("Top.NG_gate.rust")));
}

TEST_F(CanvasTest, ExportsWhatItShows)
{
    open("rusty_painted_gate.mtlx");
    show("Top.NG_gate");
    const std::string all = shading::sceneSvg(*canvas.scene(), {});
    for (const char* const part :
         {"data-path=\"Top.NG_gate.rust\"", "data-path=\"Top.NG_gate.age\"",
          "data-from=\"Top.NG_gate.age\" data-to=\"Top.NG_gate.paint.age\"",
          "data-from=\"Top.NG_gate.gate_color.out\" data-to=\"Top.NG_gate.color\""})
        EXPECT_NE(std::string::npos, all.find(part)) << part;

    const QString svg = folder.filePath("p.svg");
    QString problem;
    EXPECT_FALSE(exportPicture(canvas, true, svg, problem));
    EXPECT_EQ("nothing is selected", problem.toStdString());
    shading::CanvasSelection selection;
    selection.nodes = {node("Top.NG_gate.rust"), node("Top.NG_gate.gate_color")};
    canvas.setSelection(selection);
    problem.clear();
    ASSERT_TRUE(exportPicture(canvas, true, svg, problem)) << problem.toStdString();
    std::ostringstream text;
    text << std::ifstream(svg.toStdString()).rdbuf();
    EXPECT_NE(std::string::npos, text.str().find("data-from=\"Top.NG_gate.rust.color\""));
    EXPECT_EQ(std::string::npos, text.str().find("Top.NG_gate.paint"));

    const QString png = folder.filePath("p.png");
    ASSERT_TRUE(exportPicture(canvas, false, png, problem)) << problem.toStdString();
    const QImage image(png);
    EXPECT_NEAR(2 * (canvas.scene()->bounds().width() + 48), image.width(), 2);
    EXPECT_FALSE(exportPicture(canvas, false, folder.filePath("p.mtlx"), problem));
    EXPECT_FALSE(exportPicture(canvas, false, "/nowhere/p.png", problem));
    EXPECT_EQ(0, problem.indexOf("the name of a picture")) << "the first reason stays";
}

TEST_F(CanvasTest, TheMinimapGoesWhereItIsPressed)
{
    open("rusty_painted_gate.mtlx");
    show("Top.NG_gate");
    shading::Minimap map(canvas);
    canvas.setView(2, canvas.scene()->bounds().topLeft());
    pictureOf(canvas);
    QImage image(map.size(), QImage::Format_RGB32);
    map.render(&image);
    const QPointF middle(map.width() / 2.0, map.height() / 2.0);
    QMouseEvent press(QEvent::MouseButtonPress, middle, map.mapToGlobal(middle), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&map, &press);
    EXPECT_NEAR(canvas.scene()->bounds().center().x(), canvas.view().centre().x(), 1);
    EXPECT_EQ(2, canvas.view().scale());
}
