#include "zelTestEditing.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace ZEL {
namespace {

/// A command on the compound at the path, with the nodes and the name "Box"; not done.
struct Collapse : CreateCompoundCommand {
    Collapse(TestNetwork& net, const char* path, std::initializer_list<const char*> nodes)
    {
        EXPECT_TRUE(setParentCompound(&net, path));
        setNewCompoundName("Box");
        for (const char* node : nodes)
            EXPECT_TRUE(addNodeToMove(node)) << node;
    }
};

TEST(CreateCompoundCommand, LeadsEachCrossingConnectionThroughAPortOfItsOwn)
{
    TestNetwork net("", "Z");
    net.addNode("Top", "S", "", "Out");
    net.addNode("Top", "N", "X Y", "Out");
    net.addCompound("Top", "M", "X", "Out");
    net.addNode("Top", "T", "A B");
    net.port("Top.N.Y")->setDataType(PortDataType::createNew("Color"));
    net.inner("Top.M.X")->addConnection(net.inner("Top.M.Out"));
    for (const char* input : {"Top.M.X", "Top.N.Y", "Top.T.B"})
        net.connect("Top.S.Out", input);
    for (const char* input : {"Top.Z", "Top.N.X", "Top.T.A"})
        net.connect("Top.M.Out", input);
    for (const char* input : {"Top.T.B", "Top.N.Y"})
        net.connect("Top.N.Out", input);
    net.questions.take();
    Collapse command(net, "Top", {"N", "M", "N"});
    EXPECT_EQ("", printed([&] { EXPECT_TRUE(command.doit()); }));
    EXPECT_STREQ("Top.Box", command.getCreatedCompoundPath());
    EXPECT_EQ(0, net.questions.take().find("Top{}: add node Box; Box: add X to ; Box{}: add X to ; "
                                           "Box: add Out to ; Box{}: add Out to ; "));
    EXPECT_EQ("Top > Z {> Z=Top.Box.Out\n"
              "Top.S > Out=Top.T.B,Top.Box.X,Top.Box.Y\n"
              "Top.T < A=Top.Box.Out B=Top.S.Out,Top.Box.Out\n"
              "Top.Box < X=Top.S.Out Y:Color=Top.S.Out > Out=Top.Z inner Out=Top.T.A Out=Top.T.B"
              " {< X=Top.Box.M.X Y:Color=Top.Box.N.Y"
              " {> Out=Top.Box.M.Out Out=Top.Box.M.Out Out=Top.Box.N.Out\n"
              "Top.Box.M < X=Top.Box.X inner"
              " > Out=Top.Box.Out inner,Top.Box.Out inner,Top.Box.N.X"
              " {< X=Top.Box.M.Out inner {> Out=Top.Box.M.X inner\n"
              "Top.Box.N < X=Top.Box.M.Out Y:Color=Top.Box.Y inner,Top.Box.N.Out"
              " > Out=Top.Box.Out inner,Top.Box.N.Y\n",
              wholeText(net));
}

TEST(CreateCompoundCommand, KeepsItsOrderAndLeavesOutWhatIsRefused)
{
    const std::string s = "=Top.Box.X";
    const std::string box = " < X=Top.S.Out {< X=Top.Box.M.X";
    const std::string m = " < X=Top.Box.X inner > Out=Top.Box.N.X";
    const std::string n = "\nTop.Box.N < X=Top.Box.M.Out";
    const struct {
        const char* refused;
        std::string afterS;
        std::string afterBox;
        std::string afterM;
        std::string afterN;
    } cases[] = {
        {"nothing", s, box, m, n},
        {"Box: add X", "", "", " < X > Out=Top.Box.N.X", n},
        {"Box{}: add X", s, " < X=Top.S.Out", " < X > Out=Top.Box.N.X", n},
        // The nodes leave their list and are forgotten by the others, but forget nobody.
        {"S: disconnect", s, box, " < X=Top.S.Out,Top.Box.X inner > Out=Top.Box.N.X", n},
        {"M: disconnect", s, box, m + ",Top.Box.N.X", n},
        {"Top{}: remove node N", s + n, box, m, n}, // Stands in both lists.
        {"Box{}: add node N", s, box, " < X=Top.Box.X inner > Out", ""},
        {"S: connect", "", " < X {< X=Top.Box.M.X", m, n},
        {"Box{}: connect X", s, " < X=Top.S.Out {< X", " < X > Out=Top.Box.N.X", n},
        {"M: connect", s, box, " < X=Top.Box.X inner > Out", "\nTop.Box.N < X"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.refused);
        TestNetwork net;
        net.addNode("Top", "S", "", "Out");
        net.addNode("Top", "M", "X", "Out");
        net.addNode("Top", "N", "X");
        net.connect("Top.S.Out", "Top.M.X");
        net.connect("Top.M.Out", "Top.N.X");
        net.questions.refused = row.refused;
        EXPECT_TRUE(Collapse(net, "Top", {"M", "N"}).doit());
        if (row.refused == std::string("nothing")) {
            EXPECT_EQ("Top{}: add node Box; Box: add X to ; Box{}: add X to ; "
                      "S: disconnect Out X; M: disconnect Out X; "
                      "Top{}: remove node M; M: forget me; Box{}: add node M; "
                      "Top{}: remove node N; N: forget me; Box{}: add node N; "
                      "S: connect Out X; Box{}: connect X X; M: connect Out X",
                      net.questions.take());
        }
        EXPECT_EQ("Top\nTop.S > Out" + row.afterS + "\nTop.Box" + row.afterBox + "\nTop.Box.M" +
                      row.afterM + row.afterN + "\n",
                  wholeText(net));
    }
}

TEST(CreateCompoundCommand, TakesTheLastNodeOfANameAnyNewNameAndFarEndsWithoutAnOwner)
{
    TestNetwork net;
    net.addNode("Top", "M", "Old");
    Collapse command(net, "Top", {"M"});
    net.compound()->removeNode("M");
    net.addNode("Top", "M", "In");
    EXPECT_TRUE(command.addNodeToMove("M"));
    command.setNewCompoundName("");
    const AddRefWrapper<Port> loose = TestPort::make("loose", PortOutput);
    loose->addConnection(net.port("Top.M.In"));
    EXPECT_TRUE(command.doit());
    EXPECT_STREQ("Top.", command.getCreatedCompoundPath());
    EXPECT_EQ("Top\nTop. < In=loose {< In=Top..M.In\nTop..M < In=Top..In inner\n", wholeText(net));
}

TEST(CreateCompoundCommand, InsideIsDecidedByTheOwnersName)
{
    TestNetwork net("In");
    net.addNode("Top", "M", "X", "Out");
    const AddRefWrapper<Node> second = net.addNode("Top", "M", "Z", "Out");
    net.port("Top.M.X")->addConnection(second->outputs()[0]);
    net.addNode("Top", "Top", "X");
    net.connect("Top.In", "Top.Top.X");
    EXPECT_TRUE(Collapse(net, "Top", {"M", "Top"}).doit());
    // The second M and the compound node Top count as moved. Inside, the first M has the ports of
    // the second and gets its connection; Top has no output In, and that connection is lost.
    EXPECT_EQ("Top < In {< In\n"
              "Top.M < Z > Out\n"
              "Top.Box\n"
              "Top.Box.M < X=Top.Box.M.Out > Out=Top.Box.M.X\n"
              "Top.Box.Top < X\n",
              wholeText(net));
}

TEST(CreateCompoundCommand, BindsToTheLastCompoundNamedAndChangesNothingBesidesDoit)
{
    TestNetwork net;
    net.addNode("Top", "Twin", "First");
    net.addNode("Top", "Twin", "Second");
    const std::string before = wholeText(net);
    CreateCompoundCommand command;
    const auto expectReady = [&](bool ready) {
        EXPECT_EQ(ready, command.redo(nullptr));
        EXPECT_EQ(ready, command.undo(&net));
        EXPECT_EQ(ready, command.redo(&net));
        EXPECT_FALSE(command.addNodeToMove("Missing"));
        EXPECT_EQ(ready, command.addNodeToMove("Twin"));
    };
    expectReady(false);
    EXPECT_TRUE(command.setParentCompound(&net, "Missing"));
    expectReady(false);
    EXPECT_TRUE(command.setParentCompound(&net, "Top"));
    expectReady(true);
    EXPECT_FALSE(command.setParentCompound(&net, "Top.Twin"));
    expectReady(false);
    EXPECT_FALSE(command.doit());
    EXPECT_TRUE(command.setParentCompound(&net, "Top"));
    // Undo without a document takes the command's away; any path gives it another.
    EXPECT_FALSE(command.undo(nullptr) || command.doit());
    expectReady(false);
    EXPECT_TRUE(command.setParentCompound(&net, "Missing"));
    // No compound from the host: the command stays ready.
    net.questions.refused = "add node Compound";
    EXPECT_FALSE(command.doit());
    expectReady(true);
    EXPECT_EQ(before, wholeText(net));
    EXPECT_STREQ("", command.getCreatedCompoundPath());
    net.questions.refused = "";
    EXPECT_TRUE(command.doit());
    expectReady(false);
    EXPECT_FALSE(command.doit());
    EXPECT_EQ("Top\nTop.Twin < Second\nTop.Compound\nTop.Compound.Twin < First\n", wholeText(net));

    // Bound anew, the command moves the same node once more: out of the compound that it made.
    EXPECT_TRUE(command.setParentCompound(&net, command.getCreatedCompoundPath()));
    EXPECT_TRUE(command.doit() && Collapse(net, "Top", {}).doit());
    EXPECT_EQ("Top\nTop.Twin < Second\nTop.Compound\nTop.Compound.Compound\n"
              "Top.Compound.Compound.Twin < First\nTop.Box\n",
              wholeText(net));
}

TEST(CreateCompoundCommand, OutlivesTheDocumentAndHoldsOnlyTheMovedNodes)
{
    const int alive = Live::count;
    for (const bool done : {false, true}) {
        auto net = std::make_unique<TestNetwork>();
        for (const char* name : {"M", "Other"})
            net->addNode("Top", name);
        Collapse command(*net, "Top", {"M"});
        EXPECT_TRUE(!done || command.doit());
        net.reset();
        // Before doit the command holds the compound too, and with it its two nodes.
        EXPECT_EQ(alive + (done ? 1 : 3), Live::count);
        EXPECT_EQ(!done, command.redo(nullptr));
        EXPECT_FALSE(command.undo(nullptr));
        EXPECT_STREQ(done ? "Top.Box" : "", command.getCreatedCompoundPath());
    }
    EXPECT_EQ(alive, Live::count);
}

TEST(CreateCompoundCommand, HoldsItsRecordsUntilItIsDone)
{
    TestNetwork net;
    net.addNode("Top", "S", "", "Out");
    net.addNode("Top", "A", "In", "Out");
    net.addNode("Top", "B", "In");
    net.connect("Top.S.Out", "Top.A.In");
    net.connect("Top.A.Out", "Top.B.In");
    const Port* const innerOutput = net.port("Top.A.Out").get();
    Collapse command(net, "Top", {"A", "B"});
    int questions = 0;
    std::function<void()> look = [&] {
        const std::string& log = net.questions.log;
        if (log.find("connect", log.rfind(": ")) != std::string::npos) {
            ++questions;
            EXPECT_LE(2, innerOutput->getRefCount()) << log.substr(log.rfind("; ") + 2);
        }
        net.questions.during = look;
    };
    net.questions.during = look;
    EXPECT_TRUE(command.doit());
    net.questions.during = nullptr;
    EXPECT_LE(5, questions) << "breaking two connections, making three";
    EXPECT_EQ(1, innerOutput->getRefCount());
}

TEST(CreateCompoundCommand, RecordsAnInputWhoseParentIsNoNodeByTheNodeThatHasIt)
{
    for (const bool hasListener : {false, true}) {
        TestNetwork net;
        TestListener listener(net.questions);
        net.addNode("Top", "A", "", "Out");
        net.addNode("Top", "B", "In");
        net.connect("Top.A.Out", "Top.B.In");
        const AddRefWrapper<Port> in = net.port("Top.B.In");
        in->setParent(hasListener ? &listener : nullptr);
        Collapse command(net, "Top", {"A", "B"});
        EXPECT_TRUE(command.doit());
        // From the output it has no owner, so it lies outside; from the input both nodes are moved.
        ASSERT_EQ(2, in->connectedTo().size());
        EXPECT_EQ(net.port("Top.Box.Out"), in->connectedTo()[0]);
        EXPECT_EQ(net.port("Top.Box.A.Out"), in->connectedTo()[1]);
        EXPECT_EQ(0, net.compound("Top.Box")->innerInputs().size());
        in->setParent(nullptr);
    }
}

TEST(CreateCompoundCommand, MovesManyInTheOrderOfTheirNamesWhateverTheOrderOfTheCalls)
{
    for (const int count : {3, 99, 150, 400}) {
        TestNetwork net;
        std::vector<std::string> names{"a", "ab", "\xc3\xa9t\xc3\xa9"};
        for (int i = 3; i < count;
             ++i) // Some are told apart by their last byte, some by the first.
            names.push_back(i % 2 != 0 ? "a long name " + std::to_string(i) : std::to_string(i));
        std::vector<AddRefWrapper<Node>> nodes;
        std::map<std::string, AddRefWrapper<Node>> sources; // By the name of the node they feed.
        for (const std::string& name : names) {
            sources[name] = net.addNode("Top", ("source of " + name).c_str(), "", "Out");
            nodes.push_back(net.addNode("Top", name.c_str(), "X Y", "Out"));
            sources[name]->outputs()[0]->addConnection(nodes.back()->inputs()[0]);
        }
        for (std::size_t i = 0; i < nodes.size(); ++i)
            nodes[i]->outputs()[0]->addConnection(nodes[i * 7 % nodes.size()]->inputs()[1]);
        Collapse command(net, "Top", {});
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::string& name = names[(i * 10007 + 5) % names.size()];
            EXPECT_TRUE(command.addNodeToMove(name.c_str()) && command.addNodeToMove(name.c_str()));
        }
        EXPECT_TRUE(command.doit());
        const AddRefWrapper<Compound> box = net.compound("Top.Box");
        ASSERT_EQ(count, box->nodes().size());
        ASSERT_EQ(count, box->innerInputs().size());
        int place = 0;
        for (const auto& [name, source] : sources) {
            ASSERT_EQ(name, box->nodes()[place]->getName());
            const AddRefWrapper<Port> port = box->getAsNode()->inputs()[place];
            ASSERT_EQ(source, port->connectedTo()[0]->getParentNode());
            ASSERT_EQ(box->nodes()[place]->inputs()[0],
                      box->innerInputs()[place]->connectedTo()[0]);
            ++place;
        }
        for (std::size_t i = 0; i < nodes.size(); ++i)
            ASSERT_EQ(nodes[i * 7 % nodes.size()]->inputs()[1],
                      nodes[i]->outputs()[0]->connectedTo()[0]);
    }
}

} // namespace
} // namespace ZEL
