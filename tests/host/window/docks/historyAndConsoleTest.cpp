// The lists of what was done: history and console.

#include "docksFixture.h"
#include "window/docks/consolePanel.h"

#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <fstream>
#include <sstream>

using shading::Edits;
using shading::Workspace;

namespace shadingTest {

class HistoryDock : public Docks {
protected:
    HistoryDock() { show("history"); }

    QStringList rows()
    {
        QStringList texts;
        const QAbstractItemModel& model = *list().model();
        for (int i = 0; i < model.rowCount(); ++i)
            texts.append(model.index(i, 0).data().toString());
        return texts;
    }

    QListView& list() { return *widget<QListView>("history.list"); }
    void clickRow(int row) { click(list(), list().model()->index(row, 0)); }
};

bool setPaint(Workspace& workspace, const std::string& value)
{
    return workspace.edit(
        [&](Edits& edits) { return edits.setValue("Top.NG_gate.paint_color", value); });
}

TEST_F(HistoryDock, GoesWhereAClickSays)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    const std::string opened = bytesOf(workspace);
    ASSERT_TRUE(setPaint(workspace, "1, 1, 1"));
    const std::string first = bytesOf(workspace);
    ASSERT_TRUE(workspace.edit([](auto& edits) { return edits.renameNode("Top.NG_gate", "g"); }));
    const std::string second = bytesOf(workspace);
    ASSERT_EQ(rows().size(), 3);
    EXPECT_EQ(rows()[0], "(opened) (saved)");
    EXPECT_EQ(rows()[2], "Rename NG_gate to g");
    clickRow(0);
    EXPECT_EQ(bytesOf(workspace), opened);
    EXPECT_TRUE(rows()[1].endsWith("(undone)"));
    clickRow(2);
    EXPECT_EQ(bytesOf(workspace), second);
    clickRow(1);
    EXPECT_EQ(bytesOf(workspace), first);
    EXPECT_EQ(list().currentIndex().row(), 1);
    // By the keyboard.
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Up);
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(bytesOf(workspace), opened);
    // A new edit forgets those that are undone.
    ASSERT_TRUE(setPaint(workspace, "0, 0, 0"));
    EXPECT_EQ(rows().size(), 2);
}

TEST_F(HistoryDock, MarksWhatWasSaved)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    setPaint(workspace, "1, 1, 1");
    std::vector<shading::SaveProblem> problems;
    ASSERT_TRUE(workspace.session().save(folder.filePath("s.mtlx").toStdString(), problems));
    workspace.noteFile();
    EXPECT_TRUE(rows()[1].endsWith("(saved)"));
    EXPECT_FALSE(rows()[0].contains("(saved)"));
    setPaint(workspace, "1, 0, 1");
    EXPECT_TRUE(rows()[1].endsWith("(saved)"));
    workspace.undo(2);
    EXPECT_EQ(rows().filter("(saved)").size(), 1);
    setPaint(workspace, "1, 0, 0");
    EXPECT_EQ(rows().filter("(saved)").size(), 0) << "no way leads back there";
}

TEST_F(HistoryDock, KeepsTheEditsOfEachDocument)
{
    Workspace& first = open("rusty_painted_gate.mtlx");
    setPaint(first, "1, 1, 1");
    Workspace& second = open("weathered_brick_wall.mtlx");
    EXPECT_EQ(rows().size(), 1);
    second.edit([](auto& edits) { return edits.renameNode("Top.NG_wall", "w"); });
    setPaint(first, "0, 1, 1"); // Behind.
    EXPECT_EQ(rows().last(), "Rename NG_wall to w");
    window.removeDocument(window.view());
    settle();
    EXPECT_EQ(rows().size(), 3);
    window.removeDocument(window.view());
    EXPECT_EQ(list().model(), nullptr);
}

class ConsoleDock : public Docks {
protected:
    ConsoleDock() { show("console"); }

    QStringList said()
    {
        return widget<QPlainTextEdit>("console.output")->toPlainText().split('\n');
    }
    QLineEdit& line() { return *widget<QLineEdit>("console.input"); }
    void type(const QString& text) { enter(&line(), text); }
};

