#pragma once

#include <string>

namespace shading {

/// How the characters of a file are written.
struct Encoding {
    std::string name = "UTF-8";
    std::string mark; ///< The byte order mark at the start of the file.
};

/// Converts the bytes of an XML file to UTF-8 without a byte order mark. The encoding is the one
/// that the byte order mark, the width of the first "<" or the XML declaration gives, and UTF-8
/// otherwise. False when the encoding is unknown or the bytes do not keep to it: text is then what
/// stands before the first bad byte, problem says what is wrong.
bool convertToUtf8(const std::string& bytes,
                   std::string& text,
                   Encoding& encoding,
                   std::string& problem);

/// The reverse: the bytes of a file with that text. False when the encoding lacks a character of
/// the text, or writes none that can be read back.
bool convertFromUtf8(const std::string& text, const Encoding& encoding, std::string& bytes);

bool canEncode(const Encoding& encoding, char32_t character);

} // namespace shading
