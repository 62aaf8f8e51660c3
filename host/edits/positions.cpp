#include "edits/positions.h"

#include "document/attributes.h"
#include "document/document.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <sstream>

namespace shading {

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

void placeNew(Document& document, const NodePtr& node)
{
    constexpr int kLookedAt = 100; // An edit costs no more in a large document.
    ZEL::NodeList& nodes = node->getParentCompound()->nodes();
    std::optional<Position> place;
    for (int i = std::max(0, nodes.size() - kLookedAt); i < nodes.size(); ++i) {
        const std::optional<Position> taken = positionOf(document, nodes[i]);
        if (taken && nodes[i] != node)
            place = place ? Position{std::min(place->x, taken->x), std::max(place->y, taken->y)}
                          : *taken;
    }
    if (place && !positionOf(document, node))
        setPosition(document, node, {place->x, place->y + 1});
}

} // namespace shading
