#pragma once

#include "format/piece.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace shading {

/// What ties a graph to the `nodedef` that it implements. Such a graph has no `input` elements of
/// its own: its inputs are those of the `nodedef`.
struct Tie {
    std::string name;     ///< Of the `nodedef`.
    const Piece* nodeDef; ///< Null: it is elsewhere, in another file or name space.
    const Piece* element; ///< What names it: the graph, or an `implementation`.
};

/// The `nodedef` elements of a document, by their names: the first of each. And which of its graphs
/// implement one, here or elsewhere.
class NodeDefs {
public:
    /// The document element must outlive it.
    explicit NodeDefs(const Piece& document);

    /// Null when there is none; so for no name.
    const Piece* named(const std::string& name) const;
    /// The element and those that it inherits from, as far as the document has them: the element
    /// comes last. Each comes once, also where they inherit each other.
    std::vector<const Piece*> lineOf(const Piece& nodeDef) const;
    /// Null for a graph that implements none, and for one that is not the document's own.
    const Tie* tieOf(const Piece& graph) const;
    /// The `input` elements that give a graph with that tie its inputs, in their order: the
    /// inherited ones first. Empty when the `nodedef` is elsewhere.
    std::vector<const Piece*> inputsOf(const Tie& tie) const;

private:
    std::unordered_map<std::string, const Piece*> m_elements;
    std::unordered_map<const Piece*, Tie> m_ties; ///< By graph.
};

} // namespace shading
