// Each question that a gesture's edit asks is refused once: nothing may be left of it.

#include "document/document.h"
#include "edits/edits.h"
#include "gestureFixture.h"
#include "refusing.h"
#include "window/gestures/gestures.h"
#include "window/gestures/nameEditor.h"
#include "window/gestures/pickPopup.h"

#include <functional>

using shading::NodePtr;

namespace shadingTest {

/// Top.R with listeners that refuse: a.out > b.i, the input x > g.y > c.i inside, g.o > the output
/// o; d and e are on their own.
class RefusedGesture : public OnCanvas {
protected:
    RefusedGesture()
    {
        const NodePtr root = workspace.document().getRootNode();
        r = addCompound(*root->getAsCompound(), "R");
        const NodePtr a = addNode(*r, "a", 0, 0);
        const NodePtr b = addNode(*r, "b", 2, 0);
        addNode(*r, "d", 0, 2);
        addNode(*r, "e", 2, 2);
        const shading::CompoundPtr g = addCompound(*r, "g", 2, 1);
        const NodePtr c = addNode(*g, "c", 0, 0);
        for (const char* const name : {"x", "y"})
            r->createCompoundPort(ZEL::PortInput, name, portType());
        r->createCompoundPort(ZEL::PortOutput, "o", portType());
        g->createCompoundPort(ZEL::PortInput, "y", portType());
        g->createCompoundPort(ZEL::PortOutput, "o", portType());
        a->outputs()["out"]->addConnection(b->inputs()["i"]);
        r->innerInputs()["x"]->addConnection(g->getAsNode()->inputs()["y"]);
        g->innerInputs()["y"]->addConnection(c->inputs()["i"]);
        c->outputs()["out"]->addConnection(g->innerOutputs()["o"]);
        g->getAsNode()->outputs()["o"]->addConnection(r->innerOutputs()["o"]);
        workspace.history().undoCount(); // What was made so far is the document.
        workspace.enter(r);
        settle();
        showAllPorts();
        first = bytesOf(workspace);
    }
    ~RefusedGesture() override { g_agreed = -1; }

    ZEL::AddRefWrapper<ZEL::PortDataType> portType() { return workspace.document().dataType("t"); }

    NodePtr addTo(ZEL::Compound& around, const char* name, double x, double y)
    {
        NodePtr made(new Refusing<shading::Node>(&workspace.document()));
        made->setName(name);
        around.nodes().add(made);
        shading::setPosition(workspace.document(), made, {x, y});
        return made;
    }
    shading::CompoundPtr
    addCompound(ZEL::Compound& around, const char* name, double x = 0, double y = 0)
    {
        return new RefusingCompound(addTo(around, name, x, y));
    }
    NodePtr addNode(ZEL::Compound& around, const char* name, double x, double y)
    {
        NodePtr made = addTo(around, name, x, y);
        made->setNodeTypeName("n");
        made->inputs().addPort("i", portType());
        made->inputs().addPort("j", portType());
        made->outputs().addPort("out", portType());
        return made;
    }

    void showAllPorts()
    {
        key("Ctrl+A");
        key("H");
        canvas.frameAll();
        click(empty());
    }

    std::string state()
    {
        settle();
        return bytesOf(workspace) + std::to_string(undoCount()) + canvas.scene()->dump();
    }

    /// Does it again and again, each time with a later question refused, until none is; then undoes
    /// it. Returns how many were asked.
    int refuseEach(const std::function<void()>& gesture)
    {
        const std::string before = state();
        const int count = undoCount();
        for (int question = 0; question < 200; ++question) {
            SCOPED_TRACE(question);
            refusals.clear();
            g_agreed = question;
            gesture();
            const bool wasRefused = g_agreed < 0;
            g_agreed = -1;
            if (auto* const editor = window.view()->findChild<shading::NameEditor*>())
                editor->close();
            settle();
            if (!wasRefused) {
                EXPECT_EQ(undoCount(), count + 1);
                EXPECT_TRUE(workspace.undo());
                EXPECT_EQ(bytesOf(workspace), first);
                return question;
            }
            EXPECT_EQ(state(), before);
            EXPECT_EQ(refusals.size(), 1) << refusals.join("\n").toStdString();
            EXPECT_TRUE(canvas.overlay().tip.contains("refused by a listener"))
                << canvas.overlay().tip.toStdString();
            expectCanvasIsNew();
            if (HasFailure())
                return -1;
        }
        return -1;
    }

