#pragma once

#include <string>
#include <vector>

namespace shading {

class Document;
struct Command;

/// A word that may be meant.
struct Candidate {
    std::string word;
    bool isWhole; ///< False: more has to follow in the same word.
    bool leadsOn; ///< Whole, and a "." with more may follow.
};

/// Collects the words that begin with what was typed.
class Candidates {
public:
    explicit Candidates(std::string typed) : m_typed(std::move(typed)) {}

    void add(const std::string& word, bool isWhole = true, bool leadsOn = false);
    /// Sorted by bytes, each once. A single one that leads on is there also with its ".". Called
    /// last.
    std::vector<Candidate> take();

private:
    std::string m_typed;
    std::vector<Candidate> m_found;
};

/// What candidates are taken from. Nothing is owned.
struct CandidateSources {
    const std::vector<Command>& commands;
    Document& document;
};

/// Adds the words of that kind, as `Command::kinds` names them. The compound is the path that an
/// earlier argument gives; empty when none does.
void addCandidates(const std::string& kind,
                   const std::string& typed,
                   const std::string& compound,
                   const CandidateSources& sources,
                   Candidates& candidates);

} // namespace shading
