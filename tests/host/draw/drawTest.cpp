#include "console/console.h"
#include "draw/picture.h"
#include "draw/zelLayeredLayout.h"
#include "draw/zelPicture.h"
#include "paths.h"
#include "reading/definitionReader.h"
#include "reading/openDocument.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unordered_map>
#include <utility>

namespace {

using NodePtr = ZEL::AddRefWrapper<ZEL::Node>;

std::string draw(ZEL::Compound& compound, const zelDraw::PictureOptions& options = {})
{
    std::string svg;
    std::string problem;
    EXPECT_TRUE(zelDraw::drawCompound(compound, options, svg, problem)) << problem;
    return svg;
}

/// Any host's network: plain nodes and compounds of the library below a root named "Top".
class DrawnNetwork {
public:
    DrawnNetwork() : root(ZEL::Node::createNew(nullptr, "Top")) { makeCompound("Top", root); }

    /// A node with the inputs a and b and the outputs x and y, all of one type.
    NodePtr add(const std::string& name, const NodePtr& parent)
    {
        NodePtr node = ZEL::Node::createNew(nullptr, name.c_str());
        node->setNodeTypeName("kind");
        for (const char* const port : {"a", "b"})
            node->inputs().addPort(port, m_type);
        for (const char* const port : {"x", "y"})
            node->outputs().addPort(port, m_type);
        EXPECT_TRUE(parent->getAsCompound()->nodes().add(node));
        m_nodes[name] = node;
        return node;
    }
    NodePtr add(const std::string& name) { return add(name, root); }

    /// A compound node with the ports a and x.
    NodePtr addCompound(const std::string& name, const NodePtr& parent)
    {
        NodePtr node = ZEL::Node::createNew(nullptr, name.c_str());
        EXPECT_TRUE(parent->getAsCompound()->nodes().add(node));
        makeCompound(name, node);
        node->getAsCompound()->createCompoundPort(ZEL::PortInput, "a", m_type);
        node->getAsCompound()->createCompoundPort(ZEL::PortOutput, "x", m_type);
        return node;
    }

    /// "NODE.PORT" each; for the inside of a compound, "NODE/PORT".
    void connect(const std::string& from, const std::string& to)
    {
        EXPECT_TRUE(port(from, true)->addConnection(port(to, false))) << from << " " << to;
    }

    std::string drawn(int depth = 0)
    {
        zelDraw::PictureOptions options;
        options.depth = depth;
        return draw(*root->getAsCompound(), options);
    }

    NodePtr root;

private:
    void makeCompound(const std::string& name, const NodePtr& node)
    {
        ZEL::Compound::createNew(node, nullptr);
        m_nodes[name] = node;
    }

    ZEL::AddRefWrapper<ZEL::Port> port(const std::string& text, bool isSource)
    {
        const std::size_t end = text.find_first_of("./");
        const NodePtr node = m_nodes.at(text.substr(0, end));
        const char* const name = text.c_str() + end + 1;
        if (text[end] == '.')
            return (isSource ? node->outputs() : node->inputs())[name];
        const ZEL::AddRefWrapper<ZEL::Compound> compound = node->getAsCompound();
        return (isSource ? compound->innerInputs() : compound->innerOutputs())[name];
    }

    ZEL::AddRefWrapper<ZEL::PortDataType> m_type = ZEL::PortDataType::createNew("float");
    std::unordered_map<std::string, NodePtr> m_nodes;
};

/// A document of the examples or of a folder that the environment names, with a picture's file.
class DrawnDocument {
public:
    explicit DrawnDocument(const std::string& path, ZEL::Runtime* runtime = nullptr)
        : m_file("old", "p.svg")
    {
        shading::OpenOptions options;
        options.runtime = runtime;
        std::vector<shading::Message> messages;
        opened = shading::openDocument(path, options, messages);
    }

    /// What `draw FILE WORDS` writes; what it prints is added to printed.
    std::string draw(const std::string& words)
    {
        std::ostringstream out;
        shading::Session session = sessionOn(*opened);
        shading::Console shell(session, out, out);
        shell.add(shading::drawCommands());
        shell.run("draw " + m_file.path() + " " + words);
        printed += out.str();
        std::ostringstream text;
        text << std::ifstream(m_file.path(), std::ios::binary).rdbuf();
        return text.str();
    }

