#pragma once

#include "document/backdrops.h"
#include "document/pointers.h"

#include <optional>
#include <string>
#include <vector>

namespace shading {

class Document;

// Where nodes are drawn: the attributes `xpos` and `ypos`, of which a node has both or none. To the
// right and down; the distance of two nodes that stand beside each other is about 1.

struct Position {
    double x = 0;
    double y = 0;
};

/// How much of a picture 1 is, in its pixels: about a node with the gap beside it.
constexpr double kPositionWidth = 138;
constexpr double kPositionHeight = 116;

/// Where a backdrop is drawn: its attributes `xpos`, `ypos`, `width` and `height`, of which it has
/// all or none. In the same units.
struct Frame {
    Position first; ///< The upper left corner.
    double width = 0;
    double height = 0;
};

struct NodePlace {
    NodePtr node;
    Position position;
};

/// The whole text as a number of the format. False when it is none.
bool readFloat(const std::string& text, double& number);
/// A number as the format writes it, without an end that means nothing.
std::string numberText(double number);

/// Empty when the node has none.
std::optional<Position> positionOf(Document& document, const NodePtr& node);
/// A part of the edit that runs.
void setPosition(Document& document, const NodePtr& node, const Position& position);

/// The upper left and the lower right corner of the places of those nodes that have one; empty when
/// none has.
struct PlaceBox {
    Position first;
    Position last;
};
std::optional<PlaceBox> boxOf(Document& document, const std::vector<NodePtr>& nodes);
/// In the middle of those nodes that have a position; empty when none has.
std::optional<Position> middleOf(Document& document, const std::vector<NodePtr>& nodes);
/// Moves those of the nodes that have a position by the way from one place to the other. A part of
/// the edit that runs.
void shift(Document& document,
           const std::vector<NodePtr>& nodes,
           const Position& from,
           const Position& to);
/// Empty when the backdrop has none.
std::optional<Frame> frameOf(Document& document, const Backdrop& backdrop);
/// A part of the edit that runs.
void setFrame(Document& document, const Backdrop& backdrop, const Frame& frame);
/// Moves those that have a place likewise.
void shift(Document& document,
           const std::vector<BackdropPtr>& backdrops,
           const Position& from,
           const Position& to);
/// A frame around nodes, with a head for the title; empty when none of them has a place.
std::optional<Frame> frameAround(Document& document, const std::vector<NodePtr>& nodes);
/// Gives the nodes places from that one on, in columns along the connections among them. A part of
/// the edit that runs.
void placeInColumns(Document& document, const std::vector<NodePtr>& nodes, const Position& from);
/// The last nodes of a compound, as many as people look at, but for so many new ones behind them.
std::vector<NodePtr> lastNodes(ZEL::Compound& compound, int newCount);
/// Below those; empty when none has a place.
std::optional<Position> placeBelow(Document& document, ZEL::Compound& compound, int newCount);
/// Gives a new node, the last of its compound, a place below those that came before it, as many as
/// people look at, unless they have none either. A part of the edit that runs.
void placeNew(Document& document, const NodePtr& node);

} // namespace shading
