// What long sequences cost, counted in the slots that they visit: never more than a few for each
// edit, whatever came before. Answers are held against plain vectors in zelListDifferenceTest.cpp.

#include "core/zelSequence.h"

#include "zelNode.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ZEL {
namespace {

using NodePtr = AddRefWrapper<Node>;

constexpr int kCount = 8000;
/// Either table is filled when every slot was visited some times.
constexpr std::uint64_t kWorkOfFilling = 48ULL * kCount;
constexpr int kSearchesThatFill = 40;

/// A sequence of nodes that it holds.
class Nodes {
public:
    Nodes() = default;
    Nodes(const Nodes&) = delete;
    Nodes& operator=(const Nodes&) = delete;
    ~Nodes()
    {
        sequence.dropIndex();
        sequence.clear();
    }
    void append(const std::string& name)
    {
        held.push_back(Node::createNew(nullptr, name.c_str()));
        sequence.append(at(size() - 1));
    }
    int size() const { return static_cast<int>(held.size()); }
    Namable* at(int i) const { return held[static_cast<std::size_t>(i)].get(); }
    std::uint64_t work() { return sequence.extras().searchWork + sequence.extras().scanWork; }

    std::uintptr_t data = 0;
    Sequence sequence{data};
    std::vector<NodePtr> held;
};

TEST(Sequence, RenamesOneAfterTheOtherOfManyThatShareAName)
{
    Nodes nodes;
    for (int i = 0; i < kCount; ++i)
        nodes.append("pasted");
    for (int i = 0; i < kCount; ++i) {
        const std::string name = "pasted" + std::to_string(i);
        ASSERT_EQ(nullptr, nodes.sequence.findNamed(name));
        ASSERT_EQ(nodes.at(i), nodes.sequence.findNamed("pasted"));
        nodes.at(i)->setName(name.c_str());
        ASSERT_EQ(nodes.at(i), nodes.sequence.findNamed(name));
    }
    EXPECT_GE(kWorkOfFilling, nodes.work());
}

TEST(Sequence, ErasesByNameAmongPairs)
{
    Nodes nodes;
    for (int i = 0; i < kCount; ++i)
        nodes.append("name" + std::to_string(i / 2));
    for (int i = 0; i < kCount / 2; ++i) {
        const int pair = i * 2039 % (kCount / 2); // Once each, in no order.
        const std::string name = "name" + std::to_string(pair);
        for (int place : {pair * 2, pair * 2 + 1}) {
            ASSERT_EQ(nodes.at(place), nodes.sequence.findNamed(name));
            ASSERT_TRUE(nodes.sequence.eraseFirst(nodes.at(place)));
        }
        ASSERT_EQ(nullptr, nodes.sequence.findNamed(name));
    }
    EXPECT_EQ(0, nodes.sequence.size());
    EXPECT_GE(kWorkOfFilling, nodes.work());
}

TEST(Sequence, AddsUnderOneNameAndRenamesEachAtOnce)
{
    Nodes nodes;
    for (int i = 0; i < kCount; ++i) {
        nodes.append("copy");
        if (nodes.sequence.findNamed("copy") != nodes.at(0))
            FAIL() << i;
        if (i > 0)
            nodes.at(i)->setName(("copy" + std::to_string(i)).c_str());
    }
    EXPECT_GE(kWorkOfFilling, nodes.work());
}

TEST(Sequence, StaysQuickAfterAnObjectStoodTwice)
{
    Nodes nodes;
    for (int i = 0; i < kCount; ++i)
        nodes.append("name" + std::to_string(i));
    for (int i = 0; i < kSearchesThatFill; ++i)
        ASSERT_TRUE(nodes.sequence.contains(nodes.at(kCount - 1)));
    nodes.sequence.append(nodes.at(17));
    ASSERT_EQ(17, nodes.sequence.indexOf(nodes.at(17)));
    ASSERT_EQ(2, nodes.sequence.eraseEvery(nodes.at(17)));
    nodes.sequence.append(nodes.at(17));
    const std::uint64_t before = nodes.work();
    for (int i = 0; i < kCount; ++i)
        ASSERT_TRUE(nodes.sequence.contains(nodes.at(i)));
    EXPECT_EQ(before, nodes.work());
}

TEST(Sequence, ReadsByIndexWhileEveryOtherEntryIsErased)
{
    Nodes nodes;
    for (int i = 0; i < kCount; ++i)
        nodes.append("name" + std::to_string(i));
    for (int i = 0; i < kSearchesThatFill; ++i)
        ASSERT_TRUE(nodes.sequence.contains(nodes.at(kCount - 1)));
    const std::uint64_t before = nodes.work();
    for (int i = 0; i < kCount / 2; ++i) { // As a walk that takes out what it does not want.
        ASSERT_EQ(nodes.at(i * 2), nodes.sequence.at(i));
        ASSERT_EQ(nodes.at(i * 2 + 1), nodes.sequence.at(i + 1));
        ASSERT_TRUE(nodes.sequence.eraseFirst(nodes.at(i * 2 + 1)));
    }
    EXPECT_EQ(kCount / 2, nodes.sequence.size());
    EXPECT_EQ(before, nodes.work()) << "the tables were kept all the time";
}

TEST(Sequence, GivesItsTablesBackWhenItIsShortAgain)
{
    Nodes nodes;
    for (int i = 0; i < 1000; ++i)
        nodes.append("name" + std::to_string(i));
    for (int i = 0; i < kSearchesThatFill; ++i) {
        ASSERT_TRUE(nodes.sequence.contains(nodes.at(999)));
        ASSERT_EQ(nodes.at(999), nodes.sequence.findNamed("name999"));
    }
    ASSERT_TRUE(nodes.sequence.extras().leavesHoles());
    ASSERT_TRUE(nodes.sequence.eraseFirst(nodes.at(500)));
    ASSERT_EQ(nodes.at(501), nodes.sequence.at(500));
    ASSERT_FALSE(nodes.sequence.extras().counts.isEmpty());
    for (int i = 999; i >= 10; --i)
        ASSERT_EQ(i != 500, nodes.sequence.eraseFirst(nodes.at(i)));
    EXPECT_TRUE(nodes.sequence.extras().counts.isEmpty());
    EXPECT_FALSE(nodes.sequence.extras().leavesHoles());
    EXPECT_FALSE(nodes.sequence.extras().names);
    EXPECT_EQ(nodes.at(9), nodes.sequence.findNamed("name9"));
}

TEST(ReferenceBalance, KeepsTheOrderOfWhatIsUnevenAndForgetsTheRest)
{
    ReferenceBalance balance;
    int objects[200];
    for (int& object : objects)
        balance.add(&object, 1);
    for (int i = 0; i < 190; ++i)
        balance.add(&objects[i], -1);
    balance.add(&objects[3], -2);
    balance.add(&objects[199], 4);
    balance.forget(&objects[195]);
    balance.forget(&objects[4]);
    EXPECT_EQ(0, balance.of(&objects[4]));
    EXPECT_EQ(-2, balance.of(&objects[3]));
    std::string order;
    balance.forEach([&](void* object, int uneven) {
        order += std::to_string(static_cast<int*>(object) - objects) + ":" +
                 std::to_string(uneven) + " ";
    });
    EXPECT_EQ("190:1 191:1 192:1 193:1 194:1 196:1 197:1 198:1 199:5 3:-2 ", order);
    for (int& object : objects)
        balance.forget(&object);
    EXPECT_TRUE(balance.isEmpty());
}

} // namespace
} // namespace ZEL
