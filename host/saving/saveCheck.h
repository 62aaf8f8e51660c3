#pragma once

#include "saving/draftNetwork.h"

#include <vector>

namespace shading {

/// What in the network the format has no words for, all of it, in the order of the network. Names
/// and connections that the document itself had are not asked. Private to the host's library.
std::vector<SaveProblem> checkSavable(DraftNetwork& network);

} // namespace shading
