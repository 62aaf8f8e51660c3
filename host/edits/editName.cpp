#include "edits/editName.h"

#include "base/commandLine.h"

#include <algorithm>

namespace shading {

namespace {

constexpr std::size_t kLongValue = 40; ///< In bytes.

} // namespace

std::string shortNameOf(ZEL::Port& port)
{
    const NodePtr node = port.getParentNode();
    return (node ? std::string(node->getName()) + "." : "") + port.getName();
}

std::string shortValue(const std::string& value)
{
    std::size_t size = std::min(value.size(), kLongValue);
    while (size < value.size() && (value[size] & 0xC0) == 0x80)
        --size; // Not within a character of several bytes.
    std::string text = value.substr(0, size);
    std::replace(text.begin(), text.end(), '\n', ' ');
    return "\"" + text + (size < value.size() ? "...\"" : "\"");
}

EditName named(std::string title, const std::vector<std::string>& words)
{
    return {std::move(title), {lineOf(words)}};
}

} // namespace shading
