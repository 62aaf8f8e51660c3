// A null text counts as an empty one, and nothing is thrown: wherever the library takes a text.

#include "zelTestNetwork.h"

namespace ZEL {
namespace {

TEST(NullText, IsAnEmptyName)
{
    EXPECT_STREQ("", Namable(nullptr).getName());
    EXPECT_STREQ("", NodeDefinition(nullptr).getName());
    EXPECT_STREQ("", NodeDefinition::createNew(nullptr)->getName());
    EXPECT_STREQ("", PortDataType::createNew(nullptr)->getName());
    EXPECT_STREQ("", Port::createNew(nullptr, PortInput)->getName());

    const AddRefWrapper<NodeLibrary> library = NodeLibrary::createNew(nullptr);
    library->addNode(nullptr);
    ASSERT_EQ(1, library->getNumberOfNodes());
    EXPECT_STREQ("", library->getNodeAt(0)->getName());
    EXPECT_EQ(library, library->findLibrary(nullptr)) << "unnamed";
    library->setName("Library");
    EXPECT_EQ(nullptr, library->findLibrary(nullptr));

    const AddRefWrapper<Node> node = Node::createNew(nullptr, nullptr);
    node->setNodeTypeName("type");
    node->setNodeTypeName(nullptr);
    EXPECT_STREQ("", node->getNodeTypeName());
}

TEST(NullText, IsAnEmptyValueKeyAndName)
{
    const AddRefWrapper<Port> port = Port::createNew("port", PortInput);
    port->setPortDefaultValue("1");
    port->setPortDefaultValue(nullptr);
    EXPECT_STREQ("", port->getPortDefaultValue());

    PropertyList list;
    list.addStringPair(nullptr, nullptr);
    EXPECT_STREQ("", list.getStringPairValue(nullptr));
    EXPECT_STREQ("", list.getStringPairValue(""));
    EXPECT_EQ(nullptr, list.getChildList(nullptr));
    PropertyList* const child = list.addChildList(nullptr);
    EXPECT_EQ(child, list.getChildList(nullptr));
}

TEST(NullText, NamesNoRuntimePluginOrDocument)
{
    EXPECT_FALSE(!Host().initialize(nullptr));
    EXPECT_EQ(nullptr, Host().getRuntimeByName(nullptr));
    selfRegisterPlugin(nullptr, nullptr);
    Host().terminate();

    Runtime runtime;
    EXPECT_EQ(nullptr, runtime.getPortDataType(nullptr));
    const AddRefWrapper<PortDataType> type = runtime.createPortDataType(nullptr);
    EXPECT_EQ(type, runtime.getPortDataType(nullptr));
    EXPECT_EQ(nullptr, runtime.findLibrary(nullptr));

    TestNetwork net;
    Container::registerWithUUID(nullptr, &net);
    EXPECT_EQ(nullptr, Container::getFromUUID(nullptr));
    EXPECT_EQ(nullptr, Container::getFromUUID(""));
    EXPECT_EQ(nullptr, net.findNodeFromPath(nullptr));
    EXPECT_EQ(nullptr, net.findPortFromPath(nullptr, PortInput, Container::eSearchNode));
    AddRefWrapper<Port> ends[2];
    EXPECT_FALSE(net.findPortsForConnection(nullptr, nullptr, &ends[0], &ends[1]));
}

TEST(NullText, NamesNothingInACommand)
{
    TestNetwork net;
    Runtime runtime;
    runtime.createPortDataType("Float");
    net.runtime = &runtime;
    net.addCompound("Top", "C", "In");

    CreateCompoundCommand collapse;
    EXPECT_TRUE(collapse.setParentCompound(&net, nullptr)) << "Contract: no node, no failure";
    ASSERT_TRUE(collapse.setParentCompound(&net, "Top"));
    EXPECT_FALSE(collapse.addNodeToMove(nullptr));
    collapse.setNewCompoundName(nullptr);
    ASSERT_TRUE(collapse.doit());
    EXPECT_STREQ("Top.", collapse.getCreatedCompoundPath());

    ModifyCompoundPortCommand modify;
    EXPECT_TRUE(modify.setParentCompound(&net, nullptr));
    ASSERT_TRUE(modify.setParentCompound(&net, "Top.C"));
    EXPECT_FALSE(modify.createPort(PortInput, "Port", nullptr));
    EXPECT_FALSE(modify.deletePort(nullptr));
    EXPECT_FALSE(modify.renamePort(nullptr, "Other"));
    EXPECT_TRUE(modify.createPort(PortInput, nullptr, "Float"));
    EXPECT_TRUE(modify.renamePort("In", nullptr));
    EXPECT_TRUE(modify.doit());
    EXPECT_EQ(2, net.compound("Top.C")->innerInputs().size());
    EXPECT_STREQ("", net.compound("Top.C")->innerInputs()[0]->getName());
    EXPECT_STREQ("", net.compound("Top.C")->innerInputs()[1]->getName());

    const StatusStr missing = net.compound()->makeConnection(net.root, nullptr, net.root, nullptr);
    EXPECT_TRUE(!missing);
    EXPECT_EQ(nullptr, net.compound()->removeNode(nullptr));
}

} // namespace
} // namespace ZEL
