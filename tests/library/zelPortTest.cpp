#include "zelTestNetwork.h"

#include <gtest/gtest.h>

namespace ZEL {
namespace {

/// Top with the inner inputs p q and the inner outputs r s, A (a > aOut), B (b > bOut), and the
/// ports free and freeOut without a parent.
struct PortTest : testing::Test {
    PortTest()
    {
        out = net.addNode("Top", "A", "a", "aOut")->outputs()[0];
        in = net.addNode("Top", "B", "b", "bOut")->inputs()[0];
    }

    AddRefWrapper<Port> find(const std::string& name)
    {
        for (const char* path : {"Top.A.", "Top.B.", "Top."}) {
            if (const AddRefWrapper<Port> port = net.port((path + name).c_str()))
                return port->getParentNode() == net.root ? net.reverseThisExternalPort(port) : port;
        }
        return name == "free" ? free : freeOut;
    }

    void connectOut(std::initializer_list<const char*> others)
    {
        for (const char* name : others)
            out->addConnection(find(name));
        net.questions.take();
    }

    TestNetwork net{"p q", "r s"};
    AddRefWrapper<Port> free = TestPort::make("free");
    AddRefWrapper<Port> freeOut = TestPort::make("freeOut", PortOutput);
    AddRefWrapper<Port> out;
    AddRefWrapper<Port> in;
};

TEST_F(PortTest, OneEndSendsAndItsParentAloneIsAsked)
{
    const struct {
        const char *called, *other;
        bool connects;
        std::string asked, askedToDisconnect;
    } cases[] = {
        // Two nodes.
        {"aOut", "b", true, "A: connect aOut b", "A: disconnect aOut b"},
        {"b", "aOut", true, "A: connect aOut b", "A: disconnect aOut b"},
        {"aOut", "bOut", true, "A: connect aOut bOut", "A: disconnect aOut bOut"},
        {"a", "b", false, "", ""},
        {"a", "a", false, "", ""},
        // A node and the inside of its compound.
        {"p", "b", true, "Top{}: connect p b", "Top{}: disconnect p b"},
        {"b", "p", true, "Top{}: connect p b", "Top{}: disconnect p b"},
        {"r", "aOut", true, "Top{}: connect r aOut", "Top{}: disconnect r aOut"},
        {"aOut", "r", true, "Top{}: connect r aOut", "A: disconnect aOut r"},
        {"aOut", "p", true, "Top{}: connect p aOut", "A: disconnect aOut p"},
        {"r", "b", true, "Top{}: connect r b", "Top{}: disconnect r b"},
        // Two inner ports.
        {"p", "r", true, "Top{}: connect p r", "Top{}: disconnect p r"},
        {"r", "p", true, "Top{}: connect p r", "Top{}: disconnect r p"},
        {"p", "q", false, "", "Top{}: disconnect p q"},
        {"r", "s", false, "", "Top{}: disconnect r s"},
        // No parent.
        {"freeOut", "free", true, "", ""},
        {"free", "aOut", true, "A: connect aOut free", "A: disconnect aOut free"},
        {"free", "b", false, "", ""},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::string(row.called) + " " + row.other);
        const AddRefWrapper<Port> called = find(row.called);
        const AddRefWrapper<Port> other = find(row.other);
        const std::int32_t count = other->getRefCount();
        EXPECT_EQ(row.connects, called->addConnection(other));
        EXPECT_EQ(row.asked, net.questions.take());
        EXPECT_EQ(row.connects ? row.other : "", names(called->connectedTo()));
        EXPECT_EQ(row.connects ? row.called : "", names(other->connectedTo()));
        EXPECT_EQ(count, other->getRefCount()) << "connections hold nothing";
        const std::string shown =
            printed([&] { EXPECT_EQ(row.connects, called->removeConnection(other)); });
        EXPECT_EQ(row.connects || row.askedToDisconnect.empty(), shown.empty());
        EXPECT_EQ(row.askedToDisconnect, net.questions.take());
        EXPECT_FALSE(called->isConnected() || other->isConnected());
    }
}

TEST_F(PortTest, RefusalAndAnEmptyEndChangeNothing)
{
    net.questions.refused = "connect";
    EXPECT_FALSE(in->addConnection(out) || in->isConnected() || out->isConnected());
    net.questions.refused = "disconnect";
    EXPECT_TRUE(in->addConnection(out));
    EXPECT_FALSE(in->removeConnection(out));
    EXPECT_FALSE(out->addConnection(nullptr) || in->addConnection(nullptr));
    EXPECT_FALSE(out->removeConnection(nullptr) || in->removeConnection(nullptr));
    EXPECT_EQ("Top.A.aOut > Top.B.b\n", net.text());
    EXPECT_EQ("A: connect aOut b; A: connect aOut b; A: disconnect aOut b", net.questions.take());
}

TEST_F(PortTest, DoublesStayAndGoTogether)
{
    connectOut({"b", "bOut", "b"});
    EXPECT_EQ("b bOut b, aOut aOut", names(out->connectedTo()) + ", " + names(in->connectedTo()));
    EXPECT_TRUE(in->removeConnection(out));
    EXPECT_EQ("A: disconnect aOut b", net.questions.take()) << "one question for both";
    EXPECT_EQ("bOut, ", names(out->connectedTo()) + ", " + names(in->connectedTo()));
}

TEST_F(PortTest, RemovingAMissingConnectionPrintsThePathOfTheOneNotFound)
{
    const std::string line = "ZEL::did not find a connection to remove to Top.";
    EXPECT_EQ(line + "B.b\n", printed([&] { EXPECT_FALSE(in->removeConnection(out)); }));
    out->connectedTo().add(in);
    EXPECT_EQ(line + "A.aOut\n", printed([&] { EXPECT_FALSE(out->removeConnection(in)); }));
    EXPECT_FALSE(out->isConnected()) << "the half that was there is gone";
}

TEST_F(PortTest, RemoveAllConnectionsGoesFromTheLastToTheFirst)
{
    connectOut({"b", "r", "b", "free", "s"});
    net.questions.refused = "aOut r";
    out->removeAllConnections();
    EXPECT_EQ("A: disconnect aOut s; A: disconnect aOut free; A: disconnect aOut b; "
              "A: disconnect aOut r",
              net.questions.take());
    EXPECT_EQ("r", names(out->connectedTo())) << "refused";
    net.questions.refused = "";
    connectOut({"b", "s"});
    net.questions.during = [&] { out->removeAllConnections(); };
    printed([&] { out->removeAllConnections(); });
    EXPECT_EQ("", net.text());
}

TEST_F(PortTest, OtherEndsForgetAPortUnaskedAndItsOwnListStays)
{
    connectOut({"b", "r", "b"});
    out->onParentNodeDeleted();
    EXPECT_FALSE(in->isConnected() || find("r")->isConnected());
    EXPECT_EQ("b r b", names(out->connectedTo()));
    freeOut->addConnection(freeOut);
    freeOut->addConnection(free);
    freeOut->onParentNodeDeleted();
    EXPECT_EQ("free", names(freeOut->connectedTo())) << "connected to itself";
    EXPECT_FALSE(free->isConnected());
    EXPECT_EQ("", net.questions.take());
}

TEST_F(PortTest, SettersAskFirstTypeAlwaysNameWhenItChanges)
{
    const AddRefWrapper<PortDataType> type = PortDataType::createNew("Color");
    EXPECT_TRUE(in->setDataType(type) && in->setDataType(type));
    EXPECT_EQ("B: type b Color; B: type b Color", net.questions.take());
    in->setName(nullptr);
    in->setName("b");
    static_cast<Namable&>(*in) = Namable("blend");
    EXPECT_EQ("B: name b blend", net.questions.take());
    net.questions.during = [&] { in->setName("a name that moves the text of the one before"); };
    in->setName(in->getName() + 1);
    in->setPortDefaultValue("0.25 and a text that fits no small buffer");
    net.questions.during = [&] { in->setPortDefaultValue(""); };
    in->setPortDefaultValue(in->getPortDefaultValue() + 5);
    net.questions.take();
    net.questions.refused = " ";
    EXPECT_FALSE(in->setDataType(nullptr));
    in->setName("refused");
    in->setPortDefaultValue("refused");
    EXPECT_EQ("B: type lend -; B: name lend refused; B: value lend refused", net.questions.take());
    EXPECT_EQ(type, in->getDataType());
    EXPECT_STREQ("lend", in->getName());
    EXPECT_STREQ("and a text that fits no small buffer", in->getPortDefaultValue());
    net.questions.defaultValue = "given";
    EXPECT_EQ(net.questions.defaultValue, in->getPortDefaultValue()) << "by the parent";
    free->setName("freed");
    free->setPortDefaultValue("0.5");
    free->setPortDefaultValue("2");
    EXPECT_TRUE(free->setDataType(type) && free->setDataType(nullptr) && !free->getDataType());
    EXPECT_STREQ("freed", free->getName());
    EXPECT_STREQ("2", free->getPortDefaultValue());
}

TEST_F(PortTest, OwnerIsFoundByTheKindOfTheParent)
{
    TestListener listener(net.questions);
    freeOut->setParent(&listener);
    const struct {
        const char *port, *path, *node;
        AddRefWrapper<Compound> compound;
    } cases[] = {
        {"b", "Top.B.b", "Top.B", nullptr},
        {"p", "Top.p inner", "Top", net.compound()},
        {"r", "Top.r inner", "Top", net.compound()},
        {"free", "free", "-", nullptr},
        {"freeOut", "listener.freeOut", "-", nullptr},
    };
    for (const auto& row : cases) {
        const AddRefWrapper<Port> port = find(row.port);
        EXPECT_EQ(row.path, pathOf(port));
        EXPECT_EQ(row.node, pathOf(port->getParentNode()));
        EXPECT_EQ(row.compound, port->getParentCompound()) << row.port;
    }
}

TEST(Port, NewPortHasNothingButNameAndDirection)
{
    const AddRefWrapper<Port> port = Port::createNew(nullptr, PortOutput);
    EXPECT_TRUE(port->getRefCount() == 1 && port->getPortIOType() == PortOutput);
    EXPECT_EQ("", pathOf(port) + port->getPortDefaultValue());
    EXPECT_TRUE(!port->getParent() && !port->connectedTo().getParent() && !port->getDataType());
    EXPECT_FALSE(port->isPortHidden() || port->isConnected());
    port->hidePort(true);
    EXPECT_TRUE(port->isPortHidden());
}

TEST(Port, KeepsEveryDirectionAListsPortsToo)
{
    constexpr std::int32_t kEdge = 1 << 23;
    for (const std::int32_t number :
         {7, -1, kEdge - 1, kEdge, -kEdge, -kEdge - 1, INT32_MAX, INT32_MIN, 0}) {
        const auto type = static_cast<PortIOType>(number);
        EXPECT_EQ(type, Port::createNew("p", type)->getPortIOType());
        const AddRefWrapper<PortList> list = PortList::createNew();
        for (const PortIOType former : {PortOutput, static_cast<PortIOType>(INT32_MAX), type})
            list->setPortIOType(former);
        const AddRefWrapper<PortList> copy(new PortList(*list));
        PortList assigned;
        assigned = *copy;
        for (PortList* const each : {list.get(), copy.get(), &assigned})
            EXPECT_EQ(type, each->addPort("p", nullptr)->getPortIOType());
    }
}

TEST(Port, MayLoseItsLastReferenceInEveryQuestion)
{
    using Step = void (*)(Port&, Port&);
    const Step steps[] = {
        [](Port& port, Port& other) { port.addConnection(&other); },
        [](Port& port, Port& other) { other.addConnection(&port); },
        [](Port& port, Port& other) { port.removeConnection(&other); },
        [](Port& port, Port& other) { other.removeConnection(&port); },
        [](Port& port, Port&) { port.removeAllConnections(); },
        [](Port& port, Port&) { port.setDataType(PortDataType::createNew("Color")); },
        [](Port& port, Port&) { port.setName("renamed"); },
        [](Port& port, Port&) { port.setPortDefaultValue("1"); },
    };
    for (const Step step : steps) {
        Questions questions;
        const AddRefWrapper<Node> node(new TestNode(questions, nullptr));
        const AddRefWrapper<Port> other = TestPort::make("other");
        AddRefWrapper<Port> port = TestPort::make("port", PortOutput);
        node->outputs().add(port);
        port->addConnection(other);
        const int before = Live::count;
        questions.during = [&] {
            node->outputs().remove(port);
            port = nullptr;
        };
        Port& dying = *port;
        printed([&] { step(dying, *other); });
        EXPECT_EQ(before - 1, Live::count) << "step " << &step - steps;
    }
}

TEST(PortDataType, DiffersWhereAnOverrideDoesNotEqual)
{
    struct Family : PortDataType { // Equal within a family, whatever the name.
        Family(const char* name, int number) : PortDataType(name), family(number) {}
        bool operator==(const PortDataType& other) const override
        {
            const auto* const mine = dynamic_cast<const Family*>(&other);
            return mine && mine->family == family;
        }
        int family;
    };
    const AddRefWrapper<PortDataType> a(new Family("float", 1));
    const AddRefWrapper<PortDataType> b(new Family("half", 1));
    const AddRefWrapper<PortDataType> c(new Family("float", 2));
    EXPECT_TRUE(*a == *b);
    EXPECT_FALSE(*a != *b);
    EXPECT_TRUE(*a != *c);
    EXPECT_FALSE(*a == *c);
}

TEST(PortDataType, EqualsByName)
{
    const AddRefWrapper<PortDataType> type = PortDataType::createNew("Float");
    EXPECT_EQ(1, type->getRefCount());
    EXPECT_TRUE(*type == *PortDataType::createNew("Float"));
    EXPECT_FALSE(*type == *PortDataType::createNew("float"));
    EXPECT_STREQ("", PortDataType::createNew(nullptr)->getName());
}

} // namespace
} // namespace ZEL
