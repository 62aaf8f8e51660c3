#pragma once

#include <string>

namespace shading {

/// What is wrong with the text as a value of that data type of the format; empty when it is right.
/// Checked are `boolean`, `integer`, `float`, and colors, vectors, matrices and arrays of those:
/// numbers with commas between. Every type takes the empty text, which is no value; any other type
/// takes any text. None takes control characters but tabs and line ends: a document cannot hold
/// them.
std::string valueProblem(const std::string& type, const std::string& value);

} // namespace shading
