#include "check/zelCheck.h"
#include "console/console.h"
#include "randomEdits.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

/// A fan-out, a graph with a pass-through, an input with a value, and names that clash.
const char* const kNetwork =
    "<n name='a' type='t'/><n name='b' type='t'><input name='i' type='t' nodename='a'/>"
    "<input name='j' type='t' nodename='a'/></n><n name='c' type='t'>"
    "<input name='i' type='t' nodename='a'/><input name='k' type='s'/></n>"
    "<nodegraph name='g'><input name='x' type='t' nodename='a'/><input name='y' type='t' "
    "value='7'/>"
    "<n name='a' type='t'><input name='i' type='t' interfacename='x'/>"
    "<input name='j' type='t' value='1' interfacename='y'/></n><n name='d' type='t'>"
    "<input name='i' type='t' interfacename='x'/><input name='j' type='t' nodename='a'/></n>"
    "<output name='o' type='t' nodename='d'/><output name='p' type='t' interfacename='x'/>"
    "</nodegraph><n name='e' type='t'><input name='i' type='t' nodegraph='g' output='o'/>"
    "<input name='j' type='t' nodegraph='g' output='p'/></n><output name='w' type='t' "
    "nodename='e'/>";

struct EditCase {
    const char* name;
    const char* line;
    const char* title;  ///< In the history.
    const char* show;   ///< A command that shows what changed.
    const char* output; ///< Of both.
};

const EditCase kEdits[] = {
    {"connect replaces the source", "connect Top.c.out Top.b.i", "Connect c.out to b.i",
     "ports Top.b",
     "input i t \"\" <- Top.c.out\ninput j t \"\" <- Top.a.out\noutput out t \"\"\n"},
    {"the target may come first", "connect Top.b.i Top.c.out", "Connect c.out to b.i",
     "ports Top.c", "input i t \"\" <- Top.a.out\ninput k s \"\"\noutput out t \"\" -> Top.b.i\n"},
    {"an end inside means the inner port", "connect Top.g.y Top.g.d.i", "Connect g.y to d.i",
     "ports Top.g",
     "input x t \"\" <- Top.a.out -> Top.g.a.i, Top.g.p\ninput y t \"7\" -> Top.g.a.j, Top.g.d.i\n"
     "output o t \"\" <- Top.g.d.out -> Top.e.i\noutput p t \"\" <- Top.g.x -> Top.e.j\n"},
    {"two ports of one compound: the order tells straight through", "connect Top.g.y Top.g.p",
     "Connect g.y to g.p", "connections Top.g",
     "Top.g.a.out -> Top.g.d.j\nTop.g.d.out -> Top.g.o\nTop.g.x -> Top.g.a.i\n"
     "Top.g.x -> Top.g.d.i\nTop.g.y -> Top.g.a.j\nTop.g.y -> Top.g.p\n"},
    {"two ports of one compound: the order tells back to the front", "connect Top.g.p Top.g.y",
     "Connect g.p to g.y", "ports Top.g",
     "input x t \"\" <- Top.a.out -> Top.g.a.i, Top.g.d.i, Top.g.p\n"
     "input y t \"7\" <- Top.g.p -> Top.g.a.j\noutput o t \"\" <- Top.g.d.out -> Top.e.i\n"
     "output p t \"\" <- Top.g.x -> Top.e.j, Top.g.y\n"},
    {"disconnect from the middle of a fan-out", "disconnect Top.b.j Top.a.out",
     "Disconnect a.out from b.j", "ports Top.a",
     "output out t \"\" -> Top.b.i, Top.c.i, Top.g.x\n"},
    {"disconnect-all of a compound's port, both sides", "disconnect-all Top.g.x", "Disconnect g.x",
     "connections Top.g",
     "Top.g.a.out -> Top.g.d.j\nTop.g.d.out -> Top.g.o\nTop.g.y -> Top.g.a.j\n"},
    {"collapse: names of node and ports made unique", "collapse Top e b c",
     "Collapse 2 nodes into e", "ports Top.e2",
     "Top.e2\ninput i t \"\" <- Top.a.out -> Top.e2.b.i, Top.e2.b.j, Top.e2.c.i\n"},
    {"collapse: one port for a source inside", "collapse Top q a", "Collapse a into q",
     "ports Top.q",
     "Top.q\noutput out t \"\" <- Top.q.a.out -> Top.b.i, Top.b.j, Top.c.i, Top.g.x\n"},
    {"collapse: a node twice counts once; ports keep off the names of nodes",
     "collapse Top q g e g", "Collapse 2 nodes into q", "ports Top.q",
     "Top.q\ninput x t \"\" <- Top.a.out -> Top.q.g.x\n"
     "output out t \"\" <- Top.q.e.out -> Top.w\n"},
    {"collapse inside", "collapse Top.g q d", "Collapse d into q", "ports Top.g.q",
     "Top.g.q\ninput i t \"\" <- Top.g.x -> Top.g.q.d.i\n"
     "input j t \"\" <- Top.g.a.out -> Top.g.q.d.j\noutput out t \"\" <- Top.g.q.d.out -> "
     "Top.g.o\n"},
    {"expand: a fan, a pass-through, a value, a name that is taken", "expand Top.g", "Expand g",
     "ports Top.a2\nports Top.a\nports Top.d\nports Top.e",
     "Top.g.a -> Top.a2\n"
     "input i t \"\" <- Top.a.out\ninput j t \"7\"\noutput out t \"\" -> Top.d.j\n"
     "output out t \"\" -> Top.a2.i, Top.b.i, Top.b.j, Top.c.i, Top.d.i, Top.e.j\n"
     "input i t \"\" <- Top.a.out\ninput j t \"\" <- Top.a2.out\noutput out t \"\" -> Top.e.i\n"
     "input i t \"\" <- Top.d.out\ninput j t \"\" <- Top.a.out\noutput out t \"\" -> Top.w\n"},
    {"port add", "port add Top.g output q t", "Add output q to g", "ports Top.g",
     "input x t \"\" <- Top.a.out -> Top.g.a.i, Top.g.d.i, Top.g.p\ninput y t \"7\" -> Top.g.a.j\n"
     "output o t \"\" <- Top.g.d.out -> Top.e.i\noutput p t \"\" <- Top.g.x -> Top.e.j\n"
     "output q t \"\"\n"},
    {"port delete", "port delete Top.g x", "Delete input x of g", "ports Top.g",
     "input y t \"7\" -> Top.g.a.j\noutput o t \"\" <- Top.g.d.out -> Top.e.i\n"
     "output p t \"\" -> Top.e.j\n"},
    {"port rename, both sides", "port rename Top.g x z", "Rename input x of g to z",
     "connections Top.g",
     "Top.g.a.out -> Top.g.d.j\nTop.g.d.out -> Top.g.o\nTop.g.y -> Top.g.a.j\n"
     "Top.g.z -> Top.g.a.i\nTop.g.z -> Top.g.d.i\nTop.g.z -> Top.g.p\n"},
    {"delete from the middle", "delete Top.b", "Delete b", "ls\nports Top.a",
     "a n\nc n\ng nodegraph compound\ne n\noutput out t \"\" -> Top.c.i, Top.g.x\n"},
    {"delete a compound", "delete Top.g", "Delete g", "ports Top.e",
     "input i t \"\"\ninput j t \"\"\noutput out t \"\" -> Top.w\n"},
    {"rename", "rename Top.g h", "Rename g to h", "ls",
     "a n\nb n\nc n\nh nodegraph compound\ne n\n"},
};

