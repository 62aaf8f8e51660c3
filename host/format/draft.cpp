#include "format/draft.h"

#include "format/draftParser.h"

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

void writeStartTag(const DraftItem& element, std::string& text)
{
    text += '<';
    text += element.text;
    for (const DraftAttribute& attribute : element.attributes) {
        text.append(attribute.lead).append(attribute.name).append(attribute.equals);
        text += attribute.quote;
        text += attribute.value;
        text += attribute.quote;
    }
    text += element.tail;
    text += element.endTag.empty() ? "/>" : ">";
}

void writeChildren(const DraftItem& parent, std::string& text, OffsetIndex& places)
{
    for (DraftItem* item = parent.first; item; item = item->next) {
        if (!item->isElement()) {
            text += item->text;
            continue;
        }
        places.add(text.size(), *item);
        writeStartTag(*item, text);
        writeChildren(*item, text, places);
        text += item->endTag;
    }
}

} // namespace

bool DraftItem::isBlank() const
{
    return kind == Kind::Text && text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

const DraftAttribute* DraftItem::attribute(std::string_view name) const
{
    for (const DraftAttribute& attribute : attributes) {
        if (attribute.name == name)
            return &attribute;
    }
    return nullptr;
}

Draft::Draft(const std::string& text, Encoding encoding)
    : m_textSize(text.size()),
      m_encoding(std::move(encoding))
{
    newItem(DraftItem::Kind::Element, "");
    DraftParser(text, *this).run();
    findStyle(text);
}

void Draft::findStyle(const std::string& text)
{
    const std::size_t lineEnd = text.find('\n');
    if (lineEnd != std::string::npos)
        m_lineEnd = lineEnd > 0 && text[lineEnd - 1] == '\r' ? "\r\n" : "\n";
    int surplus = 0;
    for (const DraftItem& item : m_items) {
        for (const DraftAttribute& attribute : item.attributes)
            surplus += attribute.quote == '"' ? 1 : -1;
    }
    m_quote = surplus < 0 ? '\'' : '"';
    const auto empty = std::find_if(m_items.begin() + 1, m_items.end(), [](const DraftItem& item) {
        return item.isElement() && item.endTag.empty();
    });
    if (empty != m_items.end())
        m_tail = empty->tail;
    m_indent = "  ";
    for (const DraftItem* root = top().first; root; root = root->next) {
        const std::string line = root->isElement() && root->first ? lineInside(*root) : "";
        if (line.size() > m_lineEnd.size())
            m_indent = line.substr(m_lineEnd.size());
    }
}

std::string Draft::write(OffsetIndex& places)
{
    std::string text;
    text.reserve(m_textSize + m_textSize / 8);
    places.clear();
    writeChildren(m_items.front(), text, places);
    m_textSize = text.size();
    return text;
}

bool Draft::setAttribute(DraftItem& element, const std::string& name, const std::string& value)
{
    for (DraftAttribute& attribute : element.attributes) {
        if (attribute.name != name)
            continue;
        const std::string after = escaped(value, attribute.quote);
        const bool isChange = attribute.value != after;
        if (isChange)
            attribute.value = keep(after);
        return isChange;
    }
    DraftAttribute attribute;
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
                             [](const DraftAttribute& a) { return a.name == "name"; }) +
                1;
    element.attributes.insert(place, attribute);
    return true;
}

bool Draft::removeAttribute(DraftItem& element, const std::string& name)
{
    const auto kept =
        std::remove_if(element.attributes.begin(), element.attributes.end(),
                       [&](const DraftAttribute& attribute) { return attribute.name == name; });
    const bool isChange = kept != element.attributes.end();
    element.attributes.erase(kept, element.attributes.end());
    return isChange;
}

bool Draft::setElementName(DraftItem& element, const std::string& name)
{
    const bool isChange = element.text != name;
    if (isChange)
        element.text = keep(name);
    if (isChange && !element.endTag.empty())
        element.endTag = keep("</" + name + ">");
    return isChange;
}

DraftItem& Draft::newElement(const std::string& name)
{
    DraftItem& element = newItem(DraftItem::Kind::Element, keep(name));
    element.tail = m_tail;
    return element;
}

