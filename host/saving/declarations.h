#pragma once

#include "saving/draftNetwork.h"

#include <vector>

namespace shading {

/// A graph implements a `nodedef` of the document when it names it, or when an `implementation`
/// ties the two. One that agreed with the `nodedef` when the document was opened agrees with what
/// is written: each of its ports is declared there, with that type, and each output of the
/// declaration is one of the graph.
///
/// A port that an edit renamed is renamed in the `nodedef` too, when that has the port itself and
/// nothing else in the document names the `nodedef` or is a node of its type. Adds a problem for
/// any other port that the `nodedef` does not have, for each output that the graph lacks, and for a
/// graph that is not the document's own any more. An input that the graph lacks is none. Private to
/// the host's library.
void updateDeclarations(DraftNetwork& network, std::vector<SaveProblem>& problems);

} // namespace shading
