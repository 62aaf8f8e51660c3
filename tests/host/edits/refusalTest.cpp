#include "check/zelCheck.h"
#include "edits/edits.h"
#include "randomEdits.h"
#include "refusing.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using shading::NodePtr;

/// r with a, b and d, and the graph g with c; a.out > b.i, b.out > d.i, r.x > g.y > c.i,
/// c.out > g.o > r.o.
struct RefusingNetwork {
    RefusingNetwork() : document(""), edits(*document.opened)
    {
        g_agreed = -1;
        const NodePtr root = document.opened->getRootNode();
        const shading::CompoundPtr r = addCompound(*root->getAsCompound(), "r");
        const NodePtr a = addNode(*r, "a");
        const NodePtr b = addNode(*r, "b");
        const NodePtr d = addNode(*r, "d");
        const shading::CompoundPtr g = addCompound(*r, "g");
        const NodePtr c = addNode(*g, "c");
        r->createCompoundPort(ZEL::PortInput, "x", type());
        r->createCompoundPort(ZEL::PortOutput, "o", type());
        g->createCompoundPort(ZEL::PortInput, "y", type());
        g->createCompoundPort(ZEL::PortInput, "z", type());
        g->createCompoundPort(ZEL::PortOutput, "o", type());
        g->getAsNode()->inputs()["z"]->setPortDefaultValue("5");
        a->outputs()["out"]->addConnection(b->inputs()["i"]);
        b->outputs()["out"]->addConnection(d->inputs()["i"]);
        r->innerInputs()["x"]->addConnection(g->getAsNode()->inputs()["y"]);
        g->innerInputs()["y"]->addConnection(c->inputs()["i"]);
        g->innerInputs()["z"]->addConnection(c->inputs()["j"]);
        c->outputs()["out"]->addConnection(g->innerOutputs()["o"]);
        g->getAsNode()->outputs()["o"]->addConnection(r->innerOutputs()["o"]);
        edits.history().undoCount(); // What was made so far is the document.
    }
    ~RefusingNetwork() { g_agreed = -1; }

    ZEL::AddRefWrapper<ZEL::PortDataType> type() const { return document.opened->dataType("t"); }

    shading::CompoundPtr addCompound(ZEL::Compound& around, const char* name) const
    {
        const NodePtr node = addTo(around, name);
        return new RefusingCompound(node);
    }
    NodePtr addNode(ZEL::Compound& around, const char* name) const
    {
        NodePtr node = addTo(around, name);
        node->inputs().addPort("i", type());
        node->inputs().addPort("j", type());
        node->outputs().addPort("out", type());
        return node;
    }
    NodePtr addTo(ZEL::Compound& around, const char* name) const
    {
        NodePtr node(new Refusing<shading::Node>(document.opened.get()));
        node->setName(name);
        around.nodes().add(node);
        return node;
    }

    std::string state()
    {
        std::string text = networkText(*document.opened);
        for (const zelCheck::Finding& finding : zelCheck::checkNetwork(*document.opened))
            text += zelCheck::findingText(finding) + "\n";
        for (const shading::EditName& name : edits.history().names())
            text += name.title + "\n";
        return text + std::to_string(edits.history().undoCount());
    }

    TestDocument document;
    shading::Edits edits;
};

NodePtr nodeAt(RefusingNetwork& net, const char* path)
{
    return net.document.opened->findNodeFromPath(path);
}

