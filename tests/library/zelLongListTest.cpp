// Long lists find and remove with tables: every answer is held against a plain scan.

#include "zelListModel.h"

using namespace ZEL;

namespace {

using NodePtr = AddRefWrapper<Node>;
using PortPtr = AddRefWrapper<Port>;

/// Answers a name of its own, and counts how often it is asked.
class Alias : public Node {
public:
    explicit Alias(const char* answer) : Node(nullptr), m_answer(answer) {}
    using Node::operator=;
    const char* getName() const override
    {
        ++asked;
        return m_answer.c_str();
    }
    void setName(const char* name) override { m_answer = name; }

    mutable int asked = 0;

private:
    std::string m_answer;
};

class OddPort : public Port {
public:
    explicit OddPort(const char* name) : Port(name, PortInput) {}
    using Port::operator=;
    const char* getName() const override { return isOdd ? "odd" : Port::getName(); }

    bool isOdd = false;
};

/// Most names occur once, some often.
std::string someName(Random& random)
{
    const int number = random.below(400);
    return number < 20 ? "often" + std::to_string(number % 4) : "name" + std::to_string(number);
}

/// The first entry with that name, as a scan finds it.
template <class Pointers>
auto scan(const Pointers& entries, const std::string& name)
{
    for (const auto& entry : entries) {
        if (name == entry->getName())
            return entry;
    }
    return typename Pointers::value_type();
}

/// One compound's list and what should stand in it.
struct ModelledNodes {
    NodePtr owner = Node::createNew(nullptr, "Top");
    AddRefWrapper<Compound> compound = Compound::createNew(owner, nullptr);
    std::vector<NodePtr> entries;

    void add(const NodePtr& node)
    {
        ASSERT_TRUE(compound->nodes().add(node));
        entries.push_back(node);
    }
    void remove(const NodePtr& node)
    {
        const auto place = std::find(entries.begin(), entries.end(), node);
        ASSERT_EQ(place != entries.end(), compound->nodes().remove(node));
        if (place != entries.end())
            entries.erase(place);
    }
    void check(Random& random)
    {
        NodeList& nodes = compound->nodes();
        ASSERT_EQ(static_cast<int>(entries.size()), nodes.size());
        for (int i = 0; i < 8; ++i) {
            const std::string name = someName(random) + (random.oneIn(4) ? "x" : "");
            ASSERT_EQ(scan(entries, name), nodes[name.c_str()]) << name;
        }
        if (!random.oneIn(20))
            return;
        for (int i = 0; i < nodes.size(); ++i)
            ASSERT_EQ(entries[i], nodes[i]) << i;
        NodeList copy(nodes);
        const std::string name = someName(random);
        ASSERT_EQ(scan(entries, name), copy[name.c_str()]);
    }
};

} // namespace

TEST(LongNodeList, FindsAndRemovesAsAScanDoes)
{
    for (unsigned seed = 1; seed <= 3; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        ModelledNodes lists[2];
        std::vector<NodePtr> known;
        for (int step = 0; step < 3000 && !HasFatalFailure(); ++step) {
            ModelledNodes& list = lists[random.below(2)];
            const bool grows = random.below(600) > static_cast<int>(list.entries.size());
            const NodePtr some =
                known.empty() ? nullptr : known[random.below(static_cast<int>(known.size()))];
            if (!some || random.below(10) < (grows ? 4 : 1)) {
                const std::string name = someName(random);
                known.push_back(random.oneIn(12) ? NodePtr(new Alias(name.c_str()))
                                                 : Node::createNew(nullptr, name.c_str()));
                list.add(known.back());
            } else if (random.oneIn(12)) {
                list.add(some); // A second time, or in the other list too.
            } else if (random.oneIn(2)) {
                renameSomehow(random, *some);
            } else {
                list.remove(some);
            }
            list.check(random);
        }
    }
}

