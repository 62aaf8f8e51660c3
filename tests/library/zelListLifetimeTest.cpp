// How long the two lists of a node live: as long as the node, or as whoever else holds them.

#include "zelListModel.h"
#include "zelTestNetwork.h"

#include <array>
#include <memory>

namespace ZEL {
namespace {

using NodePtr = AddRefWrapper<Node>;
using PortPtr = AddRefWrapper<Port>;
using ListPtr = AddRefWrapper<PortList>;

/// What a class derived from Node reads of its lists when it dies; it may keep one of them.
struct ReadingNode : TestNode {
    explicit ReadingNode(Questions& questions) : TestNode(questions, nullptr) {}
    using Node::operator=;
    ~ReadingNode() override
    {
        inputs().add(TestPort::make("late"));
        text = names(inputs()) + "/" + names(outputs());
        EXPECT_EQ(this, inputs().getParent());
        const ListPtr wrapper(&outputs());
        if (kept)
            *kept = &inputs();
    }
    ListPtr* kept = nullptr;
    inline static std::string text;
};

/// Says how long the lists of its node are when it dies.
struct LookingPort : TestPort {
    explicit LookingPort(const char* name) : TestPort(name, PortInput) {}
    ~LookingPort() override
    {
        const NodePtr node = getParentNode();
        if (node)
            lastWords += std::to_string(node->inputs().size()) + "/" +
                         std::to_string(node->outputs().size()) + " ";
    }
};

TEST(ListLifetime, EachListOfANodeThatIsHeldLivesAloneAsksNobodyAndHoldsItsPorts)
{
    const int alive = Live::count;
    for (const int held : {0, 1, 2, 3, 4, 5, 6, 7}) { // 1: inputs, 2: outputs, 4: by a destructor.
        SCOPED_TRACE(held);
        Questions questions;
        AddRefWrapper<ReadingNode> node(new ReadingNode(questions));
        for (const char* name : {"a", "b"}) {
            node->inputs().add(new LookingPort(name));
            node->outputs().add(new LookingPort(name));
        }
        ListPtr inputs((held & 1) != 0 ? &node->inputs() : nullptr);
        ListPtr outputs((held & 2) != 0 ? &node->outputs() : nullptr);
        if ((held & 4) != 0)
            node->kept = &inputs;
        TestPort::lastWords = "";
        node = nullptr;
        questions.take();
        EXPECT_EQ("a b late/a b", ReadingNode::text);
        EXPECT_EQ((outputs ? "" : "3/0 a3/0 b") + std::string(inputs    ? ""
                                                              : outputs ? "0/2 a0/2 blate"
                                                                        : "0/0 a0/0 blate"),
                  TestPort::lastWords);
        for (ListPtr* const list : {&outputs, &inputs}) {
            if (!*list)
                continue;
            EXPECT_EQ(nullptr, (*list)->getParent());
            EXPECT_EQ(nullptr, (**list)[0]->getParent());
            EXPECT_EQ(2, (**list)["a"]->getRefCount()) << "the list and the wrapper";
            const PortPtr added = TestPort::make("c");
            EXPECT_TRUE((*list)->add(added) && (*list)->movePort((*list)->size() - 1, 0));
            EXPECT_EQ(2, added->getRefCount());
            EXPECT_TRUE((*list)->remove((**list)["b"]));
            EXPECT_EQ(list == &outputs ? PortOutput : PortInput,
                      (*list)->addPort("d", nullptr)->getPortIOType());
            EXPECT_EQ(list == &outputs ? "c a d" : "c a late d", names(**list));
            *list = nullptr;
            EXPECT_EQ(1, added->getRefCount());
        }
        EXPECT_EQ("", questions.take());
        EXPECT_EQ(alive, Live::count);
    }
}

TEST(ListLifetime, TheLastHolderOfBothListsReleasesTheOutputsFirst)
{
    for (const bool isMakerAlive : {true, false}) {
        NodePtr maker = Node::createNew(nullptr, "maker");
        NodePtr taker = Node::createNew(nullptr, "taker");
        maker->inputs().add(TestPort::make("in "));
        maker->outputs().add(TestPort::make("out "));
        *taker = *maker;
        TestPort::lastWords = "";
        (isMakerAlive ? taker : maker) = nullptr;
        EXPECT_EQ("", TestPort::lastWords);
        maker = nullptr;
        taker = nullptr;
        EXPECT_EQ("out in ", TestPort::lastWords);

        maker = Node::createNew(nullptr, "maker");
        maker->inputs().add(TestPort::make("in "));
        maker->outputs().add(TestPort::make("out "));
        TestPort::lastWords = "";
        *maker = *Node::createNew(nullptr, "other");
        EXPECT_EQ("in out ", TestPort::lastWords) << "an assignment takes them in turn";
    }
}

TEST(ListLifetime, AListThatIsReplacedGoesOnAskingItsMakerWhileSomebodyHoldsIt)
{
    const int alive = Live::count;
    for (const int held : {0, 1, 2, 3, 4}) { // 1: inputs, 2: outputs, 4: both, by another node.
        SCOPED_TRACE(held);
        Questions questions;
        const NodePtr maker(new TestNode(questions, nullptr));
        maker->inputs().add(TestPort::make("in "));
        maker->outputs().add(TestPort::make("out "));
        const NodePtr taker = Node::createNew(nullptr, "taker");
        if (held == 4)
            *taker = *maker;
        ListPtr lists[2] = {(held & 1) != 0 ? &maker->inputs() : nullptr,
                            (held & 2) != 0 ? &maker->outputs() : nullptr};
        TestPort::lastWords = "";
        *maker = *Node::createNew(nullptr, "other");
        EXPECT_EQ(std::string(held == 4 || lists[0] ? "" : "in ") +
                      (held == 4 || lists[1] ? "" : "out "),
                  TestPort::lastWords);
        if (held == 4) {
            lists[0] = &taker->inputs();
            *taker = *maker;
        }
        questions.take();
        for (ListPtr& list : lists) {
            if (!list)
                continue;
            EXPECT_TRUE(list->getParent() == maker.get() && list->size() == 1);
            EXPECT_TRUE(list->add(TestPort::make("more")));
            EXPECT_EQ(0, questions.take().find("other: add more to "));
            list = nullptr;
        }
        EXPECT_EQ(0, maker->inputs().size() + maker->outputs().size());
        EXPECT_EQ(alive + 1, Live::count) << "the maker";
    }
    EXPECT_EQ(alive, Live::count);
}

/// Nodes that share their lists by assignment, beside records of who holds what.
class SharedLists {
public:
    explicit SharedLists(unsigned seed) : m_random(seed)
    {
        for (int slot = 0; slot < kNodes; ++slot)
            makeNode(slot);
    }

