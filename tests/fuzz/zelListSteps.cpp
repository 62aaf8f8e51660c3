// Steps that edit one list many times in a row, each answer compared with a plain vector. Nobody
// walks over the list meanwhile, so that its holes and tables stay as the edits left them.

#include "zelCallerRules.h"
#include "zelCrowd.h"
#include "zelListModel.h"

namespace zelFuzz {

namespace {

/// What a script needs to know of a list of ports.
struct PortsOf {
    using List = ZEL::PortList;
    using Entry = ZEL::Port;

    Universe& universe;
    List& list;
    ListModel<List, Entry> model{list};

    PortPtr make(int kind, const std::string& name)
    {
        return makeCrowdPort(universe, kind, name, static_cast<ZEL::PortIOType>(kind % 2));
    }
    bool remove(const PortPtr& port)
    {
        if (!list.getParent())
            callerRules::disconnect(universe, *port);
        return list.remove(port);
    }
    Entry* stranger() const { return universe.stranger.get(); }
    void find(Entry* port) const
    {
        expect(list.findPort(port) == model.placeOf(port), "findPort finds another place");
    }
    void forgetNull() { list.onPortDeleted(nullptr); }
    void move(int from, int to)
    {
        const bool isForward = from < to;
        if (isForward && !list.getParent())
            callerRules::prepareMove(universe, list, from, to);
        if (!list.movePort(from, to))
            return;
        auto& entries = model.entries;
        Entry* const moved = entries[static_cast<std::size_t>(from)];
        if (!isForward)
            entries.erase(entries.begin() + from);
        entries.insert(entries.begin() + to, moved);
        if (isForward)
            entries.erase(entries.begin() + from + 1);
    }
};

/// The same for the nodes of a compound.
struct NodesOf {
    using List = ZEL::NodeList;
    using Entry = ZEL::Node;

    Universe& universe;
    List& list;
    ListModel<List, Entry> model{list};

    NodePtr make(int kind, const std::string& name) { return makeCrowdNode(universe, kind, name); }
    bool remove(const NodePtr& node) { return list.remove(node); }
    Entry* stranger() const { return universe.root.get(); }
    /// There is no search by identity; who is not in the list cannot be removed.
    void find(Entry* node) const
    {
        if (!model.has(node))
            expect(!list.remove(node), "a node was removed that is not there");
    }
    void forgetNull() { list.remove(nullptr); }
    void move(int /*from*/, int /*to*/) {}
};

/// Makes edits that the input names.
template <class Of>
class ListScript {
public:
    using Entry = typename Of::Entry;
    using Ptr = ZEL::AddRefWrapper<Entry>;

    ListScript(Universe& universe, typename Of::List& list) : m_of{universe, list} {}

    void run()
    {
        Input& input = m_of.universe.input;
        for (int left = 1 + input.number(64); left > 0 && !input.isAtEnd(); --left) {
            edit();
            m_of.model.checkSize();
        }
        m_of.model.checkAll();
        for (Entry* const entry : std::vector<Entry*>(m_of.model.entries))
            m_of.find(entry);
    }

private:
    Input& input() { return m_of.universe.input; }
    /// Of an entry; -1 when there is none.
    int pickPlace() { return m_of.model.size() == 0 ? -1 : input().place(m_of.model.size()); }
    Entry* at(int place) { return m_of.model.entries[static_cast<std::size_t>(place)]; }