/// A document with a shell that stays.
struct Session {
    explicit Session(const char* elements)
        : document(elements),
          session(sessionOn(*document.opened)),
          shell(session, out, out)
    {
        shell.add(shading::viewCommands());
        shell.add(shading::editCommands());
    }
    std::string run(const std::string& commands)
    {
        out.str("");
        std::istringstream lines(commands);
        std::string line;
        while (std::getline(lines, line))
            shell.run(line);
        return withoutNotes(out.str());
    }
    std::string text() const { return networkText(*document.opened); }

    TestDocument document;
    std::ostringstream out;
    shading::Session session;
    shading::Console shell;
};

TEST(Edit, IsUndoneAndRedoneExactly)
{
    for (const EditCase& c : kEdits) {
        SCOPED_TRACE(c.name);
        Session session(kNetwork);
        const std::string before = session.text();
        EXPECT_EQ(c.output, session.run(c.line + std::string("\n") + c.show));
        const std::string after = session.text();
        EXPECT_NE(before, after);
        EXPECT_EQ(0U, zelCheck::checkNetwork(*session.document.opened).size());
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(std::string("undo: ") + c.title + "\n", session.run("undo"));
            EXPECT_EQ(before, session.text());
            EXPECT_EQ(0U, zelCheck::checkNetwork(*session.document.opened).size());
            EXPECT_EQ(std::string("redo: ") + c.title + "\n", session.run("redo"));
            EXPECT_EQ(after, session.text());
        }
        // The command that it gives for itself does the same.
        const std::string command = session.run("history --commands");
        session.run("undo\n" + command);
        EXPECT_EQ(after, session.text()) << command;
        EXPECT_EQ(std::string("1 ") + c.title + "\n", session.run("history"));
    }
}

