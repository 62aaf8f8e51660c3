#include "window/canvas/scene.h"

#include "document/names.h"
#include "randomEdits.h"
#include "windowFixture.h"

#include <QSignalSpy>
#include <cmath>

namespace shadingTest {

class SceneTest : public Window {
protected:
    shading::CompoundPtr compound(const std::string& path) { return node(path)->getAsCompound(); }
};

} // namespace shadingTest

namespace {

using shading::Hit;
using shading::Scene;
using shading::SceneEnd;
using shading::ScreenMemory;
using shadingTest::SceneTest;

/// "KIND NAME" of what was hit.
std::string textOf(const Scene& scene, const Hit& hit)
{
    const char* const kinds[] = {"empty",  "port",   "header", "badge", "body", "row",     "plus",
                                 "source", "middle", "target", "title", "edge", "backdrop"};
    std::string text = kinds[static_cast<int>(hit.kind)];
    if (hit.end().isValid())
        text += " " + shading::pathOf(*scene.port(hit.end()).port);
    else if (hit.box >= 0)
        text += " " + shading::pathOf(*scene.boxes()[static_cast<std::size_t>(hit.box)].node);
    return text;
}

/// Chains of so many nodes, without places.
std::string chainText(int size, const std::string& attributes = "")
{
    std::string text = "<materialx version=\"1.39\"><nodegraph name=\"G\">";
    for (int i = 0; i < size; ++i) {
        text += "<add name=\"n" + std::to_string(i) + "\" type=\"float\"" + attributes + ">";
        if (i % 10 > 0)
            text +=
                "<input name=\"in1\" type=\"float\" nodename=\"n" + std::to_string(i - 1) + "\"/>";
        text += "</add>";
    }
    return text + "</nodegraph></materialx>";
}

/// Boxes of nodes that lie on each other.
int overlaps(const Scene& scene)
{
    int count = 0;
    for (int i = 0; i < static_cast<int>(scene.boxes().size()); ++i) {
        if (scene.boxes()[static_cast<std::size_t>(i)].isAlive)
            scene.forBoxes(scene.boxes()[static_cast<std::size_t>(i)].rect,
                           [&](int other) { count += other != i; });
    }
    return count;
}

} // namespace

TEST_F(SceneTest, FollowsEveryEditAsIfItWereBuiltAnew)
{
    for (const unsigned seed : {1U, 2U, 3U}) {
        shading::Workspace& workspace = open("rusty_painted_gate.mtlx");
        ScreenMemory memory;
        std::vector<std::unique_ptr<Scene>> scenes;
        for (const char* const path :
             {"Top", "Top.NG_gate", "Top.NG_gate.chipping", "Top.NG_gate.rust"}) {
            scenes.push_back(std::make_unique<Scene>(workspace.document(), compound(path), memory));
            ASSERT_TRUE(scenes.back()->build());
        }
        const auto follow = [&](const shading::Marks& marks) {
            for (const shading::CompoundMarks& mark : marks) {
                for (const auto& scene : scenes) {
                    if (mark.compound == scene->compound())
                        scene->update(shading::SceneMarks(mark));
                }
            }
        };
        const auto connection =
            QObject::connect(&workspace, &shading::Workspace::changed, &window, follow);
        RandomEdits edits(workspace.session(), seed);
        for (int step = 0; step < 150; ++step) {
            const std::string line = edits.step();
            workspace.flush();
            for (const auto& scene : scenes) {
                if (!scene->compound()->getAsNode() ||
                    !workspace.document().has(scene->compound()->getAsNode()))
                    continue;
                scene->build();
                Scene anew(workspace.document(), scene->compound(), memory);
                anew.build();
                ASSERT_EQ(anew.dump(), scene->dump()) << seed << " " << step << ": " << line;
            }
        }
        QObject::disconnect(connection);
        scenes.clear();
        memory.clear();
    }
}

