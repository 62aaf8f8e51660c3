// What all panels have in common: their docks, the menu, keys while one types, long work.

#include "docksFixture.h"

#include <QAction>
#include <QLineEdit>
#include <QListView>

using shading::Edits;
using shading::Workspace;

namespace shadingTest {

const char* const kPanels[] = {"outline", "library", "properties", "ports",
                               "history", "console", "problems",   "connections"};

TEST_F(Docks, AreShownAndHiddenByTheMenuAndRemembered)
{
    for (const char* const panel : kPanels) {
        SCOPED_TRACE(panel);
        QAction* const action = window.actions().find(QString("view.") + panel);
        ASSERT_TRUE(action);
        auto* const dock = widget<QDockWidget>(panel);
        show(panel);
        EXPECT_TRUE(dock->isVisible());
        action->trigger();
        EXPECT_TRUE(dock->isHidden());
        EXPECT_FALSE(action->isChecked());
        action->trigger();
        EXPECT_FALSE(dock->isHidden());
        EXPECT_TRUE(action->isChecked());
    }
    {
        shading::MainWindow other(window.environment());
        other.show();
        settle();
        other.actions().find("view.outline")->trigger();
    }
    const shading::MainWindow again(window.environment());
    EXPECT_TRUE(again.findChild<QDockWidget*>("outline")->isHidden());
    EXPECT_FALSE(again.findChild<QDockWidget*>("console")->isHidden());
}

TEST_F(Docks, WhatIsTypedInFieldsIsNoKeyOfTheCanvas)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    workspace.select({node("Top.NG_gate")});
    settle();
    const std::string before = bytesOf(workspace);
    const std::pair<const char*, const char*> fields[] = {
        {"outline", "outline.search"},  {"library", "library.search"},
        {"properties", "property.doc"}, {"ports", "ports.name"},
        {"console", "console.input"},
    };
    for (const auto& [panel, name] : fields) {
        SCOPED_TRACE(name);
        show(panel);
        auto* const field = widget<QLineEdit>(name);
        field->setFocus();
        QTest::keyClicks(field, "fahcuwxo 1");
        QTest::keyClick(field, Qt::Key_Backspace);
        QTest::keyClick(field, Qt::Key_Home);
        QTest::keyClick(field, Qt::Key_Delete);
        settle();
        EXPECT_EQ(field->text(), "ahcuwxo ");
        QTest::keyClick(field, Qt::Key_Escape);
    }
    EXPECT_EQ(workspace.history().undoCount(), 0);
    EXPECT_EQ(bytesOf(workspace), before);
    EXPECT_TRUE(workspace.isSelected(*node("Top.NG_gate")));
}

TEST_F(Docks, UndoIsTheDocumentsWhileNothingIsTyped)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    workspace.select({node("Top.NG_gate")});
    settle();
    show("properties");
    auto* const field = widget<QLineEdit>("property.paint_color.0");
    enter(field, "1");
    QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(workspace.history().undoCount(), 0);
    EXPECT_EQ(field->text(), "0.03");
    QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    settle();
    EXPECT_EQ(workspace.history().undoCount(), 1);
    QTest::keyClicks(field, "23");
    QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(workspace.history().undoCount(), 1) << "the typing was taken back";
    // A key of the window finds what was typed done.
    field->selectAll();
    QTest::keyClicks(field, "0.25");
    QTest::keyClick(field, Qt::Key_F3);
    settle();
    EXPECT_EQ(workspace.history().undoCount(), 2);
    EXPECT_EQ(std::string(input("Top.NG_gate.paint_color")->getPortDefaultValue()),
              "0.25, 0.16, 0.09");
}

TEST_F(Docks, FollowAThousandEditsAndALongWayBack)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    workspace.select({node("Top.NG_gate")});
    show("history");
    const std::string before = bytesOf(workspace);
    for (int i = 0; i < 1000; ++i)
        workspace.edit([i](Edits& edits) {
            return edits.setValue("Top.NG_gate.paint_color", std::to_string(i) + ", 0, 0");
        });
    settle();
    auto& list = *widget<QListView>("history.list");
    EXPECT_EQ(list.model()->rowCount(), 1001);
    EXPECT_EQ(list.currentIndex().row(), 1000);
    click(list, list.model()->index(0, 0));
    EXPECT_EQ(bytesOf(workspace), before);
    EXPECT_EQ(list.currentIndex().row(), 0);
}

} // namespace shadingTest
