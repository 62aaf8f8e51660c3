#include "draw/zelQuickLayout.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

namespace zelDraw {

namespace {

constexpr double kLayerGap = 70;
constexpr double kMostLayerGap = 240;
constexpr double kBoxGap = 22;
constexpr double kPartGap = 50; ///< Between parts that are not connected.
constexpr double kAspect = 1.7; ///< Of the whole.
constexpr int kSweeps = 10;

/// The graph by numbers that are cheap to walk. The boxes of the first and last layer and the edges
/// at them are left out.
struct Links {
    struct Link {
        std::uint32_t box;
        float own;   ///< The height of the port at this box.
        float other; ///< And at the other one.
    };

    std::vector<std::vector<Link>> sources; ///< By box.
    std::vector<std::vector<Link>> targets;

    explicit Links(const LayoutGraph& graph)
        : sources(graph.boxes.size()),
          targets(graph.boxes.size())
    {
        for (const LayoutEdge& edge : graph.edges) {
            const LayoutBox& source = graph.boxes[edge.source];
            const LayoutBox& target = graph.boxes[edge.target];
            if (edge.source == edge.target || source.layer != LayoutBox::Layer::Any ||
                target.layer != LayoutBox::Layer::Any)
                continue;
            const auto out = static_cast<float>(source.rightPorts[edge.sourcePort]);
            const auto in = static_cast<float>(target.leftPorts[edge.targetPort]);
            targets[edge.source].push_back({static_cast<std::uint32_t>(edge.target), out, in});
            sources[edge.target].push_back({static_cast<std::uint32_t>(edge.source), in, out});
        }
    }
};

/// One connected part of the graph.
struct Part {
    std::vector<std::uint32_t> boxes; ///< Sources before targets, but for edges that close cycles.
    double width = 0;
    double height = 0;
};

/// Finds the parts, walking without recursion: chains are long.
class Parts {
public:
    Parts(const LayoutGraph& graph, const Links& links)
        : m_links(links),
          m_part(graph.boxes.size(), kNone),
          m_isDone(graph.boxes.size(), false)
    {
        for (std::uint32_t i = 0; i < graph.boxes.size(); ++i) {
            if (graph.boxes[i].layer != LayoutBox::Layer::Any || m_part[i] != kNone)
                continue;
            parts.emplace_back();
            collect(i);
            order(parts.back());
        }
    }

    std::vector<Part> parts;

private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    void collect(std::uint32_t start)
    {
        std::vector<std::uint32_t>& boxes = parts.back().boxes;
        boxes.push_back(start);
        m_part[start] = static_cast<std::uint32_t>(parts.size());
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            for (const auto* const side : {&m_links.sources, &m_links.targets}) {
                for (const Links::Link& link : (*side)[boxes[i]]) {
                    if (m_part[link.box] == kNone) {
                        m_part[link.box] = m_part[start];
                        boxes.push_back(link.box);
                    }
                }
            }
        }
    }

    /// By walks against the edges, each box behind its sources.
    void order(Part& part)
    {
        std::vector<std::uint32_t> roots = part.boxes;
        std::sort(roots.begin(), roots.end());
        part.boxes.clear();
        for (const std::uint32_t root : roots) {
            if (m_links.targets[root].empty())
                walk(root, part.boxes);
        }
        for (const std::uint32_t root : roots)
            walk(root, part.boxes); // Those that a cycle alone leads to.
    }

    void walk(std::uint32_t root, std::vector<std::uint32_t>& found)
    {
        if (m_isDone[root])
            return;
        m_isDone[root] = true;
        std::vector<std::pair<std::uint32_t, std::size_t>> way = {{root, 0}};
        while (!way.empty()) {
            auto& [box, next] = way.back();
            if (next == m_links.sources[box].size()) {
                found.push_back(box);
                way.pop_back();
                continue;
            }
            const std::uint32_t source = m_links.sources[box][next++].box;
            if (!m_isDone[source]) {
                m_isDone[source] = true;
                way.emplace_back(source, 0);
            }
        }
    }

    const Links& m_links;
    std::vector<std::uint32_t> m_part;
    std::vector<bool> m_isDone;
};

/// Places the boxes of one part, its upper left corner at (0, 0).
class PartPlaces {
public:
    PartPlaces(LayoutGraph& graph,
               const Links& links,
               std::vector<int>& layers,
               std::vector<double>& tops)
        : m_graph(graph),
          m_links(links),
          m_layers(layers),
          m_tops(tops)
    {
    }

