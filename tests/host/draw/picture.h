#pragma once

#include "zel.h"

#include <string>
#include <vector>

/// What an SVG file of a network shows, read back from its text.
struct ShownPicture {
    struct Point {
        double x, y;
    };
    struct Text {
        std::string words;
        double left, right, bottom;
    };
    struct Port {
        std::string path;
        bool isInput;
        Point dot;
    };
    struct Box {
        std::string kind; ///< "node", "compound", "frame" or "stub".
        std::string path;
        std::size_t frame; ///< The index of the frame around it; its own for the outermost.
        double left, top, right, bottom;
        std::vector<Port> ports; ///< A stub has one.
        std::vector<Text> texts;
    };
    struct Connection {
        std::string from, to;
        std::vector<Point> curve; ///< Its control points.
    };

    /// Empty, with a failure of the running test, when the text is not well-formed.
    explicit ShownPicture(const std::string& svg);

    std::vector<Box> boxes; ///< The outermost first, frames before what is in them.
    std::vector<Connection> connections;

    /// "KIND PATH" of the boxes and below it, with two blanks, "input PATH" or "output PATH" of
    /// their ports from top to bottom, the inputs first. Stubs are left out.
    std::string boxesText() const;
    /// "FROM -> TO", sorted.
    std::string connectionsText() const;
    /// What is wrong with the drawing, one a line: boxes that overlap or leave their frame, dots
    /// off the border, curves that do not end on the dots or cross a box, texts that leave their
    /// box or overlap. "" for a sound one.
    std::string faultsText() const;
    /// Connections between two boxes of a frame whose target does not lie right of the source.
    std::string backwardText() const;
};

/// The boxesText of a picture with all ports, of the compound and `depth` levels in it.
std::string expectedBoxes(ZEL::Compound& compound, int depth);
/// The connectionsText of one without connections across frames.
std::string expectedConnections(ZEL::Compound& compound, int depth);
