#pragma once

#include "shadingDraftNetwork.h"

#include <vector>

namespace shading {

/// Elements outside the network name nodes of it: the assignments of looks, variants,
/// implementations, and the frames drawn around nodes. Makes them name those nodes as they are
/// called now; adds a problem for one whose node is not there any more. Private to the host's
/// library.
void updateOutsideNames(DraftNetwork& network, std::vector<SaveProblem>& problems);

} // namespace shading
