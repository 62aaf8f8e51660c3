#pragma once

#include "format/piece.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace shading {

/// The `nodedef` elements of a document, by their names: the first of each.
class NodeDefs {
public:
    /// The document element must outlive it.
    explicit NodeDefs(const Piece& document);

    bool isEmpty() const { return m_elements.empty(); }
    /// Null when there is none; so for no name.
    const Piece* named(const std::string& name) const;
    /// The element and those that it inherits from, as far as the document has them: the element
    /// comes last. Each comes once, also where they inherit each other.
    std::vector<const Piece*> lineOf(const Piece& nodeDef) const;

private:
    std::unordered_map<std::string, const Piece*> m_elements;
};

} // namespace shading
