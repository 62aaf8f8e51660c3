#include "document/node.h"
#include "edits/edits.h"
#include "randomEdits.h"
#include "testDocument.h"
#include "testLibrary.h"

#include <gtest/gtest.h>

namespace {

/// Writes down what the editors of one node hear.
class Listening : public ZEL::HostEditor {
public:
    Listening(ZEL::Node& node, std::string name, std::string& heard)
        : m_name(std::move(name)),
          m_heard(heard)
    {
        node.registerEditor(this);
    }
    void zel_onCompoundPortChange(ZEL::ECompoundPortChangeType type,
                                  const ZEL::AddRefWrapper<ZEL::Port>& port) override
    {
        m_heard += m_name + ": port " + port->getName() + " " + std::to_string(type) + "\n";
    }
    void zel_onNodeChange(ZEL::ENodeChangeType type,
                          const ZEL::AddRefWrapper<ZEL::Compound>& compound,
                          const ZEL::AddRefWrapper<ZEL::Node>& node) override
    {
        m_heard += m_name + ": node " + compound->getName() + "." + node->getName() + " " +
                   std::to_string(type) + "\n";
    }

private:
    std::string m_name;
    std::string& m_heard;
};

TEST(Notify, APortOfACompoundIsToldInsideAndThenAround)
{
    const TestDocument document("<nodegraph name='g'><input name='x' type='t'/></nodegraph>");
    shading::Edits edits(*document.opened);
    std::string heard;
    const shading::NodePtr root = document.opened->getRootNode();
    const Listening around(*root, "around", heard);
    const Listening inside(*document.opened->findNodeFromPath("Top.g"), "inside", heard);
    const auto next = [&] { return std::exchange(heard, ""); };
    EXPECT_TRUE(edits.addPort("Top.g", ZEL::PortInput, "y", "t"));
    EXPECT_EQ("inside: port y 0\naround: node Top.g 3\n", next());
    EXPECT_TRUE(edits.renamePort("Top.g", "y", "z"));
    EXPECT_EQ("inside: port z 2\naround: node Top.g 3\n", next());
    EXPECT_TRUE(edits.deletePort("Top.g", "x"));
    EXPECT_EQ("inside: port x 1\naround: node Top.g 3\n", next());
    // The document has nothing around it.
    EXPECT_TRUE(edits.addPort("Top", ZEL::PortOutput, "o", "t"));
    EXPECT_EQ("around: port o 0\n", next());
}

TEST(Host, AValueGivenToAnInnerPortIsThatOfTheCompoundsOwn)
{
    const TestDocument document(
        "<nodegraph name='g'><input name='x' type='t' value='7'/></nodegraph>");
    shading::Edits edits(*document.opened);
    const shading::NodePtr graph = document.opened->findNodeFromPath("Top.g");
    const shading::PortPtr inner = graph->getAsCompound()->innerInputs()["x"];
    const auto set = [&] {
        inner->setPortDefaultValue("8");
        return "";
    };
    EXPECT_TRUE(edits.run({"Set", {}}, "Top.g.x", set));
    EXPECT_STREQ("8", graph->inputs()["x"]->getPortDefaultValue());
    EXPECT_STREQ("8", inner->getPortDefaultValue());
    EXPECT_TRUE(edits.setValue(inner, "9"));
    EXPECT_EQ("set Top.g.x 9", edits.history().names().back().lines.front());
    std::vector<std::string> titles;
    EXPECT_TRUE(edits.undo(2, titles));
    EXPECT_STREQ("7", inner->getPortDefaultValue());
}

TEST(Rebuild, IsAnEditOfEachDocumentThatItTouches)
{
    ZEL::Runtime runtime;
    const auto one = openWith(&runtime, "<k name='n' type='c'/>");
    const auto two = openWith(&runtime, "<k name='n' type='c'/><k name='m' type='c'/>");
    shading::Edits ofOne(*one);
    shading::Edits ofTwo(*two);
    EXPECT_TRUE(ofTwo.renameNode("Top.m", "l"));
    EXPECT_EQ("", readInto(runtime, "<nodedef name='ND_k' node='k'><input name='j' type='c'/>"
                                    "<output name='out' type='c'/></nodedef>"));
    const std::string before = networkText(*two);
    EXPECT_TRUE(ofOne.rebuild());
    EXPECT_EQ(1, ofOne.history().undoCount());
    EXPECT_EQ(before, networkText(*two)); // Its own document only.
    // A runtime brings all its documents up to the definitions, and none loses its history.
    runtime.forceRebuildCompounds();
    EXPECT_NE(before, networkText(*two));
    EXPECT_EQ(2, ofTwo.history().undoCount());
    std::vector<std::string> titles;
    EXPECT_TRUE(ofTwo.undo(1, titles));
    EXPECT_EQ(before, networkText(*two));
    EXPECT_EQ("Rebuild", titles.front());
    EXPECT_EQ(1, ofOne.history().undoCount());
}

TEST(Journal, RefusesNamesThatTheFormatHasNot)
{
    const TestDocument document("<n name='a' type='t'/><nodegraph name='g'>"
                                "<input name='x' type='t'/><n name='d' type='t'/></nodegraph>");
    shading::Edits edits(*document.opened);
    const shading::NodePtr graph = document.opened->findNodeFromPath("Top.g");
    const std::string before = networkText(*document.opened);
    const char* const names[] = {"my oxide", "1a", "", "a.b", "a:b", "\xC3\xB6"};
    for (const char* const name : names) {
        SCOPED_TRACE(name);
        const auto renameNode = [&] {
            document.opened->findNodeFromPath("Top.a")->setName(name);
            return "";
        };
        const auto renamePort = [&] {
            graph->getAsCompound()->innerInputs()["x"]->setName(name);
            return "";
        };
        EXPECT_FALSE(edits.run({"Rename", {}}, "Top.a", renameNode));
        EXPECT_FALSE(edits.run({"Rename", {}}, "Top.g.x", renamePort));
    }
    // A node and a port of one compound are siblings.
    const auto renameLike = [&] {
        graph->getAsCompound()->innerInputs()["x"]->setName("d");
        return "";
    };
    EXPECT_FALSE(edits.run({"Rename", {}}, "Top.g.x", renameLike));
    EXPECT_EQ("Top.g.d: the name is taken", edits.problem().reason);
    EXPECT_EQ(before, networkText(*document.opened));
}

/// The order in which many nodes come and go, in every way that an edit may.
TEST(History, ManyNodesReturnToTheirPlaces)
{
    std::string elements;
    for (int i = 0; i < 3000; ++i)
        elements += "<n name='n" + std::to_string(i) + "' type='t'/>";
    const TestDocument document(elements);
    shading::Edits edits(*document.opened);
    ZEL::NodeList& nodes = document.opened->getRootNode()->getAsCompound()->nodes();
    const auto order = [&] {
        std::string names;
        for (const shading::NodePtr& node : nodes)
            names += std::string(node->getName()) + " ";
        return names;
    };
    const std::string before = order();
    std::string problem;
    {
        shading::History::Group group(edits.history(), {"Mix", {}});
        std::string path;
        for (const int first : {2998, 1, 600}) {
            std::vector<std::string> names;
            for (int i = first; i >= 0 && i > first - 900; i -= 3)
                names.push_back("n" + std::to_string(i));
            EXPECT_TRUE(edits.collapse("Top", "q", names, path)) << edits.problem().reason;
        }
        shading::Renamings renamed;
        EXPECT_TRUE(edits.expand("Top.q", renamed));
        for (int i = 2000; i > 1000; i -= 7)
            EXPECT_TRUE(edits.deleteNode("Top.n" + std::to_string(i)));
        EXPECT_TRUE(group.finish(true, problem));
    }
    const std::string after = order();
    std::vector<std::string> titles;
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(edits.undo(1, titles));
        EXPECT_EQ(before, order());
        EXPECT_TRUE(edits.redo(1, titles));
        EXPECT_EQ(after, order());
    }
}

} // namespace
