#pragma once

#include "base/message.h"
#include "zel.h"

#include <string>
#include <vector>

namespace shading {

/// Adds the `typedef` and `nodedef` elements of a document to the runtime: data types, and
/// definitions in the sub-library of their node group, "other" without one. A definition has the
/// ports of those that it inherits first; they may stand in the document or in the runtime. The
/// library of a runtime that has none is made.
///
/// Messages say what is wrong: a definition that is not whole, or has the name of another one in
/// the runtime and is not like it, is left out. One that the runtime has already is passed over.
/// False, with an error, when the document cannot be read: the runtime is left alone.
bool readDefinitions(const std::string& path,
                     ZEL::Runtime& runtime,
                     std::vector<Message>& messages);

} // namespace shading
