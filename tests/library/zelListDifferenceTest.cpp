// Long lists of ports and nodes against plain vectors: thousands of random steps, and after each
// the list answers as the vector does. zelEditorDifferenceTest.cpp does the same for editors.

#include "zelPortModel.h"

using namespace ZEL;

namespace {

using NodePtr = AddRefWrapper<Node>;
using PortPtr = AddRefWrapper<Port>;

class ListeningCompound : public Compound, public Listener {
public:
    explicit ListeningCompound(const NodePtr& owner) : Compound(owner) {}
    using Compound::operator=;
    bool onNodeAdd(const NodePtr& /*node*/) override { return ask(); }
    bool onNodeRemove(const NodePtr& /*node*/) override { return ask(); }
};

/// The nodes of a compound beside a vector. Nodes may stand in both lists of a test.
class NodeModel {
public:
    NodeModel(std::vector<NodePtr>& known, Random& random) : m_known(known), m_random(random) {}

    void step(int goal)
    {
        const bool grows = static_cast<int>(m_entries.size()) < goal;
        if (m_entries.size() < 3 || m_random.below(10) < (grows ? 6 : 1))
            add();
        else if (m_random.oneIn(3))
            renameSomehow(m_random, *m_random.from(m_known));
        else if (m_random.oneIn(12))
            m_random.from(m_odd)->isOdd = m_random.oneIn(2);
        else if (m_random.oneIn(2))
            remove(m_random.from(m_random.oneIn(4) ? m_known : m_entries));
        else
            removeNamed(m_random.from(m_entries)->getName());
    }

    void compare(Look look)
    {
        NodeList& nodes = m_compound->nodes();
        compareLists(m_random, nodes, m_entries, m_known, look, [](const NodePtr&, int) {});
        if (!m_random.oneIn(40))
            return;
        NodeList copy(nodes); // Answers alike, also after it was assigned to.
        compareLists(m_random, copy, m_entries, m_known, Look::Whole, [](const NodePtr&, int) {});
        copy = NodeList();
        ASSERT_EQ(0, copy.size());
        copy = nodes;
        compareLists(m_random, copy, m_entries, m_known, Look::Whole, [](const NodePtr&, int) {});
    }

    /// Takes over the entries of the other list, as an assignment between lists does.
    void assign(NodeModel& other)
    {
        m_compound->nodes() = other.m_compound->nodes();
        m_entries = other.m_entries;
        for (OddlyNamed<Node>* odd : other.m_odd)
            m_odd.push_back(odd);
    }

private:
    void add()
    {
        const NodePtr node =
            !m_known.empty() && m_random.oneIn(10) ? m_random.from(m_known) : makeNode();
        const bool isRefused = m_random.oneIn(20);
        if (isRefused) {
            m_compound->refusals = 1;
        } else if (m_entries.size() > 3 && m_random.oneIn(15)) {
            m_compound->during = [this] {
                remove(m_random.from(m_entries));
                m_entries.push_back(makeNode());
                ASSERT_TRUE(m_compound->nodes().add(m_entries.back()));
            };
        }
        ASSERT_EQ(!isRefused, m_compound->nodes().add(node));
        if (!isRefused)
            m_entries.push_back(node);
        ASSERT_FALSE(m_compound->nodes().add(nullptr));
    }

    NodePtr makeNode()
    {
        const std::string name = drawName(m_random);
        if (m_odd.empty() || m_random.oneIn(30)) {
            m_odd.push_back(new OddlyNamed<Node>(nullptr));
            m_known.emplace_back(m_odd.back());
            m_known.back()->setName(name.c_str());
        } else {
            m_known.push_back(Node::createNew(nullptr, name.c_str()));
        }
        return m_known.back();
    }

    void remove(const NodePtr& given)
    {
        // The vector that it stands in changes.
        const NodePtr node(given); // NOLINT(performance-unnecessary-copy-initialization)
        const auto place = std::find(m_entries.begin(), m_entries.end(), node);
        const bool isRefused = place != m_entries.end() && m_random.oneIn(15);
        if (isRefused)
            m_compound->refusals = 1;
        ASSERT_EQ(!isRefused && place != m_entries.end(), m_compound->nodes().remove(node));
        if (!isRefused && place != m_entries.end())
            m_entries.erase(place);
    }

    void removeNamed(const std::string& name)
    {
        const auto place = std::find_if(m_entries.begin(), m_entries.end(),
                                        [&](const auto& node) { return name == node->getName(); });
        ASSERT_EQ(*place, m_compound->removeNode(name.c_str()));
        m_entries.erase(place);
    }

    NodePtr m_owner = Node::createNew(nullptr, "Top");
    AddRefWrapper<ListeningCompound> m_compound{new ListeningCompound(m_owner)};
    std::vector<NodePtr> m_entries;
    std::vector<NodePtr>& m_known;
    std::vector<OddlyNamed<Node>*> m_odd; ///< Held by m_known.
    Random& m_random;
};

} // namespace

