#pragma once

#include "zel.h"

namespace shading {

struct Piece;
class Draft;
class DraftNetwork;

/// True when the element, which stands for the port, names a source that it had when it was read,
/// or that was written since: without a source it names nothing.
bool isStale(DraftNetwork& network, const Piece& element, ZEL::Port& port);

/// False when what the element names is certainly not that source under its present name.
bool mayMean(const Piece& element, ZEL::Port& source);

/// Makes the element, which stands for the receiving port, name the source; empty: none. True when
/// that changed the element. Private to the host's library.
bool writeReference(DraftNetwork& network,
                    Piece& element,
                    const ZEL::AddRefWrapper<ZEL::Port>& source);

} // namespace shading