TEST(LongNodeList, AsksEveryOverriderBeforeTheMatchAndNoneBehindIt)
{
    ModelledNodes list;
    std::vector<AddRefWrapper<Alias>> aliases;
    for (int i = 0; i < 300; ++i) {
        list.add(Node::createNew(nullptr, ("plain" + std::to_string(i)).c_str()));
        if (i % 100 == 50) {
            aliases.emplace_back(new Alias("alias"));
            list.add(NodePtr(aliases.back()));
        }
    }
    NodeList& nodes = list.compound->nodes();
    for (int round = 0; round < 20; ++round) {
        for (const AddRefWrapper<Alias>& alias : aliases)
            alias->asked = 0;
        const NodePtr found = nodes["plain199"];
        ASSERT_TRUE(found && found == list.entries[201]);
        EXPECT_EQ(1, aliases[0]->asked);
        EXPECT_EQ(1, aliases[1]->asked);
        EXPECT_EQ(0, aliases[2]->asked) << "stands behind the match";
    }
    aliases[1]->setName("plain199");
    EXPECT_EQ(aliases[1], nodes["plain199"]) << "an answer is never remembered";
    aliases[1]->setName("other");
    EXPECT_EQ(list.entries[201], nodes["plain199"]);
}

TEST(LongPortList, FindsMovesAndRemovesAsAScanDoes)
{
    Random random(7);
    const NodePtr node = Node::createNew(nullptr, "node");
    PortList& inputs = node->inputs();
    std::vector<PortPtr> entries;
    std::vector<AddRefWrapper<OddPort>> oddPorts;
    for (int step = 0; step < 4000 && !HasFatalFailure(); ++step) {
        const int count = static_cast<int>(entries.size());
        if (count < 3 || (count < 250 && random.oneIn(3))) {
            const std::string name = someName(random);
            if (random.oneIn(20)) {
                oddPorts.emplace_back(new OddPort(name.c_str()));
                ASSERT_TRUE(inputs.add(PortPtr(oddPorts.back())));
                entries.emplace_back(oddPorts.back());
            } else {
                entries.push_back(inputs.addPort(name.c_str(), nullptr));
            }
        } else if (random.oneIn(4)) {
            const int from = random.below(count);
            const int to = random.below(from + 1);
            ASSERT_TRUE(inputs.movePort(from, to));
            std::rotate(entries.begin() + to, entries.begin() + from, entries.begin() + from + 1);
        } else if (random.oneIn(2)) {
            renameSomehow(random, *entries[random.below(count)]);
        } else if (random.oneIn(2)) {
            const PortPtr port = entries[random.below(count)];
            ASSERT_TRUE(inputs.remove(port));
            entries.erase(std::remove(entries.begin(), entries.end(), port), entries.end());
        } else if (!oddPorts.empty()) {
            oddPorts[random.below(static_cast<int>(oddPorts.size()))]->isOdd = random.oneIn(2);
        }
        for (int i = 0; i < 4; ++i) {
            const std::string name = random.oneIn(9) ? "odd" : someName(random);
            ASSERT_EQ(scan(entries, name), inputs[name.c_str()]) << name;
        }
        const int place = random.below(static_cast<int>(entries.size()));
        ASSERT_EQ(place, inputs.findPort(entries[place]));
    }
}

TEST(LongConnections, KeepTheirOrderThroughEveryRemoval)
{
    Random random(11);
    const PortPtr output = Port::createNew("out", PortOutput);
    std::vector<PortPtr> inputs;
    inputs.reserve(300);
    for (int i = 0; i < 300; ++i)
        inputs.push_back(Port::createNew(("in" + std::to_string(i)).c_str(), PortInput));
    std::vector<PortPtr> entries;
    for (int step = 0; step < 6000 && !HasFatalFailure(); ++step) {
        const PortPtr input = inputs[random.below(300)];
        const bool isConnected = std::find(entries.begin(), entries.end(), input) != entries.end();
        if (!isConnected || (step > 3000 && random.oneIn(30))) { // Twice in the second half.
            ASSERT_TRUE(input->addConnection(output));
            entries.push_back(input);
        } else if (random.oneIn(40)) {
            input->onParentNodeDeleted(); // The output forgets it; its own list stays.
            input->removeFromConnectedList(output.get());
            entries.erase(std::remove(entries.begin(), entries.end(), input), entries.end());
        } else {
            ASSERT_TRUE(output->removeConnection(input));
            entries.erase(std::remove(entries.begin(), entries.end(), input), entries.end());
        }
        ASSERT_EQ(static_cast<int>(entries.size()), output->connectedTo().size());
        if (random.oneIn(200) || step > 5900) { // Seldom: reading by index empties the tables.
            for (int i = 0; i < static_cast<int>(entries.size()); ++i)
                ASSERT_EQ(entries[i], output->connectedTo()[i]) << i;
        }
    }
    output->removeAllConnections();
    for (const PortPtr& input : inputs)
        EXPECT_FALSE(input->isConnected());
}