const struct {
    const char* name;
    bool (*run)(RefusingNetwork& net);
    int questions; ///< How many are asked at least.
} kRefusedEdits[] = {
    {"connect", [](RefusingNetwork& n) { return n.edits.connect("Top.r.x", "Top.r.b.i"); }, 2},
    {"disconnect",
     [](RefusingNetwork& n) { return n.edits.disconnect("Top.r.a.out", "Top.r.b.i"); }, 1},
    {"insert",
     [](RefusingNetwork& n) { return n.edits.insertNode("Top.r.g", "Top.r.a.out", "Top.r.b.i"); },
     3},
    {"reroute a source",
     [](RefusingNetwork& n) { return n.edits.reroute("Top.r.g.o", "Top.r.b.out"); }, 2},
    {"reroute a target",
     [](RefusingNetwork& n) { return n.edits.reroute("Top.r.d.i", "Top.r.g.z"); }, 2},
    {"delete and heal",
     [](RefusingNetwork& n) {
         return n.edits.deleteNodes(std::vector<std::string>{"Top.r.g", "Top.r.b"}, true);
     },
     7},
    {"disconnect-all", [](RefusingNetwork& n) { return n.edits.disconnectAll("Top.r.g.o"); }, 2},
    {"collapse",
     [](RefusingNetwork& n) {
         std::string path;
         return n.edits.collapse("Top.r", "q", {"a", "g"}, path);
     },
     8},
    {"expand",
     [](RefusingNetwork& n) {
         shading::Renamings renamed;
         return n.edits.expand("Top.r.g", renamed);
     },
     10},
    {"port add",
     [](RefusingNetwork& n) { return n.edits.addPort("Top.r.g", ZEL::PortInput, "n", "t"); }, 2},
    {"port delete", [](RefusingNetwork& n) { return n.edits.deletePort("Top.r.g", "y"); }, 4},
    {"port rename", [](RefusingNetwork& n) { return n.edits.renamePort("Top.r.g", "y", "n"); }, 2},
    {"port move", [](RefusingNetwork& n) { return n.edits.movePort("Top.r.g", "y", 2); }, 2},
    {"reparent inward",
     [](RefusingNetwork& n) {
         return n.edits.reparent(nodeAt(n, "Top.r.g")->getAsCompound(), {nodeAt(n, "Top.r.a")});
     },
     6},
    {"reparent outward",
     [](RefusingNetwork& n) {
         return n.edits.reparent(nodeAt(n, "Top")->getAsCompound(), {nodeAt(n, "Top.r.g.c")});
     },
     10},
    {"paste",
     [](RefusingNetwork& n) {
         std::vector<NodePtr> made;
         return n.edits.paste("Top.r",
                              "<materialx><n name='p' type='t'/><n name='q' type='t'><input "
                              "name='i' type='t' nodename='p'/></n></materialx>",
                              made);
     },
     2},
    {"delete", [](RefusingNetwork& n) { return n.edits.deleteNode("Top.r.g"); }, 3},
    {"set", [](RefusingNetwork& n) { return n.edits.setValue("Top.r.g.z", "6"); }, 1},
    {"group",
     [](RefusingNetwork& n) {
         shading::History::Group group(n.edits.history(), {"Group", {}});
         std::string ignored;
         const bool isGood = n.edits.renamePort("Top.r.g", "y", "n") &&
                             n.edits.deleteNode("Top.r.b") && n.edits.setValue("Top.r.a.i", "3");
         return group.finish(isGood, ignored);
     },
     4},
};

/// Runs the edit again and again, each time with a later question refused, until none is.
int refuseEach(RefusingNetwork& net, const std::function<bool()>& edit)
{
    const std::string before = net.state();
    for (int question = 0; question < 1000; ++question) {
        g_agreed = question;
        const bool isDone = edit();
        const bool wasRefused = g_agreed < 0;
        g_agreed = -1;
        EXPECT_NE(isDone, wasRefused) << question;
        if (isDone)
            return question;
        EXPECT_EQ(before, net.state()) << question;
    }
    return -1;
}

TEST(Refusal, OfAnyStepLeavesNetworkAndHistoryAsTheyWere)
{
    for (const auto& c : kRefusedEdits) {
        SCOPED_TRACE(c.name);
        RefusingNetwork net;
        std::string title;
        std::string problem;
        shading::History& history = net.edits.history();
        EXPECT_LE(c.questions, refuseEach(net, [&] { return c.run(net); }));
        EXPECT_LE(1, refuseEach(net, [&] { return history.undo(title, problem); }));
        EXPECT_EQ("refused by a listener", problem);
        EXPECT_LE(1, refuseEach(net, [&] { return history.redo(title, problem); }));
    }
}

/// Whoever calls the library past the edits brings nothing in that the host could not save.
TEST(ForeignNode, ComesIntoNoDocument)
{
    RefusingNetwork one;
    RefusingNetwork other;
    ZEL::Compound& top = *one.document.opened->getRootNode()->getAsCompound();
    EXPECT_FALSE(top.nodes().add(ZEL::Node::createNew(one.document.opened.get(), "plain").get()));
    EXPECT_FALSE(
        top.nodes().add(shading::Node::createNew(other.document.opened.get(), "elsewhere").get()));
    EXPECT_EQ(1, top.nodes().size());
    const auto port = [](RefusingNetwork& n, const char* path, ZEL::PortIOType ioType) {
        return n.document.opened->findPortFromPath(path, ioType, ZEL::Container::eSearchNode);
    };
    const shading::PortPtr source = port(one, "Top.r.d.out", ZEL::PortOutput);
    EXPECT_FALSE(source->addConnection(port(other, "Top.r.a.i", ZEL::PortInput)));
    EXPECT_FALSE(source->isConnected());
    EXPECT_TRUE(source->addConnection(port(one, "Top.r.a.j", ZEL::PortInput)));
}

} // namespace
