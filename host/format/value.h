#pragma once

#include <string>
#include <vector>

namespace shading {

/// What is wrong with the text as a value of that data type of the format; empty when it is right.
/// Checked are `boolean`, `integer`, `float`, and colors, vectors, matrices and arrays of those:
/// numbers with commas between. Every type takes the empty text, which is no value; any other type
/// takes any text. None takes control characters but tabs and line ends: a document cannot hold
/// them.
std::string valueProblem(const std::string& type, const std::string& value);

/// A data type whose values are parts with commas between.
struct ListType {
    const char* name;
    const char* part; ///< The data type of each.
    int count;        ///< Of the parts; below 0: any number.
};
/// Null for a type whose values are one thing, and for one that is not known.
const ListType* listTypeOf(const std::string& type);
/// What stands between the commas, without the blanks around it. One part at least.
std::vector<std::string> partsOf(const std::string& value);

} // namespace shading
