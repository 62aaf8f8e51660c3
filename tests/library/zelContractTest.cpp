#include "zelCommands.h"
#include "zelTestNetwork.h"

#include <gtest/gtest.h>

namespace ZEL {
namespace {

TEST(Contract, TextAddedToANameAsksNobody)
{
    TestNetwork net;
    const AddRefWrapper<Port> port = net.addNode("Top", "A", "In")->inputs()[0];
    net.questions.refused = "name";
    port->appendString("1");
    EXPECT_STREQ("In1", port->getName());
    EXPECT_EQ("", net.questions.take());
}

TEST(Contract, APortThatDiesTouchesNobody)
{
    const AddRefWrapper<Port> out = Port::createNew("Out", PortOutput);
    AddRefWrapper<Port> in = Port::createNew("In", PortInput);
    EXPECT_TRUE(out->addConnection(in));
    Port* const dead = in.get();
    in = nullptr;
    EXPECT_EQ(1, out->connectedTo().size()) << "a dead pointer";
    out->removeFromConnectedList(dead); // Compares pointers only.
    EXPECT_FALSE(out->isConnected());
}

TEST(Contract, ASharedNodeListKeepsItsMaker)
{
    TestNetwork net;
    const AddRefWrapper<Compound> maker = net.compound();
    const AddRefWrapper<Node> owner = Node::createNew(&net, "Sub");
    const AddRefWrapper<Compound> target = Compound::createNew(owner, nullptr);
    *target = *maker;
    EXPECT_EQ(maker, target->nodes().getParentCompound());
    net.questions.take();
    EXPECT_TRUE(target->nodes().add(Node::createNew(&net, "N")));
    EXPECT_EQ("Top{}: add node N", net.questions.take()) << "the maker is asked";
}

TEST(Contract, ACompoundLetGoKeepsItsOwner)
{
    TestNetwork net;
    const AddRefWrapper<Compound> compound = net.compound();
    net.root->setOwnedCompound(nullptr);
    EXPECT_EQ(net.root, compound->getAsNode());
    compound->setName("Renamed");
    EXPECT_STREQ("Renamed", net.root->getName());
}

TEST(Contract, UndoOfACollapseLooksNoPathUp)
{
    TestNetwork net;
    TestNetwork other;
    other.root->setOwnedCompound(nullptr); // Its Top has none: looked up there, it would be lost.
    CreateCompoundCommand command;
    EXPECT_TRUE(command.setParentCompound(&net, "Top"));
    ASSERT_TRUE(command.undo(&other) && command.doit());
    EXPECT_STREQ("Compound", net.compound()->nodes()[0]->getName());
}

} // namespace
} // namespace ZEL
