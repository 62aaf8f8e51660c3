// Paths through nodes and compounds whose classes answer for themselves, and through those that do
// not: the outcome is that of asking everybody.

#include "zelListModel.h"
#include "zelTestNetwork.h"

#include <functional>
#include <string>
#include <vector>

namespace ZEL {
namespace {

/// How often the classes below were asked, and what happens in the next question.
struct WayQuestions {
    int compounds = 0;
    int nodes = 0;
    int names = 0;
    std::function<void()> during;

    void run()
    {
        if (const std::function<void()> action = std::exchange(during, nullptr))
            action();
    }
};
WayQuestions g_way;

struct WayNode : Node, Live {
    explicit WayNode(const char* name) : Node(nullptr) { Node::setName(name); }
    using Node::operator=;
};
/// Makes its compound when it is first asked for.
struct LazyWayNode : WayNode {
    using WayNode::WayNode;
    using WayNode::operator=;
    AddRefWrapper<Compound> getAsCompound() override
    {
        ++g_way.compounds;
        g_way.run();
        if (!Node::getAsCompound())
            Compound::createNew(this, nullptr)->nodes().add(new WayNode("Made"));
        return Node::getAsCompound();
    }
};
struct NamedWayNode : WayNode {
    using WayNode::WayNode;
    using WayNode::operator=;
    const char* getName() const override
    {
        ++g_way.names;
        g_way.run();
        return Node::getName();
    }
};
struct AskedWayCompound : Compound {
    using Compound::Compound;
    using Compound::operator=;
    NodeList& nodes() override
    {
        ++g_way.nodes;
        g_way.run();
        return Compound::nodes();
    }
};

struct PathTest : testing::Test {
    PathTest() { g_way = {}; }
    ~PathTest() override { g_way.during = nullptr; }

    /// Adds Top.A.B.C, all plain, with a port in in the last.
    void addChain()
    {
        AddRefWrapper<Node> node = net.root;
        for (const char* name : {"A", "B", "C"}) {
            AddRefWrapper<Compound> compound = node->getAsCompound();
            if (!compound)
                compound = Compound::createNew(node, nullptr);
            node = new WayNode(name);
            compound->nodes().add(node);
        }
        node->inputs().addPort("in", nullptr);
    }
    NodeList& nodesOf(const char* path)
    {
        return net.findNodeFromPath(path)->getAsCompound()->nodes();
    }

