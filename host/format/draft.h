#pragma once

#include "base/encoding.h"
#include "format/offsetIndex.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace shading {

// Views are of the text that was read, of texts that the draft keeps or of literals.

struct DraftAttribute {
    std::string_view lead;   ///< The white space before the name.
    std::string_view name;   ///< As written, like all that follows.
    std::string_view equals; ///< From behind the name to the quote.
    std::string_view value;  ///< Between the quotes, escaped.
    char quote = '"';

    /// The value is read as it is written.
    bool isPlain() const { return value.find_first_of("&\t\r\n") == std::string_view::npos; }
};

/// One piece of a document as it is written: an element, or text, a comment, a processing
/// instruction and the like. The pieces of an element hang in a list.
struct DraftItem {
    enum class Kind {
        Element,
        Text,
        Other,
    };

    Kind kind = Kind::Element;
    bool isFromText = false; ///< It was read.
    std::string_view text;   ///< The element's name; the whole of another piece.
    std::vector<DraftAttribute> attributes;
    std::string_view tail;   ///< The white space at the end of the start tag.
    std::string_view endTag; ///< Empty: the element ends with its start tag.
    std::size_t number = 0;  ///< Counts the pieces of the draft, from 0.

    DraftItem* parent = nullptr; ///< Null: not in the document.
    DraftItem* previous = nullptr;
    DraftItem* next = nullptr;
    DraftItem* first = nullptr; ///< Of the children.
    DraftItem* last = nullptr;

    bool isElement() const { return kind == Kind::Element; }
    /// Text of white space only.
    bool isBlank() const;
    const DraftAttribute* attribute(std::string_view name) const;
};

/// A document's text on its way into a file: what is not touched is written byte for byte as it was
/// read, quotes, white space and entities too. Private to the host's library.
class Draft {
public:
    /// Takes the text apart, which must be XML and outlive the draft; the encoding is that of the
    /// file.
    Draft(const std::string& text, Encoding encoding);
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    /// The pieces outside the document element hang below this one, which writes nothing itself.
    DraftItem& top() { return m_items.front(); }
    /// The element that began there in the text that was read; null when none did.
    DraftItem* elementAt(std::size_t offset) const { return m_byOffset.at(offset); }
    std::size_t elementCount() const { return m_byOffset.size(); }
    /// How many pieces there are and were: more than each of their numbers.
    std::size_t pieceCount() const { return m_items.size(); }
    /// The document. Gives each element by the offset at which it begins there.
    std::string write(OffsetIndex& places);

    // Attributes. Each returns true when it changed something.
    bool setAttribute(DraftItem& element, const std::string& name, const std::string& value);
    bool removeAttribute(DraftItem& element, const std::string& name);
    bool setElementName(DraftItem& element, const std::string& name);

    // Places. White space follows: what is put somewhere stands on a line of its own there,
    // indented like its siblings, if those do.
    /// An element that is nowhere yet.
    DraftItem& newElement(const std::string& name);
    /// Puts the piece, which must be nowhere, behind that sibling; null: before all others.
    void insert(DraftItem& item, DraftItem& parent, DraftItem* previous);
    /// Takes the piece out, with the white space before it.
    void remove(DraftItem& item);
    void move(DraftItem& item, DraftItem& parent, DraftItem* previous);

private:
    friend class DraftParser;

    void findStyle(const std::string& text);
    DraftItem& newItem(DraftItem::Kind kind, std::string_view text);
    std::string_view keep(const std::string& text) { return m_kept.emplace_back(text); }
    static void link(DraftItem& item, DraftItem& parent, DraftItem* previous);
    static void unlink(DraftItem& item);
    std::string lineOf(const DraftItem& item) const;
    std::string lineInside(const DraftItem& parent) const;
    void indentAnew(DraftItem& element, const std::string& before, const std::string& after);
    std::string escaped(const std::string& value, char quote) const;

    std::deque<DraftItem> m_items;  ///< Also those that were taken out.
    std::deque<std::string> m_kept; ///< What was written into them.
    OffsetIndex m_byOffset;
    std::size_t m_textSize = 0; ///< Of what was read or written last.
    Encoding m_encoding;
    std::string m_lineEnd;         ///< Empty: the document is one line.
    std::string m_indent;          ///< What one level adds.
    char m_quote = '"';            ///< The more common one.
    std::string_view m_tail = " "; ///< Before the end of an element that has nothing inside.
};

} // namespace shading