TEST(LongConnections, UseAPlaceAgainThatWasTakenOutAtTheEnd)
{
    const PortPtr output = Port::createNew("out", PortOutput);
    std::vector<PortPtr> inputs;
    inputs.reserve(300);
    for (int i = 0; i < 300; ++i) {
        inputs.push_back(Port::createNew("in", PortInput));
        ASSERT_TRUE(output->addConnection(inputs.back()));
    }
    for (int i = 0; i < 20; ++i) // From the far end: the search for these fills the table.
        ASSERT_TRUE(output->removeConnection(inputs[280 - i]));
    ASSERT_TRUE(output->removeConnection(inputs[299]));
    ASSERT_TRUE(output->addConnection(inputs[280]));
    ASSERT_TRUE(output->removeConnection(inputs[280])) << "stands in the place of the one before";
    ASSERT_TRUE(output->addConnection(inputs[299]));
    EXPECT_EQ(280, output->connectedTo().size());
    EXPECT_EQ(inputs[0], output->connectedTo()[0]);
    EXPECT_EQ(inputs[299], output->connectedTo()[279]);
}

TEST(LongConnections, ForgetEveryPlaceAlsoOfWhatCameAfterTheTable)
{
    const PortPtr output = Port::createNew("out", PortOutput);
    std::vector<PortPtr> inputs;
    const auto connectMore = [&](std::size_t count) {
        while (inputs.size() < count) {
            inputs.push_back(Port::createNew("in", PortInput));
            ASSERT_TRUE(output->addConnection(inputs.back()));
        }
    };
    connectMore(40);
    for (int i = 0; i < 6; ++i) { // The searches fill the table.
        ASSERT_TRUE(output->removeConnection(inputs[39]));
        ASSERT_TRUE(output->addConnection(inputs[39]));
    }
    connectMore(60);
    ASSERT_TRUE(output->addConnection(inputs[5]));
    ASSERT_TRUE(output->removeConnection(inputs[5]));
    EXPECT_FALSE(inputs[5]->isConnected());
    EXPECT_EQ(59, output->connectedTo().size());
    EXPECT_EQ(-1, output->connectedTo().findPort(inputs[5]));
}

TEST(LongPortList, HasNoPlaceForANullPort)
{
    const NodePtr node = Node::createNew(nullptr, "node");
    const PortPtr output = Port::createNew("out", PortOutput);
    std::vector<PortPtr> ports;
    for (int i = 0; i < 200; ++i) {
        ports.push_back(node->inputs().addPort(("in" + std::to_string(i)).c_str(), nullptr));
        ASSERT_TRUE(output->addConnection(ports.back()));
    }
    for (int i = 199; i > 100; i -= 2) { // Tables of both lists are filled, and holes left.
        ASSERT_EQ(ports[static_cast<std::size_t>(i)], node->inputs()[ports[i]->getName()]);
        ASSERT_TRUE(output->removeConnection(ports[static_cast<std::size_t>(i)]));
        ASSERT_TRUE(node->inputs().remove(ports[static_cast<std::size_t>(i)]));
    }
    output->removeFromConnectedList(nullptr);
    output->connectedTo().onPortDeleted(nullptr);
    node->inputs().onPortDeleted(nullptr);
    EXPECT_FALSE(output->removeConnection(nullptr));
    EXPECT_FALSE(node->inputs().remove(nullptr));
    EXPECT_EQ(-1, node->inputs().findPort(nullptr));
    for (PortList* const list : {&output->connectedTo(), &node->inputs()}) {
        ASSERT_EQ(150, list->size());
        EXPECT_EQ(ports[0], (*list)[0]);
        EXPECT_EQ(ports[198], (*list)[149]);
    }
    EXPECT_EQ(ports[198], node->inputs()["in198"]);
}

