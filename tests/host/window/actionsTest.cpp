// The table of actions: keys, menus, settings.

#include "window/workspace/actions.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>

using shading::Actions;

namespace shadingTest {

TEST(Actions, BuildsMenusInMenusAndAsksWhatIsEnabled)
{
    int runs = 0;
    bool isEnabled = false;
    Actions actions;
    actions.add("a.one", "&Edit", "&One", {}, [&] { ++runs; }).when([&] { return isEnabled; });
    actions.add("a.two", "&Edit/&More", "&Two", {}, [&] { ++runs; }).group();
    actions.add("a.none", "", "None", {}, [&] { ++runs; });
    QMenuBar bar;
    actions.fill(bar);
    ASSERT_EQ(bar.actions().size(), 1);
    const QList<QAction*> edit = bar.actions().first()->menu()->actions();
    ASSERT_EQ(edit.size(), 2);
    EXPECT_EQ(edit[0]->text(), "&One");
    ASSERT_NE(edit[1]->menu(), nullptr);
    EXPECT_EQ(edit[1]->menu()->actions().last()->text(), "&Two");
    actions.find("a.one")->trigger();
    EXPECT_EQ(runs, 0) << "it was not asked yet, and runs all the same only when it may";
    isEnabled = true;
    actions.update();
    actions.find("a.one")->trigger();
    EXPECT_EQ(runs, 1);
}

TEST(Actions, KeepsChangedKeysInTheSettings)
{
    const QKeySequence key("Ctrl+K");
    const QKeySequence other("Ctrl+L");
    {
        Actions actions;
        actions.add("k.one", "", "One", {key}, [] {});
        actions.add("k.two", "", "Two", {}, [] {});
        EXPECT_EQ(actions.clash("k.one", key), nullptr);
        ASSERT_NE(actions.clash("k.two", key), nullptr);
        EXPECT_EQ(actions.clash("k.two", key)->id, "k.one");
        actions.setKeys("k.one", {other});
    }
    Actions actions;
    actions.add("k.one", "", "One", {key}, [] {});
    EXPECT_EQ(actions.find("k.one")->shortcuts(), QList<QKeySequence>{other});
    actions.resetKeys("k.one");
    EXPECT_EQ(actions.find("k.one")->shortcuts(), QList<QKeySequence>{key});
    EXPECT_FALSE(QSettings().contains("keys/k.one"));
}

} // namespace shadingTest
