#include "base/utf8.h"

#include <algorithm>

namespace shading {

namespace {

bool isInner(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// How many bytes follow a first byte; -1 when it is none.
int followersOf(unsigned char first)
{
    if (first < 0x80U)
        return 0;
    if (first < 0xC2U || first > 0xF4U)
        return -1;
    if (first < 0xE0U)
        return 1;
    return first < 0xF0U ? 2 : 3;
}

} // namespace

Character characterAt(std::string_view text, std::size_t offset)
{
    const char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    const auto first = static_cast<unsigned char>(text[offset]);
    const int followers = followersOf(first);
    const std::size_t size = followers < 0 ? 1 : static_cast<std::size_t>(followers) + 1;
    if (followers < 0 || offset + size > text.size())
        return {kNoCharacter, 1};
    char32_t code = followers == 0 ? first : first & (0x3FU >> static_cast<unsigned>(followers));
    for (std::size_t i = 1; i < size; ++i) {
        const char c = text[offset + i];
        if (!isInner(c))
            return {kNoCharacter, 1};
        code = code << 6U | (static_cast<unsigned char>(c) & 0x3FU);
    }
    const bool isSurrogate = code >= 0xD800 && code < 0xE000;
    if (code < smallest[followers] || code > 0x10FFFF || isSurrogate)
        return {kNoCharacter, 1};
    return {code, size};
}

void addUtf8(char32_t code, std::string& text)
{
    const auto add = [&](char32_t byte) { text += static_cast<char>(byte); };
    if (code < 0x80) {
        add(code);
        return;
    }
    if (code < 0x800) {
        add(0xC0 | code >> 6);
    } else {
        if (code < 0x10000) {
            add(0xE0 | code >> 12);
        } else {
            add(0xF0 | code >> 18);
            add(0x80 | (code >> 12 & 0x3F));
        }
        add(0x80 | (code >> 6 & 0x3F));
    }
    add(0x80 | (code & 0x3F));
}

bool isXmlCharacter(char32_t code)
{
    const bool isControl = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
    const bool isSurrogate = code >= 0xD800 && code < 0xE000;
    return !isControl && !isSurrogate && code != 0xFFFE && code != 0xFFFF && code <= 0x10FFFF;
}

bool isXmlText(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        const Character character = characterAt(text, i);
        if (!isXmlCharacter(character.code))
            return false;
        i += character.size;
    }
    return true;
}

std::size_t countCharacters(std::string_view text)
{
    return text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isInner));
}

} // namespace shading