const struct {
    const char* line;
    const char* output;
} kRefusals[] = {
    {"connect Top.a.no Top.b.i", "connect: Top.a.no: no such port"},
    {"connect Top.a.out Top.c.k", "connect: Top.a.out: Top.a.out is t, Top.c.k is s"},
    {"connect Top.a.out Top.b.i", "connect: Top.a.out: connected to Top.b.i already"},
    {"connect Top.b.i Top.b.j",
     "connect: Top.b.i: it and Top.b.j are no source and target in one compound"},
    {"connect Top.a.out Top.g.d.i",
     "connect: Top.a.out: it and Top.g.d.i are no source and target in one compound"},
    {"disconnect Top.c.out Top.b.i", "disconnect: Top.c.out: not connected to Top.b.i"},
    {"disconnect-all Top.c.k", "disconnect-all: Top.c.k: not connected"},
    {"collapse Top.a q b", "collapse: Top.a: not a compound"},
    {"collapse Top q a no", "collapse: Top.no: no such node"},
    {"collapse Top q.r a", "collapse: Top: no path reaches a name with a \".\" in it"},
    {"expand Top", "expand: Top: the document itself stays as it is"},
    {"expand Top.a", "expand: Top.a: not a compound"},
    {"port add Top.g input a t", "port: Top.g.a: the name is taken"},
    {"port add Top.g input q no", "port: Top.g: there is no data type \"no\""},
    {"port add Top.g both q t", "port: both: neither input nor output"},
    {"port delete Top.g q", "port: Top.g.q: no such port"},
    {"port rename Top.g x o", "port: Top.g.o: the name is taken"},
    {"port delete Top.g x y",
     "port: delete: usage: port add PATH input|output NAME TYPE, port delete PATH NAME, port "
     "rename PATH OLD NEW, port move PATH NAME PLACE, port type PATH NAME TYPE"},
    {"delete Top", "delete: Top: the document itself stays as it is"},
    {"delete Top.no", "delete: Top.no: no such node"},
    {"rename Top.a b", "rename: Top.b: the name is taken"},
    {"rename Top.a ''", "rename: Top.a: a name cannot be empty"},
    {"rename Top.a 'my oxide'",
     "rename: Top.a: a name has letters, digits and _, and begins with no digit"},
    {"rename Top.a 1a",
     "rename: Top.a: a name has letters, digits and _, and begins with no digit"},
    {"port rename Top.g x '\xC3\xB6'",
     "port: Top.g.x: a name has letters, digits and _, and begins with no digit"},
    {"port add Top.g input x:y t",
     "port: Top.g: a name has letters, digits and _, and begins with no digit"},
    {"collapse Top -q a",
     "collapse: Top: a name has letters, digits and _, and begins with no digit"},
    {"undo 2", "undo: 2: only 1 to undo"},
    {"undo x", "undo: x: not a number of edits"},
    {"redo", "redo: history: nothing to redo"},
};

TEST(Edit, RefusalNamesThePathAndTheReasonAndChangesNothing)
{
    Session session(kNetwork);
    session.run("rename Top.e f");
    const std::string before = session.text();
    for (const auto& c : kRefusals) {
        SCOPED_TRACE(c.line);
        EXPECT_EQ(std::string("error: ") + c.output + "\n", session.run(c.line));
        EXPECT_EQ(before, session.text());
        EXPECT_EQ("1 Rename e to f\n", session.run("history"));
    }
}

/// Siblings that are no part of the network, and references that mean nothing.
TEST(Edit, NewNamesAreThoseOfNoSibling)
{
    const char* const elements =
        "<look name='L'/><collection name='C'/><x:y name='Z'/>"
        "<nodegraph name='g'><variantset name='t'/><backdrop name='B'/><n name='i' type='t'/>"
        "<output name='o' type='t' nodename='no'/></nodegraph>"
        "<n name='a' type='t'/><n name='b' type='t'><input name='j' type='t' nodegraph='NG'/></n>";
    const struct {
        const char* line;
        const char* output;
    } refusals[] = {
        {"rename Top.a L", "rename: Top.L: the name is taken: look \"L\" has it"},
        {"rename Top.g C", "rename: Top.C: the name is taken: collection \"C\" has it"},
        {"rename Top.a Z", "rename: Top.Z: the name is taken: x:y \"Z\" has it"},
        {"rename Top.a NG", "rename: Top.NG: the name is taken: input \"j\" refers to it"},
        {"rename Top.g.i no", "rename: Top.g.no: the name is taken: output \"o\" refers to it"},
        {"port add Top.g input t t", "port: Top.g.t: the name is taken: variantset \"t\" has it"},
        {"port rename Top.g o B", "port: Top.g.B: the name is taken: backdrop \"B\" has it"},
    };
    Session session(elements);
    for (const auto& c : refusals)
        EXPECT_EQ(std::string("error: ") + c.output + "\n", session.run(c.line));
    // Names that the host makes are free, and what an expanded graph leaves behind keeps its own.
    EXPECT_EQ("Top.L2\n", session.run("collapse Top L a"));
    session.run("rename Top.b t");
    EXPECT_EQ("error: expand: Top.g: variantset \"t\" inside: the name is taken\n",
              session.run("expand Top.g"));
    session.run("rename Top.t b\nexpand Top.g");
    EXPECT_EQ("error: rename: Top.B: the name is taken: backdrop \"B\" has it\n",
              session.run("rename Top.b B"));
}

