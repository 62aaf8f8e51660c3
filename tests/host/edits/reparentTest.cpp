#include "edits/desk.h"
#include "paths.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

/// A chain a, b, c beside a graph, and one inside it.
const char* const kChain = "  <n name=\"a\" type=\"t\"/>\n"
                           "  <n name=\"b\" type=\"t\">\n"
                           "    <input name=\"i\" type=\"t\" nodename=\"a\"/>\n"
                           "    <input name=\"j\" type=\"t\" nodename=\"a\"/>\n"
                           "  </n>\n"
                           "  <n name=\"c\" type=\"t\">\n"
                           "    <input name=\"i\" type=\"t\" nodename=\"b\"/>\n"
                           "    <input name=\"j\" type=\"t\" nodename=\"b\"/>\n"
                           "  </n>\n"
                           "  <nodegraph name=\"g\">\n"
                           "    <input name=\"x\" type=\"t\" nodename=\"b\"/>\n"
                           "    <input name=\"y\" type=\"t\" value=\"7\"/>\n"
                           "    <n name=\"p\" type=\"t\">\n"
                           "      <input name=\"i\" type=\"t\" interfacename=\"x\"/>\n"
                           "      <input name=\"j\" type=\"t\" interfacename=\"y\"/>\n"
                           "    </n>\n"
                           "    <n name=\"q\" type=\"t\">\n"
                           "      <input name=\"i\" type=\"t\" nodename=\"p\"/>\n"
                           "    </n>\n"
                           "    <nodegraph name=\"h\"/>\n"
                           "    <output name=\"o\" type=\"t\" nodename=\"q\"/>\n"
                           "  </nodegraph>\n"
                           "  <n name=\"z\" type=\"t\">\n"
                           "    <input name=\"i\" type=\"t\" nodegraph=\"g\" output=\"o\"/>\n"
                           "  </n>\n";

const struct {
    const char* line;
    const char* output;
    const char* connections;
} kMoves[] = {
    {"reparent Top.g Top.b", "Top.g.b\n",
     "Top.a.out -> Top.g.i\nTop.g.b.out -> Top.g.out\nTop.g.b.out -> Top.g.p.i\n"
     "Top.g.i -> Top.g.b.i\nTop.g.i -> Top.g.b.j\nTop.g.o -> Top.z.i\nTop.g.out -> Top.c.i\n"
     "Top.g.out -> Top.c.j\nTop.g.p.out -> Top.g.q.i\nTop.g.q.out -> Top.g.o\nTop.g.y -> "
     "Top.g.p.j\n"},
    {"reparent Top Top.g.q", "Top.q\n",
     "Top.a.out -> Top.b.i\nTop.a.out -> Top.b.j\nTop.b.out -> Top.c.i\nTop.b.out -> Top.c.j\n"
     "Top.b.out -> Top.g.x\nTop.g.out -> Top.q.i\nTop.g.p.out -> Top.g.out\nTop.g.x -> Top.g.p.i\n"
     "Top.g.y -> Top.g.p.j\nTop.q.out -> Top.z.i\n"},
    {"reparent Top Top.g.p", "Top.p\n",
     "Top.a.out -> Top.b.i\nTop.a.out -> Top.b.j\nTop.b.out -> Top.c.i\nTop.b.out -> Top.c.j\n"
     "Top.b.out -> Top.p.i\nTop.g.i -> Top.g.q.i\nTop.g.o -> Top.z.i\nTop.g.q.out -> Top.g.o\n"
     "Top.p.out -> Top.g.i\n"},
    {"reparent Top.g.h Top.a Top.b", "Top.g.h.a\nTop.g.h.b\n",
     "Top.g.h.a.out -> Top.g.h.b.i\nTop.g.h.a.out -> Top.g.h.b.j\nTop.g.h.b.out -> Top.g.h.out\n"
     "Top.g.h.out -> Top.g.out\nTop.g.h.out -> Top.g.p.i\nTop.g.o -> Top.z.i\nTop.g.out -> "
     "Top.c.i\n"
     "Top.g.out -> Top.c.j\nTop.g.p.out -> Top.g.q.i\nTop.g.q.out -> Top.g.o\nTop.g.y -> "
     "Top.g.p.j\n"},
    {"reparent Top.g Top.z", "Top.g.z\n",
     "Top.a.out -> Top.b.i\nTop.a.out -> Top.b.j\nTop.b.out -> Top.c.i\nTop.b.out -> Top.c.j\n"
     "Top.b.out -> Top.g.x\nTop.g.p.out -> Top.g.q.i\nTop.g.q.out -> Top.g.z.i\nTop.g.x -> "
     "Top.g.p.i\n"
     "Top.g.y -> Top.g.p.j\n"},
};

