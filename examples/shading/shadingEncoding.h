#pragma once

#include <string>

namespace shading {

/// Converts the bytes of an XML file to UTF-8 without a byte order mark. The encoding is the one
/// that the byte order mark, the width of the first "<" or the XML declaration gives, and UTF-8
/// otherwise. False when the encoding is unknown or the bytes do not keep to it: text is then what
/// stands before the first bad byte, problem says what is wrong.
bool convertToUtf8(const std::string& bytes, std::string& text, std::string& problem);

} // namespace shading
