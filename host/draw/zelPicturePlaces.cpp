#include "draw/zelPicture.h"
#include "draw/zelPictureStyle.h"

#include <algorithm>
#include <cmath>

namespace zelDraw {

namespace {

void setDots(std::vector<PicturePort>& ports, double x, int top, int rowHeight)
{
    for (std::size_t i = 0; i < ports.size(); ++i)
        ports[i].dot = {x, static_cast<double>(top + rowMiddle(rowHeight, i))};
}

std::vector<double> labelWidths(const std::vector<PicturePort>& ports)
{
    std::vector<double> widths;
    widths.reserve(ports.size() + 1);
    for (const PicturePort& port : ports)
        widths.push_back(labelWidth(port.name));
    return widths;
}

BoxSize sizeOf(const PictureBox& box)
{
    if (box.kind == PictureBox::Kind::Stub)
        return {std::ceil(textWidth(shortened(box.name, kLongestName), kPortSize)) +
                    2 * kTextMargin,
                kStubHeight};
    std::vector<double> left = labelWidths(box.inputs);
    if (box.omittedInputs > 0)
        left.push_back(textWidth(omittedText(box.omittedInputs), kPortSize));
    return closedBoxSize(headerWidth(box.name, box.type, box.kind == PictureBox::Kind::Compound),
                         left, labelWidths(box.outputs));
}

void sizeBox(PictureBox& box)
{
    const bool isStub = box.kind == PictureBox::Kind::Stub;
    const BoxSize size = sizeOf(box);
    box.place.width = size.width;
    box.place.height = size.height;
    const int top = isStub ? 0 : kBoxHeader;
    const int rowHeight = isStub ? kStubHeight : kRowHeight;
    setDots(box.inputs, 0, top, rowHeight);
    setDots(box.outputs, box.place.width, top, rowHeight);
}

std::vector<int> heightsOf(const std::vector<PicturePort>& ports)
{
    std::vector<int> heights;
    heights.reserve(ports.size());
    for (const PicturePort& port : ports)
        heights.push_back(static_cast<int>(std::lround(port.dot.y)));
    return heights;
}

Curve straight(const Point& from, const Point& to)
{
    const Point step = {(to.x - from.x) / 3, (to.y - from.y) / 3};
    return {from, {from.x + step.x, from.y + step.y}, {to.x - step.x, to.y - step.y}, to};
}

/// Places what is inside one frame, relative to the frame. The ports of its edge stand as a column
/// in the first layer and one in the last; a straight line, below the port's name, leads from the
/// column to the dot on the edge.
class FramePlaces {
public:
    explicit FramePlaces(PictureBox& frame) : m_frame(frame) {}

    bool run(std::string& problem)
    {
        for (PictureBox& box : m_frame.boxes) {
            if (box.kind != PictureBox::Kind::Frame)
                sizeBox(box);
            else if (!FramePlaces(box).run(problem))
                return false;
        }
        fillGraph();
        if (!layOut(m_graph, problem))
            return false;
        placeBoxes();
        placeConnections();
        return true;
    }

private:
    void fillGraph()
    {
        addColumn(m_frame.inputs, LayoutBox::Layer::First, m_firstColumn);
        m_firstBox = m_graph.boxes.size();
        for (const PictureBox& box : m_frame.boxes) {
            LayoutBox placed;
            placed.width = static_cast<int>(box.place.width);
            placed.height = static_cast<int>(box.place.height);
            placed.leftPorts = heightsOf(box.inputs);
            placed.rightPorts = heightsOf(box.outputs);
            m_graph.boxes.push_back(placed);
        }
        addColumn(m_frame.outputs, LayoutBox::Layer::Last, m_lastColumn);
        for (const PictureConnection& connection : m_frame.connections) {
            LayoutEdge edge;
            edge.source = indexOf(connection.source, m_firstColumn);
            edge.sourcePort = connection.source.port;
            edge.target = indexOf(connection.target, m_lastColumn);
            edge.targetPort = connection.target.port;
            m_graph.edges.push_back(edge);
        }
    }

    std::size_t indexOf(const PictureEnd& end, std::size_t column) const
    {
        return end.box == PictureEnd::kEdge ? column : m_firstBox + end.box;
    }