TEST(Reparent, LeadsConnectionsThroughTheGraphsBetween)
{
    for (const auto& c : kMoves) {
        SCOPED_TRACE(c.line);
        Desk desk(kChain);
        EXPECT_EQ(c.output, desk.run(c.line));
        EXPECT_EQ(c.connections, desk.run("connections"));
        EXPECT_EQ(c.line + std::string("\n"), desk.run("history --commands"));
        const std::string after = desk.saved();
        EXPECT_EQ(c.connections, Desk(after).run("connections"));
        desk.run("undo");
        EXPECT_EQ(kChain, desk.saved());
        desk.run("redo");
        EXPECT_EQ(after, desk.saved());
    }
}

TEST(Reparent, HandsOnTheValueOfAPortThatGoes)
{
    Desk desk(kChain);
    desk.run("reparent Top Top.g.p");
    EXPECT_EQ("input i t \"\" <- Top.b.out\ninput j t \"7\"\noutput out t \"\" -> Top.g.i\n",
              desk.run("ports Top.p"));
}

TEST(Reparent, GivesANameThatIsFree)
{
    Desk desk("  <n name=\"a\" type=\"t\"/>\n  <nodegraph name=\"g\">\n"
              "    <n name=\"a\" type=\"t\"/>\n  </nodegraph>\n");
    EXPECT_EQ("Top.g.a2\n", desk.run("reparent Top.g Top.a"));
    EXPECT_EQ("Top.a\nTop.a2\n", desk.run("reparent Top Top.g.a Top.g.a2"));
}

TEST(Reparent, IsRefusedWithItsReasonAndChangesNothing)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Top.a Top.b", "Top.a: not a compound"},
        {"Top.g Top.no", "Top.no: no such node"},
        {"Top.g Top", "Top: the document itself stays as it is"},
        {"Top Top.a", "Top.a: it is there"},
        {"Top.g Top.g", "Top.g: it cannot go into itself"},
        {"Top.g.h Top.g", "Top.g: it cannot go into itself"},
        {"Top.g Top.a Top.g.p", "Top.g.p: it is in another compound than the first"},
        {"Top.g Top.a Top.a", "Top.a: it is named twice"},
        {"Top.g Top.i", "Top.g: a graph that implements a nodedef must stay at the top"},
        {"Top.i Top.c",
         "Top.i: Top.i: a graph that implements a nodedef has no sources: nodes of its type have "
         "them"},
    };
    for (const auto& [words, error] : cases) {
        SCOPED_TRACE(words);
        const std::string before =
            std::string(kChain) + "  <nodegraph name=\"i\" nodedef=\"N:D\"/>\n";
        Desk desk(before);
        EXPECT_EQ("error: reparent: " + std::string(error) + "\n",
                  desk.run(std::string("reparent ") + words));
        EXPECT_TRUE(desk.session->isSaved());
        EXPECT_EQ(before, desk.saved());
    }
}

