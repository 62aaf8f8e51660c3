#pragma once

#include <string>

namespace zelDraw {

/// At least the width of the text in a monospaced font of that size in pixels; what scripts write
/// wide counts as wide. Text that is not UTF-8 is counted as it will be shown.
double textWidth(const std::string& text, int fontSize);

/// The text, or its beginning and "…" when it has more characters than that.
std::string shortened(const std::string& text, std::size_t maxCharacters);

/// The text for an XML attribute or element. What XML cannot hold becomes the sign U+FFFD.
std::string escaped(const std::string& text);

/// With at most one decimal, which is a full stop everywhere.
std::string numberText(double number);

} // namespace zelDraw
