#pragma once

#include "views/report.h"

#include <vector>

namespace shading {

class Document;

/// What is wrong with a document.
struct Findings {
    std::vector<FindingRecord> records; ///< Faults, then notes, whose reasons begin with "note: ".
    std::size_t faults = 0;             ///< How many of them are faults. 0: the document is sound.
};

/// Broken connections and circles, what a save would refuse, and the rules of the format that the
/// file would break; then what is to be known of graphs inside graphs. The document is not changed.
Findings findingsOf(Document& document);

} // namespace shading
