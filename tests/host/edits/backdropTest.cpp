#include "document/backdrops.h"
#include "edits/desk.h"
#include "edits/positions.h"
#include "randomEdits.h"

#include <gtest/gtest.h>

namespace {

const char* const kFramed =
    "  <n name=\"a\" type=\"float\" xpos=\"1\" ypos=\"1\"/>\n"
    "  <n name=\"b\" type=\"float\" xpos=\"3\" ypos=\"2\"/>\n"
    "  <n name=\"c\" type=\"float\"/>\n"
    "  <backdrop name='one' contains='a, b,gone' xpos=\"0.5\" ypos=\"0\" width=\"4\" "
    "height=\"3.5\"   doc=\"1 &lt; 2\"/>\n"
    "  <nodegraph name=\"g\" xpos=\"7\" ypos=\"7\">\n"
    "    <input name=\"x\" type=\"float\"/>\n"
    "    <n name=\"d\" type=\"float\" xpos=\"0\" ypos=\"0\"/>\n"
    "    <backdrop name=\"one\" contains=\"d x\" xpos=\"-1\" ypos=\"-1\" width=\"2\" "
    "height=\"2\"/>\n"
    "  </nodegraph>\n";

std::string replaced(std::string text, const std::string& before, const std::string& after)
{
    const std::size_t at = text.find(before);
    EXPECT_NE(std::string::npos, at) << before;
    return at == std::string::npos ? text : text.replace(at, before.size(), after);
}

const char* const kOne = "contains='a, b,gone' xpos=\"0.5\" ypos=\"0\" width=\"4\" height=\"3.5\" "
                         "  doc=\"1 &lt; 2\"/>";

const struct {
    const char* lines;
    const char* title; ///< Of the last edit.
    const char* before;
    const char* after; ///< Of the file.
} kBackdropEdits[] = {
    {"backdrop nodes Top one b c", "Change what one contains", "'a, b,gone'", "'b,gone, c'"},
    {"backdrop nodes Top one", "Change what one contains", "'a, b,gone'", "'gone'"},
    {"backdrop frame Top one 1 2 3 4.5", "Change the frame of one",
     "xpos=\"0.5\" ypos=\"0\" width=\"4\" height=\"3.5\"",
     "xpos=\"1\" ypos=\"2\" width=\"3\" height=\"4.5\""},
    {"backdrop text Top one 'a \"new\" text'", "Change the text of one", "doc=\"1 &lt; 2\"",
     "doc=\"a &quot;new&quot; text\""},
    {"backdrop text Top one --text --loud", "Change the text of one", "doc=\"1 &lt; 2\"",
     "doc=\"--loud\""},
    {"backdrop text Top one ''", "Change the text of one", " height=\"3.5\"   doc=\"1 &lt; 2\"",
     " height=\"3.5\""},
    {"backdrop rename Top one two", "Rename one to two", "name='one'", "name='two'"},
    {"backdrop delete Top.g one", "Delete one",
     "    <backdrop name=\"one\" contains=\"d x\" xpos=\"-1\" ypos=\"-1\" width=\"2\" "
     "height=\"2\"/>\n",
     ""},
    {"backdrop add Top.g in d --text 'x y'", "Create backdrop in", "height=\"2\"/>\n",
     "height=\"2\"/>\n    <backdrop name=\"in\" contains=\"d\" doc=\"x y\" height=\"1.75\" "
     "width=\"1.5\" xpos=\"-0.25\" ypos=\"-0.5\"/>\n"},
    {"backdrop add Top empty --frame 1,2,3,4", "Create backdrop empty", "  </nodegraph>\n",
     "  </nodegraph>\n  <backdrop name=\"empty\" height=\"4\" width=\"3\" xpos=\"1\" "
     "ypos=\"2\"/>\n"},
    {"attribute Top.one uicolor '1,0,0'", "Set uicolor of one to \"1,0,0\"", "doc=\"1 &lt; 2\"",
     "doc=\"1 &lt; 2\" uicolor=\"1,0,0\""},
    // As what they contain changes.
    {"rename Top.a z", "Rename a to z", "'a, b,gone'", "'z, b,gone'"},
};

TEST(Backdrop, IsChangedByEditsThatLeaveTheRestAsItStands)
{
    for (const auto& edit : kBackdropEdits) {
        SCOPED_TRACE(edit.lines);
        Desk desk(kFramed);
        EXPECT_EQ("", desk.run(edit.lines));
        EXPECT_EQ(std::string("1 ") + edit.title + "\n", desk.run("history"));
        const std::string line = desk.run("history --commands");
        const std::string after = desk.saved();
        if (std::string(edit.lines).find("rename Top.a") == std::string::npos) {
            EXPECT_EQ(replaced(kFramed, edit.before, edit.after), after);
        }
        desk.run("undo");
        EXPECT_EQ(kFramed, desk.saved());
        desk.run("redo");
        EXPECT_EQ(after, desk.saved());
        Desk other(kFramed);
        EXPECT_EQ("", other.run(line));
        EXPECT_EQ(after, other.saved());
        // As it is read again.
        Desk again(after);
        EXPECT_EQ(desk.run("backdrop list\nbackdrop list Top.g"),
                  again.run("backdrop list\nbackdrop list Top.g"));
    }
}

TEST(Backdrop, FollowsItsNodes)
{
    Desk desk(kFramed);
    EXPECT_EQ("one 0.5,0,4,3.5: a b\n", desk.run("backdrop list"));
    EXPECT_EQ("one -1,-1,2,2: d\n", desk.run("backdrop list Top.g"));
    EXPECT_EQ("", desk.run("rename Top.a z\ndelete Top.b\nbackdrop nodes Top one z c"));
    EXPECT_EQ("one 0.5,0,4,3.5: z c\n", desk.run("backdrop list"));
    desk.run("collapse Top k z");
    EXPECT_EQ("one 0.5,0,4,3.5: k c\n", desk.run("backdrop list"));
    EXPECT_NE(std::string::npos, desk.saved().find("contains='k,gone, c'"));
    desk.run("expand Top.k\nreparent Top.g Top.c");
    EXPECT_EQ("one 0.5,0,4,3.5: z\n", desk.run("backdrop list"));
    desk.run("undo 6");
    EXPECT_EQ("one 0.5,0,4,3.5: a b\n", desk.run("backdrop list"));
    EXPECT_EQ(kFramed, desk.saved());
    // It goes up with the nodes of its graph, and gets a name of its own there.
    desk.run("expand Top.g");
    EXPECT_EQ("one 0.5,0,4,3.5: a b\none2 6,6,2,2: d\n", desk.run("backdrop list"));
    Desk again(desk.saved());
    EXPECT_EQ("one 0.5,0,4,3.5: a b\none2 6,6,2,2: d\n", again.run("backdrop list"));
    desk.run("undo");
    EXPECT_EQ(kFramed, desk.saved());
    // And away with its graph.
    desk.run("delete Top.g\nundo");
    EXPECT_EQ("one -1,-1,2,2: d\n", desk.run("backdrop list Top.g"));
    EXPECT_EQ(kFramed, desk.saved());
}

TEST(Backdrop, SaysATextOfSeveralLines)
{
    Desk desk(kFramed);
    shading::Edits& edits = desk.session->edits();
    EXPECT_TRUE(edits.setBackdropText(edits.backdropAt("Top.one"), "two\n'lines'"));
    EXPECT_NE(std::string::npos, desk.saved().find("doc=\"two&#10;'lines'\"")) << desk.saved();
    const std::string after = desk.saved();
    const std::string line = edits.history().names().back().lines.front();
    desk.run("undo");
    EXPECT_EQ(kFramed, desk.saved());
    EXPECT_TRUE(desk.shell->run(line));
    EXPECT_EQ(after, desk.saved());
}

TEST(Backdrop, TakesItsNodesAlong)
{
    Desk desk(kFramed);
    EXPECT_EQ("", desk.run("backdrop move Top one 1.5 -2"));
    EXPECT_EQ("one 1.5,-2,4,3.5: a b\n", desk.run("backdrop list"));
    EXPECT_EQ("2\n-1\n4\n0\n", desk.run("attribute Top.a xpos\nattribute Top.a ypos\n"
                                        "attribute Top.b xpos\nattribute Top.b ypos"));
    EXPECT_EQ("backdrop move Top one 1.5 -2\n", desk.run("history --commands"));
    desk.run("undo");
    EXPECT_EQ(kFramed, desk.saved());
}

TEST(Backdrop, IsAroundManyNodes)
{
    std::string elements;
    std::string line = "backdrop add Top all";
    for (int i = 0; i < 45; ++i) {
        const std::string number = std::to_string(i);
        elements +=
            "  <n name=\"n" + number + "\" type=\"float\" xpos=\"" + number + "\" ypos=\"1\"/>\n";
        line += " n" + number;
    }
    Desk desk(elements);
    EXPECT_EQ("", desk.run(line));
    EXPECT_EQ("all -0.25,0.5,45.5,1.75: n0 n1", desk.run("backdrop list").substr(0, 30));
    desk.run("collapse Top g" + line.substr(20));
    EXPECT_EQ("all -0.25,0.5,45.5,1.75: g\n", desk.run("backdrop list"));
    desk.run("undo 2");
    EXPECT_EQ(elements, desk.saved());
}

TEST(Backdrop, GoesAlongWithACopyOfAllThatItContains)
{
    Desk desk(kFramed);
    const std::string before = desk.saved();
    desk.run("duplicate Top.a Top.b");
    EXPECT_EQ("one 0.5,0,4,3.5: a b\none2 1,0.5,4,3.5: a2 b2\n", desk.run("backdrop list"));
    EXPECT_EQ("doc \"1 < 2\"\n", desk.run("attribute Top.one2").substr(0, 12));
    const std::string after = desk.saved();
    desk.run("undo");
    EXPECT_EQ(before, desk.saved());
    desk.run("redo");
    EXPECT_EQ(after, desk.saved());
    desk.run("undo\nduplicate Top.a");
    EXPECT_EQ("one 0.5,0,4,3.5: a b\n", desk.run("backdrop list"));
    // Those of a copied graph are inside.
    desk.run("rename Top.g.d e\nduplicate Top.g");
    EXPECT_EQ("one -1,-1,2,2: e\n", desk.run("backdrop list Top.g2"));
    Desk again(desk.saved());
    EXPECT_EQ("one -1,-1,2,2: e\n", again.run("backdrop list Top.g2"));
}

const struct {
    const char* line;
    const char* problem;
} kBackdropRefusals[] = {
    {"backdrop add Top a", "Top.a: the name is taken"},
    {"backdrop add Top one", "Top.one: the name is taken: backdrop \"one\" has it"},
    {"backdrop add Top 1a", "Top: a name has letters, digits and _, and begins with no digit"},
    {"backdrop add Top q none", "Top.none: no such node"},
    {"backdrop add Top q a a", "Top.a: it is named twice"},
    {"backdrop add Top q --frame 1,2,3", "1,2,3: not a frame: X,Y,WIDTH,HEIGHT"},
    {"backdrop add Top q --frame 1,2,3,0", "Top.q: its frame has no width or no height"},
    {"backdrop add Top.a q", "Top.a: not a compound"},
    {"backdrop rename Top one b", "Top.b: the name is taken"},
    {"backdrop rename Top q b", "Top.q: no such backdrop"},
    {"backdrop nodes Top one a b", "Top.one: it contains these"},
    {"backdrop frame Top one 0.5 0 4.0 3.5", "Top.one: it is there"},
    {"backdrop move Top one 0.5 0", "Top.one: it is there"},
    {"backdrop move Top one 0.5 x", "0.5,x: not a place: X Y"},
    {"backdrop text Top one '1 < 2'", "Top.one: it has that text"},
};

TEST(Backdrop, StaysAsItIsWhereAnEditIsRefused)
{
    Desk desk(kFramed);
    for (const auto& refusal : kBackdropRefusals)
        EXPECT_EQ(std::string("error: backdrop: ") + refusal.problem + "\n",
                  desk.run(refusal.line));
    EXPECT_EQ("error: attribute: Top.one: contains: backdrop changes it\n"
              "error: attribute: Top.one: width: \"x\" is no float\n"
              "error: rename: Top.one: the name is taken: backdrop \"one\" has it\n",
              desk.run("attribute Top.one contains a\nattribute Top.one width x\n"
                       "rename Top.a one"));
    const shading::NodePtr inner = desk.document->findNodeFromPath("Top.g.d");
    shading::Edits& edits = desk.session->edits();
    const shading::BackdropPtr one = edits.backdropAt("Top.one");
    EXPECT_FALSE(edits.setBackdropNodes(one, {inner}));
    EXPECT_EQ("it is in another compound than the backdrop", edits.problem().reason);
    EXPECT_EQ("", desk.run("history"));
    EXPECT_EQ(kFramed, desk.saved());
    // One that is gone is none, and its name is free.
    EXPECT_EQ("", desk.run("backdrop delete Top one\nrename Top.a one"));
    EXPECT_FALSE(edits.renameBackdrop(one, "q"));
    EXPECT_FALSE(edits.deleteBackdrop(nullptr));
    desk.run("undo 2");
    EXPECT_EQ(one, edits.backdropAt("Top.one"));
    // In an edit that is given up it was never there.
    {
        const shading::History::Group group(edits.history(), {"Group", {}});
        shading::BackdropPtr made;
        EXPECT_TRUE(edits.createBackdrop(desk.document->getRootNode()->getAsCompound(), "q", {},
                                         std::nullopt, "", made));
        EXPECT_TRUE(edits.deleteBackdrop(one));
    }
    EXPECT_EQ("one 0.5,0,4,3.5: a b\n", desk.run("backdrop list"));
    EXPECT_EQ(kFramed, desk.saved());
}

/// Counts what the editors of one compound's node hear of the compound itself.
class InsideEditor : public ZEL::HostEditor {
public:
    explicit InsideEditor(ZEL::Node& node) { node.registerEditor(this); }
    void zel_onNodeChange(ZEL::ENodeChangeType type,
                          const ZEL::AddRefWrapper<ZEL::Compound>& compound,
                          const ZEL::AddRefWrapper<ZEL::Node>& node) override
    {
        heard += type == ZEL::eNodeChanged && node->getAsCompound() == compound ? 1 : 0;
    }

