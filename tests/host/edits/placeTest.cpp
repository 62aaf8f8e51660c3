#include "edits/desk.h"
#include "edits/positions.h"
#include "randomEdits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

namespace {

using Repeating = shading::History::Repeating;

/// So many plain nodes: every third has a place.
std::string manyNodes(int count)
{
    std::string elements;
    for (int i = 0; i < count; ++i) {
        const std::string place =
            i % 3 == 0 ? " xpos=\"1\" ypos=\"" + std::to_string(i) + "\"" : "";
        elements += "  <n name=\"n" + std::to_string(i) + "\" type=\"float\"" + place + "/>\n";
    }
    return elements;
}

TEST(Places, ManyNodesMoveAsOneEdit)
{
    const std::string before = manyNodes(45);
    Desk desk(before);
    std::vector<shading::NodePlace> places;
    for (const shading::NodePtr& node : desk.document->getRootNode()->getAsCompound()->nodes())
        places.push_back({node, {static_cast<double>(places.size()) + 0.25, 3}});
    places[0].position = {1, 0}; // It is there.
    EXPECT_TRUE(desk.session->edits().moveNodes(places));
    EXPECT_EQ("1 Move 44 nodes\n", desk.run("history"));
    EXPECT_EQ("xpos \"1\"\nypos \"0\"\n", desk.run("attribute Top.n0"));
    EXPECT_EQ("xpos \"44.25\"\nypos \"3\"\n", desk.run("attribute Top.n44"));
    const std::string after = desk.saved();
    const std::string line = desk.run("history --commands");
    desk.run("undo");
    EXPECT_EQ(before, desk.saved());
    desk.run("redo");
    EXPECT_EQ(after, desk.saved());
    Desk other(before);
    EXPECT_EQ("", other.run(line));
    EXPECT_EQ(after, other.saved());
}

TEST(Places, AreRefusedAllTogether)
{
    const std::string before = manyNodes(3);
    Desk desk(before);
    EXPECT_EQ("error: move: Top.q: no such node\nerror: move: Top.n0: it is named twice\n"
              "error: move: 4: usage: move PATH X Y [PATH X Y]...\n"
              "error: move: Top: the document itself stays as it is\n",
              desk.run("move Top.n0 5 5 Top.q 1 1\nmove Top.n0 5 5 Top.n1 5 5 Top.n0 1 1\n"
                       "move Top.n0 5 5 4\nmove Top.n0 5 5 Top 5 5"));
    const shading::NodePtr node = desk.document->findNodeFromPath("Top.n1");
    EXPECT_FALSE(desk.session->edits().moveNodes({{node, {1 / 0.0, 0}}}));
    EXPECT_EQ("its place is no number", desk.session->edits().problem().reason);
    EXPECT_FALSE(desk.session->edits().moveNodes(std::vector<shading::NodePlace>()));
    EXPECT_EQ("", desk.run("history"));
    EXPECT_EQ(before, desk.saved());
    desk.run("move Top.n0 5 5 Top.n1 6 6");
    EXPECT_EQ("error: move: Top.n0: it and the others are there\n",
              desk.run("move Top.n0 5 5 Top.n1 6 6"));
}

TEST(Places, OfANodeThatNoPathLeadsToHaveNoLine)
{
    Desk desk("  <n name=\"a.b\" type=\"float\"/>\n");
    const shading::NodePtr node = desk.document->getRootNode()->getAsCompound()->nodes()[0];
    EXPECT_TRUE(desk.session->edits().moveNode(node, {1, 2}));
    EXPECT_EQ("# Move a.b\n", desk.run("history --commands"));
}

/// Nudges and drags under keys of their own, with what an observer is told of each.
struct Nudged {
    bool move(const char* key, double x)
    {
        const Repeating repeating(desk.session->edits().history(), key);
        return desk.session->edits().moveNode("Top.n0", {x, 0});
    }
    std::string next() { return std::exchange(told, ""); }

