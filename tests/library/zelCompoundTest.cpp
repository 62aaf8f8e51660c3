#include "zelTestNetwork.h"

#include <gtest/gtest.h>

namespace ZEL {
namespace {

/// A compound "Sub" in "Top" with the inputs a b and the outputs c d.
struct CompoundTest : testing::Test {
    TestNetwork net;
    AddRefWrapper<Compound> sub = net.addCompound("Top", "Sub", "a b", "c d");
    AddRefWrapper<Node> owner = sub->getAsNode();
    AddRefWrapper<PortDataType> type = PortDataType::createNew("Float");
};

TEST_F(CompoundTest, NewCompoundBelongsToItsNode)
{
    const AddRefWrapper<Node> node = Node::createNew(&net, "N");
    const AddRefWrapper<Compound> compound = Compound::createNew(node, nullptr);
    EXPECT_EQ(2, compound->getRefCount()) << "the node and the wrapper";
    EXPECT_EQ(1, node->getRefCount()) << "its compound does not hold it";
    EXPECT_TRUE(node->isCompound() && node->getAsCompound() == compound);
    EXPECT_EQ(compound, compound->nodes().getParentCompound());
    EXPECT_EQ(compound, compound->innerInputs().addPort("I", type)->getParentCompound());
    EXPECT_EQ(compound, compound->innerOutputs().addPort("O", type)->getParentCompound());
    node->setOwnedCompound(nullptr);
    EXPECT_EQ(1, compound->getRefCount());
}

TEST_F(CompoundTest, NameIsTheOwnersAndHooksAnswerNothing)
{
    Compound& compound = *Compound::createNew(owner, "X");
    EXPECT_STREQ("X", owner->getName());
    Namable& name = compound;
    name.setName("Y");
    name.appendString("tail, which does not reach the owner");
    EXPECT_EQ("Y Y", owner->getName() + (" " + std::string(name.getName())));
    EXPECT_TRUE(compound.onNodeAdd(owner) && compound.onNodeRemove(owner));
    EXPECT_TRUE(!compound.createNodeFromPreset("preset") && !compound.createNewCompound("New"));
    EXPECT_TRUE(!compound.saveAs("file") && compound.createLinkedPort("a", "b", type) == 0);
    EXPECT_STREQ("Compound", compound.getSpecializedCompoundTypeName());
}

TEST_F(CompoundTest, AssignmentSharesTheListsWhichKeepTheirMaker)
{
    const AddRefWrapper<Node> node = Node::createNew(&net, "N");
    const AddRefWrapper<Compound> target = Compound::createNew(node, nullptr);
    EXPECT_EQ(target.get(), &(*target = *sub));
    EXPECT_EQ(&sub->innerInputs(), &target->innerInputs());
    EXPECT_EQ(&sub->innerOutputs(), &target->innerOutputs());
    EXPECT_EQ(&sub->nodes(), &target->nodes());
    EXPECT_EQ(sub.get(), target->innerInputs().getParent());
    EXPECT_EQ(owner, target->getAsNode());
    EXPECT_STREQ("Sub", node->getName()) << "the name went to the owner it had";
}

TEST_F(CompoundTest, CreatedPortsStandOnBothSidesCrossed)
{
    EXPECT_EQ(2, sub->createCompoundPort(PortInput, "in", type));
    EXPECT_EQ("Sub: add in to a b; Sub{}: add in to a b", net.questions.take());
    EXPECT_EQ(2, sub->createCompoundPort(static_cast<PortIOType>(7), "out", type));
    EXPECT_EQ("a b in, a b in", names(owner->inputs()) + ", " + names(sub->innerInputs()));
    EXPECT_EQ("c d out, c d out", names(owner->outputs()) + ", " + names(sub->innerOutputs()));
    const AddRefWrapper<Port> in = sub->innerInputs()[2];
    const AddRefWrapper<Port> out = sub->innerOutputs()[2];
    EXPECT_TRUE(in->getPortIOType() == PortOutput && out->getPortIOType() == PortInput);
    EXPECT_TRUE(in->getDataType() == type && owner->outputs()[2]->getDataType() == type);
    net.questions.take();
    net.questions.refused = "Sub: add";
    EXPECT_EQ(-1, sub->createCompoundPort(PortInput, "no", type));
    EXPECT_EQ("Sub: add no to a b in", net.questions.take());
    net.questions.refused = "Sub{}: add";
    EXPECT_EQ(3, sub->createCompoundPort(PortInput, "half", type));
    EXPECT_EQ("a b in half, a b in", names(owner->inputs()) + ", " + names(sub->innerInputs()));
}

TEST_F(CompoundTest, DeletedPortGoesFromBothSidesByItsName)
{
    owner->inputs().movePort(1, 0);
    net.questions.take();
    EXPECT_EQ(1, sub->deleteCompoundPort(sub->innerInputs()["b"]));
    EXPECT_EQ("Sub{}: remove b from a b; Sub: remove b from b a", net.questions.take());
    EXPECT_EQ(0, sub->deleteCompoundPort(sub->innerOutputs()["c"]));
    EXPECT_EQ("a, d", names(owner->inputs()) + ", " + names(owner->outputs()));
    EXPECT_EQ(-1, sub->deleteCompoundPort(owner->inputs()["a"])) << "not the node's own";
    EXPECT_EQ(-1, sub->deleteCompoundPort(nullptr));
    sub->innerOutputs()["d"]->setName("renamed");
    EXPECT_EQ(0, sub->deleteCompoundPort(sub->innerOutputs()["renamed"]));
    EXPECT_EQ("d, ", names(owner->outputs()) + ", " + names(sub->innerOutputs()));
}

TEST_F(CompoundTest, RefusedDeletionIsMinusOneUnlessTheNodeAloneRefuses)
{
    net.questions.refused = "Sub{}: remove";
    EXPECT_EQ(-1, sub->deleteCompoundPort(sub->innerInputs()["a"]));
    EXPECT_EQ(-1, sub->deleteCompoundPort(sub->innerOutputs()["c"]));
    EXPECT_EQ("Sub{}: remove a from a b; Sub{}: remove c from c d", net.questions.take());
    sub->innerOutputs().add(sub->innerInputs()["a"]);
    net.questions.refused = "from a b";
    EXPECT_EQ(2, sub->deleteCompoundPort(sub->innerInputs()["a"])) << "then from the other list";
    net.questions.refused = "Sub: remove";
    EXPECT_EQ(0, sub->deleteCompoundPort(sub->innerInputs()["a"]));
    EXPECT_EQ("a b, b", names(owner->inputs()) + ", " + names(sub->innerInputs()));
}

TEST_F(CompoundTest, ReversePortStandsAtTheSamePlace)
{
    sub->innerInputs().addPort("e", type);
    sub->innerInputs()[1]->setName("other name");
    const struct {
        const char* name;
        AddRefWrapper<Port> port, reverse;
    } cases[] = {
        {"input", owner->inputs()[1], sub->innerInputs()[1]},
        {"inner input", sub->innerInputs()[1], owner->inputs()[1]},
        {"output", owner->outputs()[0], sub->innerOutputs()[0]},
        {"inner output", sub->innerOutputs()[0], owner->outputs()[0]},
        {"no mirror", sub->innerInputs()[2], nullptr},
        {"of another node", net.addNode("Top", "N", "a")->inputs()[0], nullptr},
        {"empty", nullptr, nullptr},
    };
    for (const auto& row : cases)
        EXPECT_EQ(row.reverse, sub->getReversePort(row.port)) << row.name;
}

TEST_F(CompoundTest, MakeConnectionFindsPortsByNameAndSaysWhatIsMissing)
{
    const AddRefWrapper<Node> node = net.addNode("Top.Sub", "N", "in", "out");
    const struct {
        AddRefWrapper<Node> from;
        const char* outName;
        AddRefWrapper<Node> to;
        const char* inName;
        std::string error;
        const char* connections;
    } cases[] = {
        {nullptr, "out", nullptr, "in", "Missing first node in makeConnection", ""},
        {node, "out", nullptr, "in", "Missing second node in makeConnection", ""},
        {node, "in", owner, "none", "Can't find port in on N in makeConnection", ""},
        {owner, "c", node, "in", "Can't find port c on Sub in makeConnection", ""},
        {owner, "a", owner, "b", "Can't find port b on Sub in makeConnection", ""},
        {node, "out", node, "out", "Can't find port out on N in makeConnection", ""},
        {owner, "a", node, "in", "", "Top.Sub.a > Top.Sub.N.in\n"},
        {node, "out", owner, "c", "", "Top.Sub.N.out > Top.Sub.c\n"},
        {owner, "b", owner, "d", "", "Top.Sub.b > Top.Sub.d\n"},
        {node, "out", node, "in", "", "Top.Sub.N.out > Top.Sub.N.in\n"},
    };
    for (const auto& row : cases) {
        const StatusStr status = sub->makeConnection(row.from, row.outName, row.to, row.inName);
        EXPECT_EQ(!row.error.empty(), !status);
        EXPECT_EQ(row.error, status.getErrorString());
        EXPECT_EQ(row.connections, text(*sub));
        for (Port* port :
             {sub->innerInputs()[0].get(), sub->innerInputs()[1].get(), node->outputs()[0].get()})
            port->removeAllConnections();
    }
    net.questions.refused = "connect";
    EXPECT_FALSE(!sub->makeConnection(owner, "a", owner, "c")) << "success although refused";
    EXPECT_EQ("", text(*sub));
}

TEST_F(CompoundTest, RemoveNodeAnswersTheFirstOfThatName)
{
    const AddRefWrapper<Node> first = net.addNode("Top.Sub", "N");
    net.addNode("Top.Sub", "N");
    net.questions.refused = "remove node";
    EXPECT_EQ(nullptr, sub->removeNode("N"));
    net.questions.refused = "";
    EXPECT_TRUE(!sub->removeNode("M") && !sub->removeNode(nullptr));
    EXPECT_EQ(first, sub->removeNode("N"));
    EXPECT_EQ(1, sub->nodes().size());
}

TEST_F(CompoundTest, CompoundWithoutAnOwnerFindsAndChangesNothing)
{
    const AddRefWrapper<Port> inner = sub->innerInputs()[0];
    net.compound()->removeNode("Sub");
    owner = nullptr;
    sub->setName("name");
    EXPECT_STREQ("", sub->getName());
    EXPECT_EQ(nullptr, inner->getParentNode());
    EXPECT_EQ(-1, sub->createCompoundPort(PortInput, "in", type));
    EXPECT_EQ(-1, sub->deleteCompoundPort(inner));
    EXPECT_EQ(nullptr, sub->getReversePort(inner));
    sub->recurse_parent_first([](Node*, void*) { FAIL(); }, nullptr);
    EXPECT_EQ("a b", names(sub->innerInputs()));
}

TEST_F(CompoundTest, MayLoseItsLastReferenceInItsQuestions)
{
    const int before = Live::count;
    const auto drop = [&] { sub = nullptr, owner->setOwnedCompound(nullptr); };
    net.questions.during = drop;
    EXPECT_EQ(2, sub->createCompoundPort(PortInput, "in", type));
    EXPECT_EQ(before - 1, Live::count);
    sub = new TestCompound(net.questions, owner);
    sub->createCompoundPort(PortInput, "last", type);
    net.questions.during = drop;
    net.questions.refused = "remove";
    EXPECT_EQ(-1, sub->deleteCompoundPort(sub->innerInputs()[0]));
    EXPECT_EQ(before - 1, Live::count);
}

} // namespace
} // namespace ZEL
