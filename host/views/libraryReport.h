#pragma once

#include "zel.h"

#include <string>

namespace shading {

// Texts about what runtimes offer, a line for each thing, each line with its end.

/// The names of the runtime's data types in order.
std::string typesText(ZEL::Runtime& runtime);

/// The tree of libraries, two blanks deeper at each level: name and number of definitions. With
/// definitions, those stand below their library, ordered by name: node type, name of the
/// definition, inputs with types, outputs with types.
std::string libraryText(ZEL::NodeLibrary& library, bool withDefinitions);

/// The runtimes by index, as the registry counts them, then by name, of all names known: those
/// found by index, and that of the given runtime, so that the last of several is among them.
std::string runtimesText(ZEL::Host& host, ZEL::Runtime& own);

} // namespace shading
