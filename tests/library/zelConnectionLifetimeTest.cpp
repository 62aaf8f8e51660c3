// How long the connections of a port live: as long as the port, whoever wraps them; and who holds
// both ends while a listener is asked.

#include "zelTestNetwork.h"

#include <vector>

namespace ZEL {
namespace {

using PortPtr = AddRefWrapper<Port>;
using ListPtr = AddRefWrapper<PortList>;

/// Wraps its connections as the last thing that it does.
struct WrappingPort : Port, Live {
    explicit WrappingPort(const char* name) : Port(name, PortOutput) {}
    using Port::operator=;
    ~WrappingPort() override { wrap(*this); }
    static void wrap(Port& port)
    {
        const ListPtr first(&port.connectedTo());
        ListPtr second(first);
        EXPECT_EQ(3, port.connectedTo().getRefCount());
        second = &port.connectedTo();
        second = nullptr;
        EXPECT_EQ(nullptr, first->getParent());
    }
};

TEST(ConnectionLifetime, ConnectionsThatAreWrappedAndDroppedStayTheSame)
{
    const int alive = Live::count;
    Questions questions;
    for (const int count : {0, 1, 2, 33, 100}) {
        const AddRefWrapper<Node> node(new TestNode(questions, nullptr));
        PortPtr output(new WrappingPort("out"));
        node->outputs().add(output);
        PortList* const connections = &output->connectedTo();
        std::vector<PortPtr> inputs;
        const auto wrapBoth = [&] {
            WrappingPort::wrap(*output);
            WrappingPort::wrap(*inputs.back());
        };
        for (int i = 0; i < count; ++i) {
            inputs.push_back(TestPort::make("in"));
            questions.during = wrapBoth;
            ASSERT_TRUE(inputs.back()->addConnection(output));
            questions.during = wrapBoth;
            ASSERT_TRUE(output->addConnection(inputs.back()));
        }
        WrappingPort::wrap(*output);
        EXPECT_EQ(connections, &output->connectedTo());
        EXPECT_EQ(2 * count, connections->size());
        for (int i = 0; i < count; ++i) {
            questions.during = wrapBoth;
            ASSERT_TRUE(inputs.back()->removeConnection(output));
            ASSERT_EQ(2 * count - 2 * (i + 1), connections->size());
            WrappingPort::wrap(*inputs.back());
            inputs.pop_back();
        }
        EXPECT_EQ(1, connections->getRefCount());
        node->outputs().remove(output);
    }
    EXPECT_EQ(alive, Live::count);
}

TEST(ConnectionLifetime, AWrapperOfConnectionsMayGoInTheirOwnQuestion)
{
    Questions questions;
    const AddRefWrapper<Node> node(new TestNode(questions, nullptr));
    PortPtr output(new WrappingPort("out"));
    node->outputs().add(output);
    const PortPtr input = TestPort::make("in");
    output->addConnection(input);
    ListPtr kept(&output->connectedTo());
    questions.during = [&] {
        kept = nullptr;
        node->outputs().remove(output);
        output = nullptr;
    };
    Port& dying = *output;
    const int alive = Live::count;
    EXPECT_TRUE(dying.removeConnection(input));
    EXPECT_EQ(alive - 1, Live::count);
    EXPECT_FALSE(input->isConnected());
}

/// The references to both ends, beside those there were before.
struct CountingNode : Node {
    CountingNode() : Node(nullptr) {}
    using Node::operator=;
    bool onPortAddConnection(PortArg port, PortArg other) override { return note(port, other); }
    bool onPortRemoveConnection(PortArg port, PortArg other) override { return note(port, other); }
    bool note(PortArg port, PortArg other)
    {
        counts += std::to_string(port->getRefCount() - before) + " " +
                  std::to_string(other->getRefCount() - before) + "; ";
        return true;
    }
    int before = 2; ///< The wrapper of the test and the list.
    std::string counts;
};

TEST(ConnectionLifetime, BothEndsAreHeldDuringAQuestion)
{
    const AddRefWrapper<CountingNode> node(new CountingNode);
    const PortPtr out = node->outputs().addPort("out", nullptr);
    const PortPtr in = node->inputs().addPort("in", nullptr);
    const auto countsOf = [&](const std::function<void()>& action) {
        action();
        return std::exchange(node->counts, "");
    };
    EXPECT_EQ("1 1; ", countsOf([&] { out->addConnection(in); }));
    EXPECT_EQ("1 1; ", countsOf([&] { in->addConnection(out); }));
    EXPECT_EQ("1 1; ", countsOf([&] { out->removeConnection(in); }));
    in->addConnection(out);
    node->counts = "";
    for (const std::function<void()>& action : std::initializer_list<std::function<void()>>{
             [&] { in->removeConnection(out); },
             [&] { in->removeAllConnections(); },
             [&] { out->removeAllConnections(); },
         }) {
        const std::string counts = countsOf(action);
        ASSERT_EQ(5U, counts.size());
        EXPECT_TRUE(counts[0] >= '1' && counts[2] >= '1') << counts;
        EXPECT_FALSE(in->isConnected() || out->isConnected());
        in->addConnection(out);
        node->counts = "";
    }
    EXPECT_EQ(4, out->getRefCount() + in->getRefCount());
}

TEST(ConnectionLifetime, AnEndThatIsLostInTheQuestionIsNeitherConnectedNorLeftConnected)
{
    const struct {
        bool isRemoval, callsOutput, losesOutput;
    } cases[] = {
        {false, true, true}, {false, true, false}, {false, false, true}, {false, false, false},
        {true, true, true},  {true, true, false},  {true, false, true},  {true, false, false},
    };
    for (const auto& row : cases) {
        for (const int others : {0, 1, 40, 100}) {
            SCOPED_TRACE((row.isRemoval ? "removal, " : "connection, ") +
                         std::string(row.callsOutput ? "output called, " : "input called, ") +
                         (row.losesOutput ? "output lost, " : "input lost, ") +
                         std::to_string(others));
            Questions questions;
            const AddRefWrapper<Node> node(new TestNode(questions, nullptr));
            PortPtr out(new WrappingPort("out"));
            node->outputs().add(out);
            PortPtr in = TestPort::make("in");
            std::vector<PortPtr> more;
            PortPtr& stays = row.losesOutput ? in : out;
            for (int i = 0; i < others; ++i) { // Of the one that stays; the middle is the pair's.
                if (row.isRemoval && i == others / 2)
                    out->addConnection(in);
                more.push_back(row.losesOutput ? Port::createNew("more", PortOutput)
                                               : TestPort::make("more"));
                stays->addConnection(more.back());
            }
            if (row.isRemoval && others == 0)
                out->addConnection(in);
            const int alive = Live::count;
            questions.during = [&] {
                if (row.losesOutput)
                    node->outputs().remove(out);
                (row.losesOutput ? out : in) = nullptr;
            };
            Port& called = row.callsOutput ? *out : *in;
            const PortPtr& other = row.callsOutput ? in : out; // May be emptied meanwhile.
            EXPECT_EQ(row.isRemoval,
                      row.isRemoval ? called.removeConnection(other) : called.addConnection(other));
            EXPECT_EQ(alive - 1, Live::count);
            EXPECT_EQ(others, stays->connectedTo().size());
            for (int i = 0; i < others; ++i)
                EXPECT_EQ(more[static_cast<std::size_t>(i)], stays->connectedTo()[i]);
            stays->removeAllConnections();
        }
    }
}

} // namespace
} // namespace ZEL
