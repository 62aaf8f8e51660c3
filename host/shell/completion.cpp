#include "shell/completion.h"

#include "base/commandLine.h"
#include "shell/candidates.h"
#include "shell/shell.h"

#include <algorithm>
#include <sstream>

namespace shading {

namespace {

using Words = std::vector<std::string>;

const char kBlank = ' ';

Words splitAt(const std::string& text, char separator)
{
    Words parts;
    std::istringstream stream(text);
    std::string part;
    while (std::getline(stream, part, separator)) {
        if (!part.empty())
            parts.push_back(part);
    }
    return parts;
}

/// Whether the kind is a list of words, and not of this one.
bool excludes(const std::string& kind, const std::string& word)
{
    const Words known = splitAt(kind.substr(0, 1) == "=" ? kind.substr(1) : "", ',');
    return !known.empty() && std::find(known.begin(), known.end(), word) == known.end();
}

/// The kind at the index; the last one where it repeats; empty behind the last.
std::string kindAt(const Words& kinds, std::size_t index)
{
    if (kinds.empty())
        return "";
    const std::string& last = kinds.back();
    const bool repeats = last.size() > 3 && last.compare(last.size() - 3, 3, "...") == 0;
    if (repeats && index + 1 >= kinds.size())
        return last.substr(0, last.size() - 3);
    return index < kinds.size() ? kinds[index] : "";
}

/// What the form of a command takes behind the arguments. Empty: nothing, or they are of another
/// form.
std::string kindBehind(const Words& kinds, const Words& arguments)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (excludes(kindAt(kinds, i), arguments[i]))
            return "";
    }
    return kindAt(kinds, arguments.size());
}

/// The argument that is the path of a compound, empty when there is none.
std::string compoundAmong(const Words& kinds, const Words& arguments)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (kindAt(kinds, i) == "compound")
            return arguments[i];
    }
    return "";
}

void addArguments(const Command& command,
                  const UnfinishedLine& line,
                  const CandidateSources& sources,
                  Candidates& candidates)
{
    const Words options = splitAt(command.options, kBlank);
    Words arguments;
    for (std::size_t i = 1; i < line.words.size(); ++i) {
        if (std::find(options.begin(), options.end(), line.words[i]) == options.end())
            arguments.push_back(line.words[i]);
    }
    for (const std::string& form : splitAt(command.kinds, '|')) {
        const Words kinds = splitAt(form, kBlank);
        const std::string kind = kindBehind(kinds, arguments);
        if (!kind.empty())
            addCandidates(kind, line.word, compoundAmong(kinds, arguments), sources, candidates);
    }
    // Options are offered to who begins to type one.
    for (const std::string& option : options) {
        if (!line.word.empty())
            candidates.add(option);
    }
}

/// As far as all agree; never less than what they were chosen by.
std::string commonStart(const std::vector<Candidate>& candidates)
{
    std::string start = candidates.front().word;
    for (const Candidate& candidate : candidates) {
        const std::size_t size = std::min(start.size(), candidate.word.size());
        const auto end = std::mismatch(start.begin(), start.begin() + static_cast<long>(size),
                                       candidate.word.begin());
        start.erase(end.first, start.end());
    }
    // Not within a character of several bytes.
    const std::string& first = candidates.front().word;
    while (start.size() < first.size() && (first[start.size()] & 0xC0) == 0x80)
        start.pop_back();
    return start;
}

} // namespace

Completion
complete(const std::vector<Command>& commands, Document& document, const std::string& line)
{
    const UnfinishedLine unfinished = splitUnfinished(line);
    Completion completion;
    completion.start = unfinished.start;
    if (unfinished.isComment)
        return completion;

    Candidates candidates(unfinished.word);
    const CandidateSources sources = {commands, document};
    if (unfinished.words.empty())
        addCandidates("command", unfinished.word, "", sources, candidates);
    for (const Command& command : commands) {
        if (!unfinished.words.empty() && unfinished.words.front() == command.name)
            addArguments(command, unfinished, sources, candidates);
    }

    const std::vector<Candidate> found = candidates.take();
    if (found.empty())
        return completion;
    const bool isWhole = found.size() == 1 && found.front().isWhole;
    completion.text = quoteWord(commonStart(found), isWhole) + (isWhole ? " " : "");
    for (const Candidate& candidate : found)
        completion.candidates.push_back(quoteWord(candidate.word, candidate.isWhole));
    return completion;
}

} // namespace shading
