#include "edits/editName.h"

#include "base/commandLine.h"
#include "document/names.h"

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

std::string countOf(const std::vector<NodePtr>& nodes)
{
    return nodes.size() == 1 ? nodes.front()->getName() : std::to_string(nodes.size()) + " nodes";
}

EditName named(std::string title, const std::vector<std::string>& words)
{
    return {std::move(title), {lineOf(words)}};
}

EditName namedFor(ZEL::Container& document,
                  const std::vector<NodePtr>& nodes,
                  std::string title,
                  const std::vector<std::string>& words)
{
    const auto isReached = [&](const NodePtr& node) {
        return document.findNodeFromPath(pathOf(*node).c_str()) == node;
    };
    if (std::all_of(nodes.begin(), nodes.end(), isReached))
        return named(std::move(title), words);
    return {std::move(title), {}};
}

} // namespace shading
