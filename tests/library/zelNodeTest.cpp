#include "zelTestNetwork.h"

#include <gtest/gtest.h>

namespace ZEL {
namespace {

TEST(Node, NewNodeHasTwoEmptyListsAndNoPlace)
{
    TestNetwork net;
    const AddRefWrapper<Node> node = Node::createNew(&net, nullptr);
    EXPECT_EQ(1, node->getRefCount());
    EXPECT_EQ(&net, node->getContainer());
    EXPECT_EQ("", pathOf(node));
    EXPECT_STREQ("", node->getNodeTypeName());
    EXPECT_TRUE(!node->isCompound() && !node->getAsCompound() && !node->getParentCompound());
    EXPECT_EQ(node.get(), node->inputs().getParent());
    EXPECT_EQ(PortInput, node->inputs().addPort("In", nullptr)->getPortIOType());
    EXPECT_EQ(PortOutput, node->outputs().addPort("Out", nullptr)->getPortIOType());
    EXPECT_EQ(node, node->outputs()["Out"]->getParentNode());
}

TEST(Node, PathsRunFromTheOutermostAncestorAndAreNotEscaped)
{
    TestNetwork net;
    net.addCompound("Top", "Sub");
    const AddRefWrapper<Node> node = net.addNode("Top.Sub", "a.b");
    EXPECT_EQ("Top.Sub.a.b", pathOf(node));
    EXPECT_EQ("Top", pathOf(net.root));
    std::string visited = "names:";
    node->recurse_parent_first(GPFN_Callback, &visited);
    EXPECT_EQ("names:.Top.Sub.a.b", visited);
}

/// Answers a path of its own.
struct Placed : TestNode {
    using TestNode::TestNode;
    using Node::operator=;
    Namable getFullPathName() override { return Namable("Else"); }
};

/// Answers the one compound, whatever it is asked for.
struct Offering : TestCompound {
    using TestCompound::TestCompound;
    using Compound::operator=;
    AddRefWrapper<Compound> createNewCompound(const char* /*name*/) override { return offered; }
    AddRefWrapper<Compound> offered;
};

TEST(Node, PortsCommandsAndTheDumpTakeThePathThatAnOverrideAnswers)
{
    TestNetwork net;
    const AddRefWrapper<Offering> top(new Offering(net.questions, net.root));
    const AddRefWrapper<Node> node(new Placed(net.questions, &net));
    top->nodes().add(node);
    EXPECT_NE(std::string::npos, printed([&] { top->debugPrint(); }).find("\nname: Else\n"));
    top->offered = new TestCompound(net.questions, node);
    top->offered->createCompoundPort(PortInput, "In", nullptr);
    EXPECT_EQ("Else.In", pathOf(node->inputs()[0]));
    EXPECT_EQ("Else.In inner", pathOf(top->offered->innerInputs()[0]));
    CreateCompoundCommand command;
    EXPECT_TRUE(command.setParentCompound(&net, "Top") && command.doit());
    EXPECT_STREQ("Else", command.getCreatedCompoundPath());
}

TEST(Node, TheEndOfANodeDisconnectsNothing)
{
    AddRefWrapper<Node> node = Node::createNew(nullptr, "N");
    const AddRefWrapper<Port> out = node->outputs().addPort("Out", nullptr);
    const AddRefWrapper<Port> in = TestPort::make("In");
    ASSERT_TRUE(out->addConnection(in));
    node = nullptr;
    EXPECT_TRUE(in->isConnected() && out->removeConnection(in));
}

TEST(Node, AgreesToEveryQuestionAndSoDoesACompound)
{
    const AddRefWrapper<Node> node = Node::createNew(nullptr, "N");
    const AddRefWrapper<Compound> compound = Compound::createNew(node, nullptr);
    const AddRefWrapper<Port> port = TestPort::make("P");
    const PortList list;
    for (PortNotification* const each : std::initializer_list<PortNotification*>{
             node.get(),
             compound.get(),
         }) {
        EXPECT_TRUE(each->onPortAddConnection(port, port));
        EXPECT_TRUE(each->onPortRemoveConnection(port, port));
        EXPECT_TRUE(each->onPortSetDataType(port, nullptr) && each->onPortSetName(port, ""));
        EXPECT_TRUE(each->onPortListPortAdded(list, port));
        EXPECT_TRUE(each->onPortListPortRemoved(list, port));
        EXPECT_TRUE(each->onPortListPortMove(list, 0, 0) && each->onPortSetDefaultValue(port, ""));
        EXPECT_EQ(nullptr, each->onPortGetDefaultValue(port));
        EXPECT_STREQ("N", each->onGetParentFullPathName().getName());
    }
}

TEST(Node, AssignmentSharesListsAndCompoundWhichKeepTheirMaker)
{
    TestNetwork net;
    const AddRefWrapper<Compound> sub = net.addCompound("Top", "Sub");
    const AddRefWrapper<Node> source = sub->getAsNode();
    source->setNodeTypeName("Blur");
    const AddRefWrapper<Node> target(new TestNode(net.questions, nullptr));
    EXPECT_EQ(target.get(), &(*target = *source));
    EXPECT_EQ("Top.Sub", pathOf(target));
    EXPECT_TRUE(&source->inputs() == &target->inputs() && &source->outputs() == &target->outputs());
    EXPECT_EQ(source.get(), target->inputs().getParent());
    EXPECT_EQ(sub, target->getAsCompound());
    EXPECT_EQ(source, sub->getAsNode());
    EXPECT_EQ(&net, target->getContainer());
    target->setNodeTypeName(target->getNodeTypeName() + 2);
    EXPECT_STREQ("ur", target->getNodeTypeName());
    EXPECT_STREQ("Blur", source->getNodeTypeName());
}

TEST(Node, ReleasesCompoundThenOutputsThenInputs)
{
    TestNetwork net;
    AddRefWrapper<Compound> sub = net.addCompound("Top", "Sub");
    sub->getAsNode()->inputs().add(TestPort::make("1 "));
    sub->getAsNode()->outputs().add(TestPort::make("2 "));
    sub->innerInputs().add(TestPort::make("3 "));
    sub->innerOutputs().add(TestPort::make("4 "));
    net.addNode("Top.Sub", "Inside")->inputs().add(TestPort::make("5 "));
    TestPort::lastWords = "";
    sub = nullptr;
    net.compound()->removeNode("Sub");
    EXPECT_EQ("5 4 3 2 1 ", TestPort::lastWords) << "and the compound its nodes first";
}

TEST(Node, WhatOutlivesItsOwnerLosesThePointerToIt)
{
    TestNetwork net;
    const AddRefWrapper<Port> port = TestPort::make("P");
    const AddRefWrapper<Port> innerPort = TestPort::make("I");
    const AddRefWrapper<Port> out = net.root->outputs().addPort("O", nullptr);
    const AddRefWrapper<Node> node = net.addNode("Top", "Inside");
    AddRefWrapper<Compound> compound = net.compound();
    AddRefWrapper<PortList> list(&net.root->inputs());
    list->add(port);
    compound->innerInputs().add(innerPort);
    const AddRefWrapper<Port> innerOut = compound->innerOutputs().addPort("J", nullptr);
    net.questions.take();
    net.root = nullptr;
    EXPECT_TRUE(!port->getParent() && !list->getParent() && !compound->getAsNode());
    EXPECT_TRUE(!out->getParent() && out->getRefCount() == 1);
    EXPECT_EQ("Inside", pathOf(node));
    EXPECT_EQ(2, port->getRefCount()) << "the list holds it as before";
    compound = nullptr;
    EXPECT_TRUE(!innerPort->getParent() && !innerOut->getParent() && !node->getParentCompound());
    list = nullptr;
    EXPECT_EQ(3, port->getRefCount() + innerPort->getRefCount() + node->getRefCount());
    EXPECT_EQ("", net.questions.take()) << "nobody was asked";
}

TEST(NodeList, LookupsFindTheFirstOrNothing)
{
    TestNetwork net;
    const AddRefWrapper<Node> first = net.addNode("Top", "N");
    net.addNode("Top", "N");
    NodeList& nodes = net.compound()->nodes();
    EXPECT_TRUE(nodes["N"] == first && nodes[0] == first && nodes[1] != first);
    for (NodeArg node : {nodes[-1], nodes[2], nodes["n"], nodes[static_cast<const char*>(nullptr)]})
        EXPECT_EQ(nullptr, node);
}

TEST(NodeList, AddSetsTheCompoundThenAsksAndARefusalSetsItBack)
{
    TestNetwork net;
    const AddRefWrapper<Compound> sub = net.addCompound("Top", "Sub");
    const AddRefWrapper<Node> node = net.addNode("Top", "N");
    net.questions.during = [&] { EXPECT_EQ(sub, node->getParentCompound()); };
    net.questions.refused = "add";
    EXPECT_FALSE(sub->nodes().add(node));
    EXPECT_EQ(net.compound(), node->getParentCompound());
    EXPECT_EQ(0, sub->nodes().size());
    net.questions.refused = "";
    EXPECT_TRUE(sub->nodes().add(node) && sub->nodes().add(node)) << "doubles are not checked";
    EXPECT_EQ("Sub{}: add node N; Sub{}: add node N; Sub{}: add node N", net.questions.take());
    EXPECT_EQ(4, node->getRefCount());
    EXPECT_FALSE(sub->nodes().add(nullptr));
}

TEST(NodeList, RemoveAsksThenDisconnectsTheOthersThenTakesTheFirstPlace)
{
    TestNetwork net;
    const AddRefWrapper<Node> a = net.addNode("Top", "A", "In", "Out");
    const AddRefWrapper<Node> b = net.addNode("Top", "B", "In", "Out");
    net.connect("Top.A.Out", "Top.B.In");
    net.connect("Top.B.Out", "Top.A.In");
    NodeList& nodes = net.compound()->nodes();
    nodes.add(a);
    net.questions.take();
    net.questions.refused = "remove node";
    EXPECT_FALSE(nodes.remove(a));
    EXPECT_EQ("Top{}: remove node A", net.questions.take());
    EXPECT_TRUE(b->inputs()[0]->isConnected() && nodes.size() == 3);
    net.questions.refused = "";
    EXPECT_TRUE(nodes.remove(a));
    EXPECT_EQ("Top{}: remove node A; A: forget me", net.questions.take());
    EXPECT_TRUE(nodes[0] == b && nodes[1] == a);
    EXPECT_FALSE(b->inputs()[0]->isConnected() || b->outputs()[0]->isConnected());
    EXPECT_TRUE(a->inputs()[0]->isConnected() && a->outputs()[0]->isConnected()) << "its own stay";
    EXPECT_TRUE(nodes.remove(a) && a->getRefCount() == 1);
    EXPECT_EQ(net.compound(), a->getParentCompound()) << "kept";
    net.questions.take();
    EXPECT_EQ("", printed([&] { EXPECT_FALSE(nodes.remove(a)); }));
    EXPECT_EQ("", net.questions.take());
}

TEST(NodeList, CopiesShareTheNodesButNotTheCompound)
{
    TestNetwork net;
    const AddRefWrapper<Node> node = net.addNode("Top", "N");
    const AddRefWrapper<Compound> sub = net.addCompound("Top", "Sub");
    const AddRefWrapper<NodeList> copy(new NodeList(net.compound()->nodes()));
    sub->nodes() = *copy;
    EXPECT_EQ(4, node->getRefCount());
    EXPECT_EQ(nullptr, copy->getParentCompound());
    EXPECT_EQ(sub, sub->nodes().getParentCompound()) << "the target's own";
    EXPECT_EQ(net.compound(), node->getParentCompound());
    EXPECT_FALSE(copy->add(node) || copy->remove(node)) << "there is nobody to ask";
    EXPECT_EQ(2, copy->size());
    copy->setParentCompound(sub.get());
    EXPECT_TRUE(node->getParentCompound() == sub && sub->getAsNode()->getParentCompound() == sub);
    copy->setParentCompound(net.compound().get());
    sub->nodes() = *NodeList::createNew();
    EXPECT_EQ(3, node->getRefCount());
}

TEST(NodeList, CompoundMayChangeTheListInItsQuestions)
{
    const int before = Live::count;
    TestNetwork net;
    net.addNode("Top", "A");
    net.addNode("Top", "B");
    const AddRefWrapper<Node> c = net.addNode("Top", "C");
    NodeList& nodes = net.compound()->nodes();
    net.questions.during = [&] { nodes.remove(nodes[0]); };
    EXPECT_TRUE(nodes.remove(*(nodes.end() - 1))); // The wrapper lies in the list.
    EXPECT_EQ(1, c->getRefCount());
    EXPECT_STREQ("B", nodes[0]->getName());
    EXPECT_EQ(1, nodes.size());
    net.questions.during = [&] { net.root = nullptr; };
    nodes.remove(nodes[0]);
    EXPECT_EQ(before + 1, Live::count) << "all but C died in the question";
}

} // namespace
} // namespace ZEL
