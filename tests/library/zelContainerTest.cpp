#include "zelTestNetwork.h"

#include <gtest/gtest.h>

#include <vector>

namespace ZEL {
namespace {

constexpr auto kNode = Container::eSearchNode;
constexpr auto kBoth = Container::eSearchNodeAndInner;
constexpr auto kOther = static_cast<Container::ESearchMode>(2);

/// Top (in > out) with A (x > x) and the compound Sub (in > out y), which holds Deep (in > out).
struct ContainerTest : testing::Test {
    ContainerTest()
    {
        net.addNode("Top", "A", "x", "x");
        sub = net.addCompound("Top", "Sub", "in", "out y");
        net.addNode("Top.Sub", "Deep", "in", "out");
    }

    TestNetwork net{"in", "out"};
    AddRefWrapper<Compound> sub;
};

TEST(Container, TokenizePathAppendsTheNames)
{
    const struct {
        const char* path;
        std::vector<std::string> names;
    } cases[] = {
        {"", {"before"}},
        {"a", {"before", "a"}},
        {"a.b", {"before", "a", "b"}},
        {".a", {"before", "", "a"}},
        {"a..b", {"before", "a", "", "b"}},
        {"a.", {"before", "a"}},
        {".", {"before", ""}},
    };
    for (const auto& row : cases) {
        std::vector<std::string> names{"before"};
        Container::tokenizePath(row.path, names);
        EXPECT_EQ(row.names, names) << "\"" << row.path << "\"";
    }
}

TEST_F(ContainerTest, NodesAreFoundFromTheRootDown)
{
    const AddRefWrapper<Node> unnamed = net.addNode("Top", "", "x");
    for (const char* path : {"Top", "Top.Sub", "Top.Sub.Deep"})
        EXPECT_EQ(path, pathOf(net.findNodeFromPath(path)));
    EXPECT_EQ(net.root, net.findNodeFromPath("Top."));
    EXPECT_EQ(unnamed, net.findNodeFromPath("Top.."));
    EXPECT_EQ(unnamed->inputs()[0], net.port("Top..x"));
    for (const char* path : {"", "top", "Sub", "Other.Sub", ".Top", "Top.sub", "Top.A.Deep"})
        EXPECT_EQ("-", pathOf(net.findNodeFromPath(path))) << path;
    EXPECT_EQ("-", pathOf(net.findNodeFromPath(nullptr)));
    net.root = nullptr;
    EXPECT_EQ("-", pathOf(net.findNodeFromPath("Top")));
    EXPECT_EQ("-", pathOf(net.findPortFromPath("Top.in", PortInput, kNode)));
}

TEST(Container, ALookupAsksForTheRootNodeOnceUnlessThePathNamesNothing)
{
    struct AskedNetwork : TestNetwork {
        AddRefWrapper<Node> getRootNode() override { return ++asked, root; }
        int asked = 0;
    } net;
    net.root->inputs().addPort("in", nullptr);
    EXPECT_TRUE(net.findNodeFromPath("Top") && net.findPortFromPath("Top.in", PortInput, kNode));
    EXPECT_FALSE(net.findPortFromPath("Top.out", PortInput, kBoth));
    EXPECT_FALSE(net.findNodeFromPath("") || net.findPortFromPath("Top", PortInput, kBoth));
    EXPECT_EQ(3, net.asked);
}

TEST_F(ContainerTest, PortsAreFoundByDirectionAndMode)
{
    const struct {
        const char* path;
        PortIOType ioType;
        Container::ESearchMode mode;
        const char* found;
    } cases[] = {
        {"Top.Sub.in", PortInput, kNode, "Top.Sub.in"},
        {"Top.Sub.in", PortInput, kBoth, "Top.Sub.in"},
        {"Top.Sub.in", PortOutput, kNode, "-"},
        {"Top.Sub.in", PortOutput, kOther, "-"},
        {"Top.Sub.in", PortOutput, kBoth, "Top.Sub.in inner"},
        {"Top.Sub.out", static_cast<PortIOType>(7), kBoth, "Top.Sub.out"},
        {"Top.Sub.out", PortInput, kBoth, "Top.Sub.out inner"},
        {"Top.Sub.both", PortInput, kBoth, "Top.Sub.both"},
        {"Top.A.in", PortInput, kBoth, "-"},
        {"Top.in", PortInput, kNode, "Top.in"},
        {"in", PortInput, kBoth, "-"},
        {"Top", PortInput, kBoth, "-"},
        {"Top.None.in", PortInput, kBoth, "-"},
        {"Other.in", PortInput, kBoth, "-"},
    };
    sub->getAsNode()->inputs().addPort("both", nullptr);
    sub->innerOutputs().addPort("both", nullptr);
    for (const auto& row : cases)
        EXPECT_EQ(row.found, pathOf(net.findPortFromPath(row.path, row.ioType, row.mode)));
    EXPECT_EQ("-", pathOf(net.findPortFromPath(nullptr, PortInput, kBoth)));
}

TEST_F(ContainerTest, EndsOfAConnectionComeOutputFirst)
{
    const std::string bad = "bad set of ports in findPortsForConnection: ";
    const struct {
        const char *pathA, *pathB;
        const char* ends; ///< Empty: the result is false.
        std::string shown;
    } cases[] = {
        {"Top.Sub.out", "Top.Sub.in", "Top.Sub.out, Top.Sub.in", ""},
        {"Top.Sub.in", "Top.Sub.out", "Top.Sub.out, Top.Sub.in", ""},
        {"Top.Sub.in", "Top.A.x", "Top.A.x, Top.Sub.in", ""}, // An output goes before an input x.
        // One direction: seen from inside the compound.
        {"Top.Sub.in", "Top.Sub.Deep.in", "Top.Sub.in inner, Top.Sub.Deep.in", ""},
        {"Top.Sub.Deep.in", "Top.Sub.in", "Top.Sub.in inner, Top.Sub.Deep.in", ""},
        {"Top.Sub.out", "Top.Sub.Deep.out", "Top.Sub.Deep.out, Top.Sub.out inner", ""},
        {"Top.Sub.Deep.out", "Top.Sub.y", "Top.Sub.Deep.out, Top.Sub.y inner", ""},
        // One direction, and neither lies in the other.
        {"Top.A.x", "Top.A.x", "", bad + "Top.A.x and Top.A.x\n"},
        {"Top.in", "Top.Sub.Deep.in", "", bad + "Top.in and Top.Sub.Deep.in\n"},
        {"Top.none", "Top.A.x", "", ""},
        {"Top.A.x", "Top.none", "", ""},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::string(row.pathA) + " " + row.pathB);
        AddRefWrapper<Port> out = TestPort::make("untouched");
        AddRefWrapper<Port> in = out;
        EXPECT_EQ(row.shown, printed([&] {
                      EXPECT_EQ(*row.ends != '\0',
                                net.findPortsForConnection(row.pathA, row.pathB, &out, &in));
                  }));
        EXPECT_EQ(*row.ends ? row.ends : "untouched, untouched", pathOf(out) + ", " + pathOf(in));
    }
}

TEST_F(ContainerTest, EndWithoutAMirrorIsEmptyAndTheResultTrue)
{
    const char* const paths[] = {"Top.Sub.in", "Top.Sub.Deep.in"};
    sub->innerInputs().remove(sub->innerInputs()[0]);
    for (const int first : {0, 1}) {
        AddRefWrapper<Port> out;
        AddRefWrapper<Port> in;
        EXPECT_TRUE(net.findPortsForConnection(paths[first], paths[1 - first], &out, &in));
        EXPECT_EQ("-, Top.Sub.Deep.in", pathOf(out) + ", " + pathOf(in));
    }
}

TEST_F(ContainerTest, ReverseNeedsANodeWithACompound)
{
    EXPECT_EQ(sub->innerInputs()[0], net.reverseThisExternalPort(net.port("Top.Sub.in")));
    for (PortArg port : {net.port("Top.A.x"), TestPort::make("alone"), AddRefWrapper<Port>()})
        EXPECT_EQ(nullptr, net.reverseThisExternalPort(port));
}

TEST(Container, UuidNamesTheContainerRegisteredLast)
{
    TestNetwork first;
    TestNetwork second;
    EXPECT_EQ(nullptr, Container::getFromUUID("1a"));
    Container::registerWithUUID(std::string("1a").c_str(), &second);
    Container::registerWithUUID("1a", &first);
    EXPECT_EQ(nullptr, Container::getFromUUID("1A"));
    Container::registerWithUUID("", &second);
    EXPECT_EQ(&first, Container::getFromUUID("1a"));
    Container::registerWithUUID("1a", nullptr);
    EXPECT_EQ(nullptr, Container::getFromUUID("1a"));
    EXPECT_EQ(&second, Container::getFromUUID(""));
    Container::registerWithUUID("", nullptr);
}

} // namespace
} // namespace ZEL
