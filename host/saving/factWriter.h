#pragma once

#include "saving/judge.h"

#include <unordered_set>
#include <vector>

namespace shading {

class Node;

/// Writes what the network is now into the elements of a draft, which has them at their places.
/// Private to the host's library.
class FactWriter {
public:
    /// Must outlive it.
    explicit FactWriter(DraftNetwork& network) : m_network(network) {}

    /// Writes what the elements do not say yet, and gives elements to the ports that come from
    /// nothing else. What is as it was read, and what a definition gives, is left alone.
    void writeChanges();
    /// Writes in full what was read back otherwise, so that nothing of it is left to definitions
    /// and references. False when there was nothing to write.
    bool writeInFull(const std::vector<Difference>& differences);

private:
    using PortPtr = ZEL::AddRefWrapper<ZEL::Port>;

    void writeNode(Node& node);
    void writeName(Piece& item, const char* name);
    void writePort(Node& node, ZEL::Port& port);
    void writeBindings(ZEL::Node& node);
    void writeBinding(ZEL::Node& node, ZEL::Port& receiver, ZEL::Port& outer);
    void writeValue(ZEL::Node& node, ZEL::Port& port, Piece& item, bool isLed);
    void writeOutputs(ZEL::Node& node);
    bool declare(ZEL::Node& node, ZEL::Port& port);
    bool isSaid(ZEL::Port& port) const;
    bool isGiven(const Node& node, ZEL::Port& port) const;
    bool isNamed(ZEL::Port& output) const;

    bool writeInFull(const Difference& difference);
    bool writePortInFull(const Difference& difference, ZEL::Port& port);
    bool writeType(ZEL::Node& node, ZEL::Port& port);
    bool writeOrder(ZEL::Node& node, ZEL::Port& first);
    bool writeSource(ZEL::Node& node, ZEL::Port& outer);
    bool declareAll(ZEL::Node& node);

    DraftNetwork& m_network;
    std::unordered_set<const Piece*> m_new; ///< The elements that were made for ports.
    // What the last judgement says nothing about, for something before it is wrong.
    std::unordered_set<const ZEL::Node*> m_redefined;
    std::unordered_set<const ZEL::Port*> m_missing;
};

} // namespace shading
