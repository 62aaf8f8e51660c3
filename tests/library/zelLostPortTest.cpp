#include "zelTestEditing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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

/// A document whose compounds write no log: for many ports. The action runs when it is armed, in
/// the question whether the node "999" may leave, or "S2" be connected.
class ManyPorts : public Container {
public:
    class Asked : public Node {
    public:
        explicit Asked(ManyPorts& document) : Node(&document), m_document(document) {}
        using Node::operator=;
        bool onPortAddConnection(PortArg /*port*/, PortArg /*other*/) override
        {
            m_document.onQuestion(getName());
            return true;
        }

    private:
        ManyPorts& m_document;
    };

    class Nest : public Compound {
    public:
        Nest(NodeArg owner, ManyPorts& document) : Compound(owner), m_document(document) {}
        using Compound::operator=;
        bool onNodeRemove(NodeArg node) override
        {
            m_document.onQuestion(node->getName());
            return true;
        }
        AddRefWrapper<Compound> createNewCompound(const char* name) override
        {
            const AddRefWrapper<Node> node = Node::createNew(&m_document, name);
            nodes().add(node);
            return new Nest(node, m_document);
        }

    private:
        ManyPorts& m_document;
    };

    ManyPorts() : top(Node::createNew(this, "Top")), network(new Nest(top, *this)) {}
    AddRefWrapper<Node> getRootNode() override { return top; }
    void rebuildCompounds() override {}
    Runtime* getRuntime() override { return nullptr; }

    AddRefWrapper<Node> addNode(const std::string& name)
    {
        AddRefWrapper<Node> node(new Asked(*this));
        node->setName(name.c_str());
        for (const char* const input : {"In", "Next"})
            node->inputs().addPort(input, nullptr);
        node->outputs().addPort("Out", nullptr);
        network->nodes().add(node);
        return node;
    }
    void onQuestion(const std::string& name)
    {
        if (!armed.empty() && name == armed) {
            armed.clear();
            network->removeNode("S4");
        }
    }

    AddRefWrapper<Node> top;
    AddRefWrapper<Compound> network;
    std::string armed;
};

TEST(LostPort, CollapseOfManyDoesNotConnectWhatItAloneHolds)
{
    constexpr int kMoved = 2100;
    constexpr int kSources = 5;
    for (const char* const question : {"999", "S2"}) {
        SCOPED_TRACE(question);
        ManyPorts document;
        CreateCompoundCommand command;
        ASSERT_TRUE(command.setParentCompound(&document, "Top"));
        for (int i = 0; i < kSources; ++i)
            document.addNode("S" + std::to_string(i));
        std::vector<AddRefWrapper<Node>> moved;
        for (int i = 0; i < kMoved; ++i) {
            moved.push_back(document.addNode(std::to_string(i)));
            for (int j = 0; j < kSources; ++j)
                document.network->nodes()[j]->outputs()[0]->addConnection(moved[i]->inputs()[0]);
            ASSERT_TRUE(command.addNodeToMove(moved[i]->getName()));
        }
        for (int i = 0; i < kMoved; ++i) {
            for (int j = 1; j <= kSources; ++j)
                moved[(i + j) % kMoved]->outputs()[0]->addConnection(moved[i]->inputs()[1]);
        }
        const AddRefWrapper<Port> loose = TestPort::make("loose", PortOutput);
        loose->addConnection(moved[7]->inputs()[0]);
        document.armed = question;
        EXPECT_TRUE(command.doit());
        EXPECT_EQ("", document.armed);
        const AddRefWrapper<Node> box = document.findNodeFromPath("Top.Compound");
        ASSERT_EQ(kMoved * kSources + 1, box->inputs().size());
        int connected = 0;
        for (Port* const input : box->inputs())
            connected += input->connectedTo().size();
        EXPECT_EQ(kMoved * (kSources - 1) + 1, connected);
        for (int i = 0; i < kSources - 1; ++i)
            EXPECT_EQ(kMoved, document.network->nodes()[i]->outputs()[0]->connectedTo().size());
        EXPECT_EQ(1, loose->connectedTo().size());
        for (const AddRefWrapper<Node>& node : moved) {
            ASSERT_EQ(kSources + (node == moved[7] ? 1 : 0),
                      node->inputs()[0]->connectedTo().size());
            ASSERT_EQ(kSources, node->inputs()[1]->connectedTo().size());
        }
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
