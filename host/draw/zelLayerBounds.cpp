#include "draw/zelLayeredLayout.h"

#include <algorithm>

namespace zelDraw {

namespace {

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
        for (const bool isOnCycle : {false, true}) {
            for (std::size_t i = 0; i < isFed.size(); ++i) {
                if (m_states[i] != State::New || (isFed[i] && !isOnCycle))
                    continue;
                m_roots.push_back(i);
                walkFrom(i);
            }
        }
    }

    /// Every box is reached from one of them.
    const std::vector<std::size_t>& roots() const { return m_roots; }
    /// True when the box has an edge that closes no cycle.
    bool leadsOn(std::size_t box) const { return m_leadsOn[box]; }

private:
    enum class State { New, OnTheWay, Done };

    void walkFrom(std::size_t box)
    {
        m_states[box] = State::OnTheWay;
        for (const std::size_t target : m_targets[box]) {
            if (m_states[target] == State::OnTheWay)
                continue;
            m_leadsOn[box] = true;
            if (m_states[target] == State::New)
                walkFrom(target);
        }
        m_states[box] = State::Done;
    }

    std::vector<std::vector<std::size_t>> m_targets; ///< By source.
    std::vector<State> m_states;
    std::vector<std::size_t> m_roots;
    std::vector<bool> m_leadsOn;
};

/// The number of boxes when none is in that layer.
std::size_t boxOf(const LayoutGraph& graph, LayoutBox::Layer layer)
{
    const auto found = std::find_if(graph.boxes.begin(), graph.boxes.end(),
                                    [layer](const LayoutBox& box) { return box.layer == layer; });
    return static_cast<std::size_t>(found - graph.boxes.begin());
}

} // namespace

std::vector<std::pair<std::size_t, std::size_t>> layerBounds(const LayoutGraph& graph)
{
    const std::size_t none = graph.boxes.size();
    const std::size_t first = boxOf(graph, LayoutBox::Layer::First);
    const std::size_t last = boxOf(graph, LayoutBox::Layer::Last);
    const EdgeWalk walk(graph);
    std::vector<std::pair<std::size_t, std::size_t>> bounds;
    for (const std::size_t root : walk.roots()) {
        if (first != none && root != first && root != last)
            bounds.emplace_back(first, root);
    }
    for (std::size_t i = 0; i < none; ++i) {
        if (last != none && i != first && i != last && !walk.leadsOn(i))
            bounds.emplace_back(i, last);
    }
    if (first != none && last != none)
        bounds.emplace_back(first, last);
    return bounds;
}

} // namespace zelDraw
