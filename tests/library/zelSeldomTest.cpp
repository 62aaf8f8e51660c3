// What a host seldom does: each is a line of the library that no other test runs.
#include "zelTestEditing.h"

namespace ZEL {
namespace {

TEST(HostEditor, OneThatOverridesNothingHearsEverythingAndDoesNothing)
{
    struct Deaf : HostEditor {
        int heard = 0;
        void zel_onNodeChange(ENodeChangeType type,
                              const AddRefWrapper<Compound>& compound,
                              const AddRefWrapper<Node>& node) override
        {
            HostEditor::zel_onNodeChange(type, compound, node);
            ++heard;
        }
    };
    TestNetwork net("p");
    Deaf first;
    Deaf second;
    net.root->registerEditor(&first);
    net.root->registerEditor(&second);
    const std::string before = wholeText(net);
    const AddRefWrapper<Port> port = net.port("Top.p");
    net.root->notifyConnectionChange(eCnxAdded, port, port);
    net.root->notifyCompoundConnectionChange(eCnxAdded, port, port);
    net.root->notifyCompoundPortChange(eCompoundPortAdded, port);
    net.root->notifyNodeChange(eNodeAdded, net.compound(), net.root);
    EXPECT_EQ(2, first.heard + second.heard) << "every pass ran to its end";
    EXPECT_EQ(before, wholeText(net));
    net.hostOperation();
    EXPECT_EQ(before, wholeText(net));
}

TEST(Node, APathAsksTheNodesWhoseNameIsTheirOwnAffair)
{
    struct Masked : TestNode {
        using TestNode::TestNode;
        using TestNode::operator=;
        const char* getName() const override { return "Mask"; }
    };
    TestNetwork net;
    const AddRefWrapper<Node> masked(new Masked(net.questions, &net));
    masked->setName("Face");
    ASSERT_TRUE(net.compound()->nodes().add(masked));
    const AddRefWrapper<Compound> inside(new TestCompound(net.questions, masked));
    net.addNode("Top.Mask", "N", "In");
    EXPECT_EQ("Top.Mask.N.In", pathOf(net.port("Top.Mask.N.In")));
}

TEST(Compound, AgreesToAMoveOfItsInnerPorts)
{
    const AddRefWrapper<Node> owner = Node::createNew(nullptr, "Sub");
    const AddRefWrapper<Compound> sub = Compound::createNew(owner, nullptr);
    for (const char* name : {"A", "B", "C"})
        sub->createCompoundPort(PortInput, name, nullptr);
    EXPECT_TRUE(sub->innerInputs().movePort(2, 0));
    EXPECT_EQ("C A B / A B C", names(sub->innerInputs()) + " / " + names(owner->inputs()));
}

TEST(Container, APortThatHasNoParentIsNoEndOfAConnection)
{
    TestNetwork net("p");
    net.addNode("Top", "N", "In");
    net.port("Top.N.In")->setParent(nullptr);
    AddRefWrapper<Port> out;
    AddRefWrapper<Port> in;
    EXPECT_EQ("bad set of ports in findPortsForConnection: Top.p and Top.N.In\n", printed([&] {
                  EXPECT_FALSE(net.findPortsForConnection("Top.p", "Top.N.In", &out, &in));
              }));
    EXPECT_TRUE(!out && !in);
}

TEST(NodeList, AssignedToItselfKeepsItsNodes)
{
    TestNetwork net;
    const AddRefWrapper<Node> node = net.addNode("Top", "N");
    NodeList& list = net.compound()->nodes();
    const NodeList& same = list;
    list = same;
    EXPECT_TRUE(list.size() == 1 && list[0] == node);
    EXPECT_EQ(2, node->getRefCount());
}

TEST(PortList, NobodyIsAskedToMoveTheEndWhichHoldsNoPort)
{
    TestNetwork net("a b");
    EXPECT_FALSE(net.root->inputs().movePort(2, 0));
    EXPECT_EQ("", net.questions.take());
}

TEST(PortList, WithoutItsParentItStillReleasesWhatIsRemoved)
{
    AddRefWrapper<Node> node = Node::createNew(nullptr, "N");
    const AddRefWrapper<PortList> list(&node->inputs());
    const AddRefWrapper<Port> port = list->addPort("P", nullptr);
    node = nullptr;
    EXPECT_EQ(2, port->getRefCount());
    EXPECT_TRUE(list->remove(port));
    EXPECT_TRUE(port->getRefCount() == 1 && list->size() == 0);
}

TEST(ModifyCompoundPortCommand, UndoPassesOverTheNodesThatAreGone)
{
    TestNetwork net;
    net.addCompound("Top", "Sub", "A");
    net.addNode("Top.Sub", "N", "X");
    net.addNode("Top.Sub", "P", "X");
    net.connect("Top.Sub.A", "Top.Sub.N.X");
    net.connect("Top.Sub.A", "Top.Sub.P.X");
    ModifyCompoundPortCommand command;
    ASSERT_TRUE(command.setParentCompound(&net, "Top.Sub") && command.deletePort("A"));
    command.doit();
    net.compound("Top.Sub")->removeNode("P");
    command.undo(&net);
    EXPECT_EQ("Top.Sub.A > Top.Sub.N.X\n", net.text());

    // Refused inside: the port comes back outside only.
    command.redo(&net);
    net.questions.refused = "Sub{}: add A";
    command.undo(&net);
    EXPECT_EQ("A / ", names(net.compound("Top.Sub")->getAsNode()->inputs()) + " / " +
                          names(net.compound("Top.Sub")->innerInputs()));
}

} // namespace
} // namespace ZEL
