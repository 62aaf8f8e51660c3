#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zelDraw {

// The measures, in pixels, that the placing and the writing of a picture share.
constexpr int kNameSize = 13; ///< Sizes of fonts.
constexpr int kTypeSize = 11;
constexpr int kPortSize = 11;
constexpr std::size_t kLongestName = 40; ///< In characters; longer ones are shortened.
constexpr std::size_t kLongestPortName = 32;

constexpr int kTextMargin = 12; ///< Between a box's border and its texts.
constexpr int kSignWidth = 24;  ///< The sign of a closed compound, beside its name.
constexpr int kBoxHeader = 42;  ///< The part of a box above its ports.
constexpr int kRowHeight = 19;  ///< Of a port of a box.
constexpr int kBoxFooter = 7;   ///< Below the last port.
constexpr int kStubHeight = 22;
constexpr int kFrameHeader = 34;
constexpr int kFramePadding = 20;
constexpr int kEdgeRowHeight = 26; ///< Of a port on a frame's edge.
constexpr int kPictureMargin = 20; ///< Around the outermost frame.

/// At least the width of the text in a monospaced font of that size in pixels; what scripts write
/// wide counts as wide. Text that is not UTF-8 is counted as it will be shown.
double textWidth(const std::string& text, int fontSize);
/// The text, or its beginning and "…" when it has more characters than that.
std::string shortened(const std::string& text, std::size_t maxCharacters);
/// What stands in a box with inputs that are not drawn.
std::string omittedText(int count);

/// The width of a box's header: its name above its type, and the sign of a compound.
double headerWidth(const std::string& name, const std::string& type, bool hasSign);
/// The width of a port's name in a row.
double labelWidth(const std::string& name);

struct BoxSize {
    double width = 0;
    double height = 0;
};

/// The size of a closed box with that header and those rows, of which each side has the widths of
/// its labels. What is omitted is a row of the left side.
BoxSize closedBoxSize(double headerWidth,
                      const std::vector<double>& left,
                      const std::vector<double>& right);
/// The middle of a row among rows of one height, below the first one's top. All are whole.
int rowMiddle(int rowHeight, std::size_t row);

} // namespace zelDraw
