// The panels of ports and of the node library.

#include "console/console.h"
#include "docksFixture.h"
#include "window/docks/libraryTree.h"
#include "window/docks/portsModel.h"

#include <QComboBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTableView>
#include <QTreeWidget>
#include <sstream>

using shading::Edits;
using shading::Workspace;

namespace shadingTest {

class Ports : public Docks {
protected:
    Ports() : workspace(open("rusty_painted_gate.mtlx"))
    {
        show("ports");
        workspace.enter(node("Top.NG_gate")->getAsCompound());
        settle();
    }

    QTableView& inputs() { return *widget<QTableView>("ports.inputs"); }
    QTableView& outputs() { return *widget<QTableView>("ports.outputs"); }

    static QStringList names(const QTableView& view)
    {
        QStringList texts;
        for (int i = 0; i < view.model()->rowCount(); ++i)
            texts.append(view.model()->index(i, 0).data().toString());
        return texts;
    }

    void press(const char* button)
    {
        QTest::mouseClick(widget(button), Qt::LeftButton);
        settle();
    }

    void enterCell(QTableView& view, int row, int column, const QString& text)
    {
        view.setCurrentIndex(view.model()->index(row, column));
        view.setFocus();
        QTest::keyClick(&view, Qt::Key_F2);
        auto* const editor = view.viewport()->findChild<QLineEdit*>();
        ASSERT_TRUE(editor);
        editor->setFocus();
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        settle();
    }

    /// The same document after the lines of the console that the edits say.
    std::string bytesByConsole()
    {
        std::vector<std::string> lines;
        for (const shading::EditName& name : workspace.history().names())
            lines.insert(lines.end(), name.lines.begin(), name.lines.end());
        std::vector<shading::Message> messages;
        auto session =
            shading::Session::open(window.environment(), workspace.session().path(), {}, messages);
        std::ostringstream out;
        shading::Console console(*session, out, out);
        shading::addAllCommands(console);
        for (const std::string& line : lines)
            EXPECT_TRUE(console.run(line)) << line << "\n" << out.str();
        Workspace other(std::move(session));
        return bytesOf(other);
    }

    Workspace& workspace;
};

TEST_F(Ports, AreAddedRenamedMovedAndDeletedAsByTheConsole)
{
    const std::string before = bytesOf(workspace);
    EXPECT_EQ(names(inputs()), (QStringList{"age", "paint_color"}));
    QTest::keyClicks(widget("ports.name"), "wetness");
    widget<QComboBox>("ports.type")->setCurrentText("float");
    press("ports.addInput");
    QTest::keyClicks(widget("ports.name"), "mask");
    press("ports.addOutput");
    EXPECT_EQ(names(inputs()).last(), "wetness");
    EXPECT_EQ(names(outputs()).last(), "mask");
    enterCell(inputs(), 2, shading::PortsModel::NameColumn, "rain");
    enterCell(inputs(), 2, shading::PortsModel::ValueColumn, "0.5");
    EXPECT_STREQ(input("Top.NG_gate.rain")->getPortDefaultValue(), "0.5");
    inputs().setCurrentIndex(inputs().model()->index(2, 0));
    press("ports.up");
    EXPECT_EQ(names(inputs()), (QStringList{"age", "rain", "paint_color"}));
    press("ports.down");
    press("ports.down"); // It is the last.
    EXPECT_EQ(names(inputs()).last(), "rain");
    outputs().setCurrentIndex(outputs().model()->index(outputs().model()->rowCount() - 1, 0));
    outputs().setFocus();
    QTest::keyClick(&outputs(), Qt::Key_Delete);
    settle();
    EXPECT_FALSE(names(outputs()).contains("mask"));
    EXPECT_EQ(workspace.history().undoCount(), 7);
    EXPECT_EQ(refusals.size(), 0);
    EXPECT_EQ(bytesByConsole(), bytesOf(workspace));
    workspace.undo(7);
    EXPECT_EQ(bytesOf(workspace), before);
    settle();
    EXPECT_EQ(names(inputs()), (QStringList{"age", "paint_color"}));
}

TEST_F(Ports, GetAnotherTypeWhereTheirConnectionsFit)
{
    const std::string before = bytesOf(workspace);
    ASSERT_TRUE(workspace.edit([](Edits& edits) {
        return edits.addPort("Top.NG_gate", ZEL::PortInput, "tint", "color3");
    }));
    ASSERT_TRUE(
        workspace.edit([](Edits& edits) { return edits.setValue("Top.NG_gate.tint", "1, 1, 1"); }));
    settle();
    const int type = shading::PortsModel::TypeColumn;
    QAbstractItemModel& model = *inputs().model();
    EXPECT_TRUE(model.setData(model.index(2, type), "float", Qt::EditRole));
    EXPECT_STREQ(input("Top.NG_gate.tint")->getDataType()->getName(), "float");
    EXPECT_STREQ(input("Top.NG_gate.tint")->getPortDefaultValue(), "");
    EXPECT_FALSE(model.setData(model.index(1, type), "float", Qt::EditRole)) << "it feeds a colour";
    EXPECT_TRUE(widget<QLabel>("ports.problem")->isVisible());
    EXPECT_TRUE(widget<QLabel>("ports.problem")->text().contains("is connected"));
    EXPECT_FALSE(workspace.edit(
        [](Edits& edits) { return edits.setPortType("Top.NG_gate", "tint", "no type"); }));
    EXPECT_EQ(workspace.history().undoCount(), 3);
    EXPECT_EQ(bytesByConsole(), bytesOf(workspace));
    // The file says so too.
    Workspace& again = openText(bytesOf(workspace));
    EXPECT_STREQ(input("Top.NG_gate.tint")->getDataType()->getName(), "float");
    EXPECT_EQ(again.history().undoCount(), 0);
    workspace.undo(3);
    EXPECT_EQ(bytesOf(workspace), before);
    // By the list of types.
    window.showDocument(window.views().front());
    workspace.redo();
    settle();
    QTableView& view = inputs();
    view.setCurrentIndex(view.model()->index(2, type));
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_F2);
    auto* const box = view.viewport()->findChild<QComboBox*>("ports.typeEditor");
    ASSERT_TRUE(box);
    box->setCurrentText("integer");
    QTest::keyClick(box, Qt::Key_Return);
    settle();
    EXPECT_STREQ(input("Top.NG_gate.tint")->getDataType()->getName(), "integer");
}

