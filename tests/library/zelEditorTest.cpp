#include "zelTestNetwork.h"

#include <gtest/gtest.h>

#include <memory>

namespace ZEL {
namespace {

/// Logs every callback behind its name and runs during once, inside the next. Nothing of it is
/// touched after that: it may die there.
class TestEditor : public HostEditor {
public:
    TestEditor(std::string& log, const char* name) : m_log(log), m_name(name) {}

    void zel_onConnectionChange(ECnxChangeType type, PortArg first, PortArg second) override
    {
        hear("connection", type, pathOf(first) + " " + pathOf(second));
    }
    void zel_onCompoundConnectionChange(ECnxChangeType type, PortArg first, PortArg second) override
    {
        hear("compound connection", type, pathOf(first) + " " + pathOf(second));
    }
    void zel_onCompoundPortChange(ECompoundPortChangeType type, PortArg port) override
    {
        lastWrapper = &port;
        hear("port", type, pathOf(port));
    }
    void zel_onNodeChange(ENodeChangeType type,
                          const AddRefWrapper<Compound>& compound,
                          NodeArg node) override
    {
        lastWrapper = &node;
        hear("node", type, compound->getName() + (" " + pathOf(node)));
    }

    std::function<void()> during;
    const void* lastWrapper = nullptr; ///< The very argument of the last callback.

private:
    void hear(const char* what, int type, const std::string& rest)
    {
        m_log += m_name + ": " + what + " " + std::to_string(type) + " " + rest + "\n";
        if (const std::function<void()> action = std::exchange(during, nullptr))
            action();
    }

    std::string& m_log;
    std::string m_name;
};

/// The editors e1 and e2 are registered with the node A, e3 is not.
struct EditorTest : testing::Test {
    EditorTest()
    {
        a->registerEditor(e1.get());
        a->registerEditor(e2.get());
    }

    std::string take() { return std::exchange(log, ""); }

    /// Who hears a notification, in order.
    std::string heard(HostEditorNotifier& notifier)
    {
        notifier.notifyCompoundPortChange(eCompoundPortAdded, port);
        std::string result;
        for (std::size_t i = 0; i < log.size(); i = log.find('\n', i) + 1)
            result += log.substr(i, 2);
        log = "";
        return result;
    }

