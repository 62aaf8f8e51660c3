// The panel of properties: each editor, edits of several nodes, refusals, and documents that go.

#include "docksFixture.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

using shading::NodePtr;
using shading::Workspace;

namespace shadingTest {

class Properties : public Docks {
protected:
    Properties() { show("properties"); }

    void select(Workspace& workspace, const std::vector<std::string>& paths)
    {
        std::vector<NodePtr> nodes;
        for (const std::string& path : paths)
            nodes.push_back(node(path));
        workspace.enter(nodes.front()->getParentCompound());
        workspace.select(nodes);
        settle();
    }

    std::string valueOf(const std::string& path) { return input(path)->getPortDefaultValue(); }

    /// What the last edit says that the console does.
    static std::string lineOf(Workspace& workspace)
    {
        return workspace.history().names().back().lines.front();
    }
};

TEST_F(Properties, EnterSetsANumberAsTheConsoleDoes)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    select(workspace, {"Top.NG_gate.chipping.chip_point"});
    auto* const field = widget<QLineEdit>("property.in2");
    EXPECT_EQ(field->text(), "7");
    enter(field, "9.5");
    EXPECT_EQ(valueOf("Top.NG_gate.chipping.chip_point.in2"), "9.5");
    EXPECT_EQ(workspace.history().undoCount(), 1);
    EXPECT_EQ(lineOf(workspace), "set Top.NG_gate.chipping.chip_point.in2 9.5");
    // Esc brings the value back and is no edit.
    field->setFocus();
    QTest::keyClicks(field, "88");
    EXPECT_TRUE(field->isModified());
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(field->text(), "9.5");
    // Neither is the value that it has.
    enter(field, "9.5");
    EXPECT_EQ(workspace.history().undoCount(), 1);
    // What is typed counts when the focus leaves.
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, "3");
    widget("properties.name")->setFocus();
    settle();
    EXPECT_EQ(valueOf("Top.NG_gate.chipping.chip_point.in2"), "3");
    workspace.undo(2);
    settle();
    EXPECT_EQ(field->text(), "7");
}

TEST_F(Properties, ARefusedTextStaysWithItsReason)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    select(workspace, {"Top.NG_gate.chipping.chip_point"});
    const std::string before = bytesOf(workspace);
    auto* const field = widget<QLineEdit>("property.in2");
    enter(field, "7,");
    auto* const problem = widget<QLabel>("property.in2.problem");
    EXPECT_TRUE(problem->isVisible());
    EXPECT_FALSE(problem->text().isEmpty());
    EXPECT_EQ(field->text(), "7,");
    EXPECT_EQ(bytesOf(workspace), before);
    EXPECT_EQ(workspace.history().undoCount(), 0);
    EXPECT_EQ(refusals.size(), 1);
    enter(field, "8");
    EXPECT_FALSE(problem->isVisible());
    EXPECT_EQ(valueOf("Top.NG_gate.chipping.chip_point.in2"), "8");
    // A name likewise.
    auto* const name = widget<QLineEdit>("properties.name");
    enter(name, "chip noise");
    EXPECT_TRUE(widget("properties.problem")->isVisible());
    EXPECT_EQ(name->text(), "chip noise");
    enter(name, "chips");
    EXPECT_TRUE(node("Top.NG_gate.chipping.chips"));
    EXPECT_FALSE(widget("properties.problem")->isVisible());
}

TEST_F(Properties, ADragOverANumberIsOneEdit)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    select(workspace, {"Top.NG_gate.chipping.chip_point"});
    const std::string before = bytesOf(workspace);
    auto* const field = widget<QLineEdit>("property.in2");
    drag(field, {10, 5}, {90, 0});
    EXPECT_GT(std::stod(valueOf("Top.NG_gate.chipping.chip_point.in2")), 7);
    EXPECT_EQ(workspace.history().undoCount(), 1);
    const std::string dragged = bytesOf(workspace);
    workspace.undo();
    EXPECT_EQ(bytesOf(workspace), before);
    workspace.redo();
    EXPECT_EQ(bytesOf(workspace), dragged);
    settle();
    // A second drag is another edit, and Esc takes one back.
    drag(field, {10, 5}, {-60, 0});
    EXPECT_EQ(workspace.history().undoCount(), 2);
    drag(field, {10, 5}, {90, 0}, false);
    EXPECT_EQ(workspace.history().undoCount(), 3);
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(workspace.history().undoCount(), 2);
    QTest::mouseRelease(field, Qt::LeftButton);
    // A press that is no drag is for typing.
    QTest::mouseClick(field, Qt::LeftButton);
    EXPECT_TRUE(field->hasFocus());
}

