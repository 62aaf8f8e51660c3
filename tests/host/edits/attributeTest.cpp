#include "edits/desk.h"

#include <gtest/gtest.h>

namespace {

const char* const kWithALook = "  <n name=\"a\" type=\"float\" doc=\"x &amp; y\"/>\n"
                               "  <nodegraph name=\"g\">\n"
                               "    <input name=\"x\" type=\"float\" value=\"1\"/>\n"
                               "    <token name=\"T\" type=\"string\" value=\"t\"/>\n"
                               "    <n name=\"b\" type=\"float\">\n"
                               "      <input name=\"i\" type=\"float\" interfacename=\"x\"/>\n"
                               "    </n>\n"
                               "  </nodegraph>\n"
                               "  <m name=\"M\" type=\"material\"/>\n"
                               "  <m name=\"N\" type=\"material\"/>\n"
                               "  <look name=\"L\">\n"
                               "    <materialassign name=\"one\" material=\"M\" geom=\"/a\"/>\n"
                               "    <materialassign material=\"M\" geom=\"/b\"/>\n"
                               "    <materialassign material=\"M\" geom=\"/c\"/>\n"
                               "  </look>\n";

const struct {
    const char* line;
    const char* before; ///< A part of the file.
    const char* after;
} kAttributes[] = {
    // Nodes, ports and graphs.
    {"attribute Top.a doc z", "doc=\"x &amp; y\"", "doc=\"z\""},
    {"attribute Top.a doc ''", " doc=\"x &amp; y\"", ""},
    {"attribute Top.a uiname 'a \"b\" <c>'", "y\"/>", "y\" uiname=\"a &quot;b&quot; &lt;c>\"/>"},
    {"attribute Top.a xpos -1.5", "y\"/>", "y\" xpos=\"-1.5\"/>"},
    {"move Top.a 2 0.25", "y\"/>", "y\" xpos=\"2\" ypos=\"0.25\"/>"},
    {"attribute Top.g colorspace acescg", "name=\"g\"", "name=\"g\" colorspace=\"acescg\""},
    {"attribute Top.g.x unit meter", "value=\"1\"", "value=\"1\" unit=\"meter\""},
    {"attribute Top.g.b.i uiname i", "interfacename=\"x\"", "interfacename=\"x\" uiname=\"i\""},
    {"attribute Top.g.b version 2", "name=\"b\" type=\"float\"",
     "name=\"b\" type=\"float\" version=\"2\""},
    // What is no part of the network.
    {"attribute Top.g.T value u", "value=\"t\"", "value=\"u\""},
    {"attribute Top.L.one geom /d", "geom=\"/a\"", "geom=\"/d\""},
    {"attribute Top.L.materialassign2 geom /d", "geom=\"/c\"", "geom=\"/d\""},
    {"attribute Top.L.one material N", "name=\"one\" material=\"M\"",
     "name=\"one\" material=\"N\""},
};

TEST(Attribute, IsWrittenUndoneAndReadAgain)
{
    for (const auto& c : kAttributes) {
        SCOPED_TRACE(c.line);
        Desk desk(kWithALook);
        EXPECT_EQ("", desk.run(c.line));
        std::string expected = kWithALook;
        expected.replace(expected.find(c.before), std::string(c.before).size(), c.after);
        EXPECT_EQ(expected, desk.saved());
        const std::string lines = desk.run("history --commands");
        desk.run("undo");
        EXPECT_EQ(kWithALook, desk.saved());
        desk.run("redo");
        EXPECT_EQ(expected, desk.saved());
        Desk again(kWithALook);
        EXPECT_EQ("", again.run(lines));
        EXPECT_EQ(expected, again.saved());
    }
}

TEST(Attribute, IsReadAsItIsNow)
{
    const std::pair<const char*, const char*> cases[] = {
        {"attribute Top", "version \"1.39\"\n"},
        {"attribute Top.a", "doc \"x & y\"\n"},
        {"attribute Top.a doc", "x & y\n"},
        {"attribute Top.g.x", ""},
        {"attribute Top.L.materialassign geom", "/b\n"},
        {"attribute Top.L.one", "name \"one\"\nmaterial \"M\"\ngeom \"/a\"\n"},
        {"attribute Top.L.one material N\nrename Top.N O\nattribute Top.L.one material", "O\n"},
        {"attribute Top.a ypos 1\nattribute Top.a doc ''\nattribute Top.a", "ypos \"1\"\n"},
    };
    for (const auto& [lines, output] : cases)
        EXPECT_EQ(output, Desk(kWithALook).run(lines)) << lines;
}

TEST(Attribute, IsRefusedWithItsReason)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Top.none doc x", "Top.none: no such element"},
        {"Top.L.none doc x", "Top.L.none: no such element"},
        {"Top.a doc 'x & y'", "Top.a: doc: it has that value"},
        {"Top.a uiname ''", "Top.a: uiname: it has no such attribute"},
        {"Top.a uiname", "Top.a: uiname: it has no such attribute"},
        {"Top.a name b", "Top.a: name: rename changes it"},
        {"Top.a name", "Top.a: name: rename changes it"},
        {"Top.g.x name y", "Top.g.x: name: port rename changes it"},
        {"Top.g.x value 2", "Top.g.x: value: set changes it"},
        {"Top.g.b.i interfacename y", "Top.g.b.i: interfacename: connect and disconnect change it"},
        {"Top.a nodedef ND", "Top.a: nodedef: create makes a node of another definition"},
        {"Top.L name K", "Top.L: name: no edit renames what the network does not show"},
        {"Top.L.one material K", "Top.L.one: material: it sees no node \"K\""},
        {"Top.a xpos left", "Top.a: xpos: \"left\" is no float"},
        {"Top.a 'two words' x",
         "Top.a: two words: a name has letters, digits and _, and begins with no digit"},
        {"Top.a doc '\x01'", "Top.a: doc: its value has characters that XML cannot hold"},
        {"Top.a.out doc x",
         "Top.a.out: doc: the format gives an output of a plain node no attributes"},
    };
    for (const auto& [words, error] : cases) {
        Desk desk(kWithALook);
        EXPECT_EQ(std::string("error: attribute: ") + error + "\n",
                  desk.run(std::string("attribute ") + words));
        EXPECT_TRUE(desk.session->isSaved());
    }
}

