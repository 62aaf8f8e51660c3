#pragma once

#include <string>

namespace shading {

/// What is wrong with a document, and where.
struct Message {
    std::string file;
    int line = 1;   ///< From 1.
    int column = 1; ///< From 1, in characters.
    bool isError = false;
    std::string text;    ///< One line, without its end.
    int systemError = 0; ///< The errno of a file that cannot be opened; 0: it is not that.
};

/// "FILE:LINE:COLUMN: error: TEXT" or "FILE:LINE: warning: TEXT", without a line end.
inline std::string messageText(const Message& message)
{
    const std::string place = message.file + ":" + std::to_string(message.line);
    return message.isError
               ? place + ":" + std::to_string(message.column) + ": error: " + message.text
               : place + ": warning: " + message.text;
}

} // namespace shading
