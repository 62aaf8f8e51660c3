// Thousands of random edits of connections against the model in zelConnectionModel.h: ports of
// nodes, inner ports of a compound and ports without an owner, listeners that refuse and edit, and
// changes of one end by hand, after which the two ends do not know each other as often.

#include "zelConnectionModel.h"

namespace ZEL {
namespace {

using Kind = ConnectionEdit::Kind;

/// What a run does beside connecting and disconnecting.
struct Manner {
    const char* name;
    int inputs;       ///< How many there are.
    int longest;      ///< Connections of a hub.
    int oddOneIn;     ///< One step in so many is made by hand; 0: none.
    int plannedOneIn; ///< In one step in so many the listeners refuse or edit; 0: none.
    int renewedOneIn; ///< In one step in so many a port dies and another comes; 0: none.
};

class RandomConnections {
public:
    RandomConnections(const Manner& manner, unsigned seed)
        : m_manner(manner),
          m_random(seed),
          m_pair(places(manner.inputs), seed)
    {
    }

    void run(int steps)
    {
        for (int step = 0; step < steps && !testing::Test::HasFatalFailure(); ++step) {
            if (step % 250 == 0)
                beginPhase();
            m_pair.make(pickEdit(), pickPlan());
            if (m_manner.renewedOneIn > 0 && m_random.oneIn(m_manner.renewedOneIn))
                m_pair.renew(pickFree());
            const Look look = lookAfter(m_random, step);
            m_pair.compare(m_hub, look);
            if (look == Look::Whole && (step % 16 == 0 || m_manner.inputs < 20))
                compareAll();
        }
        compareAll();
    }

private:
    /// The hubs come first: outputs, and the inner ports of both directions.
    static constexpr int kHubs = 8;

    static std::vector<PortPlace> places(int inputs)
    {
        std::vector<PortPlace> result = {
            {PortPlace::FirstNode, PortOutput}, {PortPlace::Nobody, PortOutput},
            {PortPlace::Inside, PortOutput},    {PortPlace::Inside, PortInput},
            {PortPlace::FirstNode, PortOutput}, {PortPlace::SecondNode, PortOutput},
            {PortPlace::Inside, PortOutput},    {PortPlace::Inside, PortInput}};
        for (int i = 0; i < inputs; ++i) {
            const auto owner = i % 4 == 1   ? PortPlace::FirstNode
                               : i % 4 == 3 ? PortPlace::SecondNode
                                            : PortPlace::Nobody;
            result.push_back({owner, i % 9 == 8 ? PortOutput : PortInput});
        }
        return result;
    }

    ModelledConnections& model() { return m_pair.model; }
    int pickAny() { return m_random.below(model().portCount()); }
    int pickFree() { return kHubs + 2 * m_random.below((m_manner.inputs + 1) / 2); }

    void beginPhase()
    {
        m_hub = m_random.below(m_random.oneIn(3) ? kHubs : 4);
        m_goal = m_random.oneIn(3) ? m_random.below(40) : m_random.below(m_manner.longest);
        m_order = m_random.below(6);
        m_partner = m_random.oneIn(3) ? m_random.below(kHubs) : -1;
    }

    ConnectionEdit pickEdit()
    {
        if (m_manner.oddOneIn > 0 && m_random.oneIn(m_manner.oddOneIn))
            return pickOddEdit();
        if (m_random.oneIn(300))
            return {Kind::DisconnectAll, m_random.oneIn(2) ? pickAny() : m_hub, pickAny()};
        const bool isShort = model().size(m_hub) < m_goal;
        if (model().size(m_hub) == 0 || m_random.below(10) < (isShort ? 8 : 2))
            return turned({Kind::Connect, m_hub, pickPartner()});
        if (m_random.oneIn(20))
            return turned({Kind::Disconnect, pickAny(), pickAny()});
        const int place = pickPlace(model().size(m_hub));
        return turned(
            {Kind::Disconnect, m_hub, model().list(m_hub)[static_cast<std::size_t>(place)]});
    }

    ConnectionEdit turned(ConnectionEdit edit)
    {
        if (m_random.oneIn(2))
            std::swap(edit.port, edit.other);
        return edit;
    }

    int pickPartner()
    {
        if (m_partner >= 0 && m_random.oneIn(2))
            return m_partner; // Again and again: the pair has many places.
        if (m_random.oneIn(30))
            return m_hub;
        if (m_random.oneIn(8))
            return m_random.below(kHubs);
        m_next = (m_next + 1) % m_manner.inputs;
        return kHubs + (m_random.oneIn(3) ? m_random.below(m_manner.inputs) : m_next);
    }

