#include "format/pieceParser.h"

#include <algorithm>

namespace shading {

namespace {

const char* const kBlanks = " \t\r\n";

} // namespace

void PieceParser::run()
{
    m_inside = &m_tree.top();
    while (m_at < m_text.size()) {
        if (m_text[m_at] != '<')
            add(Piece::Kind::Text, take(m_text.find('<', m_at)));
        else if (m_text.compare(m_at, 2, "</") == 0)
            endTag();
        else if (m_text.compare(m_at, 2, "<!") == 0 || m_text.compare(m_at, 2, "<?") == 0)
            add(Piece::Kind::Other, take(endOfMarkup()));
        else
            startTag();
    }
}

std::size_t PieceParser::endOfMarkup() const
{
    if (m_text.compare(m_at, 4, "<!--") == 0)
        return behind("-->", m_at + 4);
    if (m_text.compare(m_at, 9, "<![CDATA[") == 0)
        return behind("]]>", m_at + 9);
    if (m_text.compare(m_at, 2, "<?") == 0)
        return behind("?>", m_at + 2);
    return endOfDocumentType();
}

/// A document type holds declarations, which hold quoted texts; comments may hold anything.
std::size_t PieceParser::endOfDocumentType() const
{
    int depth = 0;
    for (std::size_t i = m_at; i < m_text.size(); ++i) {
        const char c = m_text[i];
        if (m_text.compare(i, 4, "<!--") == 0)
            i = behind("-->", i + 4) - 1;
        else if (m_text.compare(i, 2, "<?") == 0)
            i = behind("?>", i + 2) - 1;
        else if (c == '"' || c == '\'')
            i = std::min(m_text.find(c, i + 1), m_text.size());
        else if (c == '<')
            ++depth;
        else if (c == '>' && --depth == 0)
            return i + 1;
    }
    return m_text.size();
}

std::size_t PieceParser::behind(const char* end, std::size_t from) const
{
    const std::size_t found = m_text.find(end, from);
    return found == std::string::npos ? m_text.size() : found + std::string(end).size();
}

std::string_view PieceParser::take(std::size_t end)
{
    const std::size_t begin = m_at;
    m_at = std::min(end, m_text.size());
    return std::string_view(m_text).substr(begin, m_at - begin);
}

std::string_view PieceParser::takeBlanks()
{
    return take(m_text.find_first_not_of(kBlanks, m_at));
}

void PieceParser::startTag()
{
    ++m_at;
    Piece& element = add(Piece::Kind::Element, take(m_text.find_first_of(" \t\r\n/>", m_at)));
    std::string_view blanks = takeBlanks();
    while (m_at < m_text.size() && m_text[m_at] != '>' && m_text[m_at] != '/') {
        element.attributes.push_back(takeAttribute());
        element.attributes.back().lead = blanks;
        blanks = takeBlanks();
    }
    element.tail = blanks;
    const bool isWhole = m_at < m_text.size() && m_text[m_at] == '/';
    m_at = behind(">", m_at);
    if (!isWhole)
        m_inside = &element;
}

Attribute PieceParser::takeAttribute()
{
    Attribute attribute;
    attribute.name = take(m_text.find_first_of(" \t\r\n=", m_at));
    attribute.equals = take(m_text.find_first_of("\"'", m_at));
    if (m_at == m_text.size())
        return attribute;
    attribute.quote = m_text[m_at];
    ++m_at;
    attribute.value = take(m_text.find(attribute.quote, m_at));
    m_at = std::min(m_at + 1, m_text.size());
    return attribute;
}

void PieceParser::endTag()
{
    m_inside->endTag = take(behind(">", m_at));
    if (m_inside->parent)
        m_inside = m_inside->parent;
}

Piece& PieceParser::add(Piece::Kind kind, std::string_view text)
{
    Piece& piece = m_tree.add(kind, text);
    PieceTree::link(piece, *m_inside, m_inside->last);
    return piece;
}

} // namespace shading
