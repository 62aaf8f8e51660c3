#include "zelTestNetwork.h"

#include <gtest/gtest.h>

#include <vector>

namespace ZEL {
namespace {

/// A list with a listener and the ports W X Y Z. The test holds each of them as well, and alone
/// when the list has come to its end. The port N is in no list.
struct PortListTest : testing::Test {
    PortListTest() { refill(); }
    ~PortListTest() override
    {
        list = nullptr;
        expectReferences(1);
    }

    void refill()
    {
        list = PortList::createNew();
        list->setParent(&listener);
        for (PortArg port : ports)
            list->add(port);
        questions.take();
    }

    void expectReferences(int expected)
    {
        for (PortArg port : ports)
            EXPECT_EQ(expected, port->getRefCount()) << port->getName();
        EXPECT_EQ(1, n->getRefCount());
    }

    Questions questions;
    TestListener listener{questions};
    const std::vector<AddRefWrapper<Port>> ports{TestPort::make("W"), TestPort::make("X"),
                                                 TestPort::make("Y"), TestPort::make("Z")};
    PortArg w = ports[0], x = ports[1], y = ports[2], z = ports[3];
    const AddRefWrapper<Port> n = TestPort::make("N");
    AddRefWrapper<PortList> list;
};

TEST_F(PortListTest, LookupsFindTheFirstOrNothing)
{
    const AddRefWrapper<Port> second = list->addPort("X", nullptr);
    EXPECT_TRUE((*list)["X"] == x && (*list)[3] == z);
    EXPECT_EQ(4, list->findPort(second)) << "by the object, not by its name";
    for (PortArg port : {(*list)[-1], (*list)[5], (*list)["x"], (*list)[nullptr]})
        EXPECT_EQ(nullptr, port);
    EXPECT_TRUE(list->findPort(n) == -1 && list->findPort(nullptr) == -1);
}

TEST_F(PortListTest, AddSetsTheParentThenAsksAndARefusalLeavesItSet)
{
    const AddRefWrapper<Port> added = TestPort::make("A");
    questions.during = [&] { EXPECT_EQ(&listener, added->getParent()); };
    EXPECT_TRUE(list->add(added) && list->add(added)) << "doubles are not checked";
    EXPECT_EQ("listener: add A to W X Y Z; listener: add A to W X Y Z A", questions.take());
    EXPECT_EQ(3, added->getRefCount());
    EXPECT_FALSE(list->add(nullptr));
    questions.refused = "add";
    EXPECT_FALSE(list->add(n));
    const AddRefWrapper<Port> refused = list->addPort("M", nullptr);
    EXPECT_TRUE(n->getParent() == &listener && refused->getParent() == &listener);
    EXPECT_EQ(1, refused->getRefCount()) << "returned, but in no list";
    EXPECT_EQ("W X Y Z A A", names(*list));
}

TEST_F(PortListTest, AddPortGivesTypeAndDirectionAndAsksForTheAddingOnly)
{
    const AddRefWrapper<PortDataType> type = PortDataType::createNew("Float");
    list->addPort("I", type);
    list->setPortIOType(PortOutput);
    const AddRefWrapper<Port> port = list->addPort("O", type);
    EXPECT_TRUE(port == (*list)[5] && port->getDataType() == type);
    EXPECT_EQ(PortInput, (*list)[4]->getPortIOType());
    EXPECT_EQ(PortOutput, port->getPortIOType());
    EXPECT_EQ("listener: add I to W X Y Z; listener: add O to W X Y Z I", questions.take());
}

TEST_F(PortListTest, WithoutAParentNobodyIsAskedAndNothingHeld)
{
    AddRefWrapper<PortList> loose = PortList::createNew();
    EXPECT_EQ(1, loose->getRefCount());
    EXPECT_TRUE(loose->add(n) && loose->add(w) && loose->add(x) && loose->remove(x));
    EXPECT_TRUE(!n->getParent() && w->getParent() == &listener && !loose->getParent());
    EXPECT_TRUE(loose->movePort(0, 2));
    EXPECT_EQ("N N", names(*loose));
    EXPECT_EQ("", questions.take());
    loose = nullptr;
    expectReferences(2);
}

TEST_F(PortListTest, ParentAtTheEndDecidesWhatIsReleased)
{
    list->setParent(nullptr);
    list = nullptr;
    expectReferences(2);
    list = PortList::createNew();
    for (PortArg port : ports)
        list->add(port);
    list->setParent(&listener);
    expectReferences(2); // And 1 when the list has come to its end.
}

TEST_F(PortListTest, RemoveAsksForEachPlaceAndReleasesEach)
{
    list->add(w);
    list->add(w);
    questions.take();
    questions.refused = "from Y";
    EXPECT_TRUE(list->remove(x));
    EXPECT_FALSE(list->remove(w));
    EXPECT_EQ("listener: remove X from W X Y Z W W; listener: remove W from W Y Z W W; "
              "listener: remove W from Y Z W W",
              questions.take());
    EXPECT_EQ("Y Z W W", names(*list));
    EXPECT_EQ(3, w->getRefCount());
    questions.refused = "";
    EXPECT_TRUE(list->remove(w));
    EXPECT_EQ(1, w->getRefCount());
    EXPECT_EQ(&listener, w->getParent()) << "kept";
    questions.take();
    EXPECT_EQ("ZEL::did not find a connection to remove to listener.W\n",
              printed([&] { EXPECT_FALSE(list->remove(w) || list->remove(nullptr)); }));
    EXPECT_EQ("", questions.take());
}

TEST_F(PortListTest, MovesAskBeforeAndTellAfter)
{
    const struct {
        const char *name, *ports;
        int from, to;
        bool moves, asks;
    } cases[] = {
        {"back: ordinary", "Y W X Z", 2, 0, true, true},
        {"back by one", "W X Z Y", 3, 2, true, true},
        {"forward: repeats the port", "W W Y Z", 0, 2, true, true},
        {"forward to the end", "W X Z X", 1, 4, true, true},
        {"forward by one: as it was", "W X Y Z", 1, 2, true, true},
        {"last to the end: as it was", "W X Y Z", 3, 4, true, true},
        {"same place", "W X Y Z", 1, 1, true, false},
        {"same place at the end", "W X Y Z", 4, 4, true, false},
        {"from before the start", "W X Y Z", -1, 2, false, false},
        {"to before the start", "W X Y Z", 2, -1, false, false},
        {"from past the end", "W X Y Z", 5, 0, false, false},
        {"to past the end", "W X Y Z", 0, 5, false, false},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        const std::string places = std::to_string(row.from) + " " + std::to_string(row.to) + " in ";
        const std::string asked = row.asks ? "listener: move " + places + "W X Y Z" : "";
        const std::string told = row.asks ? "; listener: moved " + places + row.ports : "";
        refill();
        questions.refused = "move ";
        EXPECT_EQ(row.moves && !row.asks, list->movePort(row.from, row.to));
        EXPECT_EQ(asked, questions.take());
        EXPECT_EQ("W X Y Z", names(*list));
        questions.refused = "";
        EXPECT_EQ(row.moves, list->movePort(row.from, row.to));
        EXPECT_EQ(asked + told, questions.take());
        EXPECT_EQ(row.ports, names(*list));
    }
}

TEST_F(PortListTest, ForwardMovesReleaseExactlyWhatWasTaken)
{
    for (int i = 0; i < 4 * 5 * 4 * 5 * 4; ++i) { // Every two moves, then every port removed.
        refill();
        list->movePort(i % 4, i / 4 % 5);
        list->movePort(i / 20 % 4, i / 80 % 5);
        SCOPED_TRACE(names(*list) + ", case " + std::to_string(i));
        expectReferences(2);
        PortArg port = ports[i / 400];
        const bool stands = list->findPort(port) >= 0;
        EXPECT_TRUE(!stands || list->remove(port));
        EXPECT_EQ(stands ? 1 : 2, port->getRefCount());
        list = nullptr;
        expectReferences(1);
        ASSERT_FALSE(HasFailure());
    }
}

TEST_F(PortListTest, PortDroppedByAForwardMoveLivesAsLongAsTheList)
{
    const int before = Live::count;
    list->add(TestPort::make("Last"));
    list->movePort(3, 5);
    EXPECT_EQ("W X Y Z Z", names(*list));
    EXPECT_EQ(before + 1, Live::count);
    list->movePort(0, 2);
    EXPECT_TRUE(list->add(x) && x->getRefCount() == 3);
    EXPECT_TRUE(list->remove(x) && x->getRefCount() == 2);
    list = nullptr;
    EXPECT_EQ(before, Live::count);
}

TEST_F(PortListTest, CopyReleasesWhatItNeverTookAndATargetWhatItHeld)
{
    list->setPortIOType(PortOutput);
    for (PortArg port : ports)
        port->addRef(), port->addRef();
    const AddRefWrapper<Port> old = TestPort::make("old");
    {
        PortList copy(*list);
        PortList target;
        TestListener other(questions);
        target.setParent(&other);
        target.add(old);
        target = copy;
        const PortList& itself = target;
        target = itself;
        for (PortList* each : {&copy, &target}) {
            EXPECT_EQ("W X Y Z", names(*each));
            EXPECT_EQ(&listener, each->getParent());
            EXPECT_EQ(PortOutput, each->addPort("M", nullptr)->getPortIOType());
        }
        expectReferences(4);
        EXPECT_EQ(2, old->getRefCount());
    }
    expectReferences(2);
    EXPECT_EQ(1, old->getRefCount());
}

TEST_F(PortListTest, DeletedPortGoesEverywhereUnaskedAndUnreleased)
{
    list->add(w);
    questions.take();
    list->onPortDeleted(w.get());
    EXPECT_EQ("X Y Z", names(*list) + questions.take());
    EXPECT_EQ(3, w->getRefCount());
    w->release();
    w->release();
}

TEST_F(PortListTest, ListenerMayChangeTheListAtWork)
{
    const struct {
        const char* name;
        std::function<bool()> step;
        std::function<void()> during;
        bool result;
        const char* ports;
    } cases[] = {
        {"same port", [&] { return list->remove(y); }, [&] { list->remove(y); }, true, "W X Z"},
        {"one before", [&] { return list->remove(y); }, [&] { list->remove(w); }, true, "X Z"},
        {"one behind", [&] { return list->remove(y); }, [&] { list->remove(z); }, true, "W X"},
        {"add", [&] { return list->add(w); }, [&] { list->add(x); }, true, "W X Y Z X W"},
        {"move", [&] { return list->movePort(3, 0); }, [&] { list->remove(x); }, false, "W Y Z"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        refill();
        questions.during = row.during;
        EXPECT_EQ("", printed([&] { EXPECT_EQ(row.result, row.step()); }));
        EXPECT_EQ(row.ports, names(*list));
    }
}

TEST_F(PortListTest, ListMayLoseItsLastReferenceInEveryQuestion)
{
    using Step = void (*)(PortList&);
    const Step steps[] = {
        [](PortList& dying) { dying.addPort("M", nullptr); },
        [](PortList& dying) { dying.remove(dying[1]); },
        [](PortList& dying) { dying.movePort(2, 0); },
    };
    for (const Step step : steps) {
        refill();
        questions.during = [&] { list = nullptr; };
        step(*list);
        expectReferences(1);
    }
}

} // namespace
} // namespace ZEL