TEST_F(SceneTest, PlacesWhatTheDocumentDoesNotAndWritesNothing)
{
    struct Case {
        const char* name;
        std::string attributes;
    };
    const Case cases[] = {
        {"without places", ""},
        {"all at one", " xpos=\"3\" ypos=\"3\""},
        {"beyond everything", " xpos=\"1e12\" ypos=\"0\""},
        {"no numbers", " xpos=\"left\" ypos=\"top\""},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        shading::Workspace& workspace = openText(chainText(40, each.attributes));
        const std::string before = bytesOf(workspace);
        ScreenMemory memory;
        Scene scene(workspace.document(), compound("Top.G"), memory);
        ASSERT_TRUE(scene.build());
        EXPECT_EQ(40, scene.nodeCount());
        EXPECT_EQ(0, overlaps(scene));
        EXPECT_LT(scene.nodeRect("Top.G.n1")->right(), scene.nodeRect("Top.G.n2")->left());
        EXPECT_GT(20000, scene.bounds().width());
        EXPECT_EQ(before, bytesOf(workspace));
        EXPECT_TRUE(workspace.session().isSaved());

        // A node that gets a place goes there, and the others stay.
        const QRectF other = *scene.nodeRect("Top.G.n7");
        const shading::NodePtr moved = node("Top.G.n3");
        ASSERT_TRUE(workspace.edits().moveNode(moved, {40, 50}));
        shading::SceneMarks marks;
        marks.nodes = {moved};
        scene.update(marks);
        EXPECT_EQ(QPointF(40 * 138, 50 * 116), scene.nodeRect("Top.G.n3")->topLeft());
        EXPECT_EQ(other, *scene.nodeRect("Top.G.n7"));
    }
}

TEST_F(SceneTest, TakesPlacesFromTheDocumentAndPutsTheOthersBeside)
{
    shading::Workspace& workspace =
        openText("<materialx version=\"1.39\"><add name=\"a\" type=\"float\" xpos=\"2\" "
                 "ypos=\"-1.5\"/><add name=\"b\" type=\"float\"><input name=\"in1\" "
                 "type=\"float\" nodename=\"a\"/></add></materialx>");
    ScreenMemory memory;
    Scene scene(workspace.document(), compound("Top"), memory);
    ASSERT_TRUE(scene.build());
    EXPECT_EQ(QPointF(276, -174), scene.nodeRect("Top.a")->topLeft());
    EXPECT_LT(scene.nodeRect("Top.a")->right(), scene.nodeRect("Top.b")->left());
    EXPECT_EQ(0, overlaps(scene));
    EXPECT_EQ(-1, scene.bar(true)) << "the document has no ports";
}

TEST_F(SceneTest, HitsEveryPortAndNodeWhereItSaysThatTheyAre)
{
    shading::Workspace& workspace = open("rusty_painted_gate.mtlx");
    ScreenMemory memory;
    for (const char* const path : {"Top", "Top.NG_gate", "Top.NG_gate.chipping"}) {
        Scene scene(workspace.document(), compound(path), memory);
        ASSERT_TRUE(scene.build());
        for (const double scale : {0.4, 1.0, 3.0}) {
            for (int i = 0; i < static_cast<int>(scene.boxes().size()); ++i) {
                const shading::SceneBox& box = scene.boxes()[static_cast<std::size_t>(i)];
                if (!box.isAlive)
                    continue;
                for (int p = 0; p < static_cast<int>(box.ports.size()); ++p) {
                    const SceneEnd end = {i, p};
                    const double inward = scene.port(end).takes ? 2 : -2;
                    for (const double off : {0.0, inward}) {
                        const Hit hit = scene.hitAt(scene.dotOf(end) + QPointF(off, 0), scale);
                        EXPECT_EQ(Hit::Kind::Port, hit.kind);
                        EXPECT_TRUE(end == hit.end()) << textOf(scene, hit);
                    }
                }
                if (box.isNode()) {
                    EXPECT_EQ(
                        "header " + shading::pathOf(*box.node),
                        textOf(scene, scene.hitAt(box.rect.topLeft() + QPointF(20, 12), scale)));
                }
            }
        }
    }
}