TEST(Attribute, ThatNamesANodeIsSavedOnlyWhileItIsThere)
{
    Desk desk(kWithALook);
    EXPECT_EQ("", desk.run("attribute Top.L.one material N\ndelete Top.N"));
    EXPECT_EQ("error: save: Top.N: it is gone from there, and materialassign \"one\" still names "
              "it\n",
              desk.run("save"));
    // The one that they named before may go.
    desk.run("undo\nattribute Top.L.materialassign material N\n"
             "attribute Top.L.materialassign2 material N\ndelete Top.M");
    EXPECT_NE(std::string::npos, desk.saved().find("material=\"N\" geom=\"/c\""));
}

TEST(Attribute, TakenOffLeavesNoInputThatSaysNothing)
{
    Desk desk("  <n name=\"a\" type=\"t\">\n"
              "    <input name=\"i\" type=\"t\" value=\"1\" unit=\"m\"/>\n"
              "    <input name=\"j\" type=\"t\" value=\"1\"/>\n"
              "  </n>\n");
    desk.run("set Top.a.i ''\nattribute Top.a.i unit ''\nset Top.a.j ''\nattribute Top.a.j doc x");
    EXPECT_EQ("  <n name=\"a\" type=\"t\">\n    <input name=\"j\" type=\"t\" doc=\"x\"/>\n  </n>\n",
              desk.saved());
}