TEST_F(Properties, EditsAColourByItsNumbersAndByThePicker)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    select(workspace, {"Top.NG_gate"});
    const std::string path = "Top.NG_gate.paint_color";
    enter(widget("property.paint_color.1"), "0.5");
    EXPECT_EQ(valueOf(path), "0.03, 0.5, 0.09");
    QTest::mouseClick(widget("property.paint_color.swatch"), Qt::LeftButton);
    auto* dialog = widget<QColorDialog>("chooseColor");
    dialog->setCurrentColor(QColor(255, 0, 0));
    dialog->setCurrentColor(QColor(255, 255, 0));
    dialog->accept();
    settle();
    EXPECT_EQ(valueOf(path), "1, 1, 0");
    EXPECT_EQ(workspace.history().undoCount(), 2) << "a choice is one edit, whatever it passes";
    QTest::mouseClick(widget("property.paint_color.swatch"), Qt::LeftButton);
    dialog = widget<QColorDialog>("chooseColor");
    dialog->setCurrentColor(QColor(0, 0, 255));
    EXPECT_EQ(valueOf(path), "0, 0, 1");
    dialog->reject();
    settle();
    EXPECT_EQ(valueOf(path), "1, 1, 0");
    EXPECT_EQ(workspace.history().undoCount(), 2);
}

TEST_F(Properties, SurvivesThatWhatItShowsGoesWhileADialogIsOpen)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    select(workspace, {"Top.NG_gate"});
    QTest::mouseClick(widget("property.paint_color.swatch"), Qt::LeftButton);
    auto* const dialog = widget<QColorDialog>("chooseColor");
    workspace.edit([](auto& edits) { return edits.deleteNode("Top.NG_gate"); });
    dialog->setCurrentColor(QColor(1, 2, 3)); // Before the views are told.
    settle();
    EXPECT_EQ(window.findChild<QColorDialog*>("chooseColor"), nullptr);
    EXPECT_EQ(workspace.history().undoCount(), 1);
    workspace.undo();
    select(workspace, {"Top.NG_gate"});
    QTest::mouseClick(widget("property.paint_color.swatch"), Qt::LeftButton);
    QTest::keyClicks(widget("property.paint_color.0"), "0.7");
    window.removeDocument(window.view());
    settle();
    EXPECT_EQ(window.findChild<QColorDialog*>("chooseColor"), nullptr);
    EXPECT_FALSE(window.findChild<QWidget*>("property.paint_color.0"));
}

TEST_F(Properties, ShowsTheOtherDocumentWhenThatComesInFront)
{
    Workspace& first = open("rusty_painted_gate.mtlx");
    select(first, {"Top.NG_gate.chipping.chip_point"});
    auto* const field = widget<QLineEdit>("property.in2");
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, "5");
    Workspace& second = open("weathered_brick_wall.mtlx");
    EXPECT_EQ(widget<QLineEdit>("properties.name")->text(), "Top");
    EXPECT_EQ(second.history().undoCount(), 0);
    window.showDocument(window.views().front());
    settle();
    EXPECT_EQ(widget<QLineEdit>("properties.name")->text(), "chip_point");
    EXPECT_EQ(window.findChildren<QWidget*>("property.in2").size(), 1);
    EXPECT_EQ(widget<QLineEdit>("property.in2")->text(), "5") << "it counts when one turns away";
    EXPECT_EQ(first.history().undoCount(), 1);
}

TEST_F(Properties, EditsWhatSeveralNodesHaveInCommonAsOne)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    ASSERT_TRUE(workspace.editAs("Make", [](shading::Edits& edits) {
        shading::HostNodePtr created;
        return edits.createNode("Top", "mix", "a", created, "float") &&
               edits.createNode("Top", "mix", "b", created, "float") &&
               edits.setValue("Top.b.mix", "0.25");
    }));
    select(workspace, {"Top.a", "Top.b"});
    const std::string before = bytesOf(workspace);
    auto* const field = widget<QLineEdit>("property.mix");
    EXPECT_EQ(field->text(), "");
    EXPECT_EQ(widget<QLineEdit>("property.fg")->text(), "0.0");
    enter(field, "0.75");
    EXPECT_EQ(valueOf("Top.a.mix"), "0.75");
    EXPECT_EQ(valueOf("Top.b.mix"), "0.75");
    EXPECT_EQ(workspace.history().undoCount(), 2);
    EXPECT_EQ(workspace.history().names().back().lines.size(), 2U);
    workspace.undo();
    EXPECT_EQ(bytesOf(workspace), before);
    settle();
    QTest::mouseClick(widget("property.mix.reset"), Qt::LeftButton);
    settle();
    EXPECT_EQ(valueOf("Top.b.mix"), valueOf("Top.a.mix"));
    EXPECT_FALSE(widget("property.mix.reset")->isEnabled());
}

