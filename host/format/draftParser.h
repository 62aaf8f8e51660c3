#pragma once

#include "format/draft.h"

namespace shading {

/// Takes the text of a document apart into the pieces of a draft. Every byte gets into one of them.
/// The text has been parsed before: what is wrong with it is not looked for. Private to the host's
/// library.
class DraftParser {
public:
    /// Both must outlive the parser, the text the draft too.
    DraftParser(const std::string& text, Draft& draft) : m_text(text), m_draft(draft) {}

    void run();

private:
    std::size_t endOfMarkup() const;
    std::size_t endOfDocumentType() const;
    std::size_t behind(const char* end, std::size_t from) const;
    std::string_view take(std::size_t end);
    std::string_view takeBlanks();
    void startTag();
    DraftAttribute takeAttribute();
    void endTag();
    DraftItem& add(DraftItem::Kind kind, std::string_view text);

    const std::string& m_text;
    Draft& m_draft;
    std::size_t m_at = 0;
    DraftItem* m_inside = nullptr;
};

} // namespace shading