TEST(Attribute, MeansTheNodeThatItsElementSees)
{
    Desk desk("  <n name=\"a\" type=\"t\"/>\n"
              "  <nodegraph name=\"g\">\n"
              "    <n name=\"a\" type=\"t\"/>\n"
              "    <n name=\"b\" type=\"t\"/>\n"
              "    <s:n name=\"s\" type=\"t\">\n"
              "      <input name=\"i\" type=\"t\"/>\n"
              "    </s:n>\n"
              "  </nodegraph>\n");
    EXPECT_EQ("", desk.run("attribute Top.g.s.i nodename a\nrename Top.g.a c"));
    EXPECT_NE(std::string::npos,
              desk.saved().find("<input name=\"i\" type=\"t\" nodename=\"c\"/>"));
    // Of the document it is seen as well.
    EXPECT_EQ("Top.c\n", desk.run("reparent Top Top.g.c"));
    EXPECT_NE(std::string::npos,
              desk.saved().find("<input name=\"i\" type=\"t\" nodename=\"c\"/>"));
    EXPECT_EQ("error: save: Top.c: it is gone from there, and input \"i\" still names it\n",
              desk.run("delete Top.c\nsave"));
}

TEST(Attribute, UndoneFollowsANameAsItDidBefore)
{
    Desk desk(kWithALook);
    desk.run("attribute Top.L.one material N\nundo\nrename Top.M P");
    EXPECT_NE(std::string::npos, desk.saved().find("name=\"one\" material=\"P\""));
}

const char* const kPlaced = "  <n name=\"a\" type=\"float\" xpos=\"1\" ypos=\"0\"/>\n"
                            "  <n name=\"b\" type=\"float\" xpos=\"2.1\" ypos=\"1\"/>\n"
                            "  <n name=\"c\" type=\"float\"/>\n";

TEST(Position, IsThatOfTheMiddleWhereNodesAreCollapsed)
{
    Desk desk(kPlaced);
    desk.run("collapse Top g a b c");
    EXPECT_EQ("xpos \"1.55\"\nypos \"0.5\"\n", desk.run("attribute Top.g"));
    EXPECT_EQ("xpos \"1\"\nypos \"0\"\n", desk.run("attribute Top.g.a"));
    desk.run("expand Top.g");
    EXPECT_EQ(kPlaced, desk.saved());
    desk.run("undo\nmove Top.g 11.55 0\nexpand Top.g");
    EXPECT_EQ("xpos \"11\"\nypos \"-0.5\"\n", desk.run("attribute Top.a"));
    EXPECT_EQ("xpos \"12.1\"\nypos \"0.5\"\n", desk.run("attribute Top.b"));
    EXPECT_EQ("", desk.run("attribute Top.c"));
    desk.run("undo 3");
    EXPECT_EQ(kPlaced, desk.saved());
}

TEST(Position, IsGivenToWhatIsMadeBelowTheOthers)
{
    Desk desk(kPlaced);
    EXPECT_EQ("Top.g nodegraph\n" + nestedNote("Top.g.h") + "Top.g.h nodegraph\n",
              desk.run("create nodegraph g\ncreate nodegraph h Top.g"));
    EXPECT_EQ(std::string(kPlaced) + "  <nodegraph name=\"g\" xpos=\"1\" ypos=\"2\">\n"
                                     "    <nodegraph name=\"h\"/>\n  </nodegraph>\n",
              desk.saved());
    desk.run("undo 2");
    EXPECT_EQ(kPlaced, desk.saved());
}

TEST(Position, IsRefusedWhereItIsNoNumberOrTheSame)
{
    Desk desk(kPlaced);
    EXPECT_EQ("error: move: x: not a number\nerror: move: Top.a: it is there\n"
              "error: move: Top: the document itself stays as it is\n"
              "error: move: Top.q: no such node\n",
              desk.run("move Top.a 1 x\nmove Top.a 1.0 0\nmove Top 1 1\nmove Top.q 1 1"));
}

} // namespace