    std::unique_ptr<shading::Document> opened;
    std::string printed;

private:
    TestFile m_file;
};

std::vector<std::string> documents()
{
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(paths::kDocuments))
        result.push_back(entry.path().string());
    EXPECT_LE(3U, result.size());
    if (const char* const extra = std::getenv("SHADING_EXTRA_DOCUMENTS")) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(extra))
            if (entry.path().extension() == ".mtlx")
                result.push_back(entry.path().string());
    }
    return result;
}

void expectSound(const ShownPicture& picture)
{
    EXPECT_EQ("", picture.faultsText());
    EXPECT_EQ("", picture.backwardText());
}

} // namespace

TEST(Draw, EveryDocumentAtEveryDepthIsShownWholeAndSound)
{
    for (const std::string& path : documents()) {
        SCOPED_TRACE(path);
        DrawnDocument document(path);
        if (!document.opened)
            continue; // Not every file of a folder is sound.
        ZEL::Compound& root = *document.opened->getRootNode()->getAsCompound();
        for (const int depth : {0, 1, 9}) {
            SCOPED_TRACE(depth);
            const std::string option = "--depth " + std::to_string(depth);
            const ShownPicture all(document.draw(option + " --all"));
            EXPECT_EQ(expectedBoxes(root, depth), all.boxesText());
            EXPECT_EQ(expectedConnections(root, depth), all.connectionsText());
            expectSound(all);
            const ShownPicture brief(document.draw(option));
            EXPECT_EQ(all.connectionsText(), brief.connectionsText());
            expectSound(brief);
        }
        EXPECT_EQ("", document.printed);
    }
}

TEST(Draw, ShowsTheCompoundAtAPath)
{
    DrawnDocument document(std::string(paths::kDocuments) + "/rusty_painted_gate.mtlx");
    const NodePtr rust = document.opened->findNodeFromPath("Top.NG_gate.rust");
    for (const int depth : {0, 1}) {
        const ShownPicture picture(
            document.draw("Top.NG_gate.rust --all --depth " + std::to_string(depth)));
        EXPECT_EQ(expectedBoxes(*rust->getAsCompound(), depth), picture.boxesText());
        EXPECT_EQ(expectedConnections(*rust->getAsCompound(), depth), picture.connectionsText());
        expectSound(picture);
    }
    EXPECT_EQ(document.draw("--depth 9"), document.draw("--depth 9"));

    // The gate's graph has no room around its boxes but the header and the padding.
    const ShownPicture whole(document.draw("--depth 1"));
    double highest = whole.boxes[0].bottom;
    double lowest = 0;
    for (const ShownPicture::Box& box : whole.boxes) {
        lowest = box.frame == 1 ? std::max(lowest, box.bottom) : lowest;
        highest = box.frame == 1 ? std::min(highest, box.top) : highest;
    }
    EXPECT_EQ("Top.NG_gate", whole.boxes[1].path);
    EXPECT_NEAR(whole.boxes[1].top, highest - 34, 1);
    EXPECT_NEAR(whole.boxes[1].bottom, lowest + 20, 1);
}

TEST(Draw, RefusesAndLeavesTheFileAsItWas)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Top.SR_gate", "Top.SR_gate: not a compound"},
        {"Top.nobody", "Top.nobody: no such node"},
        {"--depth", "--depth : needs a number of levels, from 0"},
        {"--depth -1", "--depth -1: needs a number of levels, from 0"},
        {"--depth 1x", "--depth 1x: needs a number of levels, from 0"},
        {"--deep", "--deep: no such option"},
        {"Top Top", "3 arguments: usage: draw [--all] [--depth N] FILE.svg [PATH]"},
    };
    for (const auto& [words, error] : cases) {
        DrawnDocument document(std::string(paths::kDocuments) + "/rusty_painted_gate.mtlx");
        EXPECT_EQ("old", document.draw(words)) << words;
        EXPECT_EQ(std::string("error: draw: ") + error + "\n", document.printed);
    }
    const TestDocument document("");
    const TestFile file("", "a");
    const std::string folder = std::filesystem::path(file.path()).parent_path();
    std::filesystem::create_directory(folder + "/d.SVG");
    for (const std::string& problem : {file.path() + "/p.svg: cannot be written: Not a directory",
                                       file.path() + ": the name of a picture ends in .svg",
                                       folder + "/d.SVG: cannot be written: Is a directory"})
        EXPECT_EQ("error: draw: " + problem + "\n",
                  document.run("draw " + problem.substr(0, problem.find(": "))));
    EXPECT_EQ(2, std::distance(std::filesystem::directory_iterator(folder), {})) << "a draft stays";
}

