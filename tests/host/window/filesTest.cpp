// Files of documents: opened, saved, refused, watched, closed and recovered.

#include "window/canvas/canvas.h"
#include "window/drive/driver.h"
#include "window/files/documentFiles.h"
#include "window/files/fileWatch.h"
#include "window/files/noticeBar.h"
#include "window/files/progressBox.h"
#include "window/files/recentFiles.h"
#include "window/files/recoveryKeeper.h"
#include "windowFixture.h"

#include <QAbstractButton>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>
#include <fstream>

namespace shadingTest {

class Files : public Window {
protected:
    shading::DocumentFiles& files() { return window.files(); }

    QString write(const QString& name, const std::string& text)
    {
        const QString path = folder.filePath(name);
        std::ofstream(path.toStdString(), std::ios::binary) << text;
        return path;
    }
    static std::string bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "none";
    }
    /// The visible widget of that name; null when there is none.
    template <class Widget = QWidget>
    Widget* seen(const QString& name)
    {
        for (QWidget* const widget : QApplication::allWidgets()) {
            if (widget->objectName() == name && widget->isVisible())
                return qobject_cast<Widget*>(widget);
        }
        return nullptr;
    }
    bool click(const QString& name)
    {
        auto* const button = seen<QAbstractButton>(name);
        if (button)
            QTest::mouseClick(button, Qt::LeftButton);
        settle();
        return button;
    }
    void runAction(const char* id)
    {
        window.actions().find(id)->trigger();
        settle();
    }
    shading::Edits& edits() { return window.workspace()->edits(); }
    static std::string nodes(int count)
    {
        std::string text = "<materialx version='1.39'>\n";
        for (int i = 0; i < count; ++i)
            text += "<nodegraph name='g" + std::to_string(i) +
                    "'><n name='a' type='float'/></nodegraph>\n";
        return text + "</materialx>\n";
    }

    const std::string one = nodes(1);
};

TEST_F(Files, AreOpenedOnceAndRemembered)
{
    const QString a = write("a.mtlx", one);
    const QString b = write("b.mtlx", one);
    shading::DocumentView* const first = files().open(a);
    ASSERT_TRUE(first);
    ASSERT_TRUE(files().open(b));
    EXPECT_EQ(first, files().open(folder.filePath("./a.mtlx")));
    EXPECT_EQ(2U, window.views().size());
    EXPECT_EQ(window.view(), first);
    EXPECT_EQ(QStringList({b, a}), shading::RecentFiles::paths());
    EXPECT_EQ("b.mtlx", window.actions().find("file.recent1")->text());

    files().close(first);
    QFile::remove(a);
    runAction("file.recent2");
    EXPECT_EQ(QStringList({b}), shading::RecentFiles::paths());
    EXPECT_TRUE(click("ok")); // It said that the file is gone.
    for (int i = 0; i < 20; ++i)
        shading::RecentFiles::add(folder.filePath(QString::number(i)));
    EXPECT_EQ(10, shading::RecentFiles::paths().size());

    EXPECT_FALSE(files().open(write("bad.mtlx", "<materialx><")));
    EXPECT_TRUE(seen("problem"));
    EXPECT_TRUE(click("ok"));
}

TEST_F(Files, AreDroppedOnTheWindow)
{
    const QString a = write("a.mtlx", one);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(a), QUrl("http://example.org/b.mtlx")});
    QDragEnterEvent enter({9, 9}, Qt::CopyAction, &data, Qt::LeftButton, {});
    EXPECT_TRUE(QApplication::sendEvent(&window, &enter) && enter.isAccepted());
    QDropEvent drop({9, 9}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&window, &drop);
    settle();
    ASSERT_EQ(1U, window.views().size());
    EXPECT_EQ(a.toStdString(), window.workspace()->session().path());
}

