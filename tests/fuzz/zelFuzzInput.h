#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace zelFuzz {

/// The bytes that a fuzzer gives, read from the first to the last; zeros follow.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool isAtEnd() const { return m_place >= m_size; }
    int byte() { return isAtEnd() ? 0 : m_data[m_place++]; }
    /// From 0 to limit - 1; the limit is at least 1.
    int number(int limit) { return byte() % limit; }
    /// The same, and up to that many more: the last bytes name what came later, so that inputs
    /// from before do what they did.
    int numberOrLater(int limit, int later)
    {
        const int value = byte();
        return value > 255 - later ? limit + 255 - value : value % limit;
    }
    /// From 0 to limit - 1, of as many as there may be.
    int place(int limit) { return limit <= 256 ? number(limit) : (byte() * 256 + byte()) % limit; }
    /// One of a few, so that names meet; paths do not reach the last two.
    const char* name()
    {
        static constexpr std::array<const char*, 10> kNames = {"a",   "b",   "c",   "d",   "in",
                                                               "out", "Top", "sub", "a.b", ""};
        return kNames.at(static_cast<std::size_t>(number(kNames.size())));
    }
    /// A text of up to so many bytes, none of them 0.
    std::string text(int limit)
    {
        std::string result;
        for (int length = number(limit + 1); length > 0 && !isAtEnd(); --length) {
            const int letter = byte();
            result += static_cast<char>(letter == 0 ? '.' : letter);
        }
        return result;
    }
    /// All that is left, as it stands.
    std::string rest()
    {
        std::string result(reinterpret_cast<const char*>(m_data) + m_place, m_size - m_place);
        m_place = m_size;
        return result;
    }

private:
    const std::uint8_t* m_data; ///< Not owned.
    std::size_t m_size;
    std::size_t m_place = 0;
};

/// Ends the program with the text when what must hold does not: a fuzzer keeps the input.
void expect(bool holds, const std::string& text);
inline void expect(bool holds, const char* text)
{
    if (!holds)
        expect(false, std::string(text));
}
/// The same where a text costs too much to be made for nothing.
template <class MakeText>
auto expect(bool holds, MakeText makeText) -> decltype(std::string(makeText()), void())
{
    if (!holds)
        expect(false, std::string(makeText()));
}

} // namespace zelFuzz
