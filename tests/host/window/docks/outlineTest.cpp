// The tree of the document and the search in it; the list of problems.

#include "docksFixture.h"
#include "window/docks/outlineModel.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTreeView>

using shading::Edits;
using shading::NodePtr;
using shading::Workspace;

namespace shadingTest {

class Outline : public Docks {
protected:
    Outline() { show("outline"); }

    QTreeView& tree() { return *widget<QTreeView>("outline.tree"); }
    shading::OutlineModel& model() { return *static_cast<shading::OutlineModel*>(tree().model()); }
    QTreeView& hits() { return *widget<QTreeView>("outline.hits"); }
    QLineEdit& line() { return *widget<QLineEdit>("outline.search"); }

    /// All that the tree has when everything is fetched, a line for each node.
    QStringList fetched(const QModelIndex& parent = {}, const QString& indent = {})
    {
        QStringList lines;
        while (model().canFetchMore(parent))
            model().fetchMore(parent);
        for (int i = 0; i < model().rowCount(parent); ++i) {
            const QModelIndex index = model().index(i, 0, parent);
            EXPECT_EQ(model().parent(index), parent);
            lines.append(indent + index.data().toString());
            lines += fetched(index, indent + " ");
        }
        return lines;
    }

    /// The same of the document.
    QStringList present(ZEL::Compound& compound, const QString& indent = {})
    {
        QStringList lines;
        for (const NodePtr& node : compound.nodes()) {
            lines.append(indent + node->getName());
            if (node->isCompound())
                lines += present(*node->getAsCompound(), indent + " ");
        }
        return lines;
    }

    void expectInStep(Workspace& workspace)
    {
        settle();
        EXPECT_EQ(fetched(), present(*workspace.document().getRootNode()->getAsCompound()));
    }

    void waitForSearch()
    {
        const auto isOver = [this] {
            return !widget<QLabel>("outline.count")->text().contains("so far");
        };
        EXPECT_TRUE(QTest::qWaitFor(isOver));
    }

    std::string selected(Workspace& workspace)
    {
        const auto& nodes = workspace.selection();
        return nodes.empty() ? "" : nodes.back()->getFullPathName().getName();
    }
};

TEST_F(Outline, FollowsEditsAtAllLevels)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    expectInStep(workspace);
    EXPECT_TRUE(fetched().contains("   pit_noise"));
    const auto edit = [&](const char* what, const Workspace::EditFunction& function) {
        SCOPED_TRACE(what);
        EXPECT_TRUE(workspace.edit(function));
        expectInStep(workspace);
        workspace.undo();
        expectInStep(workspace);
        workspace.redo();
        expectInStep(workspace);
    };
    std::string path;
    shading::Renamings renamed;
    shading::HostNodePtr made;
    edit("collapse", [&](Edits& edits) {
        return edits.collapse("Top.NG_gate", "both", {"gate_color", "paint"}, path);
    });
    edit("rename", [](Edits& edits) { return edits.renameNode("Top.NG_gate.both", "two"); });
    edit("expand", [&](Edits& edits) { return edits.expand("Top.NG_gate.rust", renamed); });
    edit("create",
         [&](Edits& edits) { return edits.createNode("Top.NG_gate", "mix", "new", made); });
    edit("delete", [](Edits& edits) { return edits.deleteNode("Top.NG_gate.gate_position"); });
    edit("delete all", [](Edits& edits) { return edits.deleteNode("Top.NG_gate"); });
    workspace.undo(workspace.history().undoCount());
    expectInStep(workspace);
}

TEST_F(Outline, SelectsInStepWithTheCanvas)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    const QModelIndex inner = model().indexOf(node("Top.NG_gate.rust.pits.pit_noise"));
    tree().expand(inner.parent().parent().parent());
    tree().expand(inner.parent().parent());
    tree().expand(inner.parent());
    click(tree(), inner);
    EXPECT_EQ(selected(workspace), "Top.NG_gate.rust.pits.pit_noise");
    EXPECT_EQ(workspace.compound(), node("Top.NG_gate.rust.pits")->getAsCompound());
    workspace.reveal(node("Top.NG_gate.paint"));
    settle();
    EXPECT_EQ(tree().currentIndex().data().toString(), "paint");
    EXPECT_EQ(tree().selectionModel()->selectedRows().size(), 1);
    // Enter and a double click go in.
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Return);
    settle();
    EXPECT_EQ(workspace.compound(), node("Top.NG_gate.paint")->getAsCompound());
}