TEST_F(Files, ANewOneGetsItsNameWhenItIsSaved)
{
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.path());
    runAction("file.new");
    runAction("file.new");
    ASSERT_EQ(2U, window.views().size());
    EXPECT_EQ("untitled2.mtlx[*] - zeledit", window.windowTitle());
    shading::HostNodePtr made;
    ASSERT_TRUE(edits().createNode("Top", "nodegraph", "g", made));
    runAction("file.save");
    auto* const name = seen<QLineEdit>("fileNameEdit");
    ASSERT_TRUE(name);
    name->setText(folder.filePath("mine"));
    QTest::keyClick(name, Qt::Key_Return);
    settle();
    EXPECT_EQ("mine.mtlx[*] - zeledit", window.windowTitle());
    EXPECT_FALSE(window.isWindowModified());
    EXPECT_NE(std::string::npos, bytes(folder.filePath("mine.mtlx")).find("\"g\""));
    EXPECT_EQ(folder.filePath("mine.mtlx"), shading::RecentFiles::paths().front());
    QDir::setCurrent(before);
}

TEST_F(Files, ARefusedSaveNamesEachPathAndLeadsThere)
{
    const std::string text = "<materialx>\n  <nodegraph name='g'>\n    <n name='a' type='float'/>\n"
                             "    <n name='a' type='float'/>\n  </nodegraph>\n</materialx>\n";
    const QString path = write("a.mtlx", text);
    ASSERT_TRUE(files().open(path));
    shading::Workspace& workspace = *window.workspace();
    // The format has no element of this name.
    ASSERT_TRUE(edits().run({"Make", {}}, "g", [&] {
        const shading::NodePtr made = shading::Node::createNew(&workspace.document(), "made");
        made->setNodeTypeName("two words");
        return node("Top.g")->getAsCompound()->nodes().add(made) ? "" : "no";
    }));
    runAction("file.save");
    auto* const list = seen<QListWidget>("saveProblems");
    ASSERT_TRUE(list);
    ASSERT_EQ(1, list->count());
    EXPECT_TRUE(list->item(0)->text().startsWith("Top.g.made: "))
        << list->item(0)->text().toStdString();
    EXPECT_EQ(text, bytes(path));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(0)).center());
    settle();
    EXPECT_EQ(node("Top.g")->getAsCompound(), workspace.compound());
    ASSERT_EQ(1U, workspace.selection().size());
    EXPECT_STREQ("made", workspace.selection().front()->getName());
    workspace.undo();
    ASSERT_TRUE(edits().renameNode("Top.g", "h"));
    runAction("file.save");
    EXPECT_FALSE(seen("saveProblems"));
    EXPECT_NE(text, bytes(path));
}

TEST_F(Files, ClosingAsksWhatBecomesOfEdits)
{
    const QString a = write("a.mtlx", one);
    const QString b = write("b.mtlx", one);
    files().open(a);
    ASSERT_TRUE(edits().renameNode("Top.g0", "left"));
    files().open(b);
    ASSERT_TRUE(edits().renameNode("Top.g0", "kept"));
    runAction("file.close");
    EXPECT_TRUE(click("cancel"));
    EXPECT_EQ(2U, window.views().size());

    window.close();
    settle();
    EXPECT_TRUE(click("save")); // Of b,
    EXPECT_NE(std::string::npos, bytes(b).find("kept"));
    EXPECT_TRUE(click("cancel")); // but a stays, and so does the window.
    EXPECT_EQ(1U, window.views().size());
    EXPECT_TRUE(window.isVisible());
    window.close();
    settle();
    EXPECT_TRUE(click("discard"));
    EXPECT_EQ(0U, window.views().size());
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(one, bytes(a));
    EXPECT_TRUE(files().recovery().orphans().empty());
}

