#include "zelTestEditing.h"

#include <gtest/gtest.h>

namespace ZEL {
namespace {

// A listener takes away what only the operation still holds: it is not left connected.

/// Runs the action in the first question that contains the text.
void during(TestNetwork& net, const std::string& text, const std::function<void()>& action)
{
    net.questions.during = [&net, text, action] {
        const std::string& log = net.questions.log;
        const std::size_t last = log.rfind("; ");
        if (log.find(text, last == std::string::npos ? 0 : last) != std::string::npos)
            action();
        else
            during(net, text, action);
    };
}

struct Lost {
    Lost()
    {
        net.addNode("Top", "A", "", "Out");
        net.addNode("Top", "B", "", "Out");
        net.addNode("Top", "C", "In");
        net.connect("Top.A.Out", "Top.C.In");
    }
    void removeA() { net.compound()->removeNode("A"); }

    TestNetwork net;
};

TEST(LostPort, CollapseDoesNotConnectThePortOfANodeRemovedMeanwhile)
{
    for (const char* const question : {"remove node C", "connect In In"}) {
        SCOPED_TRACE(question);
        Lost lost;
        CreateCompoundCommand command;
        ASSERT_TRUE(command.setParentCompound(&lost.net, "Top"));
        ASSERT_TRUE(command.addNodeToMove("C"));
        during(lost.net, question, [&] { lost.removeA(); });
        EXPECT_TRUE(command.doit());
        EXPECT_EQ("Top\nTop.B > Out\nTop.Compound < In {< In=Top.Compound.C.In\n"
                  "Top.Compound.C < In=Top.Compound.In inner\n",
                  wholeText(lost.net));
    }
}

TEST(LostPort, ConnectCommandDoesNotConnectThePortOfANodeRemovedMeanwhile)
{
    Lost lost;
    ConnectCommand command;
    {
        AddRefWrapper<Port> out = lost.net.port("Top.B.Out");
        AddRefWrapper<Port> in = lost.net.port("Top.C.In");
        ASSERT_TRUE(command.connect(&lost.net, out, in));
    }
    during(lost.net, "connect Out In", [&] { lost.removeA(); });
    EXPECT_TRUE(command.undo(&lost.net));
    EXPECT_EQ("Top\nTop.B > Out\nTop.C < In\n", wholeText(lost.net));
    during(lost.net, "connect Out In", [&] { lost.net.compound()->removeNode("B"); });
    command.redo(&lost.net);
    EXPECT_EQ("Top\nTop.C < In\n", wholeText(lost.net));

    Lost again;
    ConnectCommand disconnecting;
    {
        AddRefWrapper<Port> out = again.net.port("Top.A.Out");
        AddRefWrapper<Port> in = again.net.port("Top.C.In");
        ASSERT_TRUE(disconnecting.disconnect(&again.net, out, in));
    }
    during(again.net, "connect Out In", [&] { again.net.compound()->removeNode("C"); });
    disconnecting.undo(&again.net);
    EXPECT_EQ("Top\nTop.A > Out\nTop.B > Out\n", wholeText(again.net));
}

TEST(LostPort, MakeConnectionAndUndoneDeletionLeaveNoLostPortConnected)
{
    Lost lost;
    lost.removeA();
    const AddRefWrapper<Compound> top = lost.net.compound();
    PortList& inputs = top->nodes()["C"]->inputs();
    during(lost.net, "connect Out In", [&] { inputs.remove(inputs[0]); });
    top->makeConnection(top->nodes()["B"], "Out", top->nodes()["C"], "In");
    EXPECT_EQ("Top\nTop.B > Out\nTop.C\n", wholeText(lost.net));

    TestNetwork net("In");
    net.addNode("Top", "C", "X");
    net.inner("Top.In")->addConnection(net.port("Top.C.X"));
    Runtime runtime;
    net.runtime = &runtime;
    ModifyCompoundPortCommand command;
    ASSERT_TRUE(command.setParentCompound(&net, "Top"));
    ASSERT_TRUE(command.deletePort("In"));
    command.doit();
    during(net, "connect In X", [&] { net.compound()->removeNode("C"); });
    command.undo(&net);
    EXPECT_EQ("Top < In {< In\n", wholeText(net));
}

TEST(LostPort, PortNamesNoParentThatDiedWhenItWasAskedToTakeIt)
{
    for (const char* const refused : {"", "add"}) {
        SCOPED_TRACE(refused);
        Questions questions;
        AddRefWrapper<Node> node(new TestNode(questions, nullptr));
        PortList& inputs = node->inputs();
        questions.refused = refused;
        questions.during = [&] { node = nullptr; };
        const AddRefWrapper<Port> port = inputs.addPort("In", nullptr);
        EXPECT_EQ(nullptr, port->getParent());
        EXPECT_STREQ("In", port->getFullPathName().getName());
    }
}

TEST(LostPort, InnerPortThatLostItsCompoundWhenAskedIsNotConnectedToAnInput)
{
    Questions questions;
    AddRefWrapper<Node> node(new TestNode(questions, nullptr));
    const AddRefWrapper<Port> inner = AddRefWrapper<Compound>(new TestCompound(questions, node))
                                          ->innerOutputs()
                                          .addPort("Out", nullptr);
    const AddRefWrapper<Port> input = Port::createNew("In", PortInput);
    questions.during = [&] { node = nullptr; };
    EXPECT_FALSE(input->addConnection(inner));
    EXPECT_FALSE(input->isConnected() || inner->isConnected());
    const AddRefWrapper<Port> output = Port::createNew("Out", PortOutput);
    EXPECT_TRUE(output->addConnection(inner));
}

} // namespace
} // namespace ZEL
