#include "base/encoding.h"

#include "base/utf8.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <iconv.h>

namespace shading {

namespace {

/// How many bytes an encoding name may be away from the start of the file.
constexpr std::size_t kDeclarationLimit = 1024;

struct Signature {
    std::string start;    ///< The first bytes of the file.
    const char* encoding; ///< What they stand for.
    std::size_t skipped;  ///< The length of the byte order mark among them.
};

/// The longer signatures come first: some begin with a shorter one.
const std::array<Signature, 9>& signatures()
{
    using namespace std::string_literals;
    static const std::array<Signature, 9> table = {{
        {"\xFF\xFE\0\0"s, "UTF-32LE", 4},
        {"\0\0\xFE\xFF"s, "UTF-32BE", 4},
        {"<\0\0\0"s, "UTF-32LE", 0},
        {"\0\0\0<"s, "UTF-32BE", 0},
        {"\xEF\xBB\xBF"s, "UTF-8", 3},
        {"\xFF\xFE"s, "UTF-16LE", 2},
        {"\xFE\xFF"s, "UTF-16BE", 2},
        {"<\0"s, "UTF-16LE", 0},
        {"\0<"s, "UTF-16BE", 0},
    }};
    return table;
}

/// The value of `encoding` in the XML declaration, UTF-8 when there is none.
std::string declaredEncoding(const std::string& bytes)
{
    const std::string head = bytes.substr(0, kDeclarationLimit);
    const std::size_t end = head.find("?>");
    const std::size_t key = head.find("encoding");
    if (head.compare(0, 5, "<?xml") != 0 || end == std::string::npos || key >= end)
        return "UTF-8";
    const std::size_t open = head.find_first_of("\"'", key);
    if (open >= end)
        return "UTF-8";
    const std::size_t close = head.find(head[open], open + 1);
    return close < end ? head.substr(open + 1, close - open - 1) : "UTF-8";
}

/// Converts all of input, or up to the first bad byte: then false.
bool convert(iconv_t converter, const char* input, std::size_t size, std::string& text)
{
    std::array<char, 65536> buffer;
    char* in = const_cast<char*>(input); // iconv does not write to its input.
    while (size > 0) {
        char* out = buffer.data();
        std::size_t room = buffer.size();
        const std::size_t result = iconv(converter, &in, &size, &out, &room);
        const bool isFull = result == static_cast<std::size_t>(-1) && errno == E2BIG;
        text.append(buffer.data(), buffer.size() - room);
        if (result == static_cast<std::size_t>(-1) && !isFull)
            return false;
    }
    return true;
}

/// False when there is no such conversion, or the input is not in the first encoding.
bool convert(const std::string& from,
             const std::string& to,
             const std::string& input,
             std::size_t skipped,
             std::string& output,
             bool& isKnown)
{
    iconv_t converter = iconv_open(to.c_str(), from.c_str());
    // iconv reports failure by the address -1.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    isKnown = converter != reinterpret_cast<iconv_t>(-1);
    if (!isKnown)
        return false;
    const bool isConverted =
        convert(converter, input.data() + skipped, input.size() - skipped, output);
    iconv_close(converter);
    return isConverted;
}

} // namespace

bool convertToUtf8(const std::string& bytes,
                   std::string& text,
                   Encoding& encoding,
                   std::string& problem)
{
    text.clear();
    encoding = Encoding();
    encoding.name.clear();
    for (const Signature& signature : signatures()) {
        if (bytes.compare(0, signature.start.size(), signature.start) != 0)
            continue;
        encoding.name = signature.encoding;
        encoding.mark = bytes.substr(0, signature.skipped);
        break;
    }
    if (encoding.name.empty())
        encoding.name = declaredEncoding(bytes);
    bool isKnown = false;
    const bool isConverted =
        convert(encoding.name, "UTF-8", bytes, encoding.mark.size(), text, isKnown);
    if (!isKnown)
        problem = "unknown encoding \"" + encoding.name + "\"";
    else if (!isConverted)
        problem = "the bytes that follow are not " + encoding.name;
    return isConverted;
}

bool convertFromUtf8(const std::string& text, const Encoding& encoding, std::string& bytes)
{
    bool isKnown = false;
    bytes.clear();
    if (!convert("UTF-8", encoding.name, text, 0, bytes, isKnown))
        return false;
    std::string back;
    const bool isSame = convert(encoding.name, "UTF-8", bytes, 0, back, isKnown) && back == text;
    bytes.insert(0, encoding.mark);
    return isSame;
}

bool canEncode(const Encoding& encoding, char32_t character)
{
    std::string text;
    std::string bytes;
    addUtf8(character, text);
    return text.size() == 1 || encoding.name == "UTF-8" ||
           convertFromUtf8(text, {encoding.name, ""}, bytes);
}

} // namespace shading
