#include "format/piece.h"

#include "base/utf8.h"

#include <algorithm>

namespace shading {

namespace {

const struct {
    std::string_view entity;
    char character;
} kEntities[] = {
    {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''},
};

/// The value of a digit; the base or more for what is none.
unsigned digitOf(char c)
{
    if (c >= '0' && c <= '9')
        return static_cast<unsigned>(c - '0');
    const char lower = static_cast<char>(c | ' ');
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : 16;
}

/// Reads a reference like `&#10;` or `&#xA;` at the beginning. Returns its length, 0 for none.
std::size_t readCharacter(std::string_view text, unsigned& code)
{
    const bool isHex = text.size() > 2 && text[2] == 'x';
    const unsigned base = isHex ? 16 : 10;
    const std::size_t begin = isHex ? 3 : 2;
    std::size_t end = begin;
    code = 0;
    for (; end < text.size() && digitOf(text[end]) < base; ++end)
        code = code * base + digitOf(text[end]);
    return end > begin && end < text.size() && text[end] == ';' ? end + 1 : 0;
}

/// Adds what the reference at the beginning stands for. Returns its length: 1 for a lone `&`.
std::size_t addReferred(std::string_view text, std::string& result)
{
    unsigned code = 0;
    const std::size_t size = text.substr(0, 2) == "&#" ? readCharacter(text, code) : 0;
    if (size > 0) {
        addUtf8(code, result);
        return size;
    }
    for (const auto& known : kEntities) {
        if (text.substr(0, known.entity.size()) == known.entity) {
            result += known.character;
            return known.entity.size();
        }
    }
    result += '&';
    return 1;
}

} // namespace

std::string Attribute::text() const
{
    if (isPlain())
        return std::string(value);
    std::string result;
    for (std::size_t i = 0; i < value.size();) {
        const char c = value[i];
        if (c == '&') {
            i += addReferred(value.substr(i), result);
            continue;
        }
        i += value.substr(i, 2) == "\r\n" ? 2 : 1;
        result += c == '\t' || c == '\r' || c == '\n' ? ' ' : c;
    }
    // A character of value 0, which XML does not have, ends the text.
    return result.substr(0, result.find('\0'));
}

bool Piece::isBlank() const
{
    return kind == Kind::Text && text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

const Attribute* Piece::attribute(std::string_view name) const
{
    for (const Attribute& attribute : attributes) {
        if (attribute.name == name)
            return &attribute;
    }
    return nullptr;
}

PieceTree::PieceTree()
{
    add(Piece::Kind::Element, "");
}

PieceTree::PieceTree(const PieceTree& other) : m_pieces(other.m_pieces)
{
    std::vector<Piece*> copies;
    copies.reserve(m_pieces.size());
    for (Piece& piece : m_pieces)
        copies.push_back(&piece);
    for (Piece& piece : m_pieces) {
        for (Piece** const link :
             {&piece.parent, &piece.previous, &piece.next, &piece.first, &piece.last})
            *link = *link ? copies[(*link)->number] : nullptr;
    }
}

Piece& PieceTree::add(Piece::Kind kind, std::string_view text)
{
    const std::size_t number = m_pieces.size();
    Piece& piece = m_pieces.emplace_back();
    piece.number = number;
    piece.kind = kind;
    piece.text = text;
    return piece;
}

void PieceTree::link(Piece& piece, Piece& parent, Piece* previous)
{
    piece.parent = &parent;
    piece.previous = previous;
    piece.next = previous ? previous->next : parent.first;
    (previous ? previous->next : parent.first) = &piece;
    (piece.next ? piece.next->previous : parent.last) = &piece;
}

void PieceTree::unlink(Piece& piece)
{
    (piece.previous ? piece.previous->next : piece.parent->first) = piece.next;
    (piece.next ? piece.next->previous : piece.parent->last) = piece.previous;
    piece.parent = piece.previous = piece.next = nullptr;
}

ElementKind kindOf(const Piece& piece)
{
    return piece.isElement() ? kindOf(piece.text) : ElementKind::Other;
}

std::string attributeOf(const Piece& element, std::string_view name)
{
    const Attribute* const attribute = element.attribute(name);
    return attribute ? attribute->text() : "";
}

bool says(const Piece& element, std::string_view name)
{
    const Attribute* const attribute = element.attribute(name);
    return attribute && !attribute->value.empty();
}

bool namesOutputOnly(const Piece& element)
{
    return !says(element, "nodename") && !says(element, "nodegraph") &&
           !says(element, "interfacename") && says(element, "output");
}

std::string elementText(const Piece& element)
{
    std::string text = "<" + std::string(element.text);
    for (const Attribute& attribute : element.attributes) {
        text.append(" ").append(attribute.name).append("=").append(1, attribute.quote);
        for (const char c : attribute.value)
            text += c == '\n' || c == '\r' || c == '\t' ? ' ' : c;
        text += attribute.quote;
    }
    std::string inside;
    for (const Piece& child : ElementsIn(element))
        inside += elementText(child);
    return inside.empty() ? text + "/>"
                          : text + ">" + inside + "</" + std::string(element.text) + ">";
}

bool hasReference(const Piece& element)
{
    return std::any_of(kReferences.begin(), kReferences.end(),
                       [&](const char* name) { return says(element, name); });
}

const Piece* childNamed(const Piece& parent, std::string_view kind, std::string_view name)
{
    for (const Piece& child : ElementsIn(parent)) {
        if (child.text == kind && attributeOf(child, "name") == name && child.attribute("name"))
            return &child;
    }
    return nullptr;
}

std::vector<std::string> namesIn(const std::string& contents)
{
    static const char* const between = ", \t\r\n";
    std::vector<std::string> names;
    std::size_t begin = contents.find_first_not_of(between);
    while (begin != std::string::npos) {
        const std::size_t end = std::min(contents.find_first_of(between, begin), contents.size());
        names.push_back(contents.substr(begin, end - begin));
        begin = contents.find_first_not_of(between, end);
    }
    return names;
}

} // namespace shading
