#pragma once

#include <string>
#include <vector>

namespace shading {

/// Splits a line into words at blanks. Quotes, single or double, keep blanks in a word; a backslash
/// takes the next character as it is, but not inside single quotes. A `#` at the start of a word
/// begins a comment. False, with the problem, when a quote is not closed or nothing follows a
/// backslash.
bool splitCommand(const std::string& line, std::vector<std::string>& words, std::string& problem);

/// A line that is being typed, up to the cursor.
struct UnfinishedLine {
    std::vector<std::string> words; ///< Those before the one that is being typed.
    std::string word;               ///< What it says so far; empty after a blank.
    std::size_t start = 0;          ///< Where it begins in the line.
    bool isComment = false;         ///< The cursor stands in a comment.
};

/// Takes the line apart as splitCommand does; the last word may have an open quote.
UnfinishedLine splitUnfinished(const std::string& line);

/// The word as it is typed: in quotes when it has characters that mean something else. An unclosed
/// one ends before its closing quote, so that more can be typed.
std::string quoteWord(const std::string& word, bool isClosed = true);
/// The whole word as a number from least on, the largest there is for a larger one. False for any
/// other word.
bool readNumber(const std::string& word, int least, int& number);
/// The line that splitCommand takes apart into these words.
std::string lineOf(const std::vector<std::string>& words);

} // namespace shading