TEST_F(Files, WhatOthersChangeIsNoticed)
{
    const QString a = write("a.mtlx", one);
    files().open(a);
    window.workspace()->enter(node("Top.g0")->getAsCompound());
    shading::waitUntilShown(window);
    window.view()->canvas().setView(0.5, {70, 80});
    const auto bar = [&] { return seen("notice") != nullptr; };

    write("a.mtlx", nodes(2));
    ASSERT_TRUE(QTest::qWaitFor(bar, 5000)); // Told by the system.
    EXPECT_TRUE(click("reload"));
    EXPECT_TRUE(node("Top.g1"));
    ASSERT_EQ(1U, window.views().size());
    EXPECT_EQ(node("Top.g0")->getAsCompound(), window.workspace()->compound());
    shading::waitUntilShown(window);
    EXPECT_EQ(0.5, window.view()->canvas().view().scale());
    EXPECT_EQ(QPointF(70, 80), window.view()->canvas().view().centre());

    write("a.mtlx", nodes(3));
    files().watch().check();
    settle();
    EXPECT_TRUE(click("keep"));
    files().watch().check();
    settle();
    EXPECT_FALSE(bar()); // It is said once.
    ASSERT_TRUE(edits().renameNode("Top.g0", "mine"));
    runAction("file.save");
    EXPECT_TRUE(click("cancel"));
    EXPECT_EQ(nodes(3), bytes(a));
    runAction("file.save");
    EXPECT_TRUE(click("replace"));
    EXPECT_NE(std::string::npos, bytes(a).find("mine"));

    QFile::remove(a);
    files().watch().check();
    settle();
    EXPECT_TRUE(click("saveAgain"));
    EXPECT_NE(std::string::npos, bytes(a).find("mine"));
    EXPECT_FALSE(bar());
}

/// A long work: the dialog shows after a while, and its button cancels.
TEST_F(Files, LongWorkIsShownAndCancelled)
{
    const QString path = write("many.mtlx", nodes(30000));
    bool wasShown = false;
    QTimer timer;
    const auto cancel = [&] {
        wasShown = wasShown || seen("progress");
        click("cancel");
    };
    QObject::connect(&timer, &QTimer::timeout, &window, cancel);
    timer.start(10);
    EXPECT_FALSE(files().open(path));
    EXPECT_TRUE(wasShown);
    EXPECT_FALSE(seen("problem"));
    timer.stop();

    ASSERT_TRUE(files().open(path));
    ASSERT_TRUE(edits().renameNode("Top.g0", "mine"));
    bool wasRefused = false;
    const auto meddle = [&] {
        if (shading::ProgressBox::isBusy() && seen("progress")) {
            wasRefused = !edits().renameNode("Top.g1", "meanwhile") && !window.close();
            click("cancel");
        }
    };
    QObject::disconnect(&timer, nullptr, nullptr, nullptr);
    QObject::connect(&timer, &QTimer::timeout, &window, meddle);
    timer.start(10);
    runAction("file.save");
    timer.stop();
    EXPECT_TRUE(wasRefused);
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_EQ(nodes(30000), bytes(path));
    runAction("file.save");
    EXPECT_FALSE(window.isWindowModified());
    EXPECT_FALSE(shading::ProgressBox::isBusy());
}

TEST_F(Files, WhatADeadProgramLeftIsOffered)
{
    const QString a = write("a.mtlx", one);
    files().open(a);
    ASSERT_TRUE(edits().renameNode("Top.g0", "mine"));
    EXPECT_FALSE(files().recovery().offer()); // It is this program's.
    const QDir kept(QString::fromStdString(shading::Recovery::defaultFolder()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !kept.entryList({"*.base"}).empty(); }, 5000));
    for (const QString& name : kept.entryList(QDir::Files))
        QFile::copy(kept.filePath(name), kept.filePath("dead-" + name));
    files().close(window.view());
    EXPECT_TRUE(click("discard"));

    EXPECT_TRUE(files().recovery().offer());
    EXPECT_EQ(1, seen<QTreeWidget>("orphans")->topLevelItemCount());
    EXPECT_TRUE(click("later"));
    EXPECT_TRUE(files().recovery().offer());
    EXPECT_TRUE(click("recover"));
    ASSERT_EQ(1U, window.views().size());
    EXPECT_TRUE(node("Top.mine"));
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_TRUE(files().recovery().orphans().empty());
    EXPECT_FALSE(seen("problem"));
    runAction("file.save");
    EXPECT_NE(std::string::npos, bytes(a).find("mine"));
    EXPECT_TRUE(kept.entryList(QDir::Files).empty());
}

} // namespace shadingTest
