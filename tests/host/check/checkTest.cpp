#include "check/zelCheck.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using NodePtr = ZEL::AddRefWrapper<ZEL::Node>;
using CompoundPtr = ZEL::AddRefWrapper<ZEL::Compound>;
using PortPtr = ZEL::AddRefWrapper<ZEL::Port>;

/// Of the library's own classes, which refuse nothing: Top with A (In, Out), B (In, Out) and the
/// compound C (X, Y), A.Out > B.In.
struct Network {
    Network()
    {
        a = add("A");
        b = add("B");
        const NodePtr node = ZEL::Node::createNew(nullptr, "C");
        inner = ZEL::Compound::createNew(node, nullptr);
        inner->createCompoundPort(ZEL::PortInput, "X", type);
        inner->createCompoundPort(ZEL::PortOutput, "Y", type);
        top->nodes().add(node);
        a->outputs()["Out"]->addConnection(b->inputs()["In"]);
    }

    NodePtr add(const char* name) const
    {
        NodePtr node = ZEL::Node::createNew(nullptr, name);
        node->inputs().addPort("In", type);
        node->outputs().addPort("Out", type);
        top->nodes().add(node);
        return node;
    }

    std::string findings() const
    {
        std::string text;
        for (const zelCheck::Finding& finding : zelCheck::checkNetwork(root))
            text += zelCheck::findingText(finding) + "\n";
        return text;
    }

    ZEL::AddRefWrapper<ZEL::PortDataType> type = ZEL::PortDataType::createNew("t");
    NodePtr root = ZEL::Node::createNew(nullptr, "Top");
    CompoundPtr top = ZEL::Compound::createNew(root, nullptr);
    NodePtr a;
    NodePtr b;
    CompoundPtr inner;
    PortPtr removed;
};

struct CheckCase {
    const char* name;
    void (*damage)(Network& net);
    const char* findings;
};

const CheckCase kCheckCases[] = {
    {"sound", [](Network&) {}, ""},
    {"one type, two objects: sound",
     [](Network& net) { net.b->inputs()["In"]->setDataType(ZEL::PortDataType::createNew("t")); },
     ""},
    {"a receiver that forgot",
     [](Network& net) {
         net.b->inputs()["In"]->removeFromConnectedList(net.a->outputs()["Out"].get());
     },
     "Top.A.Out: Top.B.In does not know of the connection\n"},
    {"a sender that forgot",
     [](Network& net) {
         net.a->outputs()["Out"]->removeFromConnectedList(net.b->inputs()["In"].get());
     },
     "Top.B.In: Top.A.Out does not know of the connection\n"},
    {"a port that was taken out connected",
     [](Network& net) {
         net.removed = net.a->outputs()["Out"];
         net.a->outputs().remove(net.removed);
     },
     "Top.B.In: connected to a port that is not in the network\n"},
    {"two sources",
     [](Network& net) { net.b->inputs()["In"]->addConnection(net.b->outputs()["Out"]); },
     "Top.B.In: 2 sources\nTop.B.Out: what it gives comes from itself\n"},
    {"a cycle through a compound",
     [](Network& net) {
         const NodePtr d = ZEL::Node::createNew(nullptr, "D");
         net.inner->nodes().add(d);
         d->inputs().addPort("In", net.type)->addConnection(net.inner->innerInputs()["X"]);
         net.inner->innerOutputs()["Y"]->addConnection(d->outputs().addPort("Out", net.type));
         net.b->outputs()["Out"]->addConnection(net.inner->getAsNode()->inputs()["X"]);
         net.a->inputs()["In"]->addConnection(net.inner->getAsNode()->outputs()["Y"]);
     },
     "Top.A.Out: what it gives comes from itself\n"},
    {"two ways to one source: sound",
     [](Network& net) {
         net.b->inputs().addPort("In2", net.type)->addConnection(net.a->outputs()["Out"]);
     },
     ""},
    {"an inner output with two sources",
     [](Network& net) {
         const NodePtr d = ZEL::Node::createNew(nullptr, "D");
         net.inner->nodes().add(d);
         const PortPtr target = net.inner->innerOutputs()["Y"];
         target->addConnection(d->outputs().addPort("P", net.type));
         target->addConnection(d->outputs().addPort("Q", net.type));
     },
     "Top.C.Y: 2 sources\n"},
    {"types",
     [](Network& net) { net.b->inputs()["In"]->setDataType(ZEL::PortDataType::createNew("s")); },
     "Top.A.Out: is \"t\", feeds Top.B.In, which is \"s\"\n"},
    {"no type at one end", [](Network& net) { net.a->outputs()["Out"]->setDataType(nullptr); },
     "Top.A.Out: is \"\", feeds Top.B.In, which is \"t\"\n"},
    {"an inner port is missing",
     [](Network& net) { net.inner->innerInputs().remove(net.inner->innerInputs()["X"]); },
     "Top.C: 1 inputs, but 0 inner inputs\n"},
    {"an inner port of another name and type",
     [](Network& net) {
         net.inner->innerInputs()["X"]->setName("Z");
         net.inner->innerOutputs()["Y"]->setDataType(ZEL::PortDataType::createNew("s"));
     },
     "Top.C.X: the inner input at its place is called \"Z\"\n"
     "Top.C.Y: is \"t\", its inner output is \"s\"\n"},
    {"siblings of one name", [](Network& net) { net.b->setName("A"); },
     "Top.A: several siblings have this name\n"},
    {"ports of one name", [](Network& net) { net.a->inputs().addPort("In", net.type); },
     "Top.A.In: several siblings have this name\n"},
    {"an input and an output of one name are told apart: sound",
     [](Network& net) { net.a->inputs().addPort("Out", net.type); }, ""},
    {"a dot, and no name",
     [](Network& net) {
         net.a->setName("A.A");
         net.b->outputs()["Out"]->setName("");
     },
     "Top.A.A: no path reaches a name with a \".\" in it\nTop.B.: no path reaches an empty name\n"},
    {"a node in two places", [](Network& net) { net.inner->nodes().add(net.a); },
     "Top.A: the node's compound is another one\nTop.C.A: the node stands in two places\n"},
    {"a port's parent", [](Network& net) { net.a->inputs()["In"]->setParent(net.b.get()); },
     "Top.A.In: the port's parent is another one\n"},
};

TEST(Check, FindsWhatIsWrong)
{
    for (const CheckCase& c : kCheckCases) {
        SCOPED_TRACE(c.name);
        Network net;
        c.damage(net);
        EXPECT_EQ(c.findings, net.findings());
    }
}

TEST(Check, HasNoFindingWithoutANetwork)
{
    EXPECT_TRUE(zelCheck::checkNetwork(NodePtr()).empty());
}

} // namespace