TEST(Reparent, KeepsWhatHoldsFromAround)
{
    const std::string before = "  <nodegraph name=\"g\" fileprefix=\"p/\">\n"
                               "    <n name=\"a\" type=\"t\"/>\n"
                               "    <n name=\"b\" type=\"t\" colorspace=\"own\"/>\n"
                               "  </nodegraph>\n"
                               "  <nodegraph name=\"h\" colorspace=\"acescg\"/>\n"
                               "  <n name=\"c\" type=\"t\"/>\n";
    Desk desk(before);
    desk.run("reparent Top Top.g.a Top.g.b\nreparent Top.h Top.c\nattribute Top.h geomprefix /x\n"
             "expand Top.h");
    EXPECT_EQ("fileprefix \"p/\"\n", desk.run("attribute Top.a"));
    EXPECT_EQ("colorspace \"own\"\nfileprefix \"p/\"\n", desk.run("attribute Top.b"));
    EXPECT_EQ("colorspace \"none\"\ngeomprefix \"/x\"\n", desk.run("attribute Top.c"));
    const std::string after = desk.saved();
    EXPECT_EQ("colorspace \"none\"\ngeomprefix \"/x\"\n", Desk(after).run("attribute Top.c"));
    EXPECT_EQ("fileprefix \"p/\"\n", Desk(after).run("attribute Top.a"));
    desk.run("undo 4");
    EXPECT_EQ(before, desk.saved());
}

const char* const kPorts = "  <nodegraph name=\"g\">\n"
                           "    <input name=\"x\" type=\"t\" value=\"1\"/>\n"
                           "    <input name=\"y\" type=\"t\" value=\"2\"/>\n"
                           "    <input name=\"z\" type=\"t\" value=\"3\"/>\n"
                           "    <n name=\"n\" type=\"t\"/>\n"
                           "    <output name=\"o\" type=\"t\" nodename=\"n\"/>\n"
                           "    <output name=\"p\" type=\"t\" nodename=\"n\"/>\n"
                           "  </nodegraph>\n"
                           "  <n name=\"a\" type=\"t\">\n"
                           "    <input name=\"i\" type=\"t\" nodegraph=\"g\"/>\n"
                           "  </n>\n"
                           "  <nodegraph name=\"k\" nodedef=\"D\">\n"
                           "    <n name=\"m\" type=\"t\">\n"
                           "      <input name=\"i\" type=\"t\" interfacename=\"x\"/>\n"
                           "      <input name=\"j\" type=\"t\" interfacename=\"y\"/>\n"
                           "    </n>\n"
                           "  </nodegraph>\n"
                           "  <nodedef name=\"D\" node=\"d\">\n"
                           "    <input name=\"x\" type=\"t\"/>\n"
                           "    <input name=\"y\" type=\"t\"/>\n"
                           "  </nodedef>\n";

TEST(PortOrder, IsChangedFromBothSidesAndWritten)
{
    const struct {
        const char* line;
        const char* order; ///< Of inputs and outputs, with what inner ones give.
    } cases[] = {
        {"port move Top.g x 3", "y2 z3 x1 o p"},
        {"port move Top.g x 2", "y2 x1 z3 o p"},
        {"port move Top.g z 1", "z3 x1 y2 o p"},
        {"port move Top.g p 1", "x1 y2 z3 p o"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        Desk desk(kPorts);
        const auto order = [](Desk& shown) {
            const auto compound = shown.document->findNodeFromPath("Top.g")->getAsCompound();
            std::string text;
            for (ZEL::PortList* const list :
                 {&compound->innerInputs(), &compound->innerOutputs()}) {
                for (ZEL::Port* const inner : *list)
                    text += inner->getName() +
                            std::string(compound->getReversePort(inner)->getPortDefaultValue()) +
                            " ";
            }
            text.pop_back();
            return text;
        };
        EXPECT_EQ("", desk.run(c.line));
        EXPECT_EQ(c.order, order(desk));
        EXPECT_EQ(c.line + std::string("\n"), desk.run("history --commands"));
        const std::string after = desk.saved();
        Desk again(after);
        EXPECT_EQ(c.order, order(again));
        EXPECT_EQ("Top.g.n.out -> Top.g.o\nTop.g.n.out -> Top.g.p\nTop.g.o -> Top.a.i\n"
                  "Top.k.x -> Top.k.m.i\nTop.k.y -> Top.k.m.j\n",
                  again.run("connections"));
        desk.run("undo");
        EXPECT_EQ(kPorts, desk.saved());
        desk.run("redo");
        EXPECT_EQ(after, desk.saved());
    }
}

TEST(PortOrder, IsRefusedWithItsReason)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Top.g x 1", "Top.g.x: it is there"},
        {"Top.g x 4", "Top.g.x: the last place is 3"},
        {"Top.g x 0", "0: not a place, from 1"},
        {"Top.g w 1", "Top.g.w: no such port"},
        {"Top.a i 1", "Top.a: not a compound"},
        {"Top.k y 1", "Top.k.y: the nodedef of its graph gives the order"},
    };
    for (const auto& [words, error] : cases)
        EXPECT_EQ(std::string("error: port: ") + error + "\n",
                  Desk(kPorts).run(std::string("port move ") + words));
}