    void step()
    {
        const int slot = m_random.below(kNodes);
        const int side = m_random.below(2);
        switch (m_random.below(7)) {
        case 0:
            return assign(slot, m_random.oneIn(6) ? slot : m_random.below(kNodes));
        case 1:
            m_nodes[slot].node = nullptr;
            return makeNode(slot);
        case 2:
            return keep(m_random.below(kKept), slot, side);
        case 3:
            return keep(m_random.below(kKept), -1, side);
        case 4:
            return remove(list(slot, side), *m_nodes[slot].records[side]);
        default:
            return add(list(slot, side), *m_nodes[slot].records[side]);
        }
    }

    void check()
    {
        int alive = kNodes + m_others;
        std::vector<const Record*> counted;
        const auto count = [&](PortList& list, const std::shared_ptr<Record>& record) {
            Node* const maker = findMaker(record->maker);
            ASSERT_EQ(maker, list.getParent());
            ASSERT_EQ(record.use_count(), list.getRefCount());
            ASSERT_EQ(record->names, names(list));
            for (int i = 0; i < list.size(); ++i)
                ASSERT_EQ(maker, list[i]->getParentNode());
            if (std::count(counted.begin(), counted.end(), record.get()) == 0)
                alive += list.size();
            counted.push_back(record.get());
        };
        for (int slot = 0; slot < kNodes; ++slot) {
            count(list(slot, 0), m_nodes[slot].records[0]);
            count(list(slot, 1), m_nodes[slot].records[1]);
        }
        for (const Kept& kept : m_kept) {
            if (kept.list)
                count(*kept.list, kept.record);
        }
        ASSERT_EQ(alive, Live::count);
    }

private:
    static constexpr int kNodes = 4;
    static constexpr int kKept = 3;
    /// One list, held by whoever holds the record.
    struct Record {
        int maker;         ///< The number of a node.
        std::string names; ///< Of its ports.
    };
    struct NodeSlot {
        int number;
        NodePtr node;
        std::shared_ptr<Record> records[2];
    };
    struct Kept {
        ListPtr list;
        std::shared_ptr<Record> record;
    };

