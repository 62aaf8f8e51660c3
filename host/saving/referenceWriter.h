#pragma once

#include "zel.h"

namespace shading {

struct Piece;
class DraftNetwork;

/// True when the element, which stands for the port, names a source that it had when it was read,
/// or that was written since: without a source it names nothing.
bool isStale(DraftNetwork& network, const Piece& element, ZEL::Port& port);

/// True when the element names that source, by the names that its node and the source have now.
bool means(DraftNetwork& network, const Piece& element, ZEL::Port& source);

/// Makes the element, which stands for the receiving port, name the source; empty: none. True when
/// that changed the element. Private to the host's library.
bool writeReference(DraftNetwork& network,
                    Piece& element,
                    const ZEL::AddRefWrapper<ZEL::Port>& source);

} // namespace shading
