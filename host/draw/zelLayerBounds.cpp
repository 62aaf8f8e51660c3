#include "draw/zelLayerBounds.h"

namespace zelDraw {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// Walks along the edges, depth first.
class EdgeWalk {
public:
    explicit EdgeWalk(const LayoutGraph& graph)
        : m_targets(graph.boxes.size()),
          m_states(graph.boxes.size(), State::New),
          m_leadsOn(graph.boxes.size(), false)
    {
        std::vector<bool> isFed(graph.boxes.size(), false);
        for (const LayoutEdge& edge : graph.edges) {
            m_targets[edge.source].push_back(edge.target);
            isFed[edge.target] = isFed[edge.target] || edge.source != edge.target;
        }
        for (std::size_t i = 0; i < isFed.size(); ++i) {
            if (!isFed[i])
                walkFrom(i);
        }
        for (std::size_t i = 0; i < isFed.size(); ++i)
            walkFrom(i); // What is left hangs on cycles.
    }

    /// Every box is reached from one of them.
    const std::vector<std::size_t>& roots() const { return m_roots; }
    /// True when the box has an edge that closes no cycle.
    bool leadsOn(std::size_t box) const { return m_leadsOn[box]; }

private:
    enum class State { New, OnTheWay, Done };
    struct Visit {
        std::size_t box;
        std::size_t next; ///< The target to look at next.
    };

    void walkFrom(std::size_t root)
    {
        if (m_states[root] != State::New)
            return;
        m_roots.push_back(root);
        std::vector<Visit> way = {{root, 0}};
        m_states[root] = State::OnTheWay;
        while (!way.empty()) {
            Visit& visit = way.back();
            if (visit.next == m_targets[visit.box].size()) {
                m_states[visit.box] = State::Done;
                way.pop_back();
                continue;
            }
            const std::size_t target = m_targets[visit.box][visit.next++];
            if (m_states[target] == State::OnTheWay)
                continue;
            m_leadsOn[visit.box] = true;
            if (m_states[target] == State::New) {
                m_states[target] = State::OnTheWay;
                way.push_back({target, 0});
            }
        }
    }

    std::vector<std::vector<std::size_t>> m_targets; ///< By source.
    std::vector<State> m_states;
    std::vector<std::size_t> m_roots;
    std::vector<bool> m_leadsOn;
};

std::size_t boxOf(const LayoutGraph& graph, LayoutBox::Layer layer)
{
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        if (graph.boxes[i].layer == layer)
            return i;
    }
    return kNone;
}

} // namespace

std::vector<std::pair<std::size_t, std::size_t>> layerBounds(const LayoutGraph& graph)
{
    const std::size_t first = boxOf(graph, LayoutBox::Layer::First);
    const std::size_t last = boxOf(graph, LayoutBox::Layer::Last);
    const EdgeWalk walk(graph);
    std::vector<std::pair<std::size_t, std::size_t>> bounds;
    for (const std::size_t root : walk.roots()) {
        if (first != kNone && root != first && root != last)
            bounds.emplace_back(first, root);
    }
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        if (last != kNone && i != first && i != last && !walk.leadsOn(i))
            bounds.emplace_back(i, last);
    }
    if (first != kNone && last != kNone)
        bounds.emplace_back(first, last);
    return bounds;
}

} // namespace zelDraw
