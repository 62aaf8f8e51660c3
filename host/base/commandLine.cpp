#include "base/commandLine.h"

#include <charconv>
#include <climits>

namespace shading {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// A line taken apart as far as it goes.
struct Split {
    std::vector<std::string> words;
    std::size_t lastStart = 0; ///< Of the last word.
    bool isInWord = false;     ///< The line ends in the last word.
    bool isComment = false;    ///< It ends in a comment.
    bool isCut = false;        ///< It ends behind a backslash.
    char quote = '\0';         ///< The one that would close the quoted text; 0 outside of one.
};

Split split(const std::string& line)
{
    Split result;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (result.quote == '\0' && isBlank(c)) {
            result.isInWord = false;
            continue;
        }
        result.isComment = !result.isInWord && c == '#';
        if (result.isComment)
            break;
        if (!result.isInWord) {
            result.words.emplace_back();
            result.lastStart = i;
            result.isInWord = true;
        }
        if (result.quote != '\0' && c == result.quote) {
            result.quote = '\0';
        } else if (result.quote == '\0' && (c == '"' || c == '\'')) {
            result.quote = c;
        } else if (c == '\\' && result.quote != '\'') {
            result.isCut = ++i == line.size();
            if (!result.isCut)
                result.words.back() += line[i];
        } else {
            result.words.back() += c;
        }
    }
    return result;
}

} // namespace

bool splitCommand(const std::string& line, std::vector<std::string>& words, std::string& problem)
{
    Split result = split(line);
    words = std::move(result.words);
    if (result.isCut)
        problem = "nothing follows the last \\";
    else if (result.quote != '\0')
        problem = std::string("no closing ") + result.quote;
    return !result.isCut && result.quote == '\0';
}

UnfinishedLine splitUnfinished(const std::string& line)
{
    Split result = split(line);
    UnfinishedLine unfinished;
    unfinished.isComment = result.isComment;
    unfinished.start = line.size();
    if (result.isInWord) {
        unfinished.word = std::move(result.words.back());
        unfinished.start = result.lastStart;
        result.words.pop_back();
    }
    unfinished.words = std::move(result.words);
    return unfinished;
}

std::string quoteWord(const std::string& word, bool isClosed)
{
    const bool isPlain = word.find_first_of(" \t\r\n\"'\\") == std::string::npos;
    if (isPlain && !(word.empty() && isClosed) && word.compare(0, 1, "#") != 0)
        return word;
    std::string quoted = "\"";
    for (const char c : word) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        quoted += c;
    }
    return isClosed ? quoted + "\"" : quoted;
}

bool readNumber(const std::string& word, int least, int& number)
{
    const char* const end = word.data() + word.size();
    const std::from_chars_result read = std::from_chars(word.data(), end, number);
    if (read.ec == std::errc::result_out_of_range && word.front() != '-')
        number = INT_MAX;
    else if (read.ec != std::errc())
        return false;
    return read.ptr == end && number >= least;
}

std::string lineOf(const std::vector<std::string>& words)
{
    std::string line;
    for (const std::string& word : words)
        line.append(line.empty() ? "" : " ").append(quoteWord(word));
    return line;
}

} // namespace shading
