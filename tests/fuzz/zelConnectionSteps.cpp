// Steps that edit the connections of one port many times in a row, from both of their ends, each
// answer compared with a plain vector.

#include "zelCrowd.h"
#include "zelListModel.h"

#include <algorithm>
#include <utility>

namespace zelFuzz {

namespace {

/// The connections of one port, edited from both of their ends.
class ConnectionScript {
public:
    ConnectionScript(Universe& universe, ZEL::Port& port, std::vector<ZEL::Port*> others)
        : m_universe(universe),
          m_port(port),
          m_others(std::move(others))
    {
    }

    void run()
    {
        Input& input = m_universe.input;
        for (int left = 1 + input.number(64); left > 0 && !input.isAtEnd(); --left) {
            edit();
            m_model.checkSize();
        }
        m_model.checkAll();
    }

private:
    Input& input() { return m_universe.input; }

    void edit()
    {
        const int action = input().numberOrLater(8, 8);
        const auto other =
            static_cast<std::size_t>(input().place(static_cast<int>(m_others.size())));
        const int place = m_model.size() == 0 ? -1 : input().place(m_model.size());
        if (action <= 1)
            connect(other, 1 + input().number(60));
        else if (place < 0 || action == 2)
            disconnect(*m_others[other]);
        else if (action <= 4)
            disconnectMany(place, input().number(3), 1 + input().number(30));
        else if (action == 5)
            move(place, input().number(place + 1));
        else if (action == 6)
            find(place, 1 + input().number(120));
        else if (action == 7)
            m_port.removeFromConnectedList(nullptr);
        else if (action <= 9)
            connectOften(*m_others[other], 1 + input().number(120));
        else
            disconnectStrided(place, 1 + input().number(9), 1 + input().number(120));
    }
    void connect(std::size_t first, int count)
    {
        for (int i = 0; i < count && m_model.size() < 300; ++i) {
            ZEL::Port& other = *m_others[(first + static_cast<std::size_t>(i)) % m_others.size()];
            const bool isDone =
                i % 2 == 0 ? m_port.addConnection(&other) : other.addConnection(&m_port);
            const int places = isDone ? (&other == &m_port ? 2 : 1) : 0;
            m_model.entries.insert(m_model.entries.end(), static_cast<std::size_t>(places), &other);
        }
    }
    /// All places of the pair; a port that is not connected finds nothing.
    void disconnect(ZEL::Port& other)
    {
        const bool isConnected = m_model.has(&other);
        const bool isDone = m_port.removeConnection(&other);
        expect(isConnected || !isDone, "a connection was removed that is not there");
        if (m_port.connectedTo().size() < m_model.size())
            m_model.erase(&other, m_model.size());
        expect(m_port.connectedTo().findPort(&other) == m_model.placeOf(&other),
               "a removed connection is left");
    }
    /// The pair again and again: it has as many places at the other end.
    void connectOften(ZEL::Port& other, int count)
    {
        const auto number = static_cast<std::size_t>(
            std::find(m_others.begin(), m_others.end(), &other) - m_others.begin());
        for (; count > 0; --count)
            connect(number, 1);
    }
    /// From the place on and round again, from either end of each connection.
    void disconnectStrided(int place, int stride, int count)
    {
        for (; count > 0 && m_model.size() > 0; --count) {
            place = (place + stride) % m_model.size();
            ZEL::Port& other = *m_model.entries[static_cast<std::size_t>(place)];
            if (count % 2 == 0 && &other != &m_port) {
                const int rest = other.connectedTo().size();
                const bool isDone = other.removeConnection(&m_port);
                const int places = rest - other.connectedTo().size();
                expect(!isDone || places > 0, "a connection was removed at one end only");
                m_model.erase(&other, places);
                m_model.checkSize();
            } else {
                disconnect(other);
            }
        }
    }
    void disconnectMany(int place, int from, int count)
    {
        for (; count > 0 && m_model.size() > 0; --count) {
            place = from == 0 ? place : (from == 1 ? 0 : m_model.size() - 1);
            place = std::min(place, m_model.size() - 1);
            disconnect(*m_model.entries[static_cast<std::size_t>(place)]);
        }
    }
    void move(int from, int to)
    {
        m_port.connectedTo().movePort(from, to);
        auto& entries = m_model.entries;
        std::rotate(entries.begin() + to, entries.begin() + from, entries.begin() + from + 1);
        m_model.checkAt(to);
        m_model.checkAt(from);
    }
    void find(int place, int count)
    {
        for (; count > 0; --count) {
            ZEL::Port* const entry = m_model.entries[static_cast<std::size_t>(place)];
            expect(m_port.connectedTo().findPort(entry) == m_model.placeOf(entry),
                   "findPort finds another connection");
            m_model.checkAt(place);
            m_model.checkName(entry->getName());
            place = (place * 3 + 1) % m_model.size();
        }
        expect(m_port.connectedTo().findPort(m_universe.stranger) < 0, "connected to a stranger");
    }

    Universe& m_universe;
    ZEL::Port& m_port;
    std::vector<ZEL::Port*> m_others; ///< That it is connected to, and removed from.
    ListModel<ZEL::PortList, ZEL::Port> m_model{m_port.connectedTo()};
};

void editManyConnections(Universe& universe)
{
    ZEL::Port* const port = pickPort(universe);
    const bool isAgreed = universe.input.number(4) > 0;
    const Census census = universe.census();
    if (!port || !census.ports.has(port) || roomForConnections(census, 300) < 300)
        return;
    const Scripted scripted(universe, nullptr, isAgreed);
    ConnectionScript(universe, *port, census.ports.all()).run();
}

} // namespace

const std::vector<Step> kConnectionSteps = {
    {"editManyConnections", editManyConnections},
    {"editManyConnections", editManyConnections},
};

} // namespace zelFuzz
