#pragma once

#include "shadingDefinition.h"
#include "zel.h"

namespace shading {

class Document;

/// How an editor may show the port and its value: what the definition of its node says, and over
/// that what the document says of the port itself. An inner port of a compound is shown as that of
/// its node, and that of a graph which implements a nodedef of the document as it says there. A
/// choice or a limit that is no value of the port's type is left out.
PortHints hintsOf(Document& document, ZEL::Port& port);

} // namespace shading