TEST(ListDifference, OwnedPortsAnswerAsAVectorDoes)
{
    for (unsigned seed = 1; seed <= 4; ++seed) {
        SCOPED_TRACE(seed);
        const AddRefWrapper<ListeningNode> node(new ListeningNode);
        PortModel(node->inputs(), node.get(), seed).run(stepCount(4000), seed % 2 ? 500 : 120);
    }
}

TEST(ListDifference, PortsWithoutAParentAnswerAsAVectorDoes)
{
    for (unsigned seed = 11; seed <= 14; ++seed) {
        SCOPED_TRACE(seed);
        PortList list;
        PortModel(list, nullptr, seed).run(stepCount(4000), seed % 2 ? 500 : 120);
    }
}

TEST(ListDifference, NodesAnswerAsAVectorDoes)
{
    for (unsigned seed = 21; seed <= 24; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        std::vector<NodePtr> known;
        NodeModel lists[2] = {{known, random}, {known, random}};
        int goal = 0;
        for (int step = 0; step < stepCount(4000) && !HasFatalFailure(); ++step) {
            if (step % 400 == 0)
                goal = random.oneIn(3) ? random.below(40) : 33 + random.below(467);
            NodeModel& list = lists[random.below(2)];
            list.step(goal);
            if (random.oneIn(600))
                lists[0].assign(lists[1]);
            lists[0].compare(lookAfter(random, step));
            lists[1].compare(lookAfter(random, step));
        }
    }
}

TEST(ListDifference, AssignedPortListsAnswerAsTheirSourceAndReleaseWhatTheyTook)
{
    Random random(31);
    for (int round = 0; round < 20 && !HasFatalFailure(); ++round) {
        const NodePtr node = Node::createNew(nullptr, "node");
        const NodePtr source = Node::createNew(nullptr, "source");
        std::vector<PortPtr> entries;
        std::vector<PortPtr> former;
        for (int i = random.below(200); i >= 0; --i)
            entries.push_back(source->inputs().addPort(drawName(random).c_str(), nullptr));
        for (int i = random.below(200); i >= 0; --i)
            former.push_back(node->inputs().addPort(drawName(random).c_str(), nullptr));
        for (int i = 0; i < 10; ++i) { // Again and again: every entry has what it had before.
            for (const PortPtr& port : entries)
                port->addRef(); // Contract: an assignment takes no references, but they go later.
            node->inputs() = source->inputs();
            compareLists(random, node->inputs(), entries, entries, Look::Whole,
                         [](const PortPtr&, int) {});
        }
        node->inputs().setParent(node.get());
    }
}

TEST(ListDifference, ConnectionsAnswerAsVectorsDoAtBothEnds)
{
    Random random(41);
    constexpr int kOutputs = 4;
    constexpr int kInputs = 400;
    std::vector<PortPtr> outputs;
    std::vector<PortPtr> inputs;
    outputs.reserve(kOutputs);
    inputs.reserve(kInputs);
    std::vector<std::vector<PortPtr>> sent(kOutputs);
    std::vector<std::vector<PortPtr>> received(kInputs);
    for (int i = 0; i < kOutputs; ++i)
        outputs.push_back(Port::createNew("out", PortOutput));
    for (int i = 0; i < kInputs; ++i)
        inputs.push_back(Port::createNew("in", PortInput));
    const auto drop = [](std::vector<PortPtr>& entries, const PortPtr& port) {
        entries.erase(std::remove(entries.begin(), entries.end(), port), entries.end());
    };
    for (int step = 0; step < stepCount(12000) && !HasFatalFailure(); ++step) {
        const int from = random.below(kOutputs);
        const int to = random.below(step % 3000 < 1500 ? kInputs : 60);
        const PortPtr output = outputs[static_cast<std::size_t>(from)];
        const PortPtr input = inputs[static_cast<std::size_t>(to)];
        auto& outgoing = sent[static_cast<std::size_t>(from)];
        auto& incoming = received[static_cast<std::size_t>(to)];
        const bool isConnected = std::count(outgoing.begin(), outgoing.end(), input) > 0;
        if (!isConnected || random.oneIn(6)) {
            ASSERT_TRUE(random.oneIn(2) ? input->addConnection(output)
                                        : output->addConnection(input));
            outgoing.push_back(input);
            incoming.push_back(output);
        } else {
            if (random.oneIn(8)) {
                output->removeFromConnectedList(input.get());
                input->removeFromConnectedList(output.get());
            } else {
                ASSERT_TRUE(random.oneIn(2) ? input->removeConnection(output)
                                            : output->removeConnection(input));
            }
            drop(outgoing, input);
            drop(incoming, output);
        }
        output->removeFromConnectedList(nullptr);
        const auto check = [&](Port& port, const std::vector<PortPtr>& entries) {
            compareLists(random, port.connectedTo(), entries, inputs, lookAfter(random, step),
                         [&port](const PortPtr& other, int place) {
                             ASSERT_EQ(place, port.connectedTo().findPort(other));
                         });
        };
        check(*output, outgoing);
        check(*input, incoming);
    }
    for (const PortPtr& output : outputs)
        output->removeAllConnections();
    for (const PortPtr& input : inputs)
        ASSERT_FALSE(input->isConnected());
}
