#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace shading {

/// One character of a text, or a byte that is none.
struct Character {
    char32_t code;    ///< kNoCharacter for bytes that are no UTF-8.
    std::size_t size; ///< In bytes; 1 for a wrong one.
};

constexpr char32_t kNoCharacter = 0xFFFFFFFF;

/// The character that begins there; the offset must be inside the text.
Character characterAt(std::string_view text, std::size_t offset);
/// Adds the character to a text.
void addUtf8(char32_t code, std::string& text);
/// False for what no XML can hold: most control characters, surrogates and kNoCharacter among them.
bool isXmlCharacter(char32_t code);
/// The same of all characters of a text.
bool isXmlText(std::string_view text);
/// How many characters begin in the text.
std::size_t countCharacters(std::string_view text);

} // namespace shading
