#pragma once

#include "document/document.h"

#include <string>

/// What of a network a document keeps, as text: not the order of a port's connections, nor that
/// of the nodes, not the value behind a source, no input of a plain node that has neither, and no
/// input of a graph whose `nodedef` is elsewhere unless something reads it. The order of such a
/// graph's inputs is that of the `nodedef`.
std::string savedText(shading::Document& document);
