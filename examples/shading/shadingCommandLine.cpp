#include "shadingCommandLine.h"

namespace shading {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

} // namespace

bool splitCommand(const std::string& line, std::vector<std::string>& words, std::string& problem)
{
    words.clear();
    bool isInWord = false;
    char quote = '\0'; // The one that closes the quoted text; 0 outside of one.
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quote == '\0' && isBlank(c)) {
            isInWord = false;
            continue;
        }
        if (!isInWord && c == '#')
            break;
        if (!isInWord) {
            words.emplace_back();
            isInWord = true;
        }
        if (quote != '\0' && c == quote) {
            quote = '\0';
        } else if (quote == '\0' && (c == '"' || c == '\'')) {
            quote = c;
        } else if (c == '\\' && quote != '\'') {
            if (++i == line.size()) {
                problem = "nothing follows the last \\";
                return false;
            }
            words.back() += line[i];
        } else {
            words.back() += c;
        }
    }
    if (quote != '\0')
        problem = std::string("no closing ") + quote;
    return quote == '\0';
}

} // namespace shading