TEST(LongPortList, RemembersNothingOfAPortThatLeftUnasked)
{
    const NodePtr node = Node::createNew(nullptr, "node");
    PortList& inputs = node->inputs();
    const PortPtr moved = inputs.addPort("moved", nullptr);
    const PortPtr dropped = inputs.addPort("dropped", nullptr);
    inputs.addPort("last", nullptr);
    ASSERT_TRUE(inputs.movePort(0, 2)); // Contract: moved stands twice, with one reference.
    inputs.onPortDeleted(moved.get());
    moved->release(); // The reference that the list lost.
    ASSERT_EQ(1, moved->getRefCount());
    ASSERT_TRUE(inputs.add(moved));
    ASSERT_TRUE(inputs.remove(moved));
    EXPECT_EQ(1, moved->getRefCount());
    EXPECT_EQ(2, dropped->getRefCount()) << "kept until the list dies";
}

TEST(LongEditorList, ForgetsNotifiersInAnyOrderAndReachesTheRest)
{
    struct Counter : HostEditor {
        void zel_onNodeChange(ENodeChangeType /*type*/,
                              const AddRefWrapper<Compound>& /*compound*/,
                              const NodePtr& node) override
        {
            seen.push_back(node);
        }
        std::vector<NodePtr> seen;
    } editor;
    Random random(13);
    std::vector<NodePtr> nodes;
    for (int i = 0; i < 300; ++i) {
        nodes.push_back(Node::createNew(nullptr, "node"));
        nodes.back()->registerEditor(&editor);
    }
    while (nodes.size() > 100)
        nodes.erase(nodes.begin() + random.below(static_cast<int>(nodes.size())));
    for (std::size_t i = 0; i < 50; ++i)
        nodes[i * 2]->unregisterEditor(&editor);
    for (const NodePtr& node : nodes)
        node->notifyNodeChange(eNodeChanged, nullptr, node);
    ASSERT_EQ(50U, editor.seen.size());
    for (std::size_t i = 0; i < 50; ++i)
        EXPECT_EQ(nodes[i * 2 + 1], editor.seen[i]);
}

TEST(LongEditorList, HasNoPlaceForANullEditor)
{
    HostEditorNotifier notifier;
    std::vector<HostEditor> editors(300);
    for (std::size_t i = 0; i < 40; ++i)
        notifier.registerEditor(&editors[i]);
    for (std::size_t i = 1; i < 20; ++i)
        notifier.unregisterEditor(&editors[i]); // Leaves holes between those that stay.
    for (std::size_t i = 40; i < editors.size(); ++i) {
        notifier.registerEditor(&editors[i]);
        notifier.unregisterEditor(nullptr);
    }
}

TEST(LongPortList, TellsNamesOfEveryLengthApartByOneCharacter)
{
    for (std::size_t length = 0; length <= 70; ++length) {
        SCOPED_TRACE(length);
        const NodePtr node = Node::createNew(nullptr, "node");
        std::vector<std::string> names{std::string(length, 'a'), std::string(length + 1, 'a')};
        for (std::size_t place = 0; place < length; ++place) {
            for (const char other : {'b', '\xe1'}) { // The same but for its highest bit.
                names.push_back(names.front());
                names.back()[place] = other;
            }
        }
        for (const std::string& name : names)
            node->inputs().addPort(name.c_str(), nullptr);
        for (int round = 0; round < 3; ++round) {
            for (std::size_t i = 0; i < names.size(); ++i)
                ASSERT_EQ(static_cast<int>(i),
                          node->inputs().findPort(node->inputs()[names[i].c_str()]));
            for (const std::string& name : names)
                ASSERT_EQ(nullptr, node->inputs()[(name + "c").c_str()]);
        }
    }
}