TEST_F(SceneTest, TellsWhatLiesAtAPoint)
{
    shading::Workspace& workspace = open("rusty_painted_gate.mtlx");
    ScreenMemory memory;
    Scene scene(workspace.document(), compound("Top.NG_gate"), memory);
    ASSERT_TRUE(scene.build());
    const auto at = [&](const QPointF& point) { return textOf(scene, scene.hitAt(point, 1)); };
    const QRectF mix = *scene.nodeRect("Top.NG_gate.gate_color");
    const QPointF out = *scene.portCentre("Top.NG_gate.gate_color.out", false);
    EXPECT_EQ("port Top.NG_gate.gate_color.out", at(out - QPointF(40, 6))) << "its label";
    EXPECT_EQ("port Top.NG_gate.gate_color.out", at(out + QPointF(17, 4))) << "20 pixels away";
    EXPECT_EQ("body Top.NG_gate.gate_color", at(QPointF(mix.center().x(), mix.bottom() - 3)));
    const int rust = scene.boxOf(node("Top.NG_gate.rust").get());
    EXPECT_EQ("badge Top.NG_gate.rust", at(scene.badge(rust).center()));
    EXPECT_EQ("row Top.NG_gate.age", at(*scene.barCentre("Top.NG_gate.age")));
    EXPECT_EQ("plus Top.NG_gate", at(scene.barPlus(scene.bar(false)).center()));
    EXPECT_EQ("empty", at(scene.bounds().bottomRight() + QPointF(50, 50)));

    const int wire =
        scene.wireOf(*output("Top.NG_gate.paint.faded_color"), *input("Top.NG_gate.gate_color.fg"));
    ASSERT_LE(0, wire);
    const shading::WireCurve curve = scene.wires()[static_cast<std::size_t>(wire)].curve();
    for (const auto& [part, kind] :
         {std::pair(0.25, "source"), std::pair(0.45, "middle"), std::pair(0.75, "target")}) {
        const Hit hit = scene.hitAt(curve.at(part) + QPointF(0.5, 1), 3);
        EXPECT_EQ(wire, hit.wire);
        EXPECT_EQ(kind, textOf(scene, hit));
    }
    EXPECT_EQ(curve.at(0.5),
              *scene.wireMiddle("Top.NG_gate.paint.faded_color", "Top.NG_gate.gate_color.fg"));
    EXPECT_FALSE(scene.portCentre("Top.NG_gate.nobody.out"));
    EXPECT_FALSE(scene.barCentre("Top.NG_gate.gate_color.out"));

    // A filter sees past what it does not take.
    const SceneEnd fg = scene.endOf(*input("Top.NG_gate.gate_color.fg"));
    const auto isNotFg = [&](const SceneEnd& end) { return end != fg; };
    EXPECT_FALSE(scene.portAt(scene.dotOf(fg) - QPointF(3, 0), 2, isNotFg) == fg);
    EXPECT_TRUE(scene.portAt(scene.dotOf(fg) - QPointF(3, 0), 2, {}) == fg);
}

TEST_F(SceneTest, FoldsANodeAndKeepsItsWires)
{
    shading::Workspace& workspace = open("rusty_painted_gate.mtlx");
    ScreenMemory memory;
    Scene scene(workspace.document(), compound("Top.NG_gate"), memory);
    ASSERT_TRUE(scene.build());
    const std::string before = scene.dump();
    shading::SceneMarks marks;
    marks.nodes = {node("Top.NG_gate.gate_color")};
    memory.setFold(marks.nodes.front(), shading::Fold::Header);
    scene.update(marks);
    const QRectF rect = *scene.nodeRect("Top.NG_gate.gate_color");
    EXPECT_EQ(42, rect.height());
    const int wire =
        scene.wireOf(*output("Top.NG_gate.paint.faded_color"), *input("Top.NG_gate.gate_color.fg"));
    EXPECT_EQ(rect.topLeft() + QPointF(0, 21), scene.wires()[static_cast<std::size_t>(wire)].to);
    memory.setFold(marks.nodes.front(), shading::Fold::Brief);
    scene.update(marks);
    EXPECT_EQ(before, scene.dump());
}