TEST_F(Ports, SayWhyAnEditIsRefusedAndFollowTheSelection)
{
    const std::string before = bytesOf(workspace);
    enterCell(inputs(), 0, shading::PortsModel::NameColumn, "paint_color");
    EXPECT_TRUE(widget("ports.problem")->isVisible());
    EXPECT_EQ(names(inputs()).first(), "age");
    QTest::keyClicks(widget("ports.name"), "age");
    press("ports.addInput");
    EXPECT_EQ(widget<QLineEdit>("ports.name")->text(), "age") << "what was typed stays";
    EXPECT_EQ(bytesOf(workspace), before);
    EXPECT_EQ(workspace.history().undoCount(), 0);
    workspace.select({node("Top.NG_gate.rust")});
    settle();
    EXPECT_TRUE(widget<QLabel>("ports.title")->text().endsWith("Top.NG_gate.rust"));
    // It goes while a cell is being edited.
    inputs().setCurrentIndex(inputs().model()->index(0, 0));
    QTest::keyClick(&inputs(), Qt::Key_F2);
    workspace.edit([](Edits& edits) { return edits.deleteNode("Top.NG_gate.rust"); });
    settle();
    EXPECT_TRUE(widget<QLabel>("ports.title")->text().endsWith("Top.NG_gate"));
    QTest::keyClick(&inputs(), Qt::Key_F2);
    window.removeDocument(window.view());
    settle();
    EXPECT_EQ(inputs().model()->rowCount(), 0);
}

TEST_F(Ports, AreMovedByADragOfTheirRow)
{
    QAbstractItemModel& model = *inputs().model();
    const std::unique_ptr<QMimeData> data(model.mimeData({model.index(1, 0)}));
    EXPECT_FALSE(model.dropMimeData(data.get(), Qt::MoveAction, 0, 0, {}));
    EXPECT_EQ(names(inputs()), (QStringList{"paint_color", "age"}));
    const std::unique_ptr<QMimeData> first(model.mimeData({model.index(0, 0)}));
    EXPECT_FALSE(model.dropMimeData(first.get(), Qt::MoveAction, 2, 0, {}));
    EXPECT_EQ(names(inputs()), (QStringList{"age", "paint_color"}));
    EXPECT_EQ(workspace.history().undoCount(), 2);
}

class Library : public Docks {
protected:
    Library() { show("library"); }

    QTreeWidget& tree() { return *widget<QTreeWidget>("library.tree"); }
    QLineEdit& line() { return *widget<QLineEdit>("library.search"); }
};

TEST_F(Library, MakesWhatIsSearchedFor)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    EXPECT_GT(tree().topLevelItemCount(), 3);
    QTest::keyClicks(&line(), "fractal3d");
    ASSERT_GT(tree().topLevelItemCount(), 0);
    EXPECT_EQ(tree().topLevelItem(0)->text(0), "fractal3d");
    QTest::keyClick(&line(), Qt::Key_Return);
    settle();
    EXPECT_EQ(workspace.history().undoCount(), 1);
    ASSERT_EQ(workspace.selection().size(), 1U);
    EXPECT_STREQ(workspace.selection().front()->getNodeTypeName(), "fractal3d");
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Return);
    settle();
    EXPECT_EQ(workspace.history().undoCount(), 2);
    window.removeDocument(window.view());
    EXPECT_EQ(tree().topLevelItemCount(), 0);
    QTest::keyClick(&line(), Qt::Key_Return);
}

TEST_F(Library, DropsATypeOnTheCanvas)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    auto* const canvas = widget("canvas");
    QMimeData data;
    data.setData(shading::kNodeTypeMime, "ND_mix_color3");
    const auto send = [&](QEvent::Type type) {
        if (type == QEvent::DragEnter) {
            QDragEnterEvent event({50, 60}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(canvas, &event);
            EXPECT_TRUE(event.isAccepted());
            return;
        }
        QDropEvent event({50, 60}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(canvas, &event);
        EXPECT_TRUE(event.isAccepted());
    };
    send(QEvent::DragEnter);
    send(QEvent::Drop);
    settle();
    EXPECT_EQ(workspace.history().undoCount(), 1);
    ASSERT_EQ(workspace.selection().size(), 1U);
    EXPECT_STREQ(workspace.selection().front()->getNodeTypeName(), "mix");
}

} // namespace shadingTest
