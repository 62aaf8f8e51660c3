#pragma once

#include <string>

namespace ZEL {
class Compound;
}

namespace shading {

struct PictureChoice {
    int depth = 0;      ///< How many levels of compounds inside are open frames.
    bool isAll = false; ///< Also inputs that say no more than the node's definition.
};

/// A compound of a document as the text of an SVG file. False, with the reason, when it cannot be
/// drawn.
bool drawPicture(ZEL::Compound& compound,
                 const PictureChoice& choice,
                 std::string& svg,
                 std::string& problem);

/// What is wrong with the name of a file for a picture; empty when it is right. A picture never
/// takes the place of a document or a script by a slip.
std::string pictureNameProblem(const std::string& file);

} // namespace shading
