#pragma once

#include "document/change.h"

namespace shading {

// How edits name things in their titles, which are read beside the network: without the way there.

/// "noise.out"
std::string shortNameOf(ZEL::Port& port);
/// The value in quotes, cut where it is long, on one line.
std::string shortValue(const std::string& value);
/// The edit that a line of these words does too.
EditName named(std::string title, const std::vector<std::string>& words);

} // namespace shading
