#pragma once

#include "base/message.h"
#include "document/node.h"
#include "document/pointers.h"
#include "format/piece.h"

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace shading {

class Document;
class Progress;

/// One compound while a document is read, with its nodes by name: where siblings have one name, the
/// first.
struct Scope {
    CompoundPtr compound;
    std::unordered_map<std::string, HostNodePtr> nodes;
    std::unordered_map<std::string, HostNodePtr> graphs; ///< The compound nodes.
};

/// An `input` or `output` element that names a source.
struct Reference {
    const Piece* element;
    PortPtr target;     ///< The receiving end.
    const Scope* scope; ///< Where the names are looked up. Null: outside the document.
};

/// A network whose references are not connected yet.
struct UnconnectedNetwork {
    HostNodePtr root;
    std::deque<Scope> scopes;          ///< The first is the document's; addresses stay.
    std::vector<Reference> references; ///< In document order.
};

/// The first pass over a document: makes the nodes, the compounds and their ports, and collects the
/// references between them. Nothing given is owned. Throws Cancelled: then there is a part of it.
void buildNetwork(Document& document,
                  UnconnectedNetwork& network,
                  std::vector<Message>& warnings,
                  Progress& progress);

} // namespace shading