    int heard = 0;
};

TEST(Backdrop, IsToldToTheEditorsOfItsCompound)
{
    Desk desk(kFramed);
    InsideEditor root(*desk.document->getRootNode());
    InsideEditor graph(*desk.document->findNodeFromPath("Top.g"));
    int shown = 0;
    const auto observing = desk.session->edits().history().observe(
        [&](const shading::Change& change) { shown += static_cast<int>(change.compounds.size()); });
    desk.run("backdrop rename Top one q\nundo\nbackdrop text Top one new");
    EXPECT_EQ(3, root.heard);
    EXPECT_EQ(0, graph.heard);
    desk.run("backdrop delete Top.g one\nundo");
    EXPECT_EQ(3, root.heard);
    EXPECT_EQ(2, graph.heard);
    EXPECT_EQ(5, shown);
}

TEST(Backdrop, NeedsNoName)
{
    Desk desk("  <n name=\"a\" type=\"float\"/>\n  <backdrop contains=\"a\"/>\n");
    shading::Edits& edits = desk.session->edits();
    const shading::BackdropPtr backdrop = desk.document->backdrops().all().front();
    EXPECT_TRUE(edits.setBackdropFrame(backdrop, {{1, 2}, 3, 4}));
    EXPECT_EQ("# Change the frame of backdrop\n", desk.run("history --commands"));
    EXPECT_EQ("", desk.run("attribute Top.backdrop doc x"));
    EXPECT_EQ("  <n name=\"a\" type=\"float\"/>\n  <backdrop contains=\"a\" doc=\"x\" height=\"4\" "
              "width=\"3\" xpos=\"1\" ypos=\"2\"/>\n",
              desk.saved());
}

} // namespace