    void edit()
    {
        const int action = input().number(12);
        if (action <= 1)
            return addMany(1 + input().number(60));
        const int place = pickPlace();
        if (place < 0)
            return addMany(36);
        switch (action) {
        case 2:
            return add(at(place));
        case 3:
            return remove(place);
        case 4:
        case 5:
            return removeMany(place, input().number(3), 1 + input().number(30));
        case 6:
            return move(place);
        case 7:
            return rename(place, 1);
        case 8:
            return rename(place, 1 + input().number(80));
        case 9:
            return find(place, 1 + input().number(120));
        case 10:
            return read(place, 1 + input().number(80));
        default:
            return useNull();
        }
    }
    void addMany(int count)
    {
        const int kinds = input().number(6);
        const int naming = input().byte();
        for (int i = roomForMany(count); i > 0; --i)
            add(m_of.make(i % (kinds + 1), crowdName(naming, i)));
    }
    void add(const Ptr& entry)
    {
        if (m_of.model.size() >= 400 || !m_of.list.add(entry))
            return;
        m_of.model.entries.push_back(entry.get());
        m_of.model.checkAt(m_of.model.size() - 1);
    }
    void remove(int place)
    {
        const Held<Entry> entry(m_of.universe, Ptr(at(place)));
        const bool isDone = m_of.remove(entry.wrapper());
        // A refusal may come after places that were taken out.
        m_of.model.erase(entry.wrapper().get(), m_of.model.size() - m_of.list.size());
        if constexpr (std::is_same_v<Entry, ZEL::Port>)
            expect(!isDone || !m_of.model.has(entry.wrapper().get()), "a removed port is left");
        m_of.find(m_of.stranger());
        if (m_of.model.size() % 3 == 0)
            checkRemoved(*entry);
    }
    /// It is found by another place now, if it has one. Else its names are no concern of the list.
    void checkRemoved(Entry& entry)
    {
        const std::string name = entry.getName();
        m_of.model.checkName(name.c_str());
        if (m_of.model.has(&entry))
            return;
        entry.setName("gone");
        m_of.model.checkName(name.c_str());
        m_of.model.checkName(entry.getName());
    }
    /// From the place on, from the front, or from the end.
    void removeMany(int place, int from, int count)
    {
        for (; count > 0 && m_of.model.size() > 0; --count) {
            place = from == 0 ? place : (from == 1 ? 0 : m_of.model.size() - 1);
            remove(std::min(place, m_of.model.size() - 1));
        }
    }
    void move(int from)
    {
        const int to = input().place(m_of.model.size());
        m_of.move(from, to);
        m_of.model.checkAt(to);
        m_of.model.checkAt(from);
    }
    void rename(int place, int count)
    {
        const int naming = input().byte();
        for (int i = 0; i < count; ++i) {
            const Ptr entry(at((place + i) % m_of.model.size()));
            const std::string former = entry->getName();
            entry->setName(crowdName(naming, place + i).c_str());
            m_of.model.checkName(former.c_str());
            m_of.model.checkName(entry->getName());
        }
    }
    /// By name, by identity, or both, often enough for the tables.
    void find(int place, int count)
    {
        const int ways = input().byte();
        const int step = 1 + ways % 8;
        const int only = ways / 8 % 4;
        for (; count > 0; --count) {
            Entry* const entry = at(place);
            if (only != 1)
                m_of.model.checkName(entry->getName());
            if (only != 2)
                m_of.find(entry);
            place = (place + step) % m_of.model.size();
        }
        m_of.model.checkName("no such name");
        m_of.find(m_of.stranger());
    }
    void read(int place, int count)
    {
        for (; count > 0; --count) {
            m_of.model.checkAt(place);
            place = (place * 3 + 1) % m_of.model.size();
        }
        m_of.model.checkAt(-1);
        m_of.model.checkAt(m_of.model.size());
    }
    void useNull()
    {
        m_of.forgetNull();
        expect(!m_of.list.add(nullptr) && !m_of.list.remove(nullptr) &&
                   !m_of.list[static_cast<const char*>(nullptr)],
               "a list takes null for an entry");
    }

    Of m_of;
};

/// A list that lives as long as its parent does.
void editPorts(Universe& universe)
{
    ZEL::PortList* const list = pickList(universe);
    const bool isAgreed = universe.input.number(4) > 0;
    const Scripted scripted(universe, list, isAgreed);
    ListScript<PortsOf>(universe, *list).run();
}

void editNodes(Universe& universe)
{
    ZEL::Compound* const picked = pickCompound(universe);
    const bool isAgreed = universe.input.number(4) > 0;
    if (!picked || universe.collapsing > 0)
        return;
    const Held<ZEL::Compound> compound(universe, picked);
    const Scripted scripted(universe, &compound->nodes(), isAgreed);
    ListScript<NodesOf>(universe, compound->nodes()).run();
}

} // namespace

const std::vector<Step> kListSteps = {
    {"editPorts", editPorts},
    {"editPorts", editPorts},
    {"editNodes", editNodes},
    {"editNodes", editNodes},
};

} // namespace zelFuzz
