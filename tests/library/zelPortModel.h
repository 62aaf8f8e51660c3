#pragma once

// A list of ports beside a plain vector, for zelListDifferenceTest.cpp.

#include "zelListModel.h"

#include <functional>

namespace ZEL {

/// Runs something once, in a question about a list, and refuses some questions.
struct Listener {
    bool ask()
    {
        if (during)
            std::exchange(during, nullptr)();
        return refusals == 0 || --refusals > 0;
    }
    std::function<void()> during;
    int refusals = 0; ///< The question after so many is refused; 0: none is.
};

class ListeningNode : public Node, public Listener {
public:
    ListeningNode() : Node(nullptr) {}
    using Node::operator=;
    bool onPortListPortAdded(const PortList& /*list*/, const AddRefWrapper<Port>& /*port*/) override
    {
        return ask();
    }
    bool onPortListPortRemoved(const PortList& /*list*/,
                               const AddRefWrapper<Port>& /*port*/) override
    {
        return ask();
    }
    bool onPortListPortMove(const PortList& /*list*/, int /*from*/, int /*to*/) override
    {
        return ask();
    }
};

/// A list of ports beside the vector of what should stand in it. Its length swings between short
/// and long, so that tables come and go.
class PortModel {
public:
    PortModel(PortList& list, Listener* listener, unsigned seed)
        : m_list(list),
          m_listener(listener),
          m_random(seed)
    {
    }

    void run(int steps, int longest)
    {
        for (int i = 0; i < steps && !testing::Test::HasFatalFailure(); ++i) {
            if (i % 400 == 0)
                m_goal = m_random.oneIn(3) ? m_random.below(40) : 33 + m_random.below(longest - 33);
            step();
            compare(lookAfter(m_random, i));
        }
    }

private:
    int size() const { return static_cast<int>(m_entries.size()); }

    void compare(Look look)
    {
        compareLists(m_random, m_list, m_entries, m_known, look,
                     [this](const AddRefWrapper<Port>& port, int place) {
                         ASSERT_EQ(place, m_list.findPort(port));
                     });
        ASSERT_EQ(-1, m_list.findPort(nullptr));
    }

    void step()
    {
        const bool grows = size() < m_goal;
        if (size() < 3 || m_random.below(10) < (grows ? 6 : 1))
            return add();
        switch (m_random.below(grows ? 8 : 5)) {
        case 0:
        case 1:
        case 2:
            return remove(m_random.oneIn(6) ? m_random.from(m_known) : m_random.from(m_entries));
        case 3:
            return m_random.oneIn(4) ? m_list.onPortDeleted(nullptr) : removeAtAnEnd();
        case 4:
            return removeUnasked();
        case 5:
            return move();
        default:
            return rename();
        }
    }

    void add()
    {
        const bool isKnown = !m_known.empty() && m_random.oneIn(10);
        const AddRefWrapper<Port> port = isKnown ? m_random.from(m_known) : makePort();
        const bool isRefused = m_listener && m_random.oneIn(20);
        if (isRefused)
            m_listener->refusals = 1;
        else if (m_listener && size() > 3 && m_random.oneIn(20))
            changeInTheQuestion();
        ASSERT_EQ(!isRefused, m_list.add(port));
        if (!isRefused)
            m_entries.push_back(port);
        ASSERT_FALSE(m_list.add(nullptr));
    }

    AddRefWrapper<Port> makePort()
    {
        const std::string name = drawName(m_random);
        if (m_random.oneIn(30)) {
            struct OddPort : OddlyNamed<Port> {
                explicit OddPort(const char* given) : OddlyNamed(given, PortInput) {}
            };
            m_known.emplace_back(new OddPort(name.c_str()));
            m_odd.push_back(static_cast<OddlyNamed<Port>*>(m_known.back().get()));
        } else {
            m_known.push_back(Port::createNew(name.c_str(), PortInput));
        }
        return m_known.back();
    }

    /// The next question takes an entry out, and puts another one in, before it is answered.
    void changeInTheQuestion()
    {
        m_listener->during = [this] {
            remove(m_random.from(m_entries));
            m_entries.push_back(makePort());
            ASSERT_TRUE(m_list.add(m_entries.back()));
        };
    }

    void remove(const AddRefWrapper<Port>& given)
    {
        // The vector that it stands in changes.
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
        const AddRefWrapper<Port> port(given);
        const auto places = std::count(m_entries.begin(), m_entries.end(), port);
        if (places == 0)
            return; // It would print a line.
        const bool isRefused = m_listener && m_random.oneIn(15);
        int removed = static_cast<int>(places);
        if (isRefused) {
            m_listener->refusals = 1 + m_random.below(static_cast<int>(places));
            removed = m_listener->refusals - 1;
        }
        ASSERT_EQ(!isRefused, m_list.remove(port));
        for (; removed > 0; --removed)
            m_entries.erase(std::find(m_entries.begin(), m_entries.end(), port));
    }

    void removeAtAnEnd() { remove(m_random.oneIn(2) ? m_entries.front() : m_entries.back()); }

    /// As a port that dies leaves a list. Its references in a list with a parent are lost then:
    /// here the port lives on, so they are dropped, all but one in m_known and one in each wrapper.
    void removeUnasked()
    {
        const AddRefWrapper<Port> port = m_random.from(m_entries);
        const auto places = std::count(m_entries.begin(), m_entries.end(), port);
        const int lost = port->getRefCount() - 2 - static_cast<int>(places);
        m_list.onPortDeleted(port.get());
        m_entries.erase(std::remove(m_entries.begin(), m_entries.end(), port), m_entries.end());
        for (int i = 0; i < lost; ++i)
            port->release();
    }

    void move()
    {
        const int from = m_random.below(size());
        const int to = m_random.below(m_random.oneIn(4) ? size() + 1 : from + 1);
        const bool isRefused = m_listener && from != to && m_random.oneIn(10);
        if (isRefused)
            m_listener->refusals = 1;
        ASSERT_EQ(!isRefused, m_list.movePort(from, to));
        if (isRefused || from == to)
            return;
        const AddRefWrapper<Port> moved = m_entries[static_cast<std::size_t>(from)];
        if (from > to)
            m_entries.erase(m_entries.begin() + from);
        m_entries.insert(m_entries.begin() + to, moved);
        if (from < to) // Contract: the port behind the moved one goes.
            m_entries.erase(m_entries.begin() + from + 1);
    }

    void rename()
    {
        if (!m_odd.empty() && m_random.oneIn(10)) {
            OddlyNamed<Port>* const port = m_random.from(m_odd);
            port->isOdd = !port->isOdd;
        } else if (m_random.oneIn(3)) { // As after pasting: one name for many, then one for each.
            const int first = m_random.below(size());
            for (int i = first; i < std::min(size(), first + 30); ++i)
                m_entries[static_cast<std::size_t>(i)]->setName("pasted");
        } else {
            renameSomehow(m_random, *m_random.from(m_entries));
        }
    }

    PortList& m_list;
    Listener* m_listener; ///< Null: the list has no parent.
    Random m_random;
    int m_goal = 0; ///< The length that the steps lead to.
    std::vector<AddRefWrapper<Port>> m_entries;
    std::vector<AddRefWrapper<Port>> m_known; ///< Everything that ever stood there.
    std::vector<OddlyNamed<Port>*> m_odd;
};

} // namespace ZEL
