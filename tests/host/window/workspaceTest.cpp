// One document in the window: where the user is, what is selected, what views are told.

#include "windowFixture.h"

using shading::CompoundMarks;
using shading::Marks;
using shading::NodePtr;
using shading::Workspace;

namespace shadingTest {

class WorkspaceOfGate : public Window {
protected:
    WorkspaceOfGate() : workspace(open("rusty_painted_gate.mtlx"))
    {
        QObject::connect(&workspace, &Workspace::changed, &window, [this](const Marks& marks) {
            ++turns;
            for (const CompoundMarks& mark : marks) {
                QStringList names;
                for (const NodePtr& marked : mark.nodes)
                    names.append(marked->getName());
                names.sort();
                told.append(QString(mark.compound->getAsNode()->getName()) + ": " +
                            names.join(' '));
            }
        });
    }

    std::string here() { return workspace.compound()->getAsNode()->getFullPathName().getName(); }

    Workspace& workspace;
    int turns = 0;
    QStringList told;
};

TEST_F(WorkspaceOfGate, TellsOnceATurnWhatManyStepsChanged)
{
    ASSERT_TRUE(workspace.edit([](shading::Edits& edits) {
        std::string path;
        return edits.collapse("Top.NG_gate", "both", {"gate_color", "gate_roughness"}, path);
    }));
    EXPECT_EQ(turns, 0);
    settle();
    EXPECT_EQ(turns, 1);
    ASSERT_FALSE(told.empty());
    EXPECT_TRUE(told.filter("NG_gate: ").first().contains("both"));
    EXPECT_TRUE(told.filter("NG_gate: ").first().contains("gate_color"));
    told.clear();
    // A compound that came later is heard too.
    ASSERT_TRUE(workspace.edit([](shading::Edits& edits) {
        return edits.renameNode("Top.NG_gate.both.gate_color", "colour");
    }));
    settle();
    EXPECT_EQ(told, QStringList{"both: colour"});
}

TEST_F(WorkspaceOfGate, GoesInAndOutAndBack)
{
    workspace.enter(node("Top.NG_gate.rust")->getAsCompound());
    workspace.select({node("Top.NG_gate.rust.stain"), node("Top.SR_gate")});
    EXPECT_EQ(workspace.selection().size(), 1U) << "the other one is elsewhere";
    EXPECT_TRUE(workspace.leave());
    EXPECT_EQ(here(), "Top.NG_gate");
    EXPECT_TRUE(workspace.isSelected(*node("Top.NG_gate.rust")));
    EXPECT_TRUE(workspace.goBack());
    EXPECT_EQ(here(), "Top.NG_gate.rust");
    EXPECT_TRUE(workspace.isSelected(*node("Top.NG_gate.rust.stain")));
    EXPECT_TRUE(workspace.goBack());
    EXPECT_EQ(here(), "Top");
    EXPECT_FALSE(workspace.goBack());
    EXPECT_FALSE(workspace.leave());
    EXPECT_TRUE(workspace.goForward());
    EXPECT_EQ(here(), "Top.NG_gate.rust");
    EXPECT_TRUE(workspace.reveal("Top.NG_gate.paint.faded.amount"));
    EXPECT_EQ(here(), "Top.NG_gate.paint");
    EXPECT_TRUE(workspace.isSelected(*node("Top.NG_gate.paint.faded")));
    EXPECT_FALSE(workspace.reveal("Bottom"));
}

TEST_F(WorkspaceOfGate, LeavesACompoundThatGoes)
{
    workspace.enter(node("Top.NG_gate.rust.pits")->getAsCompound());
    ASSERT_TRUE(workspace.edit([](auto& edits) { return edits.deleteNode("Top.NG_gate.rust"); }));
    settle();
    EXPECT_EQ(here(), "Top.NG_gate");
    EXPECT_FALSE(workspace.canGoForward());
    while (workspace.goBack()) {
    }
    EXPECT_EQ(here(), "Top");
}

TEST_F(WorkspaceOfGate, ShowsWhereAnUndoneEditWas)
{
    ASSERT_TRUE(workspace.edit(
        [](auto& edits) { return edits.setValue("Top.NG_gate.paint.faded.amount", "0.5"); }));
    int shown = 0;
    QObject::connect(&workspace, &Workspace::revealed, &window, [&] { ++shown; });
    EXPECT_TRUE(workspace.undo());
    EXPECT_EQ(here(), "Top.NG_gate.paint");
    EXPECT_TRUE(workspace.isSelected(*node("Top.NG_gate.paint.faded")));
    EXPECT_EQ(shown, 1);
    EXPECT_FALSE(workspace.undo());
    EXPECT_EQ(refusals, QStringList{"history: nothing to undo"});
}

TEST_F(WorkspaceOfGate, MakesOneEditOfSeveralOrNone)
{
    const std::string before = bytesOf(workspace);
    const auto twice = [](const char* second) {
        return [second](shading::Edits& edits) {
            return edits.renameNode("Top.SR_gate", "first") &&
                   edits.renameNode("Top.NG_gate", second);
        };
    };
    EXPECT_FALSE(workspace.editAs("Rename both", twice("first")));
    EXPECT_EQ(bytesOf(workspace), before);
    EXPECT_EQ(workspace.history().undoCount(), 0);
    EXPECT_EQ(refusals.size(), 1);
    EXPECT_TRUE(workspace.editAs("Rename both", twice("second")));
    EXPECT_EQ(workspace.history().undoCount(), 1);
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_TRUE(workspace.undo());
    EXPECT_EQ(bytesOf(workspace), before);
    EXPECT_FALSE(window.isWindowModified());
}

TEST_F(Window, ClosesDocumentsInAnyOrder)
{
    shading::Workspace& first = open("rusty_painted_gate.mtlx");
    open("weathered_brick_wall.mtlx");
    first.edit([](auto& edits) { return edits.deleteNode("Top.NG_gate"); });
    window.removeDocument(window.views().front()); // With marks that were not told.
    settle();
    EXPECT_EQ(window.views().size(), 1U);
    window.removeDocument(window.view());
    EXPECT_EQ(window.workspace(), nullptr);
}

} // namespace shadingTest