void Draft::insert(DraftItem& item, DraftItem& parent, DraftItem* previous)
{
    const std::string line = lineInside(parent);
    // What stands behind an element on its line, a comment say, stays with it.
    while (previous && previous->next && previous->next->isBlank() &&
           lastLine(previous->next->text).empty() && previous->next->next &&
           previous->next->next->kind == DraftItem::Kind::Other)
        previous = previous->next->next;
    const bool isOnly = !parent.first || (parent.first == parent.last && parent.first->isBlank());
    if (isOnly && parent.first) {
        unlink(*parent.first);
        previous = nullptr;
    }
    if (isOnly) {
        if (parent.endTag.empty())
            parent.tail = "";
        parent.endTag = keep("</" + std::string(parent.text) + ">");
        if (!line.empty())
            link(newItem(DraftItem::Kind::Text, keep(lineOf(parent))), parent, nullptr);
    }
    link(item, parent, previous);
    if (!line.empty())
        link(newItem(DraftItem::Kind::Text, keep(line)), parent, previous);
}

void Draft::remove(DraftItem& item)
{
    DraftItem& parent = *item.parent;
    if (item.previous && item.previous->isBlank())
        unlink(*item.previous);
    unlink(item);
    if (parent.first && (parent.first != parent.last || !parent.first->isBlank()))
        return;
    if (parent.first)
        unlink(*parent.first);
    parent.endTag = "";
    if (parent.tail.empty())
        parent.tail = m_tail;
}

void Draft::move(DraftItem& item, DraftItem& parent, DraftItem* previous)
{
    const std::string before = lineOf(item);
    remove(item);
    insert(item, parent, previous);
    const std::string after = lineOf(item);
    if (!before.empty() && !after.empty() && before != after)
        indentAnew(item, before, after);
}

DraftItem& Draft::newItem(DraftItem::Kind kind, std::string_view text)
{
    const std::size_t number = m_items.size();
    DraftItem& item = m_items.emplace_back();
    item.number = number;
    item.kind = kind;
    item.text = text;
    return item;
}

void Draft::link(DraftItem& item, DraftItem& parent, DraftItem* previous)
{
    item.parent = &parent;
    item.previous = previous;
    item.next = previous ? previous->next : parent.first;
    (previous ? previous->next : parent.first) = &item;
    (item.next ? item.next->previous : parent.last) = &item;
}

void Draft::unlink(DraftItem& item)
{
    (item.previous ? item.previous->next : item.parent->first) = item.next;
    (item.next ? item.next->previous : item.parent->last) = item.previous;
    item.parent = item.previous = item.next = nullptr;
}

/// The line end before the piece and its indentation; empty when it does not begin a line.
std::string Draft::lineOf(const DraftItem& item) const
{
    if (item.parent == &m_items.front())
        return m_lineEnd;
    return item.previous && item.previous->isBlank() ? std::string(lastLine(item.previous->text))
                                                     : "";
}

/// The same for a child of the element, as it would be.
std::string Draft::lineInside(const DraftItem& parent) const
{
    bool hasElement = false;
    for (const DraftItem* child = parent.first; child; child = child->next) {
        hasElement = hasElement || child->isElement();
        std::string line = child->isElement() ? lineOf(*child) : "";
        if (!line.empty())
            return line;
    }
    const std::string around = hasElement ? "" : lineOf(parent);
    return around.empty() ? "" : around + m_indent;
}

/// Replaces the indentation of every line that begins inside the element.
void Draft::indentAnew(DraftItem& element, const std::string& before, const std::string& after)
{
    for (DraftItem* item = element.first; item; item = item->next) {
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
        const std::size_t size = characterSize(value, i);
        const std::string character = value.substr(i, size);
        const char c = character.front();
        i += size;
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == quote)
            result += quote == '"' ? "&quot;" : "&apos;";
        else if (c == '\n' || c == '\r' || c == '\t' || !canEncode(m_encoding, character))
            result += characterReference(character);
        else
            result += character;
    }
    return result;
}

} // namespace shading
