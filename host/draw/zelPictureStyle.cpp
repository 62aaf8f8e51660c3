#include "draw/zelPictureStyle.h"

#include "base/utf8.h"

#include <algorithm>
#include <cmath>

namespace zelDraw {

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

} // namespace zelDraw
