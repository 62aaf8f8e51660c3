#pragma once

#include "zelPort.h"

namespace ZEL {

/// The two lists of a node, its inputs and its outputs, in one block of memory. Each is counted for
/// itself, since others may hold it longer than the node: the block is freed with the second of
/// them.
class PortListPair {
public:
    /// A new pair, held by one reference to each list.
    static PortListPair* createNew();
    PortListPair(const PortListPair&) = delete;
    PortListPair& operator=(const PortListPair&) = delete;
    ~PortListPair() = delete; // The lists go one by one.

    PortList& inputs() { return m_inputs; }
    PortList& outputs() { return m_outputs; }

    /// Adds a reference to each list.
    void addRef();
    /// Drops a reference of each list, of the inputs first. The pair may be gone afterwards.
    void release();

private:
    /// A list that lies in a pair, behind so many others.
    template <int place>
    class Half : public PortList {
    public:
        /// Gets the address of a list whose destructor has run.
        static void operator delete(void* list);
    };

    PortListPair();
    void onListDied();

    Half<0> m_inputs;
    Half<1> m_outputs;
    int m_alive = 2; ///< Lists.
};

} // namespace ZEL