    void run(Part& part)
    {
        findLayers(part);
        stackUp();
        for (int sweep = 0; sweep < kSweeps; ++sweep)
            this->sweep(sweep % 2 == 0, sweep >= kSweeps - 2);
        setPlaces(part);
    }

private:
    void findLayers(const Part& part)
    {
        // An edge that closes a cycle leads back in the order of the boxes.
        for (std::size_t i = 0; i < part.boxes.size(); ++i)
            m_layers[part.boxes[i]] = -1;
        int last = 0;
        for (const std::uint32_t box : part.boxes) {
            int layer = 0;
            for (const Links::Link& link : m_links.sources[box])
                layer = std::max(layer, m_layers[link.box] + 1);
            m_layers[box] = layer;
            last = std::max(last, layer);
        }
        // What nothing feeds stands right before what it feeds first.
        for (auto box = part.boxes.rbegin(); box != part.boxes.rend(); ++box) {
            if (!m_links.sources[*box].empty() || m_links.targets[*box].empty())
                continue;
            int next = last + 1;
            for (const Links::Link& link : m_links.targets[*box])
                next = std::min(next, m_layers[link.box]);
            m_layers[*box] = std::max(0, next - 1);
        }
        m_rows.assign(static_cast<std::size_t>(last) + 1, {});
        for (const std::uint32_t box : part.boxes)
            m_rows[static_cast<std::size_t>(m_layers[box])].push_back(box);
    }

    void stackUp()
    {
        for (const std::vector<std::uint32_t>& row : m_rows) {
            double top = 0;
            for (const std::uint32_t box : row) {
                m_tops[box] = top;
                top += m_graph.boxes[box].height + kBoxGap;
            }
        }
    }

    /// Brings the boxes of each layer to the height of those before, or behind, or both.
    void sweep(bool isForward, bool seesBoth)
    {
        const int count = static_cast<int>(m_rows.size());
        for (int i = 0; i < count; ++i)
            placeRow(m_rows[static_cast<std::size_t>(isForward ? i : count - 1 - i)], isForward,
                     seesBoth);
    }

    double wantedTop(std::uint32_t box, bool isForward, bool seesBoth) const
    {
        double sum = 0;
        double count = 0;
        for (const bool isBefore : {true, false}) {
            if (!seesBoth && isBefore != isForward)
                continue;
            for (const Links::Link& link : (isBefore ? m_links.sources : m_links.targets)[box]) {
                const int way = std::abs(m_layers[link.box] - m_layers[box]);
                const double weight = way == 0 ? 0 : 1.0 / way;
                sum += weight * (m_tops[link.box] + link.other - link.own);
                count += weight;
            }
        }
        return count == 0 ? m_tops[box] : sum / count;
    }

    void placeRow(std::vector<std::uint32_t>& row, bool isForward, bool seesBoth)
    {
        m_wanted.clear();
        for (const std::uint32_t box : row)
            m_wanted.emplace_back(wantedTop(box, isForward, seesBoth), box);
        std::stable_sort(m_wanted.begin(), m_wanted.end(), [this](const auto& a, const auto& b) {
            return a.first + m_graph.boxes[a.second].height / 2.0 <
                   b.first + m_graph.boxes[b.second].height / 2.0;
        });
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = m_wanted[i].second;
        spread();
    }

    /// The nearest tops to those wanted at which none covers another: neighbours that would, form
    /// a block at the mean of what they want.
    void spread()
    {
        m_blocks.clear();
        double offset = 0;
        for (const auto& [wanted, box] : m_wanted) {
            Block block = {wanted - offset, 1};
            while (!m_blocks.empty() && m_blocks.back().mean >= block.mean) {
                const Block& before = m_blocks.back();
                block.mean = (before.mean * before.count + block.mean * block.count) /
                             (before.count + block.count);
                block.count += before.count;
                m_blocks.pop_back();
            }
            m_blocks.push_back(block);
            offset += m_graph.boxes[box].height + kBoxGap;
        }
        offset = 0;
        std::size_t next = 0;
        for (const Block& block : m_blocks) {
            for (int i = 0; i < block.count; ++i) {
                const std::uint32_t box = m_wanted[next++].second;
                m_tops[box] = block.mean + offset;
                offset += m_graph.boxes[box].height + kBoxGap;
            }
        }
    }

    void setPlaces(Part& part)
    {
        double least = 1e300;
        for (const std::uint32_t box : part.boxes)
            least = std::min(least, m_tops[box]);
        double left = 0;
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            double width = 0;
            for (const std::uint32_t box : m_rows[i])
                width = std::max(width, static_cast<double>(m_graph.boxes[box].width));
            double rise = 0; // How steep the edges behind would be.
            double edges = 0;
            for (const std::uint32_t box : m_rows[i]) {
                LayoutBox& placed = m_graph.boxes[box];
                placed.place = {std::floor(left + (width - placed.width) / 2),
                                std::floor(m_tops[box] - least)};
                part.height = std::max(part.height, placed.place.y + placed.height);
                for (const Links::Link& link : m_links.targets[box]) {
                    rise += std::abs(m_tops[link.box] - m_tops[box]);
                    ++edges;
                }
            }
            part.width = left + width;
            left += width + std::clamp(edges == 0 ? 0 : rise / edges / 4, kLayerGap, kMostLayerGap);
        }
    }