    const int before = Live::count;
    TestNetwork net;
};

TEST_F(PathTest, AsksOnceWhoMakesItsCompoundWhenItIsWanted)
{
    net.root->getAsCompound()->nodes().add(new LazyWayNode("Lazy"));
    EXPECT_EQ("Top.Lazy", pathOf(net.findNodeFromPath("Top.Lazy")));
    EXPECT_EQ(0, g_way.compounds);
    EXPECT_EQ("Top.Lazy.Made", pathOf(net.findNodeFromPath("Top.Lazy.Made")));
    EXPECT_EQ(1, g_way.compounds);
    EXPECT_EQ("-", pathOf(net.findNodeFromPath("Top.Lazy.Made.Lazy")));
    EXPECT_EQ(2, g_way.compounds);
}

TEST_F(PathTest, AsksOnceACompoundThatGivesItsNodes)
{
    addChain();
    const AddRefWrapper<Compound> asked = new AskedWayCompound(net.findNodeFromPath("Top.A"));
    EXPECT_EQ("-", pathOf(net.findNodeFromPath("Top.A.B")));
    EXPECT_EQ(1, g_way.nodes);
    const AddRefWrapper<Node> inner = new WayNode("B");
    asked->nodes().add(inner);
    inner->inputs().addPort("in", nullptr);
    g_way.nodes = 0;
    EXPECT_EQ(inner->inputs()[0],
              net.findPortFromPath("Top.A.B.in", PortInput, Container::eSearchNode));
    EXPECT_EQ(1, g_way.nodes);
}

TEST_F(PathTest, AsksThoseBeforeTheNodeForTheirNames)
{
    addChain();
    const AddRefWrapper<Node> plain = net.findNodeFromPath("Top.A.B");
    NodeList& nodes = nodesOf("Top.A");
    nodes.add(new NamedWayNode("X"));
    net.findNodeFromPath("Top.A.B.C");
    EXPECT_EQ(0, g_way.names) << "it stands behind the node";
    nodes.remove(plain);
    nodes.add(plain);
    EXPECT_EQ("C", std::string(net.findNodeFromPath("Top.A.B.C")->getName()));
    EXPECT_EQ(1, g_way.names);
}

TEST_F(PathTest, TheWayMayGoWhileTheHostIsAsked)
{
    const struct {
        const char* path;
        std::function<void()> prepare;
    } cases[] = {
        {"Top.A.Made", [this] { nodesOf("Top.A").add(new NamedWayNode("Made")); }},
        {"Top.A.Lazy.Made", [this] { nodesOf("Top.A").add(new LazyWayNode("Lazy")); }},
        {"Top.A.Asked.Made",
         [this] {
             const AddRefWrapper<Node> owner = new WayNode("Asked");
             nodesOf("Top.A").add(owner);
             const AddRefWrapper<Compound> asked = new AskedWayCompound(owner);
             asked->nodes().add(new WayNode("Made"));
         }},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.path);
        net.root = new WayNode("Top");
        addChain();
        row.prepare();
        g_way.during = [this] { net.root = nullptr; };
        const AddRefWrapper<Node> made = net.findNodeFromPath(row.path);
        ASSERT_TRUE(made);
        EXPECT_EQ(nullptr, net.root);
        EXPECT_STREQ("Made", made->getName());
    }
    EXPECT_EQ(before, Live::count) << "everything died with the lookup";
}

TEST_F(PathTest, ARootThatNobodyElseHoldsDiesWithTheLookup)
{
    struct MakingNetwork : TestNetwork {
        AddRefWrapper<Node> getRootNode() override
        {
            AddRefWrapper<Node> top = new WayNode("Top");
            const AddRefWrapper<Node> inner = new WayNode("A");
            inner->inputs().addPort("in", nullptr);
            Compound::createNew(top, nullptr)->nodes().add(inner);
            return top;
        }
    } making;
    const int alive = Live::count;
    const AddRefWrapper<Port> port =
        making.findPortFromPath("Top.A.in", PortInput, Container::eSearchNode);
    ASSERT_TRUE(port);
    EXPECT_EQ(nullptr, port->getParent());
    EXPECT_STREQ("A", making.findNodeFromPath("Top.A")->getName());
    EXPECT_EQ(alive, Live::count);
}

/// The way as the contract says it: everybody is asked.
AddRefWrapper<Node> askAllTheWay(AddRefWrapper<Node> node, const std::vector<std::string>& names)
{
    for (std::size_t i = 1; node && i < names.size(); ++i) {
        const AddRefWrapper<Compound> compound = node->getAsCompound();
        node = nullptr;
        for (int j = 0; compound && !node && j < compound->nodes().size(); ++j) {
            if (names[i] == compound->nodes()[j]->getName())
                node = compound->nodes()[j];
        }
    }
    return node;
}

TEST_F(PathTest, LeadsWhereAskingEverybodyLeads)
{
    Random random(11);
    std::vector<AddRefWrapper<Compound>> compounds{net.root->getAsCompound()};
    const auto name = [&random] { return "n" + std::to_string(random.below(40)); };
    for (int i = 0; i < 400; ++i) {
        const int kind = random.below(10);
        const std::string own = name();
        const AddRefWrapper<Node> node = kind == 0   ? new LazyWayNode(own.c_str())
                                         : kind == 1 ? new NamedWayNode(own.c_str())
                                                     : new WayNode(own.c_str());
        const int place = random.below(static_cast<int>(compounds.size()));
        compounds[static_cast<std::size_t>(place)]->nodes().add(node);
        if (compounds.size() < 6)
            compounds.emplace_back(kind == 2 ? new AskedWayCompound(node) : new Compound(node));
    }
    int found = 0;
    for (int i = 0; i < stepCount(3000); ++i) {
        std::vector<std::string> names{"Top"};
        std::string path = "Top";
        for (int depth = random.below(4); depth >= 0; --depth) {
            names.push_back(name());
            path += "." + names.back();
        }
        const AddRefWrapper<Node> expected = askAllTheWay(net.root, names);
        ASSERT_EQ(expected, net.findNodeFromPath(path.c_str())) << path;
        found += expected ? 1 : 0;
        if (expected && random.oneIn(3))
            expected->setName(name().c_str());
    }
    EXPECT_LT(stepCount(3000) / 10, found);
}

} // namespace
} // namespace ZEL
