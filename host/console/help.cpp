#include "console/help.h"

#include "console/console.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace shading {

namespace {

/// The first sentence, on one line.
std::string summaryOf(const std::string& help)
{
    std::string summary;
    for (std::size_t i = 0; i < help.size(); ++i) {
        const bool isBlank = help[i] == ' ' || help[i] == '\n';
        if (!isBlank)
            summary += help[i];
        else if (!summary.empty() && summary.back() == '.')
            break;
        else if (!summary.empty() && summary.back() != ' ')
            summary += ' ';
    }
    return summary;
}

/// How many characters must be typed, taken off, replaced or swapped with the next to make b of a.
int distanceOf(const std::string& a, const std::string& b)
{
    std::vector<int> beforeLast;
    std::vector<int> last(b.size() + 1);
    std::iota(last.begin(), last.end(), 0);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::vector<int> row = {static_cast<int>(i)};
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const int replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row.push_back(std::min({replaced, last[j] + 1, row[j - 1] + 1}));
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast = std::move(last);
        last = std::move(row);
    }
    return last.back();
}

} // namespace

std::string usageOf(const Command& command)
{
    std::string usage = command.name;
    for (auto [option, kind] : optionsOf(command)) {
        std::transform(kind.begin(), kind.end(), kind.begin(), ::toupper);
        usage += " [" + option + (kind.empty() ? "]" : " " + kind + "]");
    }
    if (*command.arguments != '\0')
        usage.append(" ").append(command.arguments);
    return usage;
}

std::string overviewText(const std::vector<Command>& commands)
{
    std::size_t width = 0;
    for (const Command& command : commands)
        width = std::max(width, std::string(command.name).size());
    std::string result;
    const char* group = "";
    for (const Command& command : commands) {
        if (std::string(group) != command.group)
            result.append(result.empty() ? "" : "\n").append(command.group).append("\n");
        group = command.group;
        std::string name = command.name;
        name.resize(width + 2, ' ');
        result.append("  ").append(name).append(summaryOf(command.help)).append("\n");
    }
    return result + "\n`help COMMAND` tells more of one.\n";
}

std::string helpText(const Command& command)
{
    std::string text = usageOf(command) + "\n    " + command.help + "\n";
    if (*command.example != '\0')
        text.append("    Example: ").append(command.example).append("\n");
    return text;
}

std::string nearestCommand(const std::vector<Command>& commands, const std::string& word)
{
    const int limit = word.size() < 4 ? 1 : 2;
    std::string nearest;
    int least = limit + 1;
    for (const Command& command : commands) {
        // A long word is no slip; and the comparison takes the product of both lengths.
        const std::string name = command.name;
        const int distance = word.size() > name.size() + 2 ? least : distanceOf(word, name);
        if (distance < least) {
            least = distance;
            nearest = name;
        }
    }
    return nearest;
}

} // namespace shading
