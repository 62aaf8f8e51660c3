#include "draw/zelArrange.h"

#include "draw/zelPictureStyle.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace zelDraw {

namespace {

using NodePtr = ZEL::AddRefWrapper<ZEL::Node>;
using PortPtr = ZEL::AddRefWrapper<ZEL::Port>;

class Arrangement {
public:
    explicit Arrangement(const PictureOptions& options) : m_options(options) {}

    void add(ZEL::Node& node)
    {
        LayoutBox box;
        std::vector<double> left;
        int omitted = 0;
        for (ZEL::Port* const input : node.inputs()) {
            const bool isShown = input->isConnected() || node.isCompound() || !m_options.isShown ||
                                 m_options.isShown(node, *input);
            omitted += isShown ? 0 : 1;
            if (isShown)
                addPort(*input, box.leftPorts, left);
        }
        if (omitted > 0)
            left.push_back(textWidth(omittedText(omitted), kPortSize));
        std::vector<double> right;
        for (ZEL::Port* const output : node.outputs())
            addPort(*output, box.rightPorts, right);
        const double header =
            headerWidth(node.getName(), node.getNodeTypeName(), node.isCompound());
        const BoxSize size = closedBoxSize(header, left, right);
        box.width = static_cast<int>(std::ceil(size.width));
        box.height = static_cast<int>(std::ceil(size.height));
        m_graph.boxes.push_back(std::move(box));
    }

    /// Called when all nodes are added.
    void connect(ZEL::Node& node)
    {
        for (ZEL::Port* const input : node.inputs()) {
            const PortPtr source = input->connectedTo()[0];
            const auto from = source ? m_ends.find(source.get()) : m_ends.end();
            const auto to = m_ends.find(input);
            if (from != m_ends.end() && to != m_ends.end())
                m_graph.edges.push_back(
                    {from->second.box, from->second.port, to->second.box, to->second.port, {}});
        }
    }

    bool run(const Point& anchor, std::vector<Point>& places, std::string& problem)
    {
        if (!layOut(m_graph, problem))
            return false;
        Point corner = {std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
        for (const LayoutBox& box : m_graph.boxes)
            corner = {std::min(corner.x, box.place.x), std::min(corner.y, box.place.y)};
        places.clear();
        for (const LayoutBox& box : m_graph.boxes)
            places.push_back(box.place + Point{anchor.x - corner.x, anchor.y - corner.y});
        return true;
    }

private:
    struct End {
        std::size_t box;
        std::size_t port;
    };

    void addPort(ZEL::Port& port, std::vector<int>& heights, std::vector<double>& widths)
    {
        // An inner port is no end of a connection beside the node.
        m_ends[&port] = {m_graph.boxes.size(), heights.size()};
        heights.push_back(kBoxHeader + rowMiddle(kRowHeight, heights.size()));
        widths.push_back(labelWidth(port.getName()));
    }

    const PictureOptions& m_options;
    LayoutGraph m_graph;
    std::unordered_map<const ZEL::Port*, End> m_ends;
};

} // namespace

bool arrangeNodes(const std::vector<NodePtr>& nodes,
                  const PictureOptions& options,
                  const Point& anchor,
                  std::vector<Point>& places,
                  std::string& problem)
{
    places.clear();
    if (nodes.empty())
        return true;
    Arrangement arrangement(options);
    for (const NodePtr& node : nodes)
        arrangement.add(*node);
    for (const NodePtr& node : nodes)
        arrangement.connect(*node);
    return arrangement.run(anchor, places, problem);
}

} // namespace zelDraw