TEST_F(ConsoleDock, SaysTheCommandOfEachEdit)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    setPaint(workspace, "1, 1, 1");
    workspace.undo();
    workspace.redo();
    EXPECT_EQ(said(), (QStringList{"set Top.NG_gate.paint_color \"1, 1, 1\"", "undo", "redo"}));
}

TEST_F(ConsoleDock, RunsWhatIsTypedOnTheDocument)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    type("rename Top.NG_gate gate");
    EXPECT_TRUE(node("Top.gate"));
    EXPECT_EQ(said(), QStringList{"rename Top.NG_gate gate"}) << "said once";
    type("rename Top.nothing x");
    EXPECT_TRUE(said().last().contains("no such node"));
    type("nonsense");
    EXPECT_TRUE(said().last().startsWith("error: "));
    type("quit");
    EXPECT_TRUE(said().last().contains("stays open"));
    type("list Top.gate");
    EXPECT_TRUE(said().last().contains("compound") || said().size() > 8);
    EXPECT_EQ(workspace.history().undoCount(), 1);
    type("undo");
    EXPECT_TRUE(node("Top.NG_gate"));
    type("save " + folder.filePath("typed.mtlx"));
    EXPECT_TRUE(window.windowTitle().startsWith("typed.mtlx"));
    // What was typed comes back.
    QTest::keyClick(&line(), Qt::Key_Up);
    QTest::keyClick(&line(), Qt::Key_Up);
    EXPECT_EQ(line().text(), "undo");
    QTest::keyClick(&line(), Qt::Key_Down);
    QTest::keyClick(&line(), Qt::Key_Down);
    EXPECT_EQ(line().text(), "");
}

TEST_F(ConsoleDock, CompletesWithTabAndAListToChooseFrom)
{
    open("rusty_painted_gate.mtlx");
    line().setFocus();
    QTest::keyClicks(&line(), "renam");
    QTest::keyClick(&line(), Qt::Key_Tab);
    EXPECT_EQ(line().text(), "rename ");
    QTest::keyClicks(&line(), "Top.NG_gate.");
    QTest::keyClick(&line(), Qt::Key_Tab);
    auto* const candidates = widget<QListWidget>("console.candidates");
    ASSERT_TRUE(candidates->isVisible());
    const QString second = candidates->item(1)->text();
    QTest::keyClick(&line(), Qt::Key_Down);
    QTest::keyClick(&line(), Qt::Key_Return);
    EXPECT_FALSE(candidates->isVisible());
    EXPECT_EQ(line().text().trimmed(), "rename " + second.trimmed());
    QTest::keyClick(&line(), Qt::Key_Tab);
    QTest::keyClick(&line(), Qt::Key_Escape);
    EXPECT_FALSE(candidates->isVisible());
    EXPECT_TRUE(line().hasFocus());
}

TEST_F(ConsoleDock, SavesAScriptThatDoesTheSameElsewhere)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    setPaint(workspace, "1, 1, 1");
    workspace.edit([](auto& edits) { return edits.renameNode("Top.NG_gate", "g"); });
    workspace.edit([](auto& edits) { return edits.renameNode("Top.g", "h"); });
    workspace.undo();
    const std::string edited = bytesOf(workspace);
    auto* const panel = window.findChild<shading::ConsolePanel*>();
    const QString script = folder.filePath("two words.zel");
    ASSERT_TRUE(panel->saveScript(script));
    EXPECT_FALSE(panel->saveScript(folder.filePath("none/script")));
    EXPECT_EQ(refusals.size(), 1);
    window.removeDocument(window.view());
    Workspace& again = open("rusty_painted_gate.mtlx");
    type("source \"" + script + "\"");
    EXPECT_EQ(bytesOf(again), edited);
    EXPECT_EQ(again.history().undoCount(), 2);
}

TEST_F(ConsoleDock, LettersTypedThereStartNothingElse)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    workspace.select({node("Top.NG_gate")});
    line().setFocus();
    QTest::keyClicks(&line(), "fahcuwx");
    QTest::keyClick(&line(), Qt::Key_Backspace);
    QTest::keyClick(&line(), Qt::Key_Delete);
    settle();
    EXPECT_EQ(line().text(), "fahcuw");
    EXPECT_EQ(workspace.history().undoCount(), 0);
    EXPECT_TRUE(node("Top.NG_gate"));
}

} // namespace shadingTest
