// The script that drives the window: its targets, what it expects, and how it fails.

#include "window/drive/driver.h"
#include "windowFixture.h"

#include <fstream>
#include <sstream>

namespace shadingTest {

class Drive : public Window {
protected:
    /// What the lines say when they are run as a script; empty when all held.
    std::string run(const std::string& lines)
    {
        const std::string path = folder.filePath("drive.zeledit").toStdString();
        std::ofstream(path, std::ios::binary) << lines;
        std::ostringstream err;
        out.str("");
        shading::Driver driver(window, out, err, true);
        const bool isGood = driver.run(QString::fromStdString(path));
        EXPECT_EQ(isGood, err.str().empty());
        std::string text = err.str();
        if (text.rfind(path, 0) == 0)
            text.erase(0, path.size() + 1);
        return text;
    }

    std::ostringstream out;
};

TEST_F(Drive, StopsAtTheFirstLineThatDoesNotHold)
{
    open("rusty_painted_gate.mtlx");
    EXPECT_EQ(run("# a comment\n\nenter Top.NG_gate\nexpect compound Top.NG_gate\n"
                  "expect undo 1\nexpect undo 2\n"),
              "5: expected undo 1, found 0\n");
    EXPECT_EQ(run("enter Top.SR_gate\n"),
              "1: expected the compound Top.SR_gate, found a node without one\n");
    EXPECT_EQ(run("click node:Top.SR_gate\n"),
              "1: expected node:Top.SR_gate, found: it is not on the canvas\n");
    EXPECT_EQ(run("click widget:nothing\n"),
              "1: expected widget:nothing, found: no such widget is to be seen\n");
    EXPECT_EQ(run("jump\n"), "1: expected a line of the script, found jump\n");
    EXPECT_EQ(run("click empty Hyper\n"),
              "1: expected modifiers, found Hyper: no modifier, and no key\n");
    EXPECT_EQ(run("menu Edit/Undo\n"), "1: expected the menu Edit/Undo, found Undo not enabled\n");
    EXPECT_EQ(run("menu Edit/Nothing\n"), "1: expected the menu Edit/Nothing, found Nothing not "
                                          "there\n");
}

TEST_F(Drive, AsksTheDocumentWhatItHas)
{
    open("rusty_painted_gate.mtlx");
    EXPECT_EQ(run("expect node Top.NG_gate.rust.pits\nexpect no node Top.rust\n"
                  "expect connected Top.NG_gate.color -> Top.SR_gate.base_color\n"
                  "expect connected Top.NG_gate.age -> Top.NG_gate.paint.age\n"
                  "expect not connected Top.NG_gate.age -> Top.SR_gate.base_color\n"),
              "");
    EXPECT_EQ(run("expect node Top.rust\n"), "1: expected node Top.rust, found no such node\n");
    EXPECT_EQ(run("expect connected Top.NG_gate.color -> Top.SR_gate.coat\n"),
              "1: expected connected Top.NG_gate.color -> Top.SR_gate.coat, found "
              "Top.NG_gate.color connected to Top.SR_gate.base_color\n");
    EXPECT_EQ(run("expect not connected Top.NG_gate.color -> Top.SR_gate.base_color\n"),
              "1: expected not connected Top.NG_gate.color -> Top.SR_gate.base_color, found the "
              "connection\n");
    EXPECT_EQ(run("expect connected Top.none.color -> Top.SR_gate.coat\n"),
              "1: expected connected Top.none.color -> Top.SR_gate.coat, found no port "
              "Top.none.color\n");
    EXPECT_EQ(run("expect selected Top.SR_gate\n"),
              "1: expected selected Top.SR_gate, found nothing selected\n");
}

TEST_F(Drive, ClicksAndDragsAndPrintsTheCommands)
{
    shading::Workspace& workspace = open("rusty_painted_gate.mtlx");
    EXPECT_EQ(run("enter Top.NG_gate\nclick node:Top.NG_gate.gate_color\n"
                  "expect selected Top.NG_gate.gate_color\n"
                  "click node:Top.NG_gate.gate_roughness Shift\n"
                  "expect selected Top.NG_gate.gate_roughness Top.NG_gate.gate_color\n"
                  "drag port:Top.NG_gate.rust.color port:Top.NG_gate.gate_color.fg\n"
                  "expect connected Top.NG_gate.rust.color -> Top.NG_gate.gate_color.fg\n"
                  "expect undo 1\nmenu Edit/Undo\nexpect undo 0\nkey Ctrl+Y\nexpect undo 1\n"),
              "");
    EXPECT_EQ(out.str(), "connect Top.NG_gate.rust.color Top.NG_gate.gate_color.fg\nundo\nredo\n");
    EXPECT_EQ(run("save " + folder.filePath("saved.mtlx").toStdString() + "\n"), "");
    EXPECT_TRUE(workspace.session().isSaved());
    EXPECT_EQ(run("screenshot " + folder.filePath("window.png").toStdString() + "\n"), "");
    EXPECT_TRUE(QFile::exists(folder.filePath("window.png")));
}

TEST_F(Drive, FindsAPortThatIsOutOfSight)
{
    open("rusty_painted_gate.mtlx");
    window.resize(700, 500);
    EXPECT_EQ(run("enter Top.NG_gate\nkey 1\nkey 1\n"
                  "click node:Top.NG_gate.gate_position\nexpect selected "
                  "Top.NG_gate.gate_position\n"
                  "click node:Top.NG_gate.gate_roughness\nexpect selected "
                  "Top.NG_gate.gate_roughness\n"),
              "");
}

} // namespace shadingTest
