#pragma once

#include "base/encoding.h"
#include "format/piece.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace shading {

class XmlSource;

/// A document's text on its way into a file: what is not touched is written byte for byte as it was
/// read, quotes, white space and entities too. Private to the host's library.
class Draft {
public:
    /// Begins with all pieces of the source, which must outlive it.
    explicit Draft(const XmlSource& source);
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    /// The pieces outside the document element hang below this one, which writes nothing itself.
    Piece& top() { return m_tree.top(); }
    /// The draft's own piece for that one of the source.
    Piece& at(const Piece& read) { return m_tree.at(read.number); }
    /// True for a piece of the source, false for one that was made since.
    bool isRead(const Piece& piece) const { return piece.number < m_readCount; }
    /// How many pieces there are and were: more than each of their numbers.
    std::size_t pieceCount() const { return m_tree.pieces().size(); }
    /// The document. Gives its elements in the order in which they begin there.
    std::string write(std::vector<Piece*>& elements);

    // Attributes. Each returns true when it changed something.
    bool setAttribute(Piece& element, const std::string& name, const std::string& value);
    bool removeAttribute(Piece& element, const std::string& name);
    bool setElementName(Piece& element, const std::string& name);

    // Places. White space follows: what is put somewhere stands on a line of its own there,
    // indented like its siblings, if those do.
    /// An element that is nowhere yet.
    Piece& newElement(const std::string& name);
    /// Puts the piece, which must be nowhere, behind that sibling; null: before all others.
    void insert(Piece& item, Piece& parent, Piece* previous);
    /// Takes the piece out, with the white space before it. A comment behind it on its line has
    /// that line then.
    void remove(Piece& item);
    /// With the comments that stand before it or behind it on its line.
    void move(Piece& item, Piece& parent, Piece* previous);

private:
    void findStyle(const std::string& text);
    Piece& newText(std::string_view text) { return m_tree.add(Piece::Kind::Text, text); }
    std::string_view keep(const std::string& text) { return m_kept.emplace_back(text); }
    void takeOut(Piece& item, Piece* blank);
    void moveAlone(Piece& item, Piece& parent, Piece* previous);
    Piece* commentBefore(const Piece& item) const;
    static Piece* commentBehind(const Piece& item);
    std::string lineOf(const Piece& item) const;
    std::string lineInside(const Piece& parent) const;
    void indentAnew(Piece& element, const std::string& before, const std::string& after);
    std::string escaped(const std::string& value, char quote) const;

    PieceTree m_tree;
    std::size_t m_readCount;        ///< Of the pieces, how many are of the source.
    std::deque<std::string> m_kept; ///< What was written into them.
    std::size_t m_textSize;         ///< Of what was read or written last.
    Encoding m_encoding;
    std::string m_lineEnd;         ///< Empty: the document is one line.
    std::string m_indent;          ///< What one level adds.
    char m_quote = '"';            ///< The more common one.
    std::string_view m_tail = " "; ///< Before the end of an element that has nothing inside.
};

} // namespace shading