TEST(Edit, ACollapsedMaterialHasAnOutput)
{
    Session session("<n name='a' type='surfaceshader'/><n name='m' type='material'><input name='s' "
                    "type='surfaceshader' nodename='a'/></n>");
    EXPECT_EQ("Top.q\noutput out material \"\" <- Top.q.m.out\n",
              session.run("collapse Top q a m\nports Top.q"));
    // Not the end: the material reads it.
    EXPECT_EQ("Top.q.r\noutput out surfaceshader \"\" <- Top.q.r.a.out -> Top.q.m.s\n",
              session.run("collapse Top.q r a\nports Top.q.r"));
}

TEST(Edit, NothingIsConnectedInACircle)
{
    Session session(
        "<nodegraph name='g'><input name='x' type='t'/><n name='a' type='t'><input "
        "name='i' type='t' interfacename='x'/></n><output name='o' type='t' nodename='a'/>"
        "</nodegraph><n name='b' type='t'><input name='i' type='t' nodegraph='g'/></n>"
        "<n name='c' type='t'><input name='out' type='t'/></n>");
    EXPECT_EQ("error: connect: Top.b.out: what it gives comes from Top.g.x\n",
              session.run("connect Top.b.out Top.g.x"));
    EXPECT_EQ("error: connect: Top.c.out: what it gives comes from Top.c.out\n",
              session.run("connect Top.c.out Top.c.out"));
    EXPECT_EQ("", session.run("connect Top.c.out Top.g.x\ncheck"));
}

TEST(Edit, HistoryForgetsWhatWasUndoneWhenAnEditFollows)
{
    Session session(kNetwork);
    EXPECT_EQ("undo: Delete b\nundo: Rename c to q\n1 Rename a to r\n2 undone: Rename c to q\n"
              "3 undone: Delete b\nredo: Rename c to q\n1 Rename a to r\n2 Rename c to q\n"
              "3 Expand g\n",
              session.run("rename Top.a r\nrename Top.c q\ndelete Top.b\nundo 2\nhistory\nredo\n"
                          "expand Top.g\nhistory"));
}

TEST(Edit, HistoryIsDroppedAfterAChangeThatIsNoEdit)
{
    Session session(kNetwork);
    session.run("rename Top.e f");
    session.document.opened->findNodeFromPath("Top.f")->setName("h");
    EXPECT_EQ("error: undo: history: nothing to undo\n", session.run("history\nundo"));
}

TEST(Edit, CollapseTellsAMovedNodeFromANeighbourOfItsName)
{
    Session session("<nodegraph name='g'><input name='x' type='t'/><n name='g' type='t'>"
                    "<input name='i' type='t' interfacename='x'/></n></nodegraph>");
    EXPECT_EQ("Top.g.q\nTop.g.q.i -> Top.g.q.g.i\nTop.g.x -> Top.g.q.i\n",
              session.run("collapse Top.g q g\nconnections"));
}

TEST(Edit, CollapseKeepsPortsOffTheNamesOfTheNodes)
{
    Session session("<n name='a' type='t'/><n name='i' type='t'>"
                    "<input name='i' type='t' nodename='a'/></n>");
    EXPECT_EQ("Top.q\nTop.a.out -> Top.q.i2\nTop.q.i2 -> Top.q.i.i\n",
              session.run("collapse Top q i\nconnections\ncheck"));
}

TEST(Edit, ExpandFindsNamesThatAreFreeAboveAndBelow)
{
    Session session("<n name='a' type='t'/><nodegraph name='g'><n name='a' type='t'/>"
                    "<n name='a2' type='t'/><n name='g' type='t'/></nodegraph>");
    EXPECT_EQ("Top.g.a -> Top.a3\na n\na3 n\na2 n\ng n\n", session.run("expand Top.g\nls\ncheck"));
}

