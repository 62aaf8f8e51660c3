#include "edits/positions.h"

#include "document/attributes.h"
#include "document/document.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <map>
#include <sstream>
#include <unordered_map>

namespace shading {

namespace {

/// How many of the nodes each of them has before it, on the longest way.
std::vector<int> columnsOf(const std::vector<NodePtr>& nodes)
{
    std::unordered_map<const ZEL::Node*, std::size_t> places;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        places[nodes[i].get()] = i;
    std::vector<int> columns(nodes.size());
    bool isChanged = true;
    // No way is longer than there are nodes, unless it is a circle.
    for (std::size_t turn = 0; isChanged && turn < nodes.size(); ++turn) {
        isChanged = false;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            for (ZEL::Port* const input : nodes[i]->inputs()) {
                const PortPtr source = input->connectedTo()[0];
                const auto before =
                    source ? places.find(source->getParentNode().get()) : places.end();
                if (before == places.end() || columns[before->second] < columns[i])
                    continue;
                columns[i] = columns[before->second] + 1;
                isChanged = true;
            }
        }
    }
    return columns;
}

} // namespace

bool readFloat(const std::string& text, double& number)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    return stream >> number && std::isfinite(number) && (stream >> std::ws).eof();
}

std::string numberText(double number)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << (std::abs(number) < 5e-7 ? 0 : std::round(number * 1e6) / 1e6);
    return stream.str();
}

std::optional<Position> positionOf(Document& document, const NodePtr& node)
{
    Position position;
    const Attributes& attributes = document.attributes();
    return readFloat(attributes.get({node, nullptr}, "xpos"), position.x) &&
                   readFloat(attributes.get({node, nullptr}, "ypos"), position.y)
               ? std::optional(position)
               : std::nullopt;
}

void setPosition(Document& document, const NodePtr& node, const Position& position)
{
    document.attributes().set({node, nullptr}, "xpos", AttributeValue{numberText(position.x), {}});
    document.attributes().set({node, nullptr}, "ypos", AttributeValue{numberText(position.y), {}});
}

std::optional<Frame> frameOf(Document& document, const Backdrop& backdrop)
{
    const AttributeOwner owner = {nullptr, nullptr, &backdrop.element()};
    const auto read = [&](const char* name, double& number) {
        return readFloat(document.attributes().get(owner, name), number);
    };
    Frame frame;
    return read("xpos", frame.first.x) && read("ypos", frame.first.y) &&
                   read("width", frame.width) && read("height", frame.height)
               ? std::optional(frame)
               : std::nullopt;
}

void setFrame(Document& document, const Backdrop& backdrop, const Frame& frame)
{
    const AttributeOwner owner = {nullptr, nullptr, &backdrop.element()};
    const auto write = [&](const char* name, double number) {
        document.attributes().set(owner, name, AttributeValue{numberText(number), {}});
    };
    write("xpos", frame.first.x);
    write("ypos", frame.first.y);
    write("width", frame.width);
    write("height", frame.height);
}

std::optional<Frame> frameAround(Document& document, const std::vector<NodePtr>& nodes)
{
    constexpr double kMargin = 0.25;
    constexpr double kHead = 0.25; // Above the margin.
    const std::optional<PlaceBox> box = boxOf(document, nodes);
    if (!box)
        return std::nullopt;
    // A node is about 1 wide and high.
    return Frame{{box->first.x - kMargin, box->first.y - kMargin - kHead},
                 box->last.x - box->first.x + 1 + 2 * kMargin,
                 box->last.y - box->first.y + 1 + 2 * kMargin + kHead};
}

std::optional<Position> middleOf(Document& document, const std::vector<NodePtr>& nodes)
{
    Position sum;
    int count = 0;
    for (const NodePtr& node : nodes) {
        if (const std::optional<Position> position = positionOf(document, node)) {
            sum = {sum.x + position->x, sum.y + position->y};
            ++count;
        }
    }
    return count == 0 ? std::nullopt : std::optional<Position>({sum.x / count, sum.y / count});
}

void shift(Document& document,
           const std::vector<NodePtr>& nodes,
           const Position& from,
           const Position& to)
{
    const Position by = {to.x - from.x, to.y - from.y};
    // No shorter way than what is written: so an undone collapse leaves nothing.
    if (std::abs(by.x) < 1e-5 && std::abs(by.y) < 1e-5)
        return;
    for (const NodePtr& node : nodes) {
        if (const std::optional<Position> position = positionOf(document, node))
            setPosition(document, node, {position->x + by.x, position->y + by.y});
    }
}

void shift(Document& document,
           const std::vector<BackdropPtr>& backdrops,
           const Position& from,
           const Position& to)
{
    for (const BackdropPtr& backdrop : backdrops) {
        if (std::optional<Frame> frame = frameOf(document, *backdrop)) {
            frame->first = {frame->first.x + to.x - from.x, frame->first.y + to.y - from.y};
            setFrame(document, *backdrop, *frame);
        }
    }
}

std::optional<PlaceBox> boxOf(Document& document, const std::vector<NodePtr>& nodes)
{
    std::optional<PlaceBox> box;
    for (const NodePtr& node : nodes) {
        const std::optional<Position> place = positionOf(document, node);
        if (!place)
            continue;
        if (!box)
            box = PlaceBox{*place, *place};
        box->first = {std::min(box->first.x, place->x), std::min(box->first.y, place->y)};
        box->last = {std::max(box->last.x, place->x), std::max(box->last.y, place->y)};
    }
    return box;
}

void placeInColumns(Document& document, const std::vector<NodePtr>& nodes, const Position& from)
{
    const std::vector<int> columns = columnsOf(nodes);
    std::map<int, int> heights; // How many there are in each column.
    for (std::size_t i = 0; i < nodes.size(); ++i)
        setPosition(document, nodes[i], {from.x + columns[i], from.y + heights[columns[i]]++});
}

std::vector<NodePtr> lastNodes(ZEL::Compound& compound, int newCount)
{
    constexpr int kLookedAt = 100; // An edit costs no more in a large document.
    const int end = compound.nodes().size() - newCount;
    std::vector<NodePtr> nodes;
    for (int i = std::max(0, end - kLookedAt); i < end; ++i)
        nodes.push_back(compound.nodes()[i]);
    return nodes;
}

std::optional<Position> placeBelow(Document& document, ZEL::Compound& compound, int newCount)
{
    const std::optional<PlaceBox> box = boxOf(document, lastNodes(compound, newCount));
    return box ? std::optional<Position>({box->first.x, box->last.y + 1}) : std::nullopt;
}

void placeNew(Document& document, const NodePtr& node)
{
    const std::optional<Position> place = placeBelow(document, *node->getParentCompound(), 1);
    if (place && !positionOf(document, node))
        setPosition(document, node, *place);
}

} // namespace shading