TEST_F(Properties, ShowsWhereAConnectedInputComesFrom)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    select(workspace, {"Top.NG_gate.chipping.chip_noise"});
    auto* const source = widget<QPushButton>("property.position.source");
    EXPECT_TRUE(source->isVisible());
    EXPECT_TRUE(source->text().endsWith("chip_point.out"));
    QTest::mouseClick(source, Qt::LeftButton);
    settle();
    EXPECT_TRUE(workspace.isSelected(*node("Top.NG_gate.chipping.chip_point")));
    workspace.edit([](auto& edits) {
        return edits.disconnect("Top.NG_gate.chipping.chip_point.in1",
                                "Top.NG_gate.chipping.point");
    });
    settle();
    EXPECT_TRUE(widget("property.in1.0")->isVisible());
}

TEST_F(Properties, HasEditorsForTruthChoicesTextsAndFolders)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    ASSERT_TRUE(workspace.editAs("Make", [](shading::Edits& edits) {
        shading::HostNodePtr created;
        return edits.createNode("Top", "standard_surface", "s", created) &&
               edits.createNode("Top", "image", "i", created, "color3");
    }));
    select(workspace, {"Top.s"});
    QTest::mouseClick(widget("property.thin_walled"), Qt::LeftButton, Qt::NoModifier, {8, 8});
    settle();
    EXPECT_EQ(valueOf("Top.s.thin_walled"), "true");
    auto* const fold = widget<QToolButton>("properties.fold.Geometry");
    EXPECT_TRUE(widget("row.thin_walled")->isVisibleTo(&window));
    QTest::mouseClick(fold, Qt::LeftButton);
    EXPECT_FALSE(widget("row.thin_walled")->isVisibleTo(&window));
    EXPECT_TRUE(widget("row.base")->isVisibleTo(&window));
    QTest::keyClicks(widget("properties.filter"), "thin_w");
    EXPECT_TRUE(widget("row.thin_walled")->isVisibleTo(&window));
    EXPECT_FALSE(widget("row.base")->isVisibleTo(&window));
    select(workspace, {"Top.i"});
    widget<QLineEdit>("properties.filter")->clear();
    auto* const choice = widget<QComboBox>("property.filtertype");
    choice->setFocus();
    QTest::keyClick(choice, Qt::Key_Up);
    EXPECT_EQ(valueOf("Top.i.filtertype"), choice->currentText().toStdString());
    enter(widget("property.file"), "a b.png");
    EXPECT_EQ(valueOf("Top.i.file"), "a b.png");
    enter(widget("property.colorspace"), "srgb_texture");
    EXPECT_EQ(lineOf(workspace), "attribute Top.i colorspace srgb_texture");
}

TEST_F(Properties, KeepsWhatIsTypedWhileOthersEdit)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    select(workspace, {"Top.NG_gate.chipping.chip_point"});
    auto* const field = widget<QLineEdit>("property.in2");
    field->setFocus();
    QTest::keyClicks(field, "12");
    const QString typed = field->text();
    for (int i = 0; i < 100; ++i)
        workspace.edit([i](auto& edits) {
            return edits.setValue("Top.NG_gate.chipping.chip_point.in2", std::to_string(i + 100));
        });
    settle();
    EXPECT_EQ(widget<QLineEdit>("property.in2"), field);
    EXPECT_TRUE(field->hasFocus());
    EXPECT_EQ(field->text(), typed);
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(field->text(), "199");
}

TEST_F(Properties, ShowsTheInputsOfTheGraphWhereNothingIsSelected)
{
    Workspace& workspace = open("rusty_painted_gate.mtlx");
    workspace.enter(node("Top.NG_gate")->getAsCompound());
    settle();
    EXPECT_EQ(widget<QLineEdit>("properties.name")->text(), "NG_gate");
    enter(widget("property.paint_color.2"), "1");
    EXPECT_EQ(valueOf("Top.NG_gate.paint_color"), "0.03, 0.16, 1");
    workspace.leave();
    workspace.select({});
    settle();
    EXPECT_TRUE(widget<QLineEdit>("properties.name")->isReadOnly());
    EXPECT_EQ(widget<QLineEdit>("property.colorspace")->text(), "lin_rec709");
}

TEST_F(Properties, ServesANodeOfAThousandInputs)
{
    std::string text =
        "<?xml version=\"1.0\"?>\n<materialx version=\"1.39\">\n  <odd name=\"many\" "
        "type=\"float\">\n";
    for (int i = 0; i < 1000; ++i)
        text += "    <input name=\"in" + std::to_string(i) + "\" type=\"float\" value=\"1\" />\n";
    text += "  </odd>\n  <odd name=\"few\" type=\"float\">\n    <input name=\"in1\" "
            "type=\"float\" value=\"2\" />\n  </odd>\n</materialx>\n";
    Workspace& workspace = openText(text);
    select(workspace, {"Top.many"});
    enter(widget("property.in999"), "3");
    EXPECT_EQ(valueOf("Top.many.in999"), "3");
    select(workspace, {"Top.many", "Top.few"});
    EXPECT_FALSE(window.findChild<QWidget*>("property.in999"));
    enter(widget("property.in1"), "4");
    EXPECT_EQ(valueOf("Top.few.in1"), "4");
}

} // namespace shadingTest