TEST(Edit, CollapseKeepsAConnectionBetweenTypes)
{
    Session session("<n name='a' type='t'/><n name='b' type='s'>"
                    "<input name='i' type='s' nodename='a'/></n>");
    EXPECT_EQ("Top.q\nTop.a.out -> Top.q.i\nTop.q.i -> Top.q.b.i\n",
              session.run("collapse Top q b\nconnections"));
    EXPECT_EQ("undo: Collapse b into q\nTop.a.out -> Top.b.i\n"
              "Top.a.out: is \"t\", feeds Top.b.i, which is \"s\"\n",
              session.run("undo\nconnections\ncheck"));
}

TEST(Edit, DeletedGraphTakesItsConnectionsFromDeepInsideAlong)
{
    Session session("<nodegraph name='k'><output name='o' type='t'/></nodegraph>"
                    "<nodegraph name='g'><n name='n' type='t'>"
                    "<input name='i' type='t' nodegraph='k'/></n></nodegraph>");
    const std::string before = session.text();
    EXPECT_EQ("output o t \"\"\n", session.run("delete Top.g\nports Top.k"));
    EXPECT_EQ("undo: Delete g\n", session.run("undo"));
    EXPECT_EQ(before, session.text());
    EXPECT_EQ("Top.k.o -> Top.n.i\n", session.run("expand Top.g\nconnections"));
    // The format connects a graph of the document to what lies in another one, and so may an edit.
    EXPECT_EQ("undo: Expand g\nTop.k.o -> Top.g.n.i\n",
              session.run("undo\ndisconnect Top.k.o Top.g.n.i\nconnect Top.g.n.i Top.k.o\n"
                          "connections"));
}

TEST(Edit, AGraphWithTokensIsNotExpanded)
{
    Session session(
        "<nodegraph name='g'><token name='T' value='v'/><n name='a' type='t'/></nodegraph>"
        "<nodedef name='D' node='d'><token name='U'/><output name='o' type='t'/></nodedef>"
        "<nodegraph name='h' nodedef='D'><n name='a' type='t'/><output name='o' type='t' "
        "nodename='a'/></nodegraph>");
    EXPECT_EQ("error: expand: Top.g: token \"T\" counts in that graph only\n"
              "error: expand: Top.h: token \"U\" counts in that graph only\n",
              session.run("expand Top.g\nexpand Top.h"));
}

TEST(Edit, ExpandEndsACircleThroughTheCompound)
{
    Session session("<nodegraph name='g'><input name='x' type='t' nodegraph='g'/>"
                    "<output name='o' type='t' interfacename='x'/></nodegraph>");
    const std::string before = session.text();
    EXPECT_EQ("", session.run("expand Top.g\nls\ncheck"));
    session.run("undo");
    EXPECT_EQ(before, session.text());
}

TEST(Host, BothSidesOfACompoundAreReorderedTogether)
{
    for (const bool isInner : {true, false}) {
        Session session(kNetwork);
        const std::string before = session.text();
        const shading::NodePtr node = session.document.opened->findNodeFromPath("Top.g");
        ZEL::PortList& list = isInner ? node->getAsCompound()->innerInputs() : node->inputs();
        const auto move = [&](int from, int to) {
            return session.shell.edits().run({"Move", {}}, "Top.g", [&, from, to] {
                return list.movePort(from, to) ? "" : "not moved";
            });
        };
        EXPECT_TRUE(move(1, 0));
        EXPECT_EQ(0U, session.run("ports Top.g")
                          .find("input y t \"7\" -> Top.g.a.j\ninput x t \"\" <- Top.a.out -> "
                                "Top.g.a.i, Top.g.d.i, Top.g.p\noutput"));
        EXPECT_FALSE(move(0, 1)); // The library would repeat the port.
        EXPECT_EQ("a port can be moved to the front only", session.shell.edits().problem().reason);
        session.run("undo");
        EXPECT_EQ(before, session.text());
    }
}

TEST(Edit, AChangeOutsideOfEditsIsUnsavedToo)
{
    const TestDocument document("<add name='a' type='float'/>");
    shading::Edits edits(*document.opened);
    EXPECT_TRUE(edits.history().isSaved());
    document.opened->getRootNode()->getAsCompound()->nodes()["a"]->setName("b");
    EXPECT_FALSE(edits.history().isSaved());
    edits.history().noteSaved();
    EXPECT_TRUE(edits.history().isSaved());
}

} // namespace
