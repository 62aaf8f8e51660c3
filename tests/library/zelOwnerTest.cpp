// Links upward: whom a port, a node and a compound find above them, whatever their classes derive
// from, while their owners die, and when a former owner is dead.

#include "zelTestNetwork.h"

#include <cstring>

namespace ZEL {
namespace {

using NodePtr = AddRefWrapper<Node>;
using PortPtr = AddRefWrapper<Port>;
using CompoundPtr = AddRefWrapper<Compound>;

/// A listener of its own kind, for classes that have it as a base beside Node or Compound. It may
/// take a port in its constructor, when the object is no node yet.
struct Plugged : TestListener {
    explicit Plugged(Port* first = nullptr) : TestListener(none)
    {
        if (first)
            first->setParent(this);
    }
    inline static Questions none;
};

struct PluggedNode : Node, Plugged {
    PluggedNode() : Node(nullptr) {}
    using Node::operator=;
};
struct NodeBehindPlug : Plugged, Node {
    explicit NodeBehindPlug(Port* first = nullptr) : Plugged(first), Node(nullptr) {}
    using Node::operator=;
};
struct PluggedCompound : Plugged, Compound {
    explicit PluggedCompound(const NodePtr& owner, Port* first = nullptr)
        : Plugged(first),
          Compound(owner)
    {
    }
    using Compound::operator=;
};
struct NodeAndCompound : Node, Compound {
    explicit NodeAndCompound(const NodePtr& owner) : Node(nullptr), Compound(owner) {}
};

/// What a port says of its parent: the node, the compound, and whether it is an inner port.
void expectParents(Port& port, const Node* node, const Compound* compound)
{
    EXPECT_EQ(node, port.getParentNode());
    EXPECT_EQ(compound, port.getParentCompound());
    EXPECT_EQ(compound != nullptr, port.isCompoundInternalPort());
}

TEST(PortOwner, IsFoundByTheClassOfTheObjectThroughAnyOfItsBases)
{
    const PortPtr port = Port::createNew("port", PortInput);
    const PortPtr early = Port::createNew("early", PortInput);

    const AddRefWrapper<PluggedNode> node(new PluggedNode);
    port->setParent(static_cast<Plugged*>(node.get()));
    expectParents(*port, node.get(), nullptr);
    expectParents(*node->inputs().addPort("own", nullptr), node.get(), nullptr);
    PortList list;
    list.setParent(static_cast<Plugged*>(node.get()));
    ASSERT_TRUE(list.add(port));
    expectParents(*list[0], node.get(), nullptr);
    list.remove(port);

    const AddRefWrapper<NodeBehindPlug> behind(new NodeBehindPlug(early.get()));
    expectParents(*early, behind.get(), nullptr);
    EXPECT_EQ(static_cast<Plugged*>(behind.get()), early->getParent());
    port->setParent(static_cast<Node*>(behind.get()));
    expectParents(*port, behind.get(), nullptr);

    const NodePtr owner = Node::createNew(nullptr, "owner");
    const AddRefWrapper<PluggedCompound> compound(new PluggedCompound(owner, early.get()));
    expectParents(*early, owner.get(), compound.get());
    port->setParent(static_cast<Compound*>(compound.get()));
    expectParents(*port, owner.get(), compound.get());
    expectParents(*compound->innerInputs().addPort("own", nullptr), owner.get(), compound.get());

    Plugged plain;
    port->setParent(&plain);
    expectParents(*port, nullptr, nullptr);
    port->setParent(nullptr);
    expectParents(*port, nullptr, nullptr);
    early->setParent(nullptr);
}

TEST(PortOwner, MayBeNodeAndCompoundAtOnce)
{
    const NodePtr owner = Node::createNew(nullptr, "owner");
    NodeAndCompound both(owner); // Each base has a count of its own; no wrapper is the last one.
    static_cast<Node&>(both).addRef();
    static_cast<Compound&>(both).addRef();
    for (const PortPtr& port :
         {both.inputs().addPort("in", nullptr), both.innerInputs().addPort("inner", nullptr)})
        expectParents(*port, &both, &both);
    owner->setOwnedCompound(nullptr);
}

TEST(PortOwner, DecidesWhoSendsWhenItHasSeveralBases)
{
    const NodePtr owner = Node::createNew(nullptr, "owner");
    const AddRefWrapper<PluggedCompound> compound(new PluggedCompound(owner));
    const PortPtr inner = Port::createNew("inner", PortOutput);
    inner->setParent(static_cast<Plugged*>(compound.get()));
    const AddRefWrapper<PluggedNode> node(new PluggedNode);
    const PortPtr input = Port::createNew("input", PortInput);
    input->setParent(static_cast<Plugged*>(node.get()));
    EXPECT_TRUE(input->addConnection(inner));
    EXPECT_STREQ("listener.input", input->getFullPathName().getName());
    EXPECT_TRUE(inner->removeConnection(input));
}

/// Nodes that are asked about connections, disconnections, or both, some of them by a class further
/// down than the one that makes the ports.
struct AskedNode : Node {
    AskedNode() : Node(nullptr) {}
    using Node::operator=;
    bool note(const char* question)
    {
        asked += question;
        return true;
    }
    std::string asked;
};
struct MakesPorts : AskedNode {
    MakesPorts()
    {
        inputs().addPort("in", nullptr);
        outputs().addPort("out", nullptr);
    }
    using Node::operator=;
};
template <class Base>
struct AskedToAdd : Base {
    using Base::operator=;
    bool onPortAddConnection(PortArg, PortArg) override { return this->note("add "); }
};
template <class Base>
struct AskedToRemove : Base {
    using Base::operator=;
    bool onPortRemoveConnection(PortArg, PortArg) override { return this->note("remove "); }
};
/// No class of its own has an answer to a question of connections.
template <class Base>
struct NotAsked : Base {
    using Base::operator=;
    bool onPortSetName(PortArg, const char*) override { return true; }
};

TEST(PortOwner, IsAskedByTheClassOfTheWholeObjectWhenItMakesItsPortsItself)
{
    const struct {
        AddRefWrapper<AskedNode> node;
        const char* asked;
    } cases[] = {
        {new AskedNode, ""},
        {new MakesPorts, ""},
        {new NotAsked<AskedNode>, ""},
        {new AskedToAdd<AskedNode>, "add add "},
        {new AskedToRemove<AskedNode>, "remove remove "},
        {new AskedToAdd<MakesPorts>, "add add "},
        {new AskedToRemove<MakesPorts>, "remove remove "},
        {new AskedToRemove<AskedToAdd<MakesPorts>>, "add remove add remove "},
        {new NotAsked<AskedToAdd<NotAsked<MakesPorts>>>, "add add "},
        {new NotAsked<AskedToRemove<AskedToAdd<AskedNode>>>, "add remove add remove "},
        {new MakesPorts, ""},
    };
    for (const auto& row : cases) {
        if (row.node->inputs().size() == 0) {
            row.node->inputs().addPort("in", nullptr);
            row.node->outputs().addPort("out", nullptr);
        }
        const PortPtr in = row.node->inputs()[0];
        const PortPtr out = row.node->outputs()[0];
        EXPECT_TRUE(in->addConnection(out) && in->removeConnection(out));
        EXPECT_TRUE(out->addConnection(in) && out->removeConnection(in));
        EXPECT_EQ(row.asked, row.node->asked) << &row - cases;
        // Given to another parent, it asks that one; and given back, the first again.
        row.node->asked = "";
        Plugged plain;
        out->setParent(&plain);
        EXPECT_TRUE(out->addConnection(in) && out->removeConnection(in));
        EXPECT_EQ("", row.node->asked);
        out->setParent(static_cast<Node*>(row.node.get()));
        EXPECT_TRUE(out->addConnection(in) && out->removeConnection(in));
        EXPECT_TRUE(in->addConnection(out) && in->removeConnection(out));
        EXPECT_EQ(row.asked, row.node->asked) << &row - cases;
    }
}

TEST(PortOwner, IsAskedByTheNodeThatTookThePortWhenItIsTwoNodesAtOnce)
{
    struct Twin : NotAsked<AskedNode>, AskedToRemove<AskedToAdd<AskedNode>> {
        using NotAsked<AskedNode>::operator=;
    };
    auto* const twin = new Twin; // Each base has a count of its own.
    const AddRefWrapper<NotAsked<AskedNode>> agreeing(twin);
    AskedToRemove<AskedToAdd<AskedNode>>& asked = *twin;
    asked.addRef();
    const PortPtr in = Port::createNew("in", PortInput);
    const PortPtr free = agreeing->outputs().addPort("free", nullptr);
    const PortPtr out = asked.outputs().addPort("out", nullptr);
    EXPECT_TRUE(in->addConnection(free) && in->removeConnection(free));
    EXPECT_TRUE(in->addConnection(out) && in->removeConnection(out));
    EXPECT_EQ("", agreeing->asked);
    EXPECT_EQ("add remove ", asked.asked);
}

/// Writes down what its objects find when they die.
struct LastWords {
    inline static std::string text;
    static void say(const std::string& word) { text += word + "; "; }
    static std::string take() { return std::exchange(text, ""); }
};

struct DyingPort : Port {
    DyingPort(const char* name, PortIOType ioType) : Port(name, ioType) {}
    using Port::operator=;
    ~DyingPort() override
    {
        const NodePtr node = getParentNode();
        LastWords::say(std::string(getFullPathName().getName()) + " of " +
                       (node ? node->getName() : "-") +
                       (isCompoundInternalPort() ? " inside" : ""));
    }
};

struct DyingNode : Node {
    explicit DyingNode(const char* name) : Node(nullptr)
    {
        Node::setName(name);
        inputs().add(new DyingPort("in", PortInput));
    }
    using Node::operator=;
    ~DyingNode() override
    {
        const CompoundPtr parent = getParentCompound();
        const NodePtr owner = parent ? parent->getAsNode() : nullptr;
        LastWords::say(std::string(getFullPathName().getName()) + " in " +
                       (parent ? parent->getName() : "-") + " of " +
                       (owner ? owner->getFullPathName().getName() : "-"));
    }
};

struct DyingCompound : Compound {
    explicit DyingCompound(const NodePtr& owner) : Compound(owner)
    {
        innerInputs().add(new DyingPort("in", PortOutput));
    }
    using Compound::operator=;
    ~DyingCompound() override
    {
        LastWords::say(std::string("compound ") + getName() + " at " +
                       onGetParentFullPathName().getName());
    }
};

/// Top, and in it Box, and in that N.
struct DyingNetwork {
    DyingNetwork()
    {
        const NodePtr box(new DyingNode("Box"));
        compound = new DyingCompound(top);
        boxCompound = new DyingCompound(box);
        compound->nodes().add(box);
        boxCompound->nodes().add(new DyingNode("N"));
        LastWords::take();
    }
    NodePtr top{new DyingNode("Top")};
    CompoundPtr compound;
    CompoundPtr boxCompound;
};

TEST(Owner, IsFoundByAllThatDiesInsideIt)
{
    DyingNetwork net;
    net.boxCompound = nullptr;
    net.compound = nullptr;
    net.top = nullptr;
    EXPECT_EQ("Top in - of -; compound Top at Top; Top.Box in Top of Top; "
              "compound Box at Top.Box; Top.Box.N in Box of Top.Box; "
              "Top.Box.N.in of N; Top.Box.in of Box inside; Top.Box.in of Box; "
              "Top.in of Top inside; Top.in of Top; ",
              LastWords::take());
}

TEST(Owner, IsTakenOffWhatLivesOnAndOnlyAfterTheRestDied)
{
    DyingNetwork net;
    const NodePtr box = net.compound->nodes()["Box"];
    const NodePtr n = net.boxCompound->nodes()["N"];
    const PortPtr in = box->inputs()["in"];
    const PortPtr inner = net.compound->innerInputs()["in"];
    net.top->inputs().add(in); // Stands in two lists, in this one twice.
    net.top->inputs().add(in);
    net.compound->nodes().add(new DyingNode("Z"));
    net.compound = nullptr;
    net.top = nullptr;
    EXPECT_EQ("Top in - of -; compound Top at Top; Top.Z in Top of Top; Top.Z.in of Z; "
              "Top.in of Top; ",
              LastWords::take());
    EXPECT_EQ(nullptr, box->getParentCompound());
    EXPECT_STREQ("Box.N", n->getFullPathName().getName());
    EXPECT_EQ(nullptr, in->getParent());
    EXPECT_EQ(2, in->getRefCount()) << "here and in the list of Box";
    EXPECT_EQ(nullptr, inner->getParent());
    EXPECT_EQ(1, inner->getRefCount());

    net.boxCompound->nodes().remove(n);
    n->setParentCompound(nullptr);
    const CompoundPtr kept = net.boxCompound;
    LastWords::take();
    EXPECT_STREQ("Box", kept->getName());
}

TEST(Owner, MayLetGoOfMoreWhenItsContentDies)
{
    struct Holder : Node {
        Holder() : Node(nullptr) {}
        using Node::operator=;
        ~Holder() override { kept = nullptr; }
        NodePtr kept;
    };
    // The first node to die holds the last one, and the last reference to it but for the list's.
    NodePtr top = Node::createNew(nullptr, "Top");
    Compound::createNew(top, nullptr);
    const AddRefWrapper<Holder> holder(new Holder);
    top->getAsCompound()->nodes().add(holder);
    top->getAsCompound()->nodes().add(new DyingNode("Last"));
    holder->kept = top->getAsCompound()->nodes()["Last"];
    const_cast<AddRefWrapper<Holder>&>(holder) = nullptr;
    LastWords::take();
    top = nullptr;
    EXPECT_EQ("Top.Last in Top of Top; Top.Last.in of Last; ", LastWords::take());
}

/// A compound whose memory stays after its end, filled with a pattern: who writes there is found.
struct Grave : Compound {
    explicit Grave(const NodePtr& owner) : Compound(owner) {}
    using Compound::operator=;
    static void* operator new(std::size_t /*size*/) { return memory; }
    static void operator delete(void* /*place*/) { std::memset(memory, kPattern, sizeof(memory)); }
    static bool isUntouched()
    {
        for (const unsigned char byte : memory) {
            if (byte != kPattern)
                return false;
        }
        return true;
    }
    static constexpr unsigned char kPattern = 0x7f;
    alignas(16) inline static unsigned char memory[256];
};
static_assert(sizeof(Grave) <= sizeof(Grave::memory));

TEST(Owner, ThatIsDeadIsNotLookedAtWhenANodeIsAddedElsewhere)
{
    NodePtr box = Node::createNew(nullptr, "Box");
    AddRefWrapper<Grave> grave(new Grave(box));
    const NodePtr node = Node::createNew(nullptr, "N");
    ASSERT_TRUE(grave->nodes().add(node));
    ASSERT_TRUE(grave->nodes().remove(node)); // Contract: the node keeps its parent compound.
    grave = nullptr;
    box = nullptr;
    ASSERT_TRUE(Grave::isUntouched());
    TestNetwork net;
    net.questions.during = [] { EXPECT_TRUE(Grave::isUntouched()); };
    EXPECT_TRUE(net.compound()->nodes().add(node));
    EXPECT_TRUE(Grave::isUntouched());
    EXPECT_STREQ("Top.N", node->getFullPathName().getName());
}

TEST(Owner, ThatDiesDuringTheQuestionIsNotGivenBackToTheNode)
{
    TestNetwork net;
    const NodePtr box = Node::createNew(nullptr, "Box");
    Compound::createNew(box, nullptr);
    const NodePtr node = Node::createNew(nullptr, "N");
    ASSERT_TRUE(box->getAsCompound()->nodes().add(node));
    net.questions.refused = "add node N";
    net.questions.during = [&] {
        box->getAsCompound()->nodes().remove(node);
        box->setOwnedCompound(nullptr);
    };
    EXPECT_FALSE(net.compound()->nodes().add(node));
    EXPECT_EQ(nullptr, node->getParentCompound());
}

} // namespace
} // namespace ZEL
