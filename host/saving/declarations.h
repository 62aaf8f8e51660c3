#pragma once

#include "saving/draftNetwork.h"

#include <vector>

namespace shading {

/// Brings the `nodedef` of each graph that implements one after the graph. Inputs that stand in the
/// `nodedef` alone are written like those of any graph; here those go that the graph has no more,
/// and what an edit called otherwise in the graph follows. Adds a problem for each port that must
/// stay as it is, and for a graph that is not the document's own any more. Private to the host's
/// library.
void updateDeclarations(DraftNetwork& network, std::vector<SaveProblem>& problems);

} // namespace shading
