#pragma once

#include "format/piece.h"

namespace shading {

/// Takes the text of a document apart into pieces. Every byte gets into one of them, and elements
/// come in the order in which they begin. The text has been parsed before: what is wrong with it is
/// not looked for.
class PieceParser {
public:
    /// Both must outlive the parser, the text the tree too.
    PieceParser(const std::string& text, PieceTree& tree) : m_text(text), m_tree(tree) {}

    void run();

private:
    std::size_t endOfMarkup() const;
    std::size_t endOfDocumentType() const;
    std::size_t behind(const char* end, std::size_t from) const;
    std::string_view take(std::size_t end);
    std::string_view takeBlanks();
    void startTag();
    Attribute takeAttribute();
    void endTag();
    Piece& add(Piece::Kind kind, std::string_view text);

    const std::string& m_text;
    PieceTree& m_tree;
    std::size_t m_at = 0;
    Piece* m_inside = nullptr;
};

} // namespace shading
