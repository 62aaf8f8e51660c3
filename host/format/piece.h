#pragma once

#include "format/format.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace shading {

// Views are of the text that was read, of texts that somebody keeps or of literals.

struct Attribute {
    std::string_view lead;   ///< The white space before the name.
    std::string_view name;   ///< As written, like all that follows.
    std::string_view equals; ///< From behind the name to the quote.
    std::string_view value;  ///< Between the quotes, escaped.
    char quote = '"';

    /// The value is read as it is written.
    bool isPlain() const { return value.find_first_of("&\t\r\n") == std::string_view::npos; }
    /// The value as XML reads it. An unknown entity stays as it is written.
    std::string text() const;
};

/// One piece of a document as it is written: an element, or text, a comment, a processing
/// instruction and the like. The pieces of an element hang in a list.
struct Piece {
    enum class Kind {
        Element,
        Text,
        Other,
    };

    Kind kind = Kind::Element;
    std::string_view text; ///< The element's name; the whole of another piece.
    std::vector<Attribute> attributes;
    std::string_view tail;   ///< The white space at the end of the start tag.
    std::string_view endTag; ///< Empty: the element ends with its start tag.
    std::size_t number = 0;  ///< Counts the pieces of its tree, from 0.

    Piece* parent = nullptr; ///< Null: not in the document.
    Piece* previous = nullptr;
    Piece* next = nullptr;
    Piece* first = nullptr; ///< Of the children.
    Piece* last = nullptr;

    bool isElement() const { return kind == Kind::Element; }
    /// Text of white space only.
    bool isBlank() const;
    /// Null when there is none; where several have the name, the first.
    const Attribute* attribute(std::string_view name) const;
};

/// All pieces of a document. Those outside the document element hang below the top, which is no
/// piece of the text. A copy has a piece of the same number for each.
class PieceTree {
public:
    PieceTree();
    PieceTree(const PieceTree& other);
    PieceTree& operator=(const PieceTree&) = delete;
    ~PieceTree() = default;

    Piece& top() { return m_pieces.front(); }
    const Piece& top() const { return m_pieces.front(); }
    /// All that there are and were, in the order of their numbers.
    const std::deque<Piece>& pieces() const { return m_pieces; }
    Piece& at(std::size_t number) { return m_pieces[number]; }

    /// A new piece, which hangs nowhere.
    Piece& add(Piece::Kind kind, std::string_view text);
    /// Hangs a piece that hangs nowhere below the parent, behind that child; null: before all.
    static void link(Piece& piece, Piece& parent, Piece* previous);
    static void unlink(Piece& piece);

private:
    std::deque<Piece> m_pieces;
};

/// The child elements of a piece, for loops.
class ElementsIn {
public:
    class Iterator {
    public:
        explicit Iterator(const Piece* piece) : m_piece(piece) { skip(); }
        const Piece& operator*() const { return *m_piece; }
        Iterator& operator++()
        {
            m_piece = m_piece->next;
            skip();
            return *this;
        }
        bool operator!=(const Iterator& other) const { return m_piece != other.m_piece; }

    private:
        void skip()
        {
            while (m_piece && !m_piece->isElement())
                m_piece = m_piece->next;
        }

        const Piece* m_piece; ///< Null: the end.
    };

    explicit ElementsIn(const Piece& parent) : m_parent(parent) {}
    Iterator begin() const { return Iterator(m_parent.first); }
    Iterator end() const { return Iterator(nullptr); }

private:
    const Piece& m_parent;
};

// What an element says.
ElementKind kindOf(const Piece& piece);
/// The value of an attribute, empty when it is missing: the format takes both for the same.
std::string attributeOf(const Piece& element, std::string_view name);
/// The attribute is there and not empty.
bool says(const Piece& element, std::string_view name);
/// The element with those inside, on one line; comments and the like are left out.
std::string elementText(const Piece& element);
/// True when the element refers to a node, a graph or an interface, or names an output.
bool hasReference(const Piece& element);
/// True when all that it names is an output: one of the document.
bool namesOutputOnly(const Piece& element);
/// The first child element of that kind ("output") and name; null when there is none.
const Piece* childNamed(const Piece& parent, std::string_view kind, std::string_view name);

/// The names that the `contains` of a backdrop lists, with commas or blanks between them.
std::vector<std::string> namesIn(const std::string& contents);

} // namespace shading