    int pickPlace(int count)
    {
        const int step = ++m_step;
        switch (m_order) {
        case 0:
            return 0;
        case 1:
            return count - 1;
        case 2:
            return step % 2 ? 0 : count - 1;
        case 3:
            return step * 5 % count;
        case 4:
            return std::min(count - 1, step % 40); // Runs, and jumps back.
        default:
            return m_random.below(count);
        }
    }

    /// By hand, at one end only; or as a node that leaves its list does it.
    ConnectionEdit pickOddEdit()
    {
        ConnectionEdit edit;
        const Kind kinds[] = {Kind::MakeForget,   Kind::AddByHand,  Kind::RemoveByHand,
                              Kind::ForgetByHand, Kind::MoveByHand, Kind::MoveByHand,
                              Kind::AssignByHand, Kind::LeaveNodes, Kind::ReturnNode,
                              Kind::Forget,       Kind::AddByHand,  Kind::MakeForgetByHand};
        edit.kind = m_random.from(kinds);
        edit.port = m_random.oneIn(3) ? pickAny() : m_hub;
        edit.other = m_random.oneIn(3) || model().size(m_hub) == 0
                         ? pickAny()
                         : m_random.from(model().list(m_hub));
        if (m_random.oneIn(3))
            std::swap(edit.port, edit.other);
        if (edit.kind == Kind::ReturnNode && model().place(edit.port).owner != PortPlace::FirstNode)
            edit.kind = Kind::Connect; // Not a compound's node into the compound itself.
        if (edit.kind == Kind::AssignByHand && !m_random.oneIn(8))
            edit.kind = Kind::AddByHand;
        const int count = model().size(edit.port);
        edit.from = m_random.below(count + 2) - 1;
        edit.to = m_random.oneIn(2) ? m_random.below(count + 3) - 1 : m_random.below(count + 1) / 2;
        return edit;
    }

    ConnectionPlan pickPlan()
    {
        ConnectionPlan plan;
        if (m_manner.plannedOneIn == 0 || !m_random.oneIn(m_manner.plannedOneIn))
            return plan;
        plan.refusesEvery = m_random.below(4);
        for (int i = m_random.below(4); i > 0; --i)
            plan.inside.emplace_back(1 + m_random.below(m_random.oneIn(3) ? 60 : 3), pickInside());
        return plan;
    }

    /// Often just what is asked about.
    ConnectionEdit pickInside()
    {
        if (m_random.oneIn(12))
            return {Kind::DisconnectAll, m_hub, pickAny()};
        return m_manner.oddOneIn > 0 && m_random.oneIn(3) ? pickOddEdit() : pickEdit();
    }

    void compareAll()
    {
        m_pair.compareAll(Look::Whole);
        if (m_manner.oddOneIn > 0)
            return;
        for (int hub = 0; hub < kHubs; ++hub) {
            for (int port = 0; port < model().portCount(); ++port)
                ASSERT_EQ(model().count(hub, port), model().count(port, hub));
        }
    }

    Manner m_manner;
    Random m_random;
    ConnectionPair m_pair;
    int m_hub = 0;      ///< Whose connections come and go in this phase.
    int m_goal = 0;     ///< How many it shall have.
    int m_order = 0;    ///< In which they are taken off.
    int m_partner = -1; ///< Another hub that it is connected to often; -1: none.
    int m_next = 0;
    int m_step = 0;
};

const Manner kManners[] = {
    {"few ports", 6, 20, 0, 0, 40},
    {"few ports, many doubles", 3, 150, 0, 4, 0},
    {"hubs", 60, 90, 0, 0, 0},
    {"hubs and listeners", 60, 90, 0, 3, 50},
    {"long hubs", 400, 500, 0, 0, 100},
    {"long hubs and listeners", 400, 500, 0, 5, 100},
    {"few ports, by hand", 5, 20, 4, 3, 40},
    {"hubs, by hand", 60, 120, 12, 0, 60},
    {"hubs, by hand, and listeners", 60, 120, 12, 4, 60},
    {"long hubs, seldom by hand", 300, 400, 150, 20, 60},
};

TEST(ConnectionDifference, AnswersAsVectorsDoAtBothEnds)
{
    for (const Manner& manner : kManners) {
        for (unsigned seed = 1; seed <= 4; ++seed) {
            SCOPED_TRACE(manner.name + std::string(", seed ") + std::to_string(seed));
            RandomConnections(manner, seed).run(stepCount(2000));
            if (HasFatalFailure())
                return;
        }
    }
}

} // namespace
} // namespace ZEL
