// Connections of hubs of many lengths, taken off in every order and from either end, against the
// model in zelConnectionModel.h.

#include "zelConnectionModel.h"

namespace ZEL {
namespace {

using Kind = ConnectionEdit::Kind;

constexpr int kFirstHub = 0;  ///< An output of the first node.
constexpr int kSecondHub = 1; ///< An output without an owner.
constexpr int kFirstInput = 2;

std::vector<PortPlace> hubsAndInputs(int inputs)
{
    std::vector<PortPlace> places = {{PortPlace::FirstNode, PortOutput},
                                     {PortPlace::Nobody, PortOutput}};
    for (int i = 0; i < inputs; ++i)
        places.push_back({i % 3 == 0 ? PortPlace::SecondNode : PortPlace::Nobody, PortInput});
    return places;
}

/// The order in which the entries of a list leave it.
enum class Order { FirstToLast, LastToFirst, Ends, Middle, Strided, EverySecond, Shuffled };
constexpr Order kOrders[] = {Order::FirstToLast, Order::LastToFirst, Order::Ends,    Order::Middle,
                             Order::Strided,     Order::EverySecond, Order::Shuffled};

/// Gives places of a list of the length that is told, in an order.
class OrderWalk {
public:
    OrderWalk(Order order, Random& random) : m_order(order), m_random(random) {}

