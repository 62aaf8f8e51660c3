#include "edits/desk.h"
#include "edits/positions.h"

#include <gtest/gtest.h>

namespace {

/// A chain of so many nodes, the last one first, all at one place; and two that are not connected.
std::string tangle(int count)
{
    std::string elements;
    for (int i = count - 1; i >= 0; --i) {
        elements +=
            "  <n name=\"n" + std::to_string(i) + "\" type=\"float\" xpos=\"2\" ypos=\"-1\">\n";
        if (i > 0)
            elements += "    <input name=\"i\" type=\"float\" nodename=\"n" +
                        std::to_string(i - 1) + "\"/>\n";
        elements += "  </n>\n";
    }
    return elements + "  <n name=\"s\" type=\"float\"/>\n  <n name=\"t\" type=\"float\"/>\n";
}

shading::Position arrangedAt(Desk& desk, const std::string& path)
{
    const auto place =
        shading::positionOf(*desk.document, desk.document->findNodeFromPath(path.c_str()));
    EXPECT_TRUE(place) << path;
    return place.value_or(shading::Position());
}

void expectChain(Desk& desk, int count)
{
    for (int i = 1; i < count; ++i) {
        const std::string path = "Top.n" + std::to_string(i);
        // A gap is left beside each node.
        EXPECT_GT(arrangedAt(desk, path).x,
                  arrangedAt(desk, "Top.n" + std::to_string(i - 1)).x + 0.5)
            << path;
    }
}

TEST(Arrange, LaysOutAllNodesAsOneEditAndKeepsTheirCorner)
{
    for (const int count : {5, 45, 400}) {
        SCOPED_TRACE(count);
        const std::string before = tangle(count);
        Desk desk(before);
        EXPECT_EQ("", desk.run("arrange"));
        EXPECT_EQ("1 Arrange " + std::to_string(count + 2) + " nodes\n", desk.run("history"));
        expectChain(desk, count);
        double left = 1000;
        double top = 1000;
        for (const shading::NodePtr& node :
             desk.document->getRootNode()->getAsCompound()->nodes()) {
            const auto place = shading::positionOf(*desk.document, node);
            ASSERT_TRUE(place);
            left = std::min(left, place->x);
            top = std::min(top, place->y);
        }
        EXPECT_NEAR(2, left, 1e-4);
        EXPECT_NEAR(-1, top, 1e-4);
        const std::string after = desk.saved();
        const std::string line = desk.run("history --commands");
        desk.run("undo");
        EXPECT_EQ(before, desk.saved());
        desk.run(line);
        EXPECT_EQ(after, desk.saved());
        EXPECT_EQ(0U, desk.run("arrange").find("error: arrange: Top.n")); // They are there.
        EXPECT_EQ(1, desk.session->edits().history().undoCount());
    }
}

TEST(Arrange, LeavesTheOthersWhereTheyAre)
{
    Desk desk(tangle(5));
    EXPECT_EQ("", desk.run("arrange Top n1 n3 n2 n1"));
    EXPECT_EQ("1 Arrange 3 nodes\n", desk.run("history"));
    EXPECT_EQ(2, arrangedAt(desk, "Top.n0").x);
    EXPECT_EQ(2, arrangedAt(desk, "Top.n4").x);
    EXPECT_EQ(2, arrangedAt(desk, "Top.n1").x);
    EXPECT_GT(arrangedAt(desk, "Top.n2").x, 2.5);
    EXPECT_GT(arrangedAt(desk, "Top.n3").x, arrangedAt(desk, "Top.n2").x + 0.5);
    EXPECT_EQ("error: arrange: Top.q: no such node\nerror: arrange: Top.s: not a compound\n",
              desk.run("arrange Top n1 q\narrange Top.s"));
    Desk empty("  <nodegraph name=\"g\"/>\n");
    EXPECT_EQ("error: arrange: Top.g: it has no node\n", empty.run("arrange Top.g"));
}

} // namespace