    std::string log;
    TestNetwork net{"p", "r"};
    AddRefWrapper<Node> a = net.addNode("Top", "A", "in", "out");
    AddRefWrapper<Node> b = net.addNode("Top", "B");
    AddRefWrapper<Port> port = net.inner("Top.p");
    std::unique_ptr<TestEditor> e1 = std::make_unique<TestEditor>(log, "e1");
    std::unique_ptr<TestEditor> e2 = std::make_unique<TestEditor>(log, "e2");
    std::unique_ptr<TestEditor> e3 = std::make_unique<TestEditor>(log, "e3");
};

TEST_F(EditorTest, ConnectionsComeInTheOrderOfTwoDifferentTests)
{
    a->unregisterEditor(e2.get());
    const AddRefWrapper<Port> in = net.port("Top.A.in");
    const AddRefWrapper<Port> out = net.port("Top.A.out");
    const AddRefWrapper<Port> r = net.inner("Top.r");
    const struct {
        AddRefWrapper<Port> first;
        AddRefWrapper<Port> second;
        bool exchanged;         ///< The first is an input.
        bool compoundExchanged; ///< The second is compound-internal.
    } cases[] = {
        {in, out, true, false},   {out, in, false, false},   {in, in, true, false},
        {out, port, false, true}, {port, out, false, false}, {port, r, false, true},
        {r, port, true, true},    {r, in, true, false},
    };
    for (const auto& row : cases) {
        const std::string kept = pathOf(row.first) + " " + pathOf(row.second) + "\n";
        const std::string turned = pathOf(row.second) + " " + pathOf(row.first) + "\n";
        a->notifyConnectionChange(eCnxRemoved, row.first, row.second);
        EXPECT_EQ("e1: connection 1 " + (row.exchanged ? turned : kept), take());
        a->notifyCompoundConnectionChange(eCnxAdded, row.first, row.second);
        EXPECT_EQ("e1: compound connection 0 " + (row.compoundExchanged ? turned : kept), take());
    }
    a->notifyConnectionChange(static_cast<ECnxChangeType>(77), out, nullptr);
    EXPECT_EQ("e1: connection 77 Top.A.out -\n", take()) << "the second is not looked at";
}

TEST_F(EditorTest, NodesAndPortsComeAsTheCallersOwnWrappers)
{
    a->notifyNodeChange(eNodeRenamed, net.compound(), b);
    EXPECT_EQ("e1: node 2 Top Top.B\ne2: node 2 Top Top.B\n", take());
    EXPECT_EQ(&b, e2->lastWrapper);
    a->notifyCompoundPortChange(eCompoundPortMoved, port);
    EXPECT_EQ("e1: port 3 Top.p inner\ne2: port 3 Top.p inner\n", take());
    EXPECT_EQ(&port, e1->lastWrapper);
}

TEST_F(EditorTest, ConnectionPortsAreHeldDuringThePass)
{
    for (const bool isCompound : {false, true}) {
        AddRefWrapper<Port> first = TestPort::make("first", PortOutput);
        AddRefWrapper<Port> second = TestPort::make("second");
        e1->during = [&] { first = second = nullptr; };
        if (isCompound)
            a->notifyCompoundConnectionChange(eCnxAdded, first, second);
        else
            a->notifyConnectionChange(eCnxAdded, first, second);
        EXPECT_NE(std::string::npos, take().find(" first second\n", 40)) << "to e2";
    }
}

TEST_F(EditorTest, RegisteredTwiceIsRegisteredOnce)
{
    a->registerEditor(e1.get());
    EXPECT_EQ("e1e2", heard(*a));
    a->unregisterEditor(e1.get());
    a->unregisterEditor(e1.get());
    EXPECT_EQ("e2", heard(*a));
    EXPECT_EQ("", heard(*b));
}

TEST_F(EditorTest, WhoeverDiesFirstLeavesTheOthersRegistered)
{
    for (HostEditor* editor : {e1.get(), e2.get(), e3.get()})
        b->registerEditor(editor);
    net.root->registerEditor(e1.get());
    e1 = nullptr;
    EXPECT_EQ("e2, e2e3, ", heard(*a) + ", " + heard(*b) + ", " + heard(*net.root));
    a->registerEditor(e3.get());
    a->unregisterEditor(e2.get());
    net.compound()->removeNode("A");
    a = nullptr;
    EXPECT_EQ("e2e3", heard(*b));
    e3 = nullptr;
    e2 = nullptr;
    EXPECT_EQ("", heard(*b));
}

TEST_F(EditorTest, PassReadsTheEditorsAgainAfterEachCallback)
{
    e1->during = [&] { a->registerEditor(e3.get()); };
    EXPECT_EQ("e1e2e3", heard(*a)) << "reached in the same pass";
    e1->during = [&] { a->unregisterEditor(e1.get()); };
    EXPECT_EQ("e1e3", heard(*a)) << "e2 moved into a place already passed";
    EXPECT_EQ("e2e3", heard(*a));
}

TEST_F(EditorTest, EditorsMayDieInACallback)
{
    a->registerEditor(e3.get());
    e1->during = [&] { e1 = nullptr; };
    EXPECT_EQ("e1e3", heard(*a));
    e3->during = [&] { e2 = nullptr, e3 = nullptr; };
    EXPECT_EQ("e2e3", heard(*a));
    EXPECT_EQ("", heard(*a));
}

TEST_F(EditorTest, NotifierThatDiesInACallbackEndsEveryPass)
{
    auto notifier = std::make_unique<HostEditorNotifier>();
    for (HostEditor* editor : {e1.get(), e2.get(), e3.get()})
        notifier->registerEditor(editor);
    e1->during = [&] {
        notifier->notifyCompoundPortChange(eCompoundPortAdded, port); // A pass that ends normally.
        e2->during = [&] { notifier = nullptr; };
        notifier->notifyCompoundPortChange(eCompoundPortAdded, port);
    };
    EXPECT_EQ("e1e1e2e3e1e2", heard(*notifier));
    e1 = nullptr;
    EXPECT_EQ("e2", heard(*a));
}

} // namespace
} // namespace ZEL