    struct Block {
        double mean;
        int count;
    };

    LayoutGraph& m_graph;
    const Links& m_links;
    std::vector<int>& m_layers;                     ///< By box.
    std::vector<double>& m_tops;                    ///< By box.
    std::vector<std::vector<std::uint32_t>> m_rows; ///< The boxes of each layer, from the top.
    std::vector<std::pair<double, std::uint32_t>> m_wanted;
    std::vector<Block> m_blocks;
};

/// Moves the parts beside and below each other, the highest first.
void pack(LayoutGraph& graph, std::vector<Part>& parts)
{
    double area = 0;
    double widest = 0;
    for (const Part& part : parts) {
        area += (part.width + kPartGap) * (part.height + kPartGap);
        widest = std::max(widest, part.width);
    }
    const double most = std::max(widest, std::sqrt(area * kAspect));
    std::vector<std::size_t> order(parts.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return parts[a].height > parts[b].height;
    });
    Point corner;
    double rowHeight = 0;
    for (const std::size_t i : order) {
        const Part& part = parts[i];
        const double gap = part.boxes.size() == 1 ? kBoxGap : kPartGap;
        if (corner.x > 0 && corner.x + part.width > most) {
            corner = {0, corner.y + rowHeight + gap};
            rowHeight = 0;
        }
        for (const std::uint32_t box : part.boxes)
            graph.boxes[box].place = graph.boxes[box].place + corner;
        corner.x += std::ceil(part.width) + gap;
        rowHeight = std::max(rowHeight, std::ceil(part.height));
    }
}

/// The heights of the first and the last box follow what they are connected to.
void placeEnds(LayoutGraph& graph)
{
    double right = 0;
    double shift = 0;
    for (const LayoutBox& box : graph.boxes) {
        if (box.layer == LayoutBox::Layer::Any)
            right = std::max(right, box.place.x + box.width);
        else if (box.layer == LayoutBox::Layer::First)
            shift = box.width + kLayerGap;
    }
    std::vector<double> sums(graph.boxes.size());
    std::vector<double> counts(graph.boxes.size());
    for (const LayoutEdge& edge : graph.edges) {
        const LayoutBox& source = graph.boxes[edge.source];
        const LayoutBox& target = graph.boxes[edge.target];
        const double way = source.rightPorts[edge.sourcePort] - target.leftPorts[edge.targetPort];
        if (target.layer == LayoutBox::Layer::Any) {
            sums[edge.source] += target.place.y - way;
            ++counts[edge.source];
        }
        if (source.layer == LayoutBox::Layer::Any) {
            sums[edge.target] += source.place.y + way;
            ++counts[edge.target];
        }
    }
    double least = 0;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        LayoutBox& box = graph.boxes[i];
        if (box.layer == LayoutBox::Layer::Any) {
            box.place.x += shift;
            continue;
        }
        box.place.x =
            box.layer == LayoutBox::Layer::First ? 0 : shift + std::ceil(right) + kLayerGap;
        box.place.y = counts[i] == 0 ? 0 : std::floor(sums[i] / counts[i]);
        least = std::min(least, box.place.y);
    }
    for (LayoutBox& box : graph.boxes)
        box.place.y -= least;
}

void leadEdges(LayoutGraph& graph)
{
    for (LayoutEdge& edge : graph.edges) {
        const LayoutBox& source = graph.boxes[edge.source];
        const LayoutBox& target = graph.boxes[edge.target];
        const Point from =
            source.place + Point{double(source.width), double(source.rightPorts[edge.sourcePort])};
        const Point to = target.place + Point{0, double(target.leftPorts[edge.targetPort])};
        const double reach = std::max(40.0, std::abs(to.x - from.x) / 2);
        edge.curve = {from, {from.x + reach, from.y}, {to.x - reach, to.y}, to};
    }
}

} // namespace

void layOutQuickly(LayoutGraph& graph)
{
    const Links links(graph);
    Parts parts(graph, links);
    std::vector<int> layers(graph.boxes.size());
    std::vector<double> tops(graph.boxes.size());
    for (Part& part : parts.parts)
        PartPlaces(graph, links, layers, tops).run(part);
    pack(graph, parts.parts);
    placeEnds(graph);
    leadEdges(graph);
    graph.width = 0;
    graph.height = 0;
    for (const LayoutBox& box : graph.boxes) {
        graph.width = std::max(graph.width, box.place.x + box.width);
        graph.height = std::max(graph.height, box.place.y + box.height);
    }
}

} // namespace zelDraw
