#pragma once

#include "zel.h"

namespace shading {

struct DraftItem;
class Draft;
class DraftNetwork;

/// True when the element names a source.
bool hasReference(const DraftItem& element);

/// Makes the element, which stands for the receiving port, name the source; empty: none. True when
/// that changed the element. Private to the host's library.
bool writeReference(DraftNetwork& network,
                    DraftItem& element,
                    const ZEL::AddRefWrapper<ZEL::Port>& source);

} // namespace shading
