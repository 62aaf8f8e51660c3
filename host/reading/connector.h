#pragma once

#include "base/message.h"

#include <vector>

namespace shading {

class Document;
class Progress;
struct UnconnectedNetwork;

/// The second pass over a document: connects what its references name, which are the units of the
/// progress. What does not resolve is left out and is a warning.
///
/// A `nodename` means a sibling. A `nodegraph` means a sibling, or else a graph of the document
/// itself. An `interfacename` means an input of the graph around. An `output` without any of these
/// means an output of the document, and so what feeds that. No other border is crossed.
void connectNetwork(Document& document,
                    const UnconnectedNetwork& network,
                    std::vector<Message>& warnings,
                    Progress& progress);

} // namespace shading
