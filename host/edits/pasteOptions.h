#pragma once

#include "edits/positions.h"

#include <optional>
#include <string>
#include <vector>

namespace shading {

/// How nodes of a text come into a document. They keep their places among each other.
struct PasteOptions {
    /// Where they go. Empty: beside what they were copied from; a place of their own where that is
    /// somewhere else, and below what is there where they have none.
    std::optional<Position> at;
    bool isMiddleAt = false; ///< The middle of their places goes there; else the upper left corner.
    bool isInner = false;    ///< They are connected among themselves only.
};

/// Adds the options that say so in a line of the shell.
void addWords(const PasteOptions& options, std::vector<std::string>& words);

} // namespace shading
