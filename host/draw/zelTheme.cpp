#include "draw/zelTheme.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace zelDraw {

namespace {

constexpr Theme kLight = {
    false,
    0xf4f6f9, // page
    0xd5dae2, // grid
    0xffffff, // body
    0xedf0f5, // head
    0xdde6f5, // compoundHead
    0xf9fafc, // stub
    0xe6ebf4, // bar
    0x2f5fb3, // frame
    0x8a97ab, // backdrop
    0xb6bfcc, // border
    0x7d93b8, // compoundBorder
    0x9fb2d3, // frameBorder
    0x9aa5b5, // backdropBorder
    0xe3b8b0, // hatch
    0xc56b5c, // unknownBorder
    0x1c2430, // name
    0x3b4453, // text
    0x6b7585, // faint
    0x1f6feb, // selection
    0x5b8def, // hover
    0x0b4fc0, // focus
    0x1a7f37, // good
    0xc8321f, // error
};

constexpr Theme kDark = {
    true,
    0x1b1e24, // page
    0x31363f, // grid
    0x272b33, // body
    0x323844, // head
    0x2c3a52, // compoundHead
    0x22262d, // stub
    0x252d3a, // bar
    0x6f9bea, // frame
    0x8b97aa, // backdrop
    0x4a5361, // border
    0x5f7cae, // compoundBorder
    0x4d648f, // frameBorder
    0x5d6675, // backdropBorder
    0x6e4640, // hatch
    0xc9776a, // unknownBorder
    0xeef1f6, // name
    0xc9d0da, // text
    0x949eac, // faint
    0x6cb2ff, // selection
    0x4f84c4, // hover
    0xa8d1ff, // focus
    0x4cc38a, // good
    0xff7a6b, // error
};

struct TypeColours {
    const char* type;
    Colour light;
    Colour dark;
};

// The hues of Okabe and Ito, which people of any sight tell apart, darker on a light ground. The
// commonest type is neutral. Types of one family have one hue.
constexpr TypeColours kTypeColours[] = {
    {"", 0x77818f, 0x8a93a0},
    {"none", 0x77818f, 0x8a93a0},
    {"float", 0x5d6877, 0xb7c0cc},
    {"integer", 0x1a7fb5, 0x56b4e9},
    {"boolean", 0x857700, 0xf0e442},
    {"string", 0x8c6239, 0xd9a679},
    {"filename", 0xa0522d, 0xe0b08a},
    {"color3", 0xb36b00, 0xe69f00},
    {"color4", 0x94530a, 0xf4bd57},
    {"vector2", 0xc0609a, 0xe2a6c6},
    {"vector3", 0xa8447f, 0xcc79a7},
    {"vector4", 0x86346a, 0xb868a0},
    {"matrix33", 0x0072b2, 0x7aa7dc},
    {"matrix44", 0x005387, 0x5c8fd0},
    {"BSDF", 0x2f8f4e, 0x58c98b},
    {"EDF", 0x6b8a00, 0xb5cf4a},
    {"VDF", 0x00838a, 0x3fc1c0},
    {"surfaceshader", 0x00845f, 0x21b78c},
    {"displacementshader", 0x5d7f10, 0x94bd3a},
    {"volumeshader", 0x007a86, 0x2fb5c4},
    {"lightshader", 0x8f7a00, 0xd8c53c},
    {"material", 0xd55e00, 0xee7a2e},
};

struct ShapeRule {
    const char* part; ///< Of a type's name.
    PortShape shape;
};

// The first that fits.
constexpr ShapeRule kShapeRules[] = {
    {"material", PortShape::Hexagon}, {"shader", PortShape::Triangle},
    {"BSDF", PortShape::Triangle},    {"EDF", PortShape::Triangle},
    {"VDF", PortShape::Triangle},     {"color", PortShape::Square},
    {"vector", PortShape::Diamond},   {"matrix", PortShape::Diamond},
    {"string", PortShape::Pill},      {"filename", PortShape::Pill},
};

constexpr double kLeastContrast = 3;

/// The same on every machine.
std::uint32_t hashOf(const std::string& text)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash;
}

