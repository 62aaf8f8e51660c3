#pragma once

#include "zelFuzzSteps.h"

#include <utility>

namespace zelFuzz {

/// The name of the i-th of many, by a way of naming: all alike, in pairs, each its own, and mixed.
std::string crowdName(int naming, int i);

/// So many more nodes and ports may be made in crowds, at most as many as asked for.
int roomForMany(int wanted);
/// So many more connections.
int roomForConnections(const Census& census, int wanted);

/// From 40 to 200, by the next byte: enough for tables in a list.
int pickManyCount(Universe& universe);

// One of a crowd; every third kind has a getName of its own.
NodePtr makeCrowdNode(Universe& universe, int kind, const std::string& name);
PortPtr
makeCrowdPort(Universe& universe, int kind, const std::string& name, ZEL::PortIOType ioType);

/// While it lives a step edits the list, which may be null, by itself: listeners make no step, and
/// refuse nothing if they agree.
class Scripted {
public:
    Scripted(Universe& universe, const void* list, bool isAgreed)
        : m_universe(universe),
          m_list(std::exchange(universe.scripted, list)),
          m_countdown(std::exchange(universe.countdown, 0)),
          m_agreements(isAgreed ? 1 : 0)
    {
        universe.quiet += m_agreements;
    }
    Scripted(const Scripted&) = delete;
    Scripted& operator=(const Scripted&) = delete;
    ~Scripted()
    {
        m_universe.scripted = m_list;
        m_universe.countdown = m_countdown;
        m_universe.quiet -= m_agreements;
    }

private:
    Universe& m_universe;
    const void* m_list;
    int m_countdown;
    int m_agreements;
};

} // namespace zelFuzz
