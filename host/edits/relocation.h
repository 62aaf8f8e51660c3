#pragma once

#include "document/pointers.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace shading {

/// Moves nodes across the border of one graph, into it or out of it. Connections lead the same way
/// as before: those that come to cross the border get a port of the graph, one for each source, and
/// those that crossed it become direct. A port that is left with nothing to do goes. Every step may
/// be refused; taking back what was done is the journal's work.
class Relocation {
public:
    /// The nodes are all in the graph or all beside it.
    Relocation(const NodePtr& graph, const std::vector<NodePtr>& nodes, bool isInward);

    /// Returns why it cannot be done, empty when it is done.
    std::string run();

private:
    struct Link {
        PortPtr sender;
        PortPtr receiver;
    };

    void planNode(ZEL::Node& node);
    void planInput(ZEL::Port& input, const PortPtr& source);
    void planTarget(ZEL::Port& output, const PortPtr& target);
    PortPtr mirrorAcross(const PortPtr& port);
    std::string move(const NodePtr& node);
    std::string connect(const Link& link);
    void collectPorts();
    PortPtr inputFor(const PortPtr& sender, const PortPtr& receiver);
    PortPtr outputFor(const PortPtr& sender);
    bool isMoved(ZEL::Port& port) const;
    bool isInside(ZEL::Port& port) const;
    void removeIdlePorts();

    NodePtr m_graph;
    CompoundPtr m_inside;
    CompoundPtr m_from;
    CompoundPtr m_to;
    std::vector<NodePtr> m_nodes;
    std::unordered_set<ZEL::Node*> m_moved;                ///< The same, to be looked up.
    std::vector<Link> m_links;                             ///< To be made when the nodes are there.
    std::vector<Link> m_broken;                            ///< To be taken off before.
    std::vector<std::pair<PortPtr, std::string>> m_values; ///< What an input without a source gave.
    std::unordered_map<ZEL::Port*, PortPtr> m_inputs;      ///< The inner sides, by what feeds them.
    std::unordered_map<ZEL::Port*, PortPtr> m_outputs;     ///< The outer sides likewise.
    std::vector<PortPtr> m_crossed; ///< Inner ports of the graph that nodes were connected to.
    std::unordered_set<ZEL::Port*> m_isCrossed; ///< The same, to be looked up.
};

} // namespace shading
