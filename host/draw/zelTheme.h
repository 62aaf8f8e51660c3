#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace zelDraw {

/// 0xRRGGBB.
using Colour = std::uint32_t;

/// All colours but those of data types, in which a network is drawn: on paper and on a screen.
struct Theme {
    bool isDark;
    // Grounds.
    Colour page;
    Colour grid; ///< Its dots.
    Colour body; ///< Of a node below its header.
    Colour head;
    Colour compoundHead;
    Colour stub;
    Colour bar;      ///< Of inner ports, at the edges of a canvas.
    Colour frame;    ///< An open compound, laid thinly over what is below.
    Colour backdrop; ///< Likewise.
    // Lines.
    Colour border;
    Colour compoundBorder;
    Colour frameBorder;
    Colour backdropBorder;
    Colour hatch; ///< Over a node without a definition.
    Colour unknownBorder;
    // Texts.
    Colour name;
    Colour text;
    Colour faint; ///< Of types and counts.
    // Marks.
    Colour selection;
    Colour hover;
    Colour focus;
    Colour good;
    Colour error;
};

const Theme& theme(bool isDark);

/// "#rrggbb"
std::string colourText(Colour colour);
/// How well they are told apart, from 1 to 21: as the guidelines for accessible pages reckon it.
double contrast(Colour a, Colour b);

/// The colour of a data type: chosen for the common types, otherwise made of the name. Its contrast
/// to each ground of the theme is at least 3.
Colour typeColour(const std::string& type, bool isDark);
/// The data types that have a colour of their own; the empty one is that of ports without a type.
std::vector<std::string> colouredTypes();

/// What the dot of a port looks like: it says the kind of data, as the colour does.
enum class PortShape {
    Circle,   ///< A number, or unknown.
    Diamond,  ///< A vector or matrix.
    Square,   ///< A colour.
    Pill,     ///< A text.
    Triangle, ///< A shader.
    Hexagon,  ///< A material.
};
constexpr int kPortShapes = 6;

PortShape shapeOf(const std::string& type);

struct Corner {
    double x;
    double y;
};
/// The outline around (0, 0), in pixels: about 9 across.
const std::vector<Corner>& outlineOf(PortShape shape);

} // namespace zelDraw