    int nextPlace(int count)
    {
        const int step = m_step++;
        switch (m_order) {
        case Order::FirstToLast:
            return 0;
        case Order::LastToFirst:
            return count - 1;
        case Order::Ends:
            return step % 2 == 0 ? 0 : count - 1;
        case Order::Middle:
            return count / 2;
        case Order::Strided:
            return step * 7 % count;
        case Order::EverySecond: // Each that leaves moves the rest up: one further on is skipped.
            m_skipped = m_skipped + 1 < count ? m_skipped + 1 : 0;
            return m_skipped;
        default:
            return m_random.below(count);
        }
    }

private:
    Order m_order;
    Random& m_random;
    int m_step = 0;
    int m_skipped = 0;
};

/// How the first hub is connected, and what else is.
struct Shape {
    const char* name;
    void (*connect)(ConnectionPair& pair, int count);
};

void connectInputs(ConnectionPair& pair, int hub, int count)
{
    for (int i = 0; i < count; ++i) {
        const int input = kFirstInput + i;
        pair.make(i % 2 ? ConnectionEdit{Kind::Connect, input, hub}
                        : ConnectionEdit{Kind::Connect, hub, input});
    }
}

const Shape kShapes[] = {
    {"plain", [](ConnectionPair& pair, int count) { connectInputs(pair, kFirstHub, count); }},
    {"doubles side by side",
     [](ConnectionPair& pair, int count) {
         for (int i = 0; i < count; ++i)
             pair.make({Kind::Connect, kFirstHub, kFirstInput + i / 2});
     }},
    {"doubles far apart",
     [](ConnectionPair& pair, int count) {
         connectInputs(pair, kFirstHub, (count + 1) / 2);
         connectInputs(pair, kFirstHub, count / 2);
     }},
    {"inputs with two sources",
     [](ConnectionPair& pair, int count) {
         connectInputs(pair, kSecondHub, count);
         connectInputs(pair, kFirstHub, count);
         pair.make({Kind::Connect, kSecondHub, kFirstInput});
     }},
    {"two hubs connected with each other",
     [](ConnectionPair& pair, int count) {
         connectInputs(pair, kSecondHub, count / 2);
         for (int i = 0; i < count / 3; ++i)
             pair.make({Kind::Connect, kFirstHub, kSecondHub});
         connectInputs(pair, kFirstHub, count - 2 * (count / 3));
         for (int i = 0; i < count / 3; ++i)
             pair.make({Kind::Connect, kSecondHub, kFirstHub});
     }},
    {"an input with many sources, and itself",
     [](ConnectionPair& pair, int count) {
         for (int i = 0; i < count; ++i) { // Inputs of the hub's node may be sources of no one.
             pair.make({Kind::Connect, kFirstHub, kFirstInput});
             pair.make({Kind::Connect, kSecondHub, kFirstInput});
             if (i % 16 == 5)
                 pair.make({Kind::Connect, kFirstHub, kFirstHub});
         }
         connectInputs(pair, kFirstHub, count);
     }},
};

/// Takes the connections of the hub off until so many are left.
void disconnect(ConnectionPair& pair, OrderWalk walk, Random& random, int left, int lookEvery)
{
    for (int step = 1; pair.model.size(kFirstHub) > left; ++step) {
        const int place = walk.nextPlace(pair.model.size(kFirstHub));
        const int other = pair.model.list(kFirstHub)[static_cast<std::size_t>(place)];
        pair.make(random.oneIn(2) ? ConnectionEdit{Kind::Disconnect, other, kFirstHub}
                                  : ConnectionEdit{Kind::Disconnect, kFirstHub, other});
        if (lookEvery > 0 && step % lookEvery == 0) {
            pair.compare(kFirstHub, Look::Whole);
            pair.compare(other, Look::Whole);
        } else if (lookEvery > 0 && step % lookEvery == 1) {
            pair.compare(kFirstHub, Look::Some);
        }
        if (testing::Test::HasFatalFailure())
            return;
    }
}

TEST(ConnectionOrder, EveryShapeAndLengthLosesItsConnectionsInEveryOrder)
{
    Random random(1);
    for (const int count : {1, 2, 3, 15, 16, 17, 31, 32, 33, 34, 63, 64, 65, 100, 1000}) {
        for (const Shape& shape : kShapes) {
            ConnectionPair pair(hubsAndInputs(count), static_cast<unsigned>(count));
            for (const Order order : kOrders) {
                SCOPED_TRACE(shape.name + std::string(" ") + std::to_string(count) + ", order " +
                             std::to_string(static_cast<int>(order)));
                const int lookEvery[] = {0, count < 100 ? 1 : 150, 7 + count / 8};
                const int every = lookEvery[random.below(3)];
                shape.connect(pair, count);
                disconnect(pair, {order, random}, random, 0, every);
                pair.compareAll(Look::Whole);
                if (HasFatalFailure())
                    return;
                pair.make({Kind::DisconnectAll, kSecondHub, kFirstInput});
            }
        }
    }
}

TEST(ConnectionOrder, HolesAreUsedAgainAndClosedByWhatIsConnectedInBetween)
{
    Random random(2);
    for (const int count : {33, 64, 200, 700}) {
        for (const Order order : kOrders) {
            for (const Order next : {Order::FirstToLast, Order::Ends, Order::Shuffled}) {
                SCOPED_TRACE(std::to_string(count) + ", orders " +
                             std::to_string(static_cast<int>(order)) + " " +
                             std::to_string(static_cast<int>(next)));
                ConnectionPair pair(hubsAndInputs(count), 3);
                connectInputs(pair, kFirstHub, count);
                for (const int left : {count - count / 8, count / 2, 18, 15}) {
                    const int every = random.oneIn(2) ? 0 : 60;
                    disconnect(pair, {order, random}, random, left, every);
                    const int missing = count - pair.model.size(kFirstHub);
                    connectInputs(pair, kFirstHub, random.below(missing + 1));
                    disconnect(pair, {next, random}, random, left, every);
                }
                pair.make({Kind::DisconnectAll, kFirstHub, kFirstInput});
                pair.compareAll(Look::Whole);
                if (HasFatalFailure())
                    return;
            }
        }
    }
}

TEST(ConnectionOrder, RemoveAllLeavesWhatIsRefusedInItsOrder)
{
    for (const int count : {1, 2, 3, 31, 32, 33, 65, 100, 1000}) {
        for (const Shape& shape : kShapes) {
            for (const int refusesEvery : {0, 1, 2, 3, 7}) {
                SCOPED_TRACE(shape.name + std::string(" ") + std::to_string(count) +
                             ", refused every " + std::to_string(refusesEvery));
                ConnectionPair pair(hubsAndInputs(count), 5);
                shape.connect(pair, count);
                ConnectionPlan plan;
                plan.refusesEvery = refusesEvery;
                for (int round = 0; round < 2; ++round) {
                    pair.make({Kind::DisconnectAll, kFirstHub, kFirstInput}, plan);
                    pair.make({Kind::DisconnectAll, kFirstInput, kFirstHub}, plan);
                    pair.compare(kFirstHub, Look::Some);
                }
                shape.connect(pair, count / 2);
                pair.make({Kind::DisconnectAll, kFirstHub, kFirstInput});
                pair.compareAll(Look::Whole);
                if (HasFatalFailure())
                    return;
            }
        }
    }
}

/// A hub, its first input and so many others, changed at one end by hand and then connected again.
void changeByHandAndConnect(Kind kind, int others, bool isTurned, bool callsHub)
{
    ConnectionPair pair(hubsAndInputs(others + 1), 7);
    connectInputs(pair, kFirstHub, others + 1);
    const bool isAssignment = kind == Kind::AssignByHand;
    const int hub = isAssignment && !isTurned ? kSecondHub : kFirstHub;
    ConnectionEdit edit{kind, hub, isAssignment ? kFirstHub + kSecondHub - hub : kFirstInput, 0, 2};
    if (isTurned && !isAssignment)
        std::swap(edit.port, edit.other);
    pair.make(edit);
    for (int i = 0; i < std::min(others + 1, 3); ++i) {
        const int input = kFirstInput + i;
        pair.make({Kind::Connect, hub, input});
        pair.make({Kind::Disconnect, callsHub ? hub : input, callsHub ? input : hub});
        pair.compareAll(Look::Whole);
    }
    pair.make({Kind::DisconnectAll, callsHub ? hub : kFirstInput, hub});
    pair.make({Kind::DisconnectAll, callsHub ? kFirstInput : hub, hub});
    pair.compareAll(Look::Whole);
}

TEST(ConnectionOrder, APairThatIsUnevenByHandIsConnectedAgainAndTakenOff)
{
    for (int kind = Kind::LeaveNodes; kind < Kind::kKinds; ++kind) {
        for (const int others : {0, 1, 2, 31, 40, 100}) {
            for (const int ways : {0, 1, 2, 3}) {
                SCOPED_TRACE(testing::PrintToString(std::make_tuple(kind, others, ways)));
                changeByHandAndConnect(static_cast<Kind>(kind), others, ways % 2 != 0, ways > 1);
                if (HasFatalFailure())
                    return;
            }
        }
    }
}

} // namespace
} // namespace ZEL
