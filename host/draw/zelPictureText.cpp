#include "draw/zelPictureText.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace zelDraw {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// How many bytes follow a first byte; -1 when it is none.
int followersOf(unsigned char first)
{
    if (first < 0x80)
        return 0;
    if (first >= 0xC2 && first < 0xE0)
        return 1;
    if (first >= 0xE0 && first < 0xF0)
        return 2;
    return first >= 0xF0 && first < 0xF5 ? 3 : -1;
}

bool isAllowed(char32_t sign, int followers)
{
    const char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    const bool isControl = sign < 0x20 && sign != '\t' && sign != '\n' && sign != '\r';
    const bool isSurrogate = sign >= 0xD800 && sign < 0xE000;
    return sign >= smallest[followers] && sign < 0x110000 && sign != 0xFFFE && sign != 0xFFFF &&
           !isControl && !isSurrogate;
}

/// The characters of UTF-8; for each byte that is wrong the replacement.
std::u32string decode(const std::string& text)
{
    std::u32string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int followers = followersOf(static_cast<unsigned char>(text[i]));
        char32_t sign = static_cast<unsigned char>(text[i]);
        bool isGood = followers >= 0 && i + static_cast<std::size_t>(followers) < text.size();
        if (isGood && followers > 0)
            sign &= 0x3FU >> followers;
        for (int k = 1; isGood && k <= followers; ++k) {
            const auto byte = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
            isGood = (byte & 0xC0U) == 0x80U;
            sign = sign << 6 | (byte & 0x3FU);
        }
        isGood = isGood && isAllowed(sign, followers);
        result += isGood ? sign : kReplacement;
        i += isGood ? static_cast<std::size_t>(followers) : 0;
    }
    return result;
}

void append(std::string& text, char32_t sign)
{
    const auto add = [&](char32_t byte) { text += static_cast<char>(byte); };
    if (sign < 0x80) {
        add(sign);
    } else if (sign < 0x800) {
        add(0xC0 | sign >> 6);
        add(0x80 | (sign & 0x3F));
    } else if (sign < 0x10000) {
        add(0xE0 | sign >> 12);
        add(0x80 | (sign >> 6 & 0x3F));
        add(0x80 | (sign & 0x3F));
    } else {
        add(0xF0 | sign >> 18);
        add(0x80 | (sign >> 12 & 0x3F));
        add(0x80 | (sign >> 6 & 0x3F));
        add(0x80 | (sign & 0x3F));
    }
}

/// From Hangul on: the East Asian scripts, their full forms, and pictures.
bool isWide(char32_t sign)
{
    return sign >= 0x1100;
}

} // namespace

double textWidth(const std::string& text, int fontSize)
{
    // Monospaced fonts advance by 0.55 to 0.61 of their size.
    double width = 0;
    for (const char32_t sign : decode(text))
        width += isWide(sign) && sign != U'…' ? 1.05 : 0.615;
    return width * fontSize;
}

std::string shortened(const std::string& text, std::size_t maxCharacters)
{
    const std::u32string signs = decode(text);
    std::string result;
    const bool isLong = signs.size() > maxCharacters;
    for (const char32_t sign : signs.substr(0, isLong ? maxCharacters - 1 : maxCharacters))
        append(result, sign);
    return isLong ? result + "…" : result;
}

std::string escaped(const std::string& text)
{
    std::string result;
    for (const char32_t sign : decode(text)) {
        if (sign == '&')
            result += "&amp;";
        else if (sign == '<')
            result += "&lt;";
        else if (sign == '>')
            result += "&gt;";
        else if (sign == '"')
            result += "&quot;";
        else if (sign < 0x20)
            result += "&#" + std::to_string(static_cast<std::uint32_t>(sign)) + ";";
        else
            append(result, sign);
    }
    return result;
}

std::string numberText(double number)
{
    const long tenths = std::lround(std::abs(number) * 10);
    std::string result = number < 0 && tenths != 0 ? "-" : "";
    result += std::to_string(tenths / 10);
    if (tenths % 10 != 0)
        result += "." + std::to_string(tenths % 10);
    return result;
}

} // namespace zelDraw
