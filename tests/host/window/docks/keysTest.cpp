// The key sheet and the table of connections.

#include "docksFixture.h"

#include <QAction>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QTreeView>
#include <QTreeWidget>

using shading::Edits;
using shading::Workspace;

namespace shadingTest {

class Keys : public Docks {
protected:
    ~Keys() override
    {
        for (const char* const id : {"edit.find", "edit.findNext"})
            window.actions().resetKeys(id);
    }

    void openSheet()
    {
        QTest::keyClick(&window, Qt::Key_F1);
        settle();
        ASSERT_TRUE(widget("keys")->isVisible());
    }

    QTreeWidget& tree() { return *widget<QTreeWidget>("keys.tree"); }

    QTreeWidgetItem* itemOf(const QString& id)
    {
        for (QTreeWidgetItemIterator it(&tree()); *it; ++it) {
            if ((*it)->data(0, Qt::UserRole).toString() == id)
                return *it;
        }
        return nullptr;
    }

    /// Chooses the action and presses Set after that key.
    void setKey(const QString& id, const QKeySequence& key)
    {
        tree().setCurrentItem(itemOf(id));
        widget<QKeySequenceEdit>("keys.edit")->setKeySequence(key);
        QTest::mouseClick(widget("keys.set"), Qt::LeftButton);
    }

    QList<QKeySequence> keysOf(const char* id) { return window.actions().find(id)->shortcuts(); }
};

TEST_F(Keys, SheetHasAllActionsAndAWayToFindThem)
{
    openSheet();
    for (const shading::Actions::Entry& entry : window.actions().entries())
        EXPECT_TRUE(itemOf(entry.id)) << entry.id.toStdString();
    QTest::keyClicks(widget("keys.search"), "ctrl+shift+z");
    EXPECT_FALSE(itemOf("edit.redo")->isHidden());
    EXPECT_TRUE(itemOf("edit.undo")->isHidden());
    widget<QLineEdit>("keys.search")->setText("cut wires");
    EXPECT_FALSE(tree().findItems("Cut wires", Qt::MatchExactly | Qt::MatchRecursive).isEmpty());
}

TEST_F(Keys, AreChangedAndAskedForWhereAnotherActionHasThem)
{
    open("rusty_painted_gate.mtlx");
    openSheet();
    setKey("edit.findNext", QKeySequence("Ctrl+Alt+F3"));
    EXPECT_EQ(keysOf("edit.findNext"), QList<QKeySequence>{QKeySequence("Ctrl+Alt+F3")});
    EXPECT_TRUE(itemOf("edit.findNext")->text(1).contains("Ctrl+Alt+F3"));
    setKey("edit.findNext", QKeySequence("Ctrl+F"));
    EXPECT_EQ(keysOf("edit.find"), QList<QKeySequence>{QKeySequence("Ctrl+F")});
    EXPECT_TRUE(widget<QLabel>("keys.message")->text().contains("Find..."));
    QTest::mouseClick(widget("keys.set"), Qt::LeftButton);
    EXPECT_EQ(keysOf("edit.findNext"), QList<QKeySequence>{QKeySequence("Ctrl+F")});
    EXPECT_TRUE(keysOf("edit.find").isEmpty());
    QTest::mouseClick(widget("keys.reset"), Qt::LeftButton);
    EXPECT_EQ(keysOf("edit.findNext"), QList<QKeySequence>{QKeySequence("F3")});
    QTest::mouseClick(widget("keys.resetAll"), Qt::LeftButton);
    EXPECT_EQ(keysOf("edit.find"), QList<QKeySequence>{QKeySequence("Ctrl+F")});
}

class Connections : public Docks {
protected:
    QStringList rows()
    {
        QStringList texts;
        const QAbstractItemModel& model = *list().model();
        for (int i = 0; i < model.rowCount(); ++i)
            texts.append(model.index(i, 0).data().toString() + " -> " +
                         model.index(i, 1).data().toString() + " " +
                         model.index(i, 2).data().toString());
        return texts;
    }

    QTreeView& list() { return *widget<QTreeView>("connections.list"); }
};

TEST_F(Connections, AreThoseOfTheCompoundAndLeadToBothEnds)
{
    show("connections");
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    workspace.enter(node("Top.NG_gate.chipping")->getAsCompound());
    settle();
    EXPECT_TRUE(rows().contains("chip_point.out -> chip_noise.position vector3"));
    EXPECT_TRUE(rows().contains("intact.out -> output paint_mask float"));
    EXPECT_TRUE(rows().contains("input amount -> intact.high float"));
    const int row =
        static_cast<int>(rows().indexOf("chip_point.out -> chip_noise.position vector3"));
    click(list(), list().model()->index(row, 0));
    EXPECT_EQ(workspace.selection().size(), 2U);
    EXPECT_TRUE(workspace.isSelected(*node("Top.NG_gate.chipping.chip_noise")));
    const qsizetype count = rows().size();
    workspace.edit(
        [](Edits& edits) { return edits.deleteNode("Top.NG_gate.chipping.chip_level"); });
    settle();
    EXPECT_LT(rows().size(), count);
    workspace.undo();
    settle();
    EXPECT_EQ(rows().size(), count);
    // A row whose ends go before the views are told.
    workspace.edit([](Edits& edits) { return edits.deleteNode("Top.NG_gate"); });
    click(list(), list().model()->index(0, 0));
    settle();
    EXPECT_FALSE(rows().contains("chip_point.out -> chip_noise.position vector3"));
    window.removeDocument(window.view());
    EXPECT_EQ(rows().size(), 0);
}

} // namespace shadingTest
