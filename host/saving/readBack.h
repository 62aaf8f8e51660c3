#pragma once

#include "document/node.h"
#include "saving/draftNetwork.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace shading {

/// Compares a network with what its draft is read back as, and writes into the draft what is
/// missing there or comes back different. So an element says no more than the reader needs. Private
/// to the host's library.
class ReadBack {
public:
    /// Back is the draft, opened again; the elements are those of the draft, in the order in which
    /// they were written. All must outlive it.
    ReadBack(DraftNetwork& network, Document& back, const std::vector<Piece*>& elements);

    void run();
    /// What came back different. Empty: the two networks are equal.
    const std::vector<SaveProblem>& differences() const { return m_differences; }
    /// True when something was written into the draft.
    bool hasChanged() const { return m_hasChanged; }

private:
    using Ports = std::vector<ZEL::Port*>;

    void compareNodes(Node& live, Node& back);
    void compareInside(ZEL::Compound& live, ZEL::Compound& back);
    void compareLists(Node& live, Node& back, ZEL::PortList& livePorts, ZEL::PortList& backPorts);
    Ports counterparts(ZEL::PortList& livePorts, ZEL::PortList& backPorts);
    void comparePorts(Node& node, ZEL::Port& live, ZEL::Port& back);
    bool writeType(Node& node, ZEL::Port& live);
    void compareOrder(Node& node, ZEL::PortList& livePorts, const Ports& found);
    void declareMissing();
    void compareSources(ZEL::Node& node);
    void compareSource(ZEL::Node& node, ZEL::Port& receiver, ZEL::Port& outer);
    Piece* itemAt(const Piece* element) const;
    void differ(const std::string& path, const std::string& reason, bool isWritten);

    DraftNetwork& m_network;
    Document& m_back;
    std::vector<Piece*> m_written; ///< By the number of the piece that came of it.
    std::unordered_map<const ZEL::Port*, ZEL::Port*> m_liveOf; ///< Of sources and compounds' ports.
    std::unordered_map<const ZEL::Port*, ZEL::Port*> m_backOf; ///< Of what receives.
    std::vector<std::pair<Node*, ZEL::Port*>> m_missing; ///< Live ports without a counterpart.
    std::vector<Node*> m_unclear;                        ///< Their ports are not as they are live.
    std::vector<SaveProblem> m_differences;
    bool m_hasChanged = false;
};

} // namespace shading