TEST(Draw, CountsInputsThatAreNotAskedFor)
{
    DrawnNetwork network;
    const NodePtr node = network.add("n");
    network.add("m");
    network.connect("m.x", "n.b");
    node->outputs()["y"]->setName("a_long_name_beside_the_count");
    zelDraw::PictureOptions options;
    options.isShown = [&](ZEL::Node& asked, ZEL::Port&) { return &asked != node.get(); };
    const std::string svg = draw(*network.root->getAsCompound(), options);
    const ShownPicture picture(svg);
    EXPECT_EQ(std::string::npos, picture.boxesText().find("input Top.n.a"));
    EXPECT_NE(std::string::npos, picture.boxesText().find("input Top.n.b"));
    EXPECT_NE(std::string::npos, svg.find(">+ 1 more<"));
    expectSound(picture);
}

TEST(Draw, FillsConnectedPortsAndHatchesWhatNobodyKnows)
{
    DrawnNetwork network;
    const NodePtr node = network.add("n");
    network.add("m");
    network.connect("m.x", "n.b");
    zelDraw::PictureOptions options;
    options.isUnknown = [&](ZEL::Node& asked) { return &asked == node.get(); };
    const std::string svg = draw(*network.root->getAsCompound(), options);
    const auto count = [&](const std::string& text) {
        int found = 0;
        for (std::size_t at = svg.find(text); at != std::string::npos; at = svg.find(text, at + 1))
            ++found;
        return found;
    };
    EXPECT_EQ(6, count("class=\"dot free\""));
    EXPECT_EQ(3, count("class=\"dot\"")); // The two ends, and the legend.
    EXPECT_EQ(1, count("class=\"unknown\" data-path=\"Top.n\""));
    EXPECT_EQ(1, count("class=\"hatch\""));
}

TEST(Draw, LeavesOutWhatOnlyTheDefinitionSays)
{
    const TestFile definitions("<materialx version=\"1.39\"><nodedef name=\"ND_n\" node=\"n\">"
                               "<input name=\"said\" type=\"float\" value=\"1\"/>"
                               "<input name=\"unsaid\" type=\"float\" value=\"2\"/>"
                               "<input name=\"changed\" type=\"float\" value=\"3\"/>"
                               "<output name=\"out\" type=\"float\"/></nodedef></materialx>");
    const TestFile file("<materialx version=\"1.39\"><n name=\"k\" type=\"float\">"
                        "<input name=\"said\" type=\"float\" value=\"1\"/></n></materialx>");
    ZEL::Runtime runtime;
    std::vector<shading::Message> messages;
    ASSERT_TRUE(shading::readDefinitions(definitions.path(), runtime, messages));
    DrawnDocument document(file.path(), &runtime);
    const NodePtr node = document.opened->findNodeFromPath("Top.k");
    node->inputs()["changed"]->setPortDefaultValue("4");
    EXPECT_EQ("frame Top\nnode Top.k\n  input Top.k.said\n  input Top.k.changed\n"
              "  output Top.k.out\n",
              ShownPicture(document.draw("")).boxesText());
    EXPECT_EQ(expectedBoxes(*document.opened->getRootNode()->getAsCompound(), 0),
              ShownPicture(document.draw("--all")).boxesText());
}

TEST(Draw, EscapesAndShortensNames)
{
    DrawnNetwork network;
    const std::string strange = "<&\">'\t\x01\xff" + std::string(60, 'w');
    network.add(strange);
    network.add("\xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e");
    const std::string svg = network.drawn();
    const ShownPicture picture(svg);
    ASSERT_EQ(3U, picture.boxes.size());
    EXPECT_EQ("Top.<&\">'\t\xef\xbf\xbd\xef\xbf\xbd" + std::string(60, 'w'), picture.boxes[1].path);
    EXPECT_NE(std::string::npos, svg.find(std::string(31, 'w') + "…<"));
    EXPECT_EQ("", picture.faultsText());
}

TEST(Draw, ShowsNothingOfAnEmptyCompound)
{
    DrawnNetwork network;
    const std::string svg = network.drawn();
    EXPECT_EQ("frame Top\n", ShownPicture(svg).boxesText());
    EXPECT_NE(std::string::npos, svg.find(">empty<"));
    expectSound(ShownPicture(svg));
}

