#pragma once

#include <string>

namespace shading {

/// What is wrong with a document, and where.
struct Message {
    std::string file;
    int line = 1;   ///< From 1.
    int column = 1; ///< From 1, in characters.
    bool isError = false;
    std::string text; ///< One line, without its end.
};

/// "FILE:LINE:COLUMN: error: TEXT" or "FILE:LINE: warning: TEXT", without a line end.
std::string messageText(const Message& message);

} // namespace shading
