#include "format/draft.h"

#include "base/utf8.h"
#include "format/xml.h"

#include <algorithm>
#include <utility>

namespace shading {

namespace {

/// The white space at the end of the text from its last line end on; empty without one.
std::string_view lastLine(std::string_view text)
{
    std::size_t begin = text.rfind('\n');
    if (begin == std::string_view::npos)
        return "";
    if (begin > 0 && text[begin - 1] == '\r')
        --begin;
    return text.substr(begin);
}

bool isComment(const Piece& piece)
{
    return piece.kind == Piece::Kind::Other && piece.text.substr(0, 4) == "<!--";
}

void writeStartTag(const Piece& element, std::string& text)
{
    text += '<';
    text += element.text;
    for (const Attribute& attribute : element.attributes) {
        text.append(attribute.lead).append(attribute.name).append(attribute.equals);
        text += attribute.quote;
        text += attribute.value;
        text += attribute.quote;
    }
    text += element.tail;
    text += element.endTag.empty() ? "/>" : ">";
}

void writeChildren(const Piece& parent, std::string& text, std::vector<Piece*>& elements)
{
    for (Piece* item = parent.first; item; item = item->next) {
        if (!item->isElement()) {
            text += item->text;
            continue;
        }
        elements.push_back(item);
        writeStartTag(*item, text);
        writeChildren(*item, text, elements);
        text += item->endTag;
    }
}

} // namespace

Draft::Draft(const XmlSource& source)
    : m_tree(source.pieces()),
      m_readCount(m_tree.pieces().size()),
      m_textSize(source.text().size()),
      m_encoding(source.encoding())
{
    findStyle(source.text());
}

void Draft::findStyle(const std::string& text)
{
    const std::size_t lineEnd = text.find('\n');
    if (lineEnd != std::string::npos)
        m_lineEnd = lineEnd > 0 && text[lineEnd - 1] == '\r' ? "\r\n" : "\n";
    const std::deque<Piece>& pieces = m_tree.pieces();
    int surplus = 0;
    for (const Piece& item : pieces) {
        for (const Attribute& attribute : item.attributes)
            surplus += attribute.quote == '"' ? 1 : -1;
    }
    m_quote = surplus < 0 ? '\'' : '"';
    const auto empty = std::find_if(pieces.begin() + 1, pieces.end(), [](const Piece& item) {
        return item.isElement() && item.endTag.empty();
    });
    if (empty != pieces.end())
        m_tail = empty->tail;
    m_indent = "  ";
    for (const Piece* root = top().first; root; root = root->next) {
        const std::string line = root->isElement() && root->first ? lineInside(*root) : "";
        if (line.size() > m_lineEnd.size())
            m_indent = line.substr(m_lineEnd.size());
    }
}

std::string Draft::write(std::vector<Piece*>& elements)
{
    std::string text;
    text.reserve(m_textSize + m_textSize / 8);
    elements.clear();
    elements.reserve(m_tree.pieces().size() / 2);
    writeChildren(top(), text, elements);
    m_textSize = text.size();
    return text;
}

bool Draft::setAttribute(Piece& element, const std::string& name, const std::string& value)
{
    for (Attribute& attribute : element.attributes) {
        if (attribute.name != name)
            continue;
        const std::string after = escaped(value, attribute.quote);
        const bool isChange = attribute.value != after;
        if (isChange)
            attribute.value = keep(after);
        return isChange;
    }
    Attribute attribute;
    attribute.lead = " ";
    attribute.name = keep(name);
    attribute.equals = "=";
    attribute.quote = element.attributes.empty() ? m_quote : element.attributes.back().quote;
    attribute.value = keep(escaped(value, attribute.quote));
    auto place = element.attributes.end();
    if (name == "name")
        place = element.attributes.begin();
    else if (name == "type" && element.attribute("name"))
        place = std::find_if(element.attributes.begin(), element.attributes.end(),
                             [](const Attribute& a) { return a.name == "name"; }) +
                1;
    element.attributes.insert(place, attribute);
    return true;
}

bool Draft::removeAttribute(Piece& element, const std::string& name)
{
    const auto kept =
        std::remove_if(element.attributes.begin(), element.attributes.end(),
                       [&](const Attribute& attribute) { return attribute.name == name; });
    const bool isChange = kept != element.attributes.end();
    element.attributes.erase(kept, element.attributes.end());
    return isChange;
}

bool Draft::setElementName(Piece& element, const std::string& name)
{
    const bool isChange = element.text != name;
    if (isChange)
        element.text = keep(name);
    if (isChange && !element.endTag.empty())
        element.endTag = keep("</" + name + ">");
    return isChange;
}

Piece& Draft::newElement(const std::string& name)
{
    Piece& element = m_tree.add(Piece::Kind::Element, keep(name));
    element.tail = m_tail;
    return element;
}

void Draft::insert(Piece& item, Piece& parent, Piece* previous)
{
    const std::string line = lineInside(parent);
    // What stands behind an element on its line, a comment say, stays with it.
    while (previous && previous->next && previous->next->isBlank() &&
           lastLine(previous->next->text).empty() && previous->next->next &&
           previous->next->next->kind == Piece::Kind::Other)
        previous = previous->next->next;
    const bool isOnly = !parent.first || (parent.first == parent.last && parent.first->isBlank());
    if (isOnly && parent.first) {
        PieceTree::unlink(*parent.first);
        previous = nullptr;
    }
    if (isOnly) {
        if (parent.endTag.empty())
            parent.tail = "";
        parent.endTag = keep("</" + std::string(parent.text) + ">");
        if (!line.empty())
            PieceTree::link(newText(keep(lineOf(parent))), parent, nullptr);
    }
    PieceTree::link(item, parent, previous);
    if (!line.empty())
        PieceTree::link(newText(keep(line)), parent, previous);
}

void Draft::remove(Piece& item)
{
    takeOut(item, commentBehind(item) ? item.next : item.previous);
}

void Draft::takeOut(Piece& item, Piece* blank)
{
    Piece& parent = *item.parent;
    if (blank && blank->isBlank())
        PieceTree::unlink(*blank);
    PieceTree::unlink(item);
    if (parent.first && (parent.first != parent.last || !parent.first->isBlank()))
        return;
    if (parent.first)
        PieceTree::unlink(*parent.first);
    parent.endTag = "";
    if (parent.tail.empty())
        parent.tail = m_tail;
}

void Draft::move(Piece& item, Piece& parent, Piece* previous)
{
    // Comments go along: those on the lines before it, and one behind it on its own line.
    std::vector<Piece*> comments;
    for (Piece* comment = commentBefore(item); comment; comment = commentBefore(*comment))
        comments.push_back(comment);
    Piece* const behind = commentBehind(item);
    while (!comments.empty()) {
        moveAlone(*comments.back(), parent, previous);
        previous = comments.back();
        comments.pop_back();
    }
    moveAlone(item, parent, previous);
    if (!behind)
        return;
    Piece& blank = *behind->previous;
    PieceTree::unlink(blank);
    PieceTree::unlink(*behind);
    PieceTree::link(blank, parent, &item);
    PieceTree::link(*behind, parent, &blank);
}

void Draft::moveAlone(Piece& item, Piece& parent, Piece* previous)
{
    const std::string before = lineOf(item);
    takeOut(item, item.previous);
    insert(item, parent, previous);
    const std::string after = lineOf(item);
    if (!before.empty() && !after.empty() && before != after)
        indentAnew(item, before, after);
}

/// The comment that fills the line before that on which the piece begins; null when there is none.
Piece* Draft::commentBefore(const Piece& item) const
{
    Piece* const comment = item.previous ? item.previous->previous : nullptr;
    const bool isNear = comment && item.previous->isBlank() && isComment(*comment) &&
                        item.previous->text == lineOf(item);
    return isNear && !lineOf(*comment).empty() ? comment : nullptr;
}

/// The comment behind the end of the element on its line, the last there; null when there is none.
Piece* Draft::commentBehind(const Piece& item)
{
    Piece* const comment = item.next ? item.next->next : nullptr;
    const bool isNear =
        comment && item.next->isBlank() && isComment(*comment) && lastLine(item.next->text).empty();
    return isNear && (!comment->next || comment->next->isBlank()) ? comment : nullptr;
}

/// The line end before the piece and its indentation; empty when it does not begin a line.
std::string Draft::lineOf(const Piece& item) const
{
    if (item.parent == &m_tree.top())
        return m_lineEnd;
    return item.previous && item.previous->isBlank() ? std::string(lastLine(item.previous->text))
                                                     : "";
}

/// The same for a child of the element, as it would be.
std::string Draft::lineInside(const Piece& parent) const
{
    bool hasElement = false;
    for (const Piece* child = parent.first; child; child = child->next) {
        hasElement = hasElement || child->isElement();
        std::string line = child->isElement() ? lineOf(*child) : "";
        if (!line.empty())
            return line;
    }
    const std::string around = hasElement ? "" : lineOf(parent);
    return around.empty() ? "" : around + m_indent;
}

/// Replaces the indentation of every line that begins inside the element.
void Draft::indentAnew(Piece& element, const std::string& before, const std::string& after)
{
    for (Piece* item = element.first; item; item = item->next) {
        if (item->isElement())
            indentAnew(*item, before, after);
        if (!item->isBlank())
            continue;
        std::string text(item->text);
        std::size_t at = text.find(before);
        while (at != std::string::npos) {
            text.replace(at, before.size(), after);
            at = text.find(before, at + after.size());
        }
        item->text = keep(text);
    }
}

/// What XML reads back as the value, in that quote.
std::string Draft::escaped(const std::string& value, char quote) const
{
    std::string result;
    for (std::size_t i = 0; i < value.size();) {
        const Character character = characterAt(value, i);
        const char c = value[i];
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == quote)
            result += quote == '"' ? "&quot;" : "&apos;";
        else if (c == '\n' || c == '\r' || c == '\t' || !canEncode(m_encoding, character.code))
            result += "&#" + std::to_string(static_cast<unsigned>(character.code)) + ";";
        else
            result += value.substr(i, character.size);
        i += character.size;
    }
    return result;
}

} // namespace shading
