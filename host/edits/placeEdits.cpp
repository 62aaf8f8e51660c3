// The edits of where nodes are drawn.

#include "document/document.h"
#include "document/names.h"
#include "edits/editName.h"
#include "edits/edits.h"
#include "edits/positions.h"

#include <cmath>
#include <unordered_set>

namespace shading {

namespace {

/// As far as the document tells one from the other.
bool isAt(Document& document, const NodePlace& place)
{
    const std::optional<Position> now = positionOf(document, place.node);
    return now && numberText(now->x) == numberText(place.position.x) &&
           numberText(now->y) == numberText(place.position.y);
}

} // namespace

bool Edits::moveNodes(const std::vector<NodePlace>& places)
{
    std::vector<NodePlace> moved;
    std::vector<NodePtr> nodes;
    std::unordered_set<const ZEL::Node*> named;
    std::vector<std::string> words = {"move"};
    for (const NodePlace& place : places) {
        if (!hasInner(place.node))
            return false;
        const std::string path = pathOf(*place.node);
        if (!named.insert(place.node.get()).second)
            return fail(path, "it is named twice");
        if (!std::isfinite(place.position.x) || !std::isfinite(place.position.y))
            return fail(path, "its place is no number");
        if (isAt(m_document, place))
            continue;
        moved.push_back(place);
        nodes.push_back(place.node);
        const Position& to = place.position;
        words.insert(words.end(), {path, numberText(to.x), numberText(to.y)});
    }
    if (places.empty())
        return fail("move", "no node is named");
    const std::string first = pathOf(*places.front().node);
    if (moved.empty())
        return fail(first, places.size() == 1 ? "it is there" : "it and the others are there");
    return run(namedFor(m_document, nodes, "Move " + countOf(nodes), words), first, [&] {
        for (const NodePlace& place : moved)
            setPosition(m_document, place.node, place.position);
        return "";
    });
}

bool Edits::moveNodes(const std::vector<std::pair<std::string, Position>>& places)
{
    std::vector<NodePlace> found;
    for (const auto& [path, position] : places) {
        found.push_back({findNode(path), position});
        if (!found.back().node)
            return false;
    }
    return moveNodes(found);
}

bool Edits::moveNode(const NodePtr& node, const Position& position)
{
    return moveNodes({{node, position}});
}

bool Edits::moveNode(const std::string& path, const Position& position)
{
    return moveNodes({{path, position}});
}

} // namespace shading