TEST(Draw, LeadsCyclesAndLoopsAroundTheBoxes)
{
    DrawnNetwork network;
    for (const char* const name : {"p", "q", "r"})
        network.add(name);
    network.connect("p.x", "q.a");
    network.connect("q.x", "r.a");
    network.connect("r.y", "p.b");
    network.connect("q.y", "q.b");
    network.connect("p.x", "r.b");
    network.connect("p.y", "r.b");
    network.connect("p.y", "r.b");
    const ShownPicture picture(network.drawn());
    EXPECT_EQ(expectedConnections(*network.root->getAsCompound(), 0), picture.connectionsText());
    EXPECT_EQ("", picture.faultsText());
}

TEST(Draw, KeepsTheEdgesOfAFrameOutermostBesideCycles)
{
    // From the column of inputs (0) into the cycle 1, 2, 3, and from 1 to the outputs (4).
    zelDraw::LayoutGraph graph;
    graph.boxes.resize(5);
    graph.boxes[0].layer = zelDraw::LayoutBox::Layer::First;
    graph.boxes[4].layer = zelDraw::LayoutBox::Layer::Last;
    for (const auto& ends : {std::pair(1, 2), std::pair(2, 3), std::pair(3, 1), std::pair(1, 4)}) {
        graph.edges.emplace_back();
        graph.edges.back().source = static_cast<std::size_t>(ends.first);
        graph.edges.back().target = static_cast<std::size_t>(ends.second);
    }
    const std::vector<std::pair<std::size_t, std::size_t>> expected = {{0, 1}, {3, 4}, {0, 4}};
    EXPECT_EQ(expected, zelDraw::layerBounds(graph));
}

TEST(Draw, EndsConnectionsAcrossFramesInStubs)
{
    DrawnNetwork network;
    const NodePtr left = network.addCompound("left", network.root);
    const NodePtr right = network.addCompound("right", network.root);
    network.add("source", left);
    network.add("target", right);
    network.connect("left/a", "source.a");
    network.connect("source.x", "left/x");
    network.connect("left.x", "right.a");
    network.connect("right/a", "right/x");
    network.connect("source.y", "target.b");
    network.connect("source.y", "target.a");
    const ShownPicture open(network.drawn(1));
    EXPECT_EQ(expectedConnections(*network.root->getAsCompound(), 1), open.connectionsText());
    expectSound(open);

    const auto stubs = [](const ShownPicture& picture) {
        std::string paths;
        for (const ShownPicture::Box& box : picture.boxes)
            paths +=
                box.kind == "stub" ? picture.boxes[box.frame].path + ": " + box.path + "\n" : "";
        return paths;
    };
    EXPECT_EQ("Top.right: Top.left.source.y\n", stubs(open));
    EXPECT_EQ("", stubs(ShownPicture(network.drawn(0))));
    const ShownPicture inLeft(draw(*left->getAsCompound()));
    EXPECT_EQ("Top.left: Top.right.target.b\nTop.left: Top.right.target.a\n", stubs(inLeft));
    expectSound(inLeft);
}

TEST(Draw, PlacesABoxThatIsTooHighForTheEngine)
{
    DrawnNetwork network;
    const NodePtr node = network.add("n");
    for (int i = 0; i < 4000; ++i)
        node->inputs().addPort(("p" + std::to_string(i)).c_str(), nullptr);
    network.add("m");
    network.connect("m.x", "n.p3999");
    const ShownPicture picture(network.drawn());
    EXPECT_EQ(76087, picture.boxes[1].bottom - picture.boxes[1].top);
    expectSound(picture);
}

TEST(Draw, PlacesALongChainInAFrame)
{
    DrawnNetwork network;
    const NodePtr frame = network.addCompound("frame", network.root);
    std::string before = "frame/a";
    for (int i = 0; i < 300; ++i) {
        const std::string name = "n" + std::to_string(i);
        network.add(name, frame);
        network.connect(before, name + ".a");
        before = name + ".x";
    }
    network.connect(before, "frame/x");
    const ShownPicture picture(network.drawn(1));
    EXPECT_EQ(302U, picture.boxes.size());
    EXPECT_EQ(301U, picture.connections.size());
    EXPECT_GT(400, picture.boxes[0].bottom - picture.boxes[0].top);
    expectSound(picture);
}