    Desk desk{manyNodes(3)};
    std::string told;
    std::shared_ptr<void> observing =
        desk.session->edits().history().observe([this](const shading::Change& change) {
            told += std::to_string(static_cast<int>(change.kind)) + " " + change.name.lines[0] +
                    " ~" + std::to_string(change.changed.size()) + "\n";
        });
};

TEST(Repeats, GoOnWithTheLastEditAndAreUndoneWithIt)
{
    Nudged net;
    EXPECT_TRUE(net.move("move Top.n0", 2));
    EXPECT_TRUE(net.move("move Top.n0", 3));
    EXPECT_FALSE(net.move("move Top.n0", 3)); // It is there: nothing changes.
    EXPECT_TRUE(net.move("move Top.n0", 4));
    EXPECT_EQ("0 move Top.n0 2 0 ~1\n1 move Top.n0 3 0 ~1\n1 move Top.n0 4 0 ~1\n", net.next());
    EXPECT_EQ("move Top.n0 4 0\n", net.desk.run("history --commands"));
    const std::string after = networkText(*net.desk.document);
    const std::string saved = net.desk.saved();
    net.desk.run("undo");
    EXPECT_EQ("2 move Top.n0 4 0 ~1\n", net.next());
    EXPECT_EQ("xpos \"1\"\nypos \"0\"\n", net.desk.run("attribute Top.n0"));
    net.desk.run("redo");
    EXPECT_EQ(after, networkText(*net.desk.document));
    EXPECT_EQ(saved, net.desk.saved());
}

TEST(Repeats, EndWhereSomethingElseComesBetween)
{
    Nudged net;
    shading::History& history = net.desk.session->edits().history();
    EXPECT_TRUE(net.move("a", 2));
    EXPECT_TRUE(net.move("b", 3)); // Another key.
    EXPECT_EQ(2, history.undoCount());
    EXPECT_TRUE(net.desk.session->edits().moveNode("Top.n1", {9, 9})); // Without one.
    EXPECT_TRUE(net.move("b", 4));
    EXPECT_EQ(4, history.undoCount());
    net.desk.run("undo\nredo");
    EXPECT_TRUE(net.move("b", 5));
    EXPECT_EQ(5, history.undoCount());
    net.desk.run("undo"); // What was undone is forgotten.
    EXPECT_TRUE(net.move("b", 6));
    EXPECT_EQ(5, history.undoCount());
    EXPECT_EQ(0, history.redoCount());
    net.desk.run("save");
    EXPECT_TRUE(history.isSaved());
    EXPECT_TRUE(net.move("b", 7)); // The saved state stays one to come back to.
    EXPECT_FALSE(history.isSaved());
    EXPECT_EQ(6, history.undoCount());
    net.desk.run("undo");
    EXPECT_TRUE(history.isSaved());
}

TEST(Repeats, LastAsLongAsTheyAreGiven)
{
    Nudged net;
    shading::Edits& edits = net.desk.session->edits();
    for (int i = 2; i < 5; ++i) {
        const Repeating repeating(edits.history(), "n", std::chrono::milliseconds(0));
        EXPECT_TRUE(edits.moveNode("Top.n0", {static_cast<double>(i), 0}));
    }
    EXPECT_EQ(3, edits.history().undoCount());
}

TEST(Repeats, OfGroupsAreToldByPartsAlsoWhereATellingMakesMore)
{
    Nudged net;
    shading::Edits& edits = net.desk.session->edits();
    int count = 0;
    const auto further = edits.history().observe([&](const shading::Change& /*change*/) {
        if (count++ < 40)
            net.move("n", 10 + count);
    });
    std::string problem;
    {
        const Repeating repeating(edits.history(), "n");
        shading::History::Group group(edits.history(), {"Nudge", {}});
        EXPECT_TRUE(edits.moveNode("Top.n0", {2, 2}));
        EXPECT_TRUE(edits.moveNode("Top.n1", {2, 2}));
        EXPECT_TRUE(group.finish(true, problem));
    }
    EXPECT_EQ(1, edits.history().undoCount());
    const std::string told = net.next();
    EXPECT_EQ("~2\n1", told.substr(told.find('~'), 4)); // The first part; the second goes on.
    EXPECT_EQ(41, std::count(told.begin(), told.end(), '\n'));
    net.desk.run("undo");
    EXPECT_EQ(manyNodes(3), net.desk.saved());
}

} // namespace
