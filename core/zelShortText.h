#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace ZEL {

/// Names are short: hashing and comparing them in place costs less than a call that is made for
/// texts of any length. Longer ones are read in the same way, word after word; the last words
/// overlap.
namespace ShortText {

template <class Word>
std::uint64_t wordAt(const char* text)
{
    Word word = 0;
    std::memcpy(&word, text, sizeof(word));
    return word;
}

/// So many bytes have room in two words.
constexpr std::size_t kTwoWords = 16;

/// The words of a text of up to so many bytes.
struct TwoWords {
    std::uint64_t first = 0;
    std::uint64_t last = 0;
};

inline TwoWords twoWords(const char* text, std::size_t size)
{
    if (size >= sizeof(std::uint64_t))
        return {wordAt<std::uint64_t>(text), wordAt<std::uint64_t>(text + size - 8)};
    if (size >= sizeof(std::uint32_t))
        return {wordAt<std::uint32_t>(text), wordAt<std::uint32_t>(text + size - 4)};
    if (size == 0)
        return {};
    return {wordAt<std::uint8_t>(text),
            wordAt<std::uint8_t>(text + size / 2) << 8 | wordAt<std::uint8_t>(text + size - 1)};
}

/// Spreads every bit of the word over the higher half: a product hands bits on to higher ones only.
inline std::uint64_t mixed(std::uint64_t word)
{
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
    return (word ^ (word >> 32)) * kSpread;
}

/// A hash for tables in memory: it may differ between machines.
inline std::uint32_t hashOf(std::string_view text)
{
    const char* place = text.data();
    std::size_t left = text.size();
    std::uint64_t hash = left;
    for (; left > kTwoWords; left -= 8, place += 8)
        hash = mixed(hash ^ wordAt<std::uint64_t>(place));
    const TwoWords words = twoWords(place, left);
    return static_cast<std::uint32_t>(mixed(mixed(mixed(hash ^ words.first) ^ words.last)) >> 32);
}

inline bool areEqual(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    const char* inA = a.data();
    const char* inB = b.data();
    std::size_t left = a.size();
    for (; left > kTwoWords; left -= 8, inA += 8, inB += 8) {
        if (wordAt<std::uint64_t>(inA) != wordAt<std::uint64_t>(inB))
            return false;
    }
    const TwoWords ofA = twoWords(inA, left);
    const TwoWords ofB = twoWords(inB, left);
    return ofA.first == ofB.first && ofA.last == ofB.last;
}

/// A text to find among others, which end in a 0 as those of std::string do. Names of one list
/// often differ in their last character only: that one is compared first.
class Pattern {
public:
    explicit Pattern(std::string_view text)
        : m_text(text),
          m_lastPlace(text.empty() ? 0 : text.size() - 1),
          m_last(text.empty() ? '\0' : text.back())
    {
    }
    bool isEqual(const std::string& other) const
    {
        return other.size() == m_text.size() && other.data()[m_lastPlace] == m_last &&
               areEqual(other, m_text);
    }

private:
    std::string_view m_text;
    std::size_t m_lastPlace;
    char m_last;
};

} // namespace ShortText

} // namespace ZEL