TEST_F(SceneTest, BuildsALargeCompoundInSlices)
{
    shading::Workspace& workspace = openText(chainText(3000));
    ScreenMemory memory;
    Scene atOnce(workspace.document(), compound("Top.G"), memory);
    ASSERT_TRUE(atOnce.build());
    const std::string expected = atOnce.dump();
    memory.clear();
    Scene inSlices(workspace.document(), compound("Top.G"), memory);
    int slices = 1;
    int last = 0;
    for (; !inSlices.build(0) && slices < 100000; ++slices) {
        EXPECT_LE(last, inSlices.builtPermille());
        last = inSlices.builtPermille();
        if (slices == 50) { // An edit meanwhile: it begins anew.
            ASSERT_TRUE(workspace.edits().renameNode("Top.G.n5", "five"));
            ASSERT_TRUE(workspace.edits().renameNode("Top.G.five", "n5"));
            shading::SceneMarks marks;
            marks.nodes = {node("Top.G.n5")};
            inSlices.update(marks);
            EXPECT_FALSE(inSlices.isBuilt());
            last = 0;
        }
    }
    EXPECT_LT(100, slices);
    EXPECT_EQ(expected, inSlices.dump());
}

TEST_F(SceneTest, DrawsBoxesElsewhereForTheTimeOfADrag)
{
    shading::Workspace& workspace = open("rusty_painted_gate.mtlx");
    ScreenMemory memory;
    Scene scene(workspace.document(), compound("Top.NG_gate"), memory);
    ASSERT_TRUE(scene.build());
    const std::string before = scene.dump();
    const QRectF first = *scene.nodeRect("Top.NG_gate.rust");
    const std::vector<int> boxes = {scene.boxOf(node("Top.NG_gate.rust").get()),
                                    scene.boxOf(node("Top.NG_gate.paint").get())};
    scene.setOffset(boxes, {10, 20});
    const QRectF area = scene.setOffset(boxes, {300, -40});
    EXPECT_EQ(first.translated(300, -40), *scene.nodeRect("Top.NG_gate.rust"));
    EXPECT_TRUE(area.contains(first.translated(10, 20)));
    EXPECT_TRUE(area.contains(first.translated(300, -40)));
    const QPointF color = *scene.portCentre("Top.NG_gate.rust.color", false);
    EXPECT_EQ("port Top.NG_gate.rust.color", textOf(scene, scene.hitAt(color, 1)));
    scene.setOffset({}, {});
    EXPECT_EQ(before, scene.dump());
}

TEST_F(SceneTest, ShowsUnknownNodesHiddenSourcesAndBackdrops)
{
    shading::Workspace& workspace =
        openText("<materialx version=\"1.39\"><whatever name=\"w\" type=\"float\"/>"
                 "<add name=\"a\" type=\"float\" xpos=\"1\" ypos=\"1\"/>"
                 "<backdrop name=\"frame\" doc=\"the frame\" xpos=\"-1\" ypos=\"-1\" width=\"5\" "
                 "height=\"4\" contains=\"a\"/></materialx>");
    ScreenMemory memory;
    Scene scene(workspace.document(), compound("Top"), memory);
    ASSERT_TRUE(scene.build());
    const int unknown = scene.boxOf(node("Top.w").get());
    EXPECT_EQ(shading::SceneBox::Kind::Unknown,
              scene.boxes()[static_cast<std::size_t>(unknown)].kind);
    ASSERT_EQ(1U, scene.backdrops().size());
    const QRectF frame = scene.backdrops().front().rect;
    EXPECT_EQ(QRectF(-138, -116, 690, 464), frame);
    EXPECT_EQ("title", textOf(scene, scene.hitAt(frame.topLeft() + QPointF(40, 10), 1)));
    EXPECT_EQ("edge", textOf(scene, scene.hitAt(frame.bottomRight() - QPointF(2, 2), 1)));
    EXPECT_EQ("backdrop", textOf(scene, scene.hitAt(frame.bottomRight() - QPointF(60, 60), 1)));
}