    PortList& list(int slot, int side)
    {
        Node& node = *m_nodes[slot].node;
        return side == 0 ? node.inputs() : node.outputs();
    }
    Node* findMaker(int number)
    {
        for (const NodeSlot& each : m_nodes) {
            if (each.number == number)
                return each.node.get();
        }
        return nullptr;
    }
    void makeNode(int slot)
    {
        NodeSlot& made = m_nodes[slot];
        made.number = ++m_lastNumber;
        made.node = new TestNode(m_questions, nullptr);
        made.node->setName(std::to_string(made.number).c_str());
        for (std::shared_ptr<Record>& record : made.records)
            record = std::make_shared<Record>(Record{made.number, ""});
    }
    /// Not when a list that the target made is held elsewhere: nobody would tell it of its end.
    void assign(int to, int from)
    {
        NodeSlot& target = m_nodes[to];
        for (const std::shared_ptr<Record>& record : target.records) {
            if (record->maker == target.number && record.use_count() > 1)
                return;
        }
        *target.node = *m_nodes[from].node;
        for (const int side : {0, 1})
            target.records[side] = m_nodes[from].records[side];
    }
    void keep(int place, int slot, int side)
    {
        Kept& kept = m_kept[place];
        kept.list = slot < 0 ? nullptr : &list(slot, side);
        kept.record = slot < 0 ? nullptr : m_nodes[slot].records[side];
    }
    void add(PortList& list, Record& record)
    {
        const std::string name = "p" + std::to_string(++m_lastNumber);
        ASSERT_TRUE(list.add(TestPort::make(name.c_str())));
        record.names += (record.names.empty() ? "" : " ") + name;
        checkAsked(record);
    }
    void remove(PortList& list, Record& record)
    {
        if (list.size() == 0)
            return;
        ASSERT_TRUE(list.remove(list[0]));
        const std::size_t blank = record.names.find(' ');
        record.names.erase(0, blank == std::string::npos ? blank : blank + 1);
        checkAsked(record);
    }
    /// The maker alone, while it lives.
    void checkAsked(const Record& record)
    {
        const Node* const maker = findMaker(record.maker);
        const std::string asked = m_questions.take();
        ASSERT_EQ(maker ? maker->getName() : "", asked.substr(0, asked.find(':')));
        ASSERT_EQ(std::string::npos, asked.find(';'));
    }

    Random m_random;
    Questions m_questions;
    int m_others = Live::count; ///< Objects of other tests.
    int m_lastNumber = 0;
    std::array<NodeSlot, kNodes> m_nodes;
    std::array<Kept, kKept> m_kept;
};

TEST(ListLifetime, SharedListsLiveAsLongAsTheirHoldersAndAskTheirMakerWhileItLives)
{
    const int alive = Live::count;
    for (unsigned seed = 1; seed <= 4; ++seed) {
        SCOPED_TRACE(seed);
        SharedLists lists(seed);
        for (int step = 0; step < stepCount(1500) && !HasFatalFailure(); ++step) {
            lists.step();
            lists.check();
        }
    }
    EXPECT_EQ(alive, Live::count);
}

TEST(ListLifetime, ANodeHasItsListsUntilTheCompoundThatAPortHeldIsGone)
{
    static int found;
    struct Counting : Compound {
        explicit Counting(NodeArg owner) : Compound(owner), node(owner.get()) {}
        using Compound::operator=;
        ~Counting() override { found = node->inputs().size() + node->outputs().size(); }
        Node* node;
    };
    struct HoldingPort : Port {
        explicit HoldingPort(Compound* held) : Port("in", PortInput), compound(held) {}
        using Port::operator=;
        AddRefWrapper<Compound> compound;
    };
    found = -1;
    AddRefWrapper<Node> node = Node::createNew(nullptr, "N");
    node->inputs().add(new HoldingPort(new Counting(node)));
    node = nullptr;
    EXPECT_EQ(0, found);
}

} // namespace
} // namespace ZEL
