#pragma once

#include "document/change.h"

#include <string>
#include <vector>

namespace shading {

// How edits name things in their titles, which are read beside the network: without the way there.

/// "noise.out"
std::string shortNameOf(ZEL::Port& port);
/// The value in quotes, cut where it is long, on one line.
std::string shortValue(const std::string& value);
/// "noise", or "3 nodes".
std::string countOf(const std::vector<NodePtr>& nodes);
/// The edit that a line of these words does too.
EditName named(std::string title, const std::vector<std::string>& words);
/// Likewise, of words with the paths of these nodes: without the line where a path leads to another
/// node.
EditName namedFor(ZEL::Container& document,
                  const std::vector<NodePtr>& nodes,
                  std::string title,
                  const std::vector<std::string>& words);

} // namespace shading
