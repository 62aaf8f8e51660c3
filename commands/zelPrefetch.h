#pragma once

#include "core/zelCacheHint.h"
#include "zelNode.h"
#include "zelPortHolds.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ZEL::CmdImpl {

// A walk over a network that no cache holds waits for memory most of the time. These ask for what
// it will meet some steps later: they change nothing, and run no code of the host.

/// Asks for the line of memory and the one behind it; any address will do.
inline void prefetchLines(std::uintptr_t address)
{
    constexpr std::uintptr_t kLine = 64;
    // NOLINTBEGIN(performance-no-int-to-ptr): nothing is read there.
    prefetchToWrite(reinterpret_cast<const void*>(address));
    prefetchToWrite(reinterpret_cast<const void*>(address + kLine));
    // NOLINTEND(performance-no-int-to-ptr)
}

inline void prefetchPort(const Port* port)
{
    prefetchLines(reinterpret_cast<std::uintptr_t>(port));
}

/// Asks for the port's parent, where a node also has its name.
inline void prefetchParent(Port& port)
{
    constexpr std::uintptr_t kFromNameOn = 64;
    prefetchLines(reinterpret_cast<std::uintptr_t>(port.getParent()) - kFromNameOn);
}

/// Asks for the two ports of a record that a walk will reach soon, and before it does, for their
/// parents and their holds. portsOf(record) gives both.
template <class Records, class PortsOf>
void prefetchRecords(const Records& records,
                     std::size_t reached,
                     PortsOf portsOf,
                     const PortHolds& holds)
{
    constexpr std::size_t kWorthIt = 10000;
    constexpr std::size_t kPortsAhead = 8;
    constexpr std::size_t kParentsAhead = 4;
    if (records.size() < kWorthIt)
        return;
    if (reached + kPortsAhead < records.size()) {
        const auto [a, b] = portsOf(records[reached + kPortsAhead]);
        prefetchPort(a);
        prefetchPort(b);
    }
    if (reached + kParentsAhead < records.size()) {
        const auto [a, b] = portsOf(records[reached + kParentsAhead]);
        prefetchParent(*a);
        prefetchParent(*b);
        holds.prefetch(a);
        holds.prefetch(b);
    }
}

/// Asks for what recording the connections of the nodes will meet some nodes later, in the order in
/// which one leads to the next: the node, its lists, its ports, their far ends, the owners of
/// those.
class RecordingPrefetch {
public:
    explicit RecordingPrefetch(const std::vector<const AddRefWrapper<Node>*>& nodes)
        : m_nodes(nodes)
    {
    }
    void onReached(std::size_t reached)
    {
        constexpr std::size_t kStep = 2;
        if (m_nodes.size() < kWorthIt)
            return;
        if (Node* const node = nodeAt(reached + 5 * kStep))
            prefetchLines(reinterpret_cast<std::uintptr_t>(node));
        if (Node* const node = nodeAt(reached + 4 * kStep))
            prefetchLines(reinterpret_cast<std::uintptr_t>(&node->inputs()));
        if (Node* const node = nodeAt(reached + 3 * kStep))
            forEachPort(*node, [](Port* port) { prefetchPort(port); });
        if (Node* const node = nodeAt(reached + 2 * kStep))
            forEachFarEnd(*node, [](Port* farEnd) { prefetchPort(farEnd); });
        if (Node* const node = nodeAt(reached + kStep))
            forEachFarEnd(*node, [](Port* farEnd) { prefetchParent(*farEnd); });
    }

private:
    static constexpr std::size_t kWorthIt = 2000;

    Node* nodeAt(std::size_t place) const
    {
        return place < m_nodes.size() ? m_nodes[place]->get() : nullptr;
    }
    template <class Visit>
    static void forEachPort(Node& node, Visit visit)
    {
        for (PortList* const list : {&node.inputs(), &node.outputs()}) {
            for (Port* const port : *list)
                visit(port);
        }
    }
    template <class Visit>
    static void forEachFarEnd(Node& node, Visit visit)
    {
        forEachPort(node, [&visit](Port* port) {
            for (Port* const farEnd : port->connectedTo())
                visit(farEnd);
        });
    }

    const std::vector<const AddRefWrapper<Node>*>& m_nodes;
};

} // namespace ZEL::CmdImpl
