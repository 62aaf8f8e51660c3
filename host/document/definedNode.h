#pragma once

#include "definitions/definitionIndex.h"
#include "document/node.h"
#include "document/pointers.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace shading {

class Document;
class Progress;

/// The names of outputs that references ask of a node.
using NamedOutputs = std::unordered_map<const ZEL::Node*, std::vector<std::string>>;

/// What the definition of the port's node says of the port; null when it has none of that name.
const PortDescription* descriptionOf(ZEL::Port& port);

/// Brings the node up to the definition, which becomes its own; empty leaves the ports alone.
/// Ports that it lacks are made, with the default value, which inputs also have that the document
/// gives none; its ports stand in the definition's order, the others behind them. What the document
/// or a connection needs stays: ports, values and connections. Ports and values that only the
/// former definition gave follow the new one. Nothing is touched that fits.
void defineNode(Document& document, Node& node, const DefinitionPtr& definition);

/// Does so with all plain nodes in the compound and below, by the document's definitions. A node
/// keeps to the definition of the name that it has; others are matched by what they have. Each is a
/// step of the progress; null: nobody is told.
void defineNodes(Document& document,
                 ZEL::Compound& compound,
                 const NamedOutputs& namedOutputs,
                 Progress* progress = nullptr);

/// Brings a plain node up to the definition that it means by what it has now.
void redefineNode(Document& document, Node& node);

/// A new node of that definition, in no compound yet, with its ports and their default values. The
/// document must outlive it.
HostNodePtr createNode(Document& document, const DefinitionPtr& definition, const char* name);

} // namespace shading
