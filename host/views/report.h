#pragma once

#include "views/records.h"

#include <string>

namespace shading {

// Texts about any network, a line for each thing, each line with its end. Nothing here knows the
// document format.

/// The nodes inside the compound in order: name and node type name, then `compound` for one.
std::string nodesText(ZEL::Compound& compound);

/// The node and everything below, two blanks deeper for each level: lines like those of nodesText.
std::string treeText(ZEL::Node& node);

/// The inputs, then the outputs of the node, in order: direction, name, data type, default value in
/// quotes, then where the data comes from (`<-`) and goes to (`->`). For a compound the connections
/// inside stand on the line of its own port: an inner port has the same path.
std::string portsText(ZEL::Node& node);

/// The connections between the nodes and inner ports of the compound and of all compounds below, as
/// `SOURCE -> TARGET` with full path names, sorted by bytes.
std::string connectionsText(ZEL::Compound& compound);

/// All that a document keeps of the network below the node, which has a compound: connectionsText,
/// then each node with its path, type, portsText and inner ports. Equal texts, equal networks, but
/// for the order in which a port feeds its targets where several connections are told in one line.
std::string networkText(ZEL::Node& root);

/// A count on a line, behind its name.
std::string statisticsText(const Statistics& statistics);

/// What the path names: `node` or `compound`, then `input`, then `output`, each that applies on a
/// line; `nothing` when none does.
std::string findText(ZEL::Container& container, const std::string& path);

} // namespace shading