    shading::CompoundPtr r;
};

TEST_F(RefusedGesture, OfWiresLeavesNoTrace)
{
    EXPECT_LE(1, refuseEach([&] { drag(port("Top.R.d.out"), port("Top.R.e.i")); }));
    EXPECT_LE(2, refuseEach([&] { drag(port("Top.R.d.out"), port("Top.R.b.i")); })) << "replaced";
    EXPECT_LE(2, refuseEach([&] { drag(port("Top.R.b.i"), port("Top.R.e.j")); }))
        << "led elsewhere";
    EXPECT_LE(1, refuseEach([&] { drag(port("Top.R.b.i"), empty()); })) << "taken off";
    EXPECT_LE(2, refuseEach(
                     [&] { drag(port("Top.R.a.out"), port("Top.R.d.out"), Qt::ControlModifier); }));
    EXPECT_LE(3, refuseEach([&] { drag(port("Top.R.d.out"), barPlus(false)); }));
    EXPECT_LE(1, refuseEach([&] { drag(port("Top.R.d.out"), header("Top.R.e")); }));
    EXPECT_LE(2, refuseEach([&] {
                  click(wire("Top.R.a.out", "Top.R.b.i"));
                  click(wire("Top.R.g.o", "Top.R.o"), Qt::ShiftModifier);
                  key("Del");
              }));
}

TEST_F(RefusedGesture, OfACutOrAnInsertionLeavesNoTrace)
{
    EXPECT_LE(1, refuseEach([&] {
                  const QPoint middle = wire("Top.R.a.out", "Top.R.b.i");
                  key("X");
                  drag(middle - QPoint(0, 15), middle + QPoint(0, 15));
              }));
    EXPECT_LE(3, refuseEach([&] {
                  const QPointF centre =
                      canvas.toPixel(canvas.scene()->nodeRect("Top.R.d")->center());
                  const QPoint grip = header("Top.R.d");
                  drag(grip, wire("Top.R.a.out", "Top.R.b.i") + grip - centre.toPoint());
              }));
}

TEST_F(RefusedGesture, OfGroupingOrDeletingLeavesNoTrace)
{
    EXPECT_LE(4, refuseEach([&] {
                  click(header("Top.R.a"));
                  click(header("Top.R.g"), Qt::ShiftModifier);
                  key("Ctrl+G");
              }));
    EXPECT_LE(4, refuseEach([&] {
                  click(header("Top.R.g"));
                  key("Ctrl+Shift+G");
              }));
    EXPECT_LE(2, refuseEach([&] {
                  click(header("Top.R.g"));
                  key("Del");
              }));
}

TEST_F(RefusedGesture, OfCopiesAndNewNodesLeavesNoTrace)
{
    EXPECT_LE(1, refuseEach([&] {
                  click(header("Top.R.d"));
                  key("Ctrl+D");
              }));
    EXPECT_LE(1, refuseEach([&] {
                  click(header("Top.R.d"));
                  key("Ctrl+C");
                  key("Ctrl+V");
              }));
    EXPECT_LE(1, refuseEach([&] {
                  click(empty());
                  key("Tab");
                  type("nodegraph");
                  key("Return");
              }));
}

TEST_F(RefusedGesture, OfABarLeavesNoTrace)
{
    EXPECT_LE(1, refuseEach([&] { drag(bar("Top.R.y"), bar("Top.R.x") - QPoint(0, 20)); }));
    EXPECT_LE(1, refuseEach([&] {
                  click(bar("Top.R.x"));
                  key("F2");
                  type("z");
                  key("Return");
              }));
    EXPECT_LE(2, refuseEach([&] {
                  click(bar("Top.R.x"));
                  key("Del");
              }));
}

} // namespace shadingTest