TEST_F(Outline, FindsNamesTypesValuesAndPathsAndGoesOn)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    window.actions().find("edit.find")->trigger();
    EXPECT_TRUE(line().hasFocus());
    QTest::keyClicks(&line(), "PIT_NOISE");
    waitForSearch();
    ASSERT_GE(hits().model()->rowCount(), 1);
    EXPECT_EQ(hits().model()->index(0, 0).data().toString(), "Top.NG_gate.rust.pits.pit_noise");
    QTest::keyClick(&line(), Qt::Key_Return);
    EXPECT_EQ(selected(workspace), "Top.NG_gate.rust.pits.pit_noise");
    // By type, and from one to the next, round to the first.
    enter(&line(), "multiply");
    waitForSearch();
    const int count = hits().model()->rowCount();
    ASSERT_GE(count, 2);
    const std::string first = selected(workspace);
    window.actions().find("edit.findNext")->trigger();
    EXPECT_NE(selected(workspace), first);
    for (int i = 1; i < count; ++i)
        window.actions().find("edit.findNext")->trigger();
    EXPECT_EQ(selected(workspace), first);
    window.actions().find("edit.findPrevious")->trigger();
    EXPECT_NE(selected(workspace), first);
    // By value, and by path.
    line().setText("0.05");
    waitForSearch();
    EXPECT_EQ(hits().model()->index(0, 1).data().toString(), "in2 = 0.05");
    line().setText("Top.NG_gate.chipping");
    waitForSearch();
    EXPECT_EQ(hits().model()->index(0, 1).data().toString(), "path");
    click(hits(), hits().model()->index(0, 0));
    EXPECT_EQ(selected(workspace), "Top.NG_gate.chipping");
    // What was found may be gone before it is gone to.
    workspace.edit([](auto& edits) { return edits.deleteNode("Top.NG_gate.chipping"); });
    click(hits(), hits().model()->index(0, 0));
    QTest::keyClick(&line(), Qt::Key_Escape);
    EXPECT_TRUE(tree().isVisible());
    line().setText("nothing at all");
    waitForSearch();
    EXPECT_EQ(hits().model()->rowCount(), 0);
    window.removeDocument(window.view());
    EXPECT_FALSE(line().isEnabled());
}

TEST_F(Outline, FetchesALongCompoundInPieces)
{
    std::string text = "<?xml version=\"1.0\"?>\n<materialx version=\"1.39\">\n";
    for (int i = 0; i < 5000; ++i)
        text += "  <constant name=\"n" + std::to_string(i) + "\" type=\"float\" />\n";
    Workspace& workspace = openText(text + "</materialx>\n");
    EXPECT_LT(model().rowCount(), 5000);
    workspace.reveal(node("Top.n4321"));
    settle();
    EXPECT_EQ(tree().currentIndex().data().toString(), "n4321");
    workspace.edit([](auto& edits) { return edits.deleteNode("Top.n17"); });
    workspace.edit([](auto& edits) { return edits.deleteNode("Top.n4999"); });
    settle();
    EXPECT_EQ(model().index(17, 0).data().toString(), "n18");
    workspace.undo(2);
    expectInStep(workspace);
    // A second document, and the first again.
    open("weathered_brick_wall.mtlx");
    EXPECT_LT(model().rowCount(), 100);
    window.showDocument(window.views().front());
    expectInStep(workspace);
}

class Problems : public Docks {
protected:
    Problems() { show("problems"); }

    QStringList list()
    {
        QTest::mouseClick(widget("problems.check"), Qt::LeftButton);
        QStringList lines;
        const QAbstractItemModel& model = *view().model();
        for (int i = 0; i < model.rowCount(); ++i)
            lines.append(model.index(i, 1).data().toString() + ": " +
                         model.index(i, 2).data().toString());
        return lines;
    }

    QTreeView& view() { return *widget<QTreeView>("problems.list"); }
};

const char* const kOddDocument = R"(<?xml version="1.0"?>
<materialx version="1.39">
  <unheard name="odd" type="float">
    <input name="in" type="float" value="1" />
  </unheard>
  <constant name="twice" type="float" />
  <nodegraph name="inside">
    <constant name="bad" type="float">
      <input name="value" type="float" nodename="missing" />
    </constant>
  </nodegraph>
</materialx>
)";

TEST_F(Problems, ListsWhatCheckFindsAndLeadsThere)
{
    Workspace& workspace = openText(kOddDocument);
    const QStringList lines = list();
    EXPECT_EQ(lines.filter("unheard").size(), 1) << lines.join('\n').toStdString();
    ASSERT_GE(lines.filter("missing").size(), 1) << lines.join('\n').toStdString();
    for (int i = 0; i < lines.size(); ++i) {
        if (lines[i].startsWith("Top.inside.bad"))
            click(view(), view().model()->index(i, 0));
    }
    EXPECT_TRUE(workspace.isSelected(*node("Top.inside.bad")));
    // What it leads to may be gone.
    workspace.edit([](auto& edits) { return edits.deleteNode("Top.inside"); });
    for (int i = 0; i < lines.size(); ++i)
        click(view(), view().model()->index(i, 0));
    EXPECT_EQ(list().filter("missing").size(), lines.filter("text.mtlx").filter("missing").size());
}

TEST_F(Problems, LooksAgainAfterEditsWhileItIsSeen)
{
    Workspace& workspace = openText(kOddDocument);
    const QString before = widget<QLabel>("problems.count")->text();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view().model()->rowCount() > 0; }));
    const int rows = view().model()->rowCount();
    workspace.edit([](auto& edits) { return edits.deleteNode("Top.odd"); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return view().model()->rowCount() < rows; }));
    open("rusty_painted_gate.mtlx");
    EXPECT_EQ(view().model()->rowCount(), 0) << "those of the other document";
    window.removeDocument(window.view());
    window.removeDocument(window.view());
    EXPECT_FALSE(widget<QPushButton>("problems.check")->isEnabled());
}

} // namespace shadingTest