/// What the input of a plain node gets in the end: an output of a plain node, or a value.
std::string sourceOf(ZEL::Port& receiver)
{
    const ZEL::AddRefWrapper<ZEL::Port> source = receiver.connectedTo()[0];
    if (!source)
        return std::string("value ") + receiver.getPortDefaultValue();
    const ZEL::AddRefWrapper<ZEL::Node> node = source->getParentNode();
    if (node->isCompound())
        return sourceOf(*node->getAsCompound()->getReversePort(source));
    std::ostringstream text;
    text << node.get() << " " << source->getName();
    return text.str();
}

void addSources(ZEL::Compound& compound, std::map<const ZEL::Port*, std::string>& sources)
{
    for (const ZEL::AddRefWrapper<ZEL::Node>& node : compound.nodes()) {
        for (int i = 0; !node->isCompound() && i < node->inputs().size(); ++i)
            sources[node->inputs()[i].get()] = sourceOf(*node->inputs()[i]);
        if (node->isCompound())
            addSources(*node->getAsCompound(), sources);
    }
}

void collect(const ZEL::AddRefWrapper<ZEL::Node>& node,
             std::vector<ZEL::AddRefWrapper<ZEL::Node>>& nodes)
{
    nodes.push_back(node);
    for (int i = 0; node->isCompound() && i < node->getAsCompound()->nodes().size(); ++i)
        collect(node->getAsCompound()->nodes()[i], nodes);
}

/// Every plain node gets from the same source what it got, wherever nodes are moved.
TEST(Reparent, AtRandomKeepsWhatFlows)
{
    for (const char* const name : {"rusty_painted_gate", "weathered_brick_wall"}) {
        const std::string path = std::string(paths::kDocuments) + "/" + name + ".mtlx";
        std::vector<shading::Message> messages;
        const auto document = shading::openDocument(path, {}, messages);
        ASSERT_TRUE(document) << path;
        shading::Edits edits(*document);
        std::mt19937 random(7);
        const std::string before = shading::networkText(*document->getRootNode());
        std::map<const ZEL::Port*, std::string> sources;
        addSources(*document->getRootNode()->getAsCompound(), sources);
        int done = 0;
        for (int i = 0; i < 300; ++i) {
            std::vector<ZEL::AddRefWrapper<ZEL::Node>> nodes;
            collect(document->getRootNode(), nodes);
            const auto pick = [&] { return nodes[random() % nodes.size()]; };
            ZEL::AddRefWrapper<ZEL::Node> target = pick();
            while (!target->isCompound())
                target = pick();
            const std::vector<ZEL::AddRefWrapper<ZEL::Node>> moved = {pick()};
            done += edits.reparent(target->getAsCompound(), moved) ? 1 : 0;
            std::map<const ZEL::Port*, std::string> now;
            addSources(*document->getRootNode()->getAsCompound(), now);
            ASSERT_EQ(sources, now) << name << " " << i;
        }
        EXPECT_LT(50, done);
        std::vector<std::string> titles;
        ASSERT_TRUE(edits.undo(done, titles));
        EXPECT_EQ(before, shading::networkText(*document->getRootNode()));
    }
}

} // namespace
