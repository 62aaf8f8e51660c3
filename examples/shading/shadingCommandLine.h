#pragma once

#include <string>
#include <vector>

namespace shading {

/// Splits a line into words at blanks. Quotes, single or double, keep blanks in a word; a backslash
/// takes the next character as it is, but not inside single quotes. A `#` at the start of a word
/// begins a comment. False, with the problem, when a quote is not closed or nothing follows a
/// backslash.
bool splitCommand(const std::string& line, std::vector<std::string>& words, std::string& problem);

} // namespace shading