    void
    addColumn(const std::vector<PicturePort>& ports, LayoutBox::Layer layer, std::size_t& index)
    {
        if (ports.empty())
            return;
        LayoutBox column;
        column.layer = layer;
        double width = 0;
        for (std::size_t i = 0; i < ports.size(); ++i) {
            width = std::max(width, labelWidth(ports[i].name));
            (layer == LayoutBox::Layer::First ? column.rightPorts : column.leftPorts)
                .push_back(rowMiddle(kEdgeRowHeight, i));
        }
        column.width = std::max(8, static_cast<int>(width) + 2 * kTextMargin - kFramePadding);
        column.height = kEdgeRowHeight * static_cast<int>(ports.size());
        index = m_graph.boxes.size();
        m_graph.boxes.push_back(column);
    }

    void placeBoxes()
    {
        Rect& place = m_frame.place;
        place.width = std::ceil(
            std::max(m_graph.width + 2 * kFramePadding,
                     textWidth(shortened(m_frame.name, kLongestName), kNameSize) + 3 * kTextMargin +
                         textWidth(shortened(m_frame.type, kLongestName), kTypeSize)));
        place.height = kFrameHeader + std::max(30.0, std::ceil(m_graph.height)) + kFramePadding;
        m_origin = {std::floor((place.width - m_graph.width) / 2), kFrameHeader};
        for (std::size_t i = 0; i < m_frame.boxes.size(); ++i) {
            const Point corner = m_origin + m_graph.boxes[m_firstBox + i].place;
            m_frame.boxes[i].place.left = corner.x;
            m_frame.boxes[i].place.top = corner.y;
        }
        placeEdge(m_frame.inputs, m_firstColumn, 0);
        placeEdge(m_frame.outputs, m_lastColumn, place.width);
    }

    void placeEdge(std::vector<PicturePort>& ports, std::size_t column, double x)
    {
        if (!ports.empty())
            setDots(ports, x, static_cast<int>((m_origin + m_graph.boxes[column].place).y),
                    kEdgeRowHeight);
    }

    void placeConnections()
    {
        for (std::size_t i = 0; i < m_frame.connections.size(); ++i) {
            PictureConnection& connection = m_frame.connections[i];
            Curve curve;
            for (const Point& point : m_graph.edges[i].curve)
                curve.push_back(m_origin + point);
            if (connection.source.box == PictureEnd::kEdge) {
                const Curve lead =
                    straight(m_frame.inputs[connection.source.port].dot, curve.front());
                curve.insert(curve.begin(), lead.begin(), lead.end() - 1);
            }
            if (connection.target.box == PictureEnd::kEdge) {
                const Curve lead =
                    straight(curve.back(), m_frame.outputs[connection.target.port].dot);
                curve.insert(curve.end(), lead.begin() + 1, lead.end());
            }
            connection.curve = std::move(curve);
        }
    }

    PictureBox& m_frame;
    LayoutGraph m_graph;
    std::size_t m_firstColumn = 0; ///< Used only when the frame has inputs.
    std::size_t m_firstBox = 0;    ///< The index of the first that is no column.
    std::size_t m_lastColumn = 0;  ///< Used only when the frame has outputs.
    Point m_origin;                ///< Of the graph, in the frame.
};

/// Makes places that are relative to the frame around the box absolute.
void makeAbsolute(PictureBox& box, const Point& origin)
{
    box.place.left += origin.x;
    box.place.top += origin.y;
    const Point corner = {box.place.left, box.place.top};
    for (std::vector<PicturePort>* const ports : {&box.inputs, &box.outputs}) {
        for (PicturePort& port : *ports)
            port.dot = port.dot + corner;
    }
    for (PictureConnection& connection : box.connections) {
        for (Point& point : connection.curve)
            point = point + corner;
    }
    for (PictureBox& inner : box.boxes)
        makeAbsolute(inner, corner);
}

} // namespace

bool placePicture(PictureBox& picture, std::string& problem)
{
    if (!FramePlaces(picture).run(problem))
        return false;
    makeAbsolute(picture, {});
    return true;
}

} // namespace zelDraw
