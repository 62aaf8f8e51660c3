#pragma once

#include "format/piece.h"

#include <string>
#include <vector>

namespace shading {

/// A rule of the format that a document breaks. The page docs/format.md gives them all.
struct FormatFault {
    enum class Rule {
        Name,      ///< Letters, digits and "_", no digit first; ":" behind a name space.
        Sibling,   ///< No two children of one element have one name.
        Binding,   ///< An input has a value or one source; an output has one source.
        Interface, ///< A graph that implements a nodedef has no inputs of its own.
        Reference, ///< What is named is there.
        Type,      ///< Both ends of a connection have one type.
        Cycle,     ///< Nothing depends on itself.
        Empty,     ///< An input of a node says more than its name and type.
    };

    Rule rule;
    std::string path; ///< The names from the document element down, which is `Top`.
    std::string text; ///< The reason, without the path.
};

/// The word for a rule: "sibling".
const char* nameOf(FormatFault::Rule rule);

/// All that is wrong by those rules, as far as the document itself shows it: what another file
/// defines is taken for right. In the order of the elements, for each in the order of the rules.
std::vector<FormatFault> formatFaults(const Piece& documentElement);

} // namespace shading
