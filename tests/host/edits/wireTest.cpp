#include "document/definedNode.h"
#include "edits/desk.h"
#include "randomEdits.h"

#include <gtest/gtest.h>

namespace {

/// a > c, a > g, g > d; n between nothing; k gives colours only.
const char* const kWires = "  <n name=\"a\" type=\"float\"/>\n"
                           "  <n name=\"b\" type=\"float\"/>\n"
                           "  <n name=\"k\" type=\"color3\"/>\n"
                           "  <n name=\"m\" type=\"float\">\n"
                           "    <input name=\"c\" type=\"color3\" value=\"1, 0, 0\"/>\n"
                           "    <input name=\"x\" type=\"float\"/>\n"
                           "    <input name=\"y\" type=\"float\"/>\n"
                           "  </n>\n"
                           "  <n name=\"c\" type=\"float\">\n"
                           "    <input name=\"i\" type=\"float\" nodename=\"a\"/>\n"
                           "    <input name=\"j\" type=\"float\" nodename=\"a\"/>\n"
                           "  </n>\n"
                           "  <nodegraph name=\"g\">\n"
                           "    <input name=\"x\" type=\"float\" nodename=\"a\"/>\n"
                           "    <input name=\"y\" type=\"float\"/>\n"
                           "    <n name=\"e\" type=\"float\">\n"
                           "      <input name=\"i\" type=\"float\" interfacename=\"x\"/>\n"
                           "    </n>\n"
                           "    <output name=\"o\" type=\"float\" nodename=\"e\"/>\n"
                           "  </nodegraph>\n"
                           "  <n name=\"d\" type=\"float\">\n"
                           "    <input name=\"i\" type=\"float\" nodegraph=\"g\" output=\"o\"/>\n"
                           "    <input name=\"z\" type=\"float\" value=\"2\"/>\n"
                           "  </n>\n";

const struct {
    const char* line;
    const char* title;
    const char* connections; ///< Of the compound of the document, by `connections`.
} kWireEdits[] = {
    {"insert Top.m Top.a.out Top.c.i", "Insert m between a.out and c.i",
     "Top.a.out -> Top.c.j\nTop.a.out -> Top.g.x\nTop.a.out -> Top.m.x\nTop.g.o -> Top.d.i\n"
     "Top.m.out -> Top.c.i\n"},
    {"insert Top.m Top.d.i Top.g.o", "Insert m between g.o and d.i",
     "Top.a.out -> Top.c.i\nTop.a.out -> Top.c.j\nTop.a.out -> Top.g.x\nTop.g.o -> Top.m.x\n"
     "Top.m.out -> Top.d.i\n"},
    {"reroute Top.a.out Top.b.out", "Move connections of a.out to b.out",
     "Top.b.out -> Top.c.i\nTop.b.out -> Top.c.j\nTop.b.out -> Top.g.x\nTop.g.o -> Top.d.i\n"},
    // A source that is there is replaced; a value stays beside it.
    {"reroute Top.c.i Top.d.i", "Move connections of c.i to d.i",
     "Top.a.out -> Top.c.j\nTop.a.out -> Top.d.i\nTop.a.out -> Top.g.x\n"},
    {"reroute Top.d.i Top.d.z", "Move connections of d.i to d.z",
     "Top.a.out -> Top.c.i\nTop.a.out -> Top.c.j\nTop.a.out -> Top.g.x\nTop.g.o -> Top.d.z\n"},
    {"reroute Top.g.x Top.g.y", "Move connections of g.x to g.y",
     "Top.a.out -> Top.c.i\nTop.a.out -> Top.c.j\nTop.a.out -> Top.g.y\nTop.g.o -> Top.d.i\n"},
    {"reroute Top.g.x Top.g.y --inside", "Move connections of g.x to g.y",
     "Top.a.out -> Top.c.i\nTop.a.out -> Top.c.j\nTop.a.out -> Top.g.x\nTop.g.o -> Top.d.i\n"},
    {"delete Top.g --heal", "Delete g",
     "Top.a.out -> Top.c.i\nTop.a.out -> Top.c.j\nTop.a.out -> Top.d.i\n"},
    {"delete Top.g Top.c Top.g.e", "Delete 2 nodes", ""},
};

/// Those that lie in the compound of the document.
std::string outerConnections(Desk& desk)
{
    std::istringstream all(desk.run("connections"));
    std::string result;
    for (std::string line; std::getline(all, line);)
        result += line.find("Top.g.e.") == std::string::npos ? line + "\n" : "";
    return result;
}

TEST(Wires, AreLedAnotherWayByEditsWithLinesOfTheirOwn)
{
    for (const auto& edit : kWireEdits) {
        SCOPED_TRACE(edit.line);
        Desk desk(kWires);
        const std::string before = networkText(*desk.document);
        EXPECT_EQ("", desk.run(edit.line));
        EXPECT_EQ(edit.connections, outerConnections(desk));
        EXPECT_EQ(std::string("1 ") + edit.title + "\n", desk.run("history"));
        const std::string line = desk.run("history --commands");
        const std::string after = networkText(*desk.document);
        const std::string saved = desk.saved();
        desk.run("undo");
        EXPECT_EQ(before, networkText(*desk.document));
        EXPECT_EQ(kWires, desk.saved());
        desk.run("redo");
        EXPECT_EQ(after, networkText(*desk.document));
        EXPECT_EQ(saved, desk.saved());
        Desk reopened(saved);
        EXPECT_EQ(desk.run("connections"), reopened.run("connections"));
        Desk other(kWires);
        EXPECT_EQ("", other.run(line));
        EXPECT_EQ(after, networkText(*other.document));
    }
}

TEST(Wires, InsideAGraphAreItsOwn)
{
    Desk desk(kWires);
    EXPECT_EQ("", desk.run("reroute Top.g.x Top.g.y --inside"));
    EXPECT_EQ("input i float \"\" <- Top.g.y\noutput out float \"\" -> Top.g.o\n",
              desk.run("ports Top.g.e"));
    EXPECT_EQ("reroute Top.g.x Top.g.y --inside\n", desk.run("history --commands"));
    EXPECT_EQ("", desk.run("insert Top.m Top.a.out Top.g.x"));
    EXPECT_EQ("error: insert: Top.m: Top.m.c is not in the compound of Top.g.y\n",
              desk.run("insert Top.m Top.g.y Top.g.e.i"));
}

const struct {
    const char* line;
    const char* problem;
} kWireRefusals[] = {
    {"insert Top.q Top.a.out Top.c.i", "insert: Top.q: no such node"},
    {"insert Top.m Top.b.out Top.c.i", "insert: Top.b.out: not connected to Top.c.i"},
    {"insert Top.a Top.a.out Top.c.i", "insert: Top.a: it is an end of the connection"},
    {"insert Top.b Top.a.out Top.c.i", "insert: Top.b: it has no input"},
    {"insert Top Top.a.out Top.c.i", "insert: Top: the document itself stays as it is"},
    {"insert Top.d Top.a.out Top.g.x", "insert: Top.d: what it gives comes from Top.g.x"},
    {"reroute Top.a.out Top.q.out", "reroute: Top.q.out: no such port"},
    {"reroute Top.b.out Top.a.out", "reroute: Top.b.out: not connected"},
    {"reroute Top.a.out Top.a.out", "reroute: Top.a.out: its connections are there"},
    {"reroute Top.a.out Top.d.i",
     "reroute: Top.a.out: it and Top.d.i are no two sources or targets in one compound"},
    {"reroute Top.a.out Top.k.out",
     "reroute: Top.a.out: Top.k.out: Top.k.out is color3, Top.c.i is float"},
    // The third of three is refused.
    {"reroute Top.a.out Top.d.out",
     "reroute: Top.a.out: Top.d.out: what it gives comes from Top.g.x"},
    {"reroute Top.d.i Top.m.c", "reroute: Top.d.i: Top.g.o: Top.g.o is float, Top.m.c is color3"},
    {"delete Top.c Top.q", "delete: Top.q: no such node"},
    {"delete Top.c Top.c", "delete: Top.c: it is named twice"},
    {"delete Top.c Top", "delete: Top: the document itself stays as it is"},
};

TEST(Wires, StayAsTheyAreWhereAnEditIsRefused)
{
    Desk desk(kWires);
    const std::string before = networkText(*desk.document);
    for (const auto& refusal : kWireRefusals) {
        EXPECT_EQ(std::string("error: ") + refusal.problem + "\n", desk.run(refusal.line));
        EXPECT_EQ(before, networkText(*desk.document)) << refusal.line;
    }
    EXPECT_EQ("", desk.run("history"));
    EXPECT_EQ(kWires, desk.saved());
    EXPECT_FALSE(desk.session->edits().deleteNodes(std::vector<shading::NodePtr>(), true));
}

TEST(Wires, HaveOneEndAtATimeLedAnew)
{
    Desk desk(kWires);
    shading::Edits& edits = desk.session->edits();
    const auto port = [&](const char* path, ZEL::PortIOType type) {
        return desk.document->findPortFromPath(path, type, ZEL::Container::eSearchNode);
    };
    const shading::PortPtr a = port("Top.a.out", ZEL::PortOutput);
    const shading::PortPtr b = port("Top.b.out", ZEL::PortOutput);
    const shading::PortPtr i = port("Top.c.i", ZEL::PortInput);
    const shading::PortPtr x = port("Top.m.x", ZEL::PortInput);
    EXPECT_FALSE(edits.reconnect(a, i, b, x));
    EXPECT_FALSE(edits.reconnect(b, i, b, x));
    EXPECT_TRUE(edits.reconnect(a, i, b, i));
    EXPECT_TRUE(edits.reconnect(b, i, b, x));
    EXPECT_EQ("connect Top.b.out Top.c.i\nreroute Top.c.i Top.m.x\n",
              desk.run("history --commands"));
    EXPECT_EQ("connected to Top.m.x already", edits.connectProblem(b, x));
    EXPECT_EQ("", edits.connectProblem(b, i));
    desk.run("undo 2");
    EXPECT_EQ(kWires, desk.saved());
}

/// A chain: every node feeds the next one. Those in the middle turn the type and back.
std::string chain(int count)
{
    std::string elements = "  <n name=\"n0\" type=\"float\"/>\n";
    for (int i = 1; i < count; ++i) {
        const bool isColour = i % 2 != 0 && i + 1 < count;
        elements += "  <n name=\"n" + std::to_string(i) + "\" type=\"" +
                    (isColour ? "color3" : "float") + "\">\n    <input name=\"i\" type=\"" +
                    (i % 2 == 0 ? "color3" : "float") + "\" nodename=\"n" + std::to_string(i - 1) +
                    "\"/>\n  </n>\n";
    }
    return elements;
}

TEST(Heal, LeadsThroughManyDeletedNodesWhereTheEndsFit)
{
    const std::string before = chain(46);
    Desk desk(before);
    std::string line = "delete";
    for (int i = 1; i < 45; ++i)
        line += " Top.n" + std::to_string(46 - 1 - i);
    EXPECT_EQ("", desk.run(line + " --heal"));
    EXPECT_EQ("Top.n0.out -> Top.n45.i\n", desk.run("connections"));
    EXPECT_EQ("1 Delete 44 nodes\n", desk.run("history"));
    EXPECT_EQ(line + " --heal\n", desk.run("history --commands"));
    const std::string after = desk.saved();
    desk.run("undo");
    EXPECT_EQ(before, desk.saved());
    desk.run("redo");
    EXPECT_EQ(after, desk.saved());
    // The ends of one alone do not fit; two inputs have no way through.
    desk.run("undo");
    EXPECT_EQ("undo: Delete 44 nodes\n", desk.out.str());
    EXPECT_EQ("", desk.run("delete Top.n3 --heal"));
    EXPECT_EQ("input i color3 \"\"\noutput out float \"\" -> Top.n5.i\n", desk.run("ports Top.n4"));
}

TEST(Heal, NeedsOneInputAndOneOutputAndNoCircle)
{
    Desk desk("  <n name=\"a\" type=\"float\"/>\n  <n name=\"b\" type=\"float\"/>\n"
              "  <n name=\"m\" type=\"float\"><input name=\"x\" type=\"float\" nodename=\"a\"/>"
              "<input name=\"y\" type=\"float\" nodename=\"b\"/></n>\n"
              "  <n name=\"c\" type=\"float\"><input name=\"i\" type=\"float\" nodename=\"m\"/>"
              "</n>\n"
              "  <n name=\"p\" type=\"float\"><input name=\"i\" type=\"float\" nodename=\"q\"/>"
              "</n>\n"
              "  <n name=\"q\" type=\"float\"><input name=\"i\" type=\"float\" nodename=\"p\"/>"
              "</n>\n");
    EXPECT_EQ("", desk.run("delete Top.m --heal"));
    EXPECT_EQ("input i float \"\"\noutput out float \"\"\n", desk.run("ports Top.c"));
    EXPECT_EQ("", desk.run("delete Top.p Top.q --heal"));
    EXPECT_EQ("", desk.run("connections"));
}

} // namespace