/// A part of a colour of that hue, in degrees.
Colour partOf(double hue, double lightness, int shift)
{
    const double k = std::fmod(shift + hue / 30.0, 12.0);
    const double rise = std::max(-1.0, std::min({k - 3.0, 9.0 - k, 1.0}));
    const double reach = 0.52 * std::min(lightness, 1 - lightness);
    return static_cast<Colour>(std::lround(255 * (lightness - reach * rise)));
}

Colour colourOf(double hue, double lightness)
{
    return partOf(hue, lightness, 0) << 16U | partOf(hue, lightness, 8) << 8U |
           partOf(hue, lightness, 4);
}

double least(Colour colour, const Theme& theme)
{
    double result = 21;
    for (const Colour ground :
         {theme.page, theme.body, theme.head, theme.compoundHead, theme.stub, theme.bar})
        result = std::min(result, contrast(colour, ground));
    return result;
}

/// How light a part of a colour is, from 0 to 1.
double lightOf(Colour part)
{
    const double share = part / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(Colour colour)
{
    return 0.2126 * lightOf(colour >> 16U & 0xFFU) + 0.7152 * lightOf(colour >> 8U & 0xFFU) +
           0.0722 * lightOf(colour & 0xFFU);
}

std::vector<Corner> ring(int corners, double width, double height, double turn)
{
    constexpr double kTurn = 6.283185307179586;
    std::vector<Corner> result;
    for (int i = 0; i < corners; ++i) {
        const double angle = turn + kTurn * i / corners;
        result.push_back({width * std::cos(angle), height * std::sin(angle)});
    }
    return result;
}

std::vector<Corner> pill()
{
    constexpr double kEnd = 2.8; // From the middle to the centre of a round end.
    std::vector<Corner> result;
    for (const Corner& corner : ring(24, 3.1, 3.1, 0.1309))
        result.push_back({corner.x + (corner.x > 0 ? kEnd : -kEnd), corner.y});
    return result;
}

} // namespace

const Theme& theme(bool isDark)
{
    return isDark ? kDark : kLight;
}

std::string colourText(Colour colour)
{
    std::array<char, 8> text;
    std::snprintf(text.data(), text.size(), "#%06x", static_cast<unsigned>(colour & 0xFFFFFFU));
    return text.data();
}

double contrast(Colour a, Colour b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

Colour typeColour(const std::string& type, bool isDark)
{
    for (const TypeColours& known : kTypeColours) {
        if (type == known.type)
            return isDark ? known.dark : known.light;
    }
    const double hue = hashOf(type) % 360;
    const double step = isDark ? 0.02 : -0.02;
    double lightness = isDark ? 0.6 : 0.45;
    while (lightness > 0.05 && lightness < 0.95 &&
           least(colourOf(hue, lightness), theme(isDark)) < kLeastContrast)
        lightness += step;
    return colourOf(hue, lightness);
}

std::vector<std::string> colouredTypes()
{
    std::vector<std::string> types;
    for (const TypeColours& known : kTypeColours)
        types.emplace_back(known.type);
    return types;
}

PortShape shapeOf(const std::string& type)
{
    for (const ShapeRule& rule : kShapeRules) {
        if (type.find(rule.part) != std::string::npos)
            return rule.shape;
    }
    return PortShape::Circle;
}

const std::vector<Corner>& outlineOf(PortShape shape)
{
    static const std::vector<Corner> outlines[kPortShapes] = {
        ring(24, 4.5, 4.5, 0),
        ring(4, 5.6, 5.6, 0),
        {{-4.1, -4.1}, {4.1, -4.1}, {4.1, 4.1}, {-4.1, 4.1}},
        pill(),
        {{-4, -5.2}, {5.4, 0}, {-4, 5.2}},
        ring(6, 5.2, 5.2, 0),
    };
    return outlines[static_cast<std::size_t>(shape)];
}

} // namespace zelDraw
