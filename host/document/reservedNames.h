#pragma once

#include <string>
#include <unordered_map>

namespace shading {

class Origins;
struct Piece;

/// The names in a document that no node or port of the network has and that a new one must not get:
/// looks, tokens and the like are siblings of the nodes beside them, and a reference that names
/// nothing would suddenly mean a node of that name. Backdrops, which edits change, tell theirs
/// themselves.
class ReservedNames {
public:
    /// Looks through the document below its element, once; both are not needed later.
    ReservedNames(const Piece& documentElement, const Origins& origins);

    /// Who has the name among the children of that graph, or of the document element, in words:
    /// `look "L" has it`. Empty when it is free.
    std::string holderOf(const Piece& graph, const std::string& name) const;
    /// What the graph has inside stands in the other one from now on, too: it may be expanded.
    void addAll(const Piece& graph, const Piece& other);

private:
    using Holders = std::unordered_map<std::string, std::string>; ///< By name.

    void collect(const Piece& graph, const Piece& documentElement, const Origins& origins);

    std::unordered_map<const Piece*, Holders> m_holders; ///< By the graph, or the document element.
};

} // namespace shading
