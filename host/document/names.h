#pragma once

#include "zel.h"

#include <string>

namespace shading {

// What the host calls the things of a network in texts for its user and in documents.

/// The full path: "Top.NG_wall.noise".
std::string pathOf(ZEL::Node& node);
std::string pathOf(ZEL::Port& port);
/// The name of the data type; the format's word for a port without a type, or with one without a
/// name.
std::string typeNameOf(ZEL::Port& port);
/// What feeds a port that receives, where the document names it and the network does not show it: a
/// node of another name space or of an included file, in brackets. Empty where a connection feeds
/// the port, or nothing.
std::string hiddenSourceOf(ZEL::Port& port);

} // namespace shading
