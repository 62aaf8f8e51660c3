#include "draw/zelPictureStyle.h"

#include "base/utf8.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace zelDraw {

namespace {

struct TypeColour {
    const char* type;
    const char* colour;
};

// Dark enough for a line on white, light enough for one on a dark page.
constexpr TypeColour kTypeColours[] = {
    {"", "#8c95a3"},
    {"none", "#8c95a3"},
    {"float", "#3f7fc1"},
    {"integer", "#17a2a2"},
    {"boolean", "#c2504a"},
    {"string", "#8f6a4e"},
    {"filename", "#b08a3e"},
    {"color3", "#e08a00"},
    {"color4", "#c75d0e"},
    {"vector2", "#a678d8"},
    {"vector3", "#7e57c2"},
    {"vector4", "#5a3ba6"},
    {"matrix33", "#5f7a8c"},
    {"matrix44", "#455a6b"},
    {"BSDF", "#4d9a6a"},
    {"EDF", "#7d9a2d"},
    {"VDF", "#3f8f8a"},
    {"surfaceshader", "#2e9e4f"},
    {"displacementshader", "#6f8f1f"},
    {"volumeshader", "#1f8f83"},
    {"lightshader", "#b59a00"},
    {"material", "#d1477a"},
};

/// The same on every machine.
std::uint32_t hashOf(const std::string& text)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash;
}

/// A part of a colour of that hue, in degrees, with the saturation and lightness of the others.
int partOf(double hue, int shift)
{
    const double k = std::fmod(shift + hue / 30.0, 12.0);
    const double rise = std::max(-1.0, std::min({k - 3.0, 9.0 - k, 1.0}));
    return static_cast<int>(std::lround(255 * (0.48 - 0.25 * rise)));
}

} // namespace

double textWidth(const std::string& text, int fontSize)
{
    // Monospaced fonts advance by 0.55 to 0.61 of their size. From Hangul on come the East Asian
    // scripts, their full forms, and pictures; and what XML cannot hold is shown by a wide sign.
    double width = 0;
    for (std::size_t i = 0; i < text.size();) {
        const auto [code, size] = shading::characterAt(text, i);
        const bool isWide = code >= 0x1100 && code != U'…';
        width += isWide || !shading::isXmlCharacter(code) ? 1.05 : 0.615;
        i += size;
    }
    return width * fontSize;
}

std::string shortened(const std::string& text, std::size_t maxCharacters)
{
    std::size_t count = 0;
    std::size_t end = 0; // Of all but the last that there may be.
    for (std::size_t i = 0; i < text.size(); i += shading::characterAt(text, i).size) {
        if (++count == maxCharacters)
            end = i;
    }
    return count > maxCharacters ? text.substr(0, end) + "…" : text;
}

std::string omittedText(int count)
{
    return "+ " + std::to_string(count) + " more";
}

double headerWidth(const std::string& name, const std::string& type, bool hasSign)
{
    return std::max(textWidth(shortened(name, kLongestName), kNameSize) +
                        (hasSign ? kSignWidth : 0),
                    textWidth(shortened(type, kLongestName), kTypeSize));
}

double labelWidth(const std::string& name)
{
    return textWidth(shortened(name, kLongestPortName), kPortSize);
}

BoxSize
closedBoxSize(double headerWidth, const std::vector<double>& left, const std::vector<double>& right)
{
    const std::size_t rows = std::max(left.size(), right.size());
    double width = std::max(headerWidth, 70.0);
    for (std::size_t i = 0; i < rows; ++i) {
        const double taken = (i < left.size() ? left[i] : 0) + (i < right.size() ? right[i] : 0);
        width = std::max(width, taken + kTextMargin * 1.5);
    }
    return {std::ceil(width) + 2 * kTextMargin,
            static_cast<double>(kBoxHeader + kRowHeight * static_cast<int>(rows) +
                                (rows > 0 ? kBoxFooter : 0))};
}

int rowMiddle(int rowHeight, std::size_t row)
{
    // Half of a row, which may be odd.
    return rowHeight * static_cast<int>(row) + rowHeight / 2;
}

std::string typeColour(const std::string& type)
{
    for (const TypeColour& known : kTypeColours) {
        if (type == known.type)
            return known.colour;
    }
    const double hue = hashOf(type) % 360;
    std::array<char, 8> text;
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", partOf(hue, 0) & 0xFF,
                  partOf(hue, 8) & 0xFF, partOf(hue, 4) & 0xFF);
    return text.data();
}

} // namespace zelDraw
