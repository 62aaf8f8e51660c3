#pragma once

#include "views/report.h"

#include <vector>

namespace shading {

class Document;

/// What is wrong with a document.
struct Findings {
    std::vector<FindingRecord> records;
    bool isSound = true; ///< There are notes at most, whose reasons begin with "note: ".
};

/// Broken connections and circles, what a save would refuse, and the rules of the format that the
/// file would break; then what is to be known of graphs inside graphs. The document is not changed.
Findings findingsOf(Document& document);

} // namespace shading
