#pragma once

#include "document/node.h"
#include "saving/draftNetwork.h"

#include <string>
#include <vector>

namespace shading {

/// One fact of the network that is read back otherwise.
struct Difference {
    enum class Fact {
        Name,       ///< Of the node, or of the port.
        NodeType,   ///< Of the node.
        Definition, ///< Of the node, which has one.
        Nodes,      ///< What the compound has inside.
        Missing,    ///< The port is not read back.
        Surplus,    ///< The node gets a port that it does not have.
        PortType,   ///< Of the port.
        Value,      ///< Of the port.
        Order,      ///< Of the ports in the list that this one is in.
        Source,     ///< What feeds the port, or its inner one.
    };

    Fact fact;
    ZEL::Node* node; ///< Not owned, never null: the node itself, or that of the port.
    ZEL::Port* port; ///< Not owned, of the node. Null where the fact is the node's.
    SaveProblem problem;
};

/// Opens what was written and compares it with the network. Private to the host's library.
class Judge {
public:
    /// Back is the draft, opened again; the elements are those of the draft, in the order in which
    /// they were written. All must outlive it.
    Judge(DraftNetwork& network, Document& back, const std::vector<Piece*>& elements);

    /// Empty: the two networks are equal.
    std::vector<Difference> differences();

private:
    using Fact = Difference::Fact;
    using Ports = std::vector<ZEL::Port*>;

    void compareNodes(Node& live, Node& back);
    void compareInside(ZEL::Compound& live, ZEL::Compound& back);
    void compareLists(Node& live, ZEL::PortList& livePorts, ZEL::PortList& backPorts);
    Ports counterparts(ZEL::PortList& livePorts, ZEL::PortList& backPorts);
    void comparePorts(Node& node, ZEL::Port& live, ZEL::Port& back);
    void compareSources(ZEL::Node& node);
    void compareSource(ZEL::Node& node, ZEL::Port& receiver, ZEL::Port& outer);
    Piece* itemAt(const Piece* element) const;
    void differ(Fact fact, ZEL::Node& node, const std::string& reason);
    void differ(Fact fact, ZEL::Node& node, ZEL::Port& port, const std::string& reason);

    DraftNetwork& m_network;
    Document& m_back;
    std::vector<Piece*> m_written;              ///< By the number of the piece that came of it.
    bool m_isWhole = true;                      ///< As many elements came back, each by its name.
    PointerMap<ZEL::Port, ZEL::Port*> m_liveOf; ///< Of sources and compounds' ports.
    PointerMap<ZEL::Port, ZEL::Port*> m_backOf; ///< Of what receives.
    std::vector<Difference> m_differences;
};

} // namespace shading
