#include "format/xml.h"

#include "base/encoding.h"
#include "base/utf8.h"
#include "format/pieceParser.h"

#include <algorithm>
#include <cstring>
#include <pugixml.hpp>
#include <string_view>

namespace shading {

namespace {

/// Elements nested deeper than this are refused, so that no later walk down a document or its
/// network can exhaust the stack.
constexpr int kMaxDepth = 512;

constexpr unsigned kParseEverything = pugi::parse_full | pugi::parse_fragment;

std::size_t offsetOf(pugi::xml_node node)
{
    const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug(), 0));
    const bool isElement = node.type() == pugi::node_element;
    return isElement && offset > 0 ? offset - 1 : offset; // An element begins before its name.
}

/// What is wrong with a text, and where.
struct Fault {
    std::size_t offset = 0;
    std::string text; ///< Empty: none.
};

/// The parser takes any mixture of elements and text; a document has one element and no text.
Fault topLevelFault(const pugi::xml_document& xml, std::size_t size)
{
    const pugi::xml_node root = xml.document_element();
    for (const pugi::xml_node node : xml.children()) {
        const bool isText = node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
        const std::size_t blanks = isText ? std::strspn(node.value(), " \t\r\n") : 0;
        if (isText && node.value()[blanks] != '\0')
            return {offsetOf(node) + blanks, "not XML: text outside the document element"};
        if (node.type() == pugi::node_element && node != root)
            return {offsetOf(node), "not XML: a second document element"};
    }
    if (!root)
        return {size, "not XML: no element"};
    if (std::strcmp(root.name(), "materialx") != 0)
        return {offsetOf(root),
                std::string("not a materialx document: the document element is \"") + root.name() +
                    "\""};
    return {};
}

Fault depthFault(const pugi::xml_document& xml)
{
    int depth = 1;
    pugi::xml_node node = xml.document_element();
    while (node && depth > 0) {
        if (depth > kMaxDepth && node.type() == pugi::node_element)
            return {offsetOf(node),
                    "nested deeper than " + std::to_string(kMaxDepth) + " elements"};
        if (node.first_child()) {
            node = node.first_child();
            ++depth;
            continue;
        }
        while (depth > 0 && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        if (depth > 0)
            node = node.next_sibling();
    }
    return {};
}

bool isSameTag(pugi::xml_node element, const Piece& piece)
{
    pugi::xml_attribute attribute = element.first_attribute();
    for (const Attribute& own : piece.attributes) {
        if (!attribute || own.name != attribute.name() ||
            (own.isPlain() ? own.value != attribute.value() : own.text() != attribute.value()))
            return false;
        attribute = attribute.next_attribute();
    }
    return !attribute && piece.text == element.name();
}

/// Where the elements inside, as the parser has them, are not those of the pieces.
Fault pieceFault(pugi::xml_node parent, const Piece& pieces)
{
    ElementsIn::Iterator piece = ElementsIn(pieces).begin();
    const ElementsIn::Iterator end = ElementsIn(pieces).end();
    for (const pugi::xml_node child : parent.children()) {
        if (child.type() != pugi::node_element)
            continue;
        if (!(piece != end) || !isSameTag(child, *piece))
            return {offsetOf(child), "not XML: it is not clear what this tag says"};
        Fault fault = pieceFault(child, *piece);
        if (!fault.text.empty())
            return fault;
        ++piece;
    }
    if (piece != end)
        return {offsetOf(parent),
                "not XML: it is not clear where what this tag begins has its end"};
    return {};
}

} // namespace

bool XmlSource::load(const std::string& path, Message& error)
{
    m_path = path;
    std::string bytes;
    std::string problem;
    int number = 0;
    if (!readFile(path, bytes, problem, &m_fileStamp, &number)) {
        error = messageAt(0, true, "cannot be read: " + problem);
        error.systemError = number;
        return false;
    }
    if (!convertToUtf8(bytes, m_text, m_encoding, problem)) {
        error = messageAt(m_text.size(), true, "not XML: " + problem);
        return false;
    }
    return read(error);
}

bool XmlSource::loadText(const std::string& path, const std::string& text, Message& error)
{
    m_path = path;
    m_text = text;
    return read(error);
}

Message XmlSource::warningAt(const Piece& element, const std::string& text) const
{
    return messageAt(offsetOf(element), false, text);
}

std::size_t XmlSource::offsetOf(const Piece& element) const
{
    // An element begins before its name.
    return static_cast<std::size_t>(element.text.data() - m_text.data()) - 1;
}

/// The pieces are taken apart by simple rules: they must be what a parser makes of the text.
bool XmlSource::read(Message& error)
{
    const std::size_t nul = m_text.find('\0');
    if (nul != std::string::npos) {
        error = messageAt(nul, true, "not XML: a byte of value 0");
        return false;
    }
    pugi::xml_document xml;
    const pugi::xml_parse_result result =
        xml.load_buffer(m_text.data(), m_text.size(), kParseEverything, pugi::encoding_utf8);
    Fault fault;
    if (!result) {
        fault.offset = std::min(
            m_text.size(), static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0)));
        const char* const place = fault.offset + 1 >= m_text.size() ? ", where the file ends" : "";
        fault.text = std::string("not XML: ") + result.description() + place;
    }
    if (fault.text.empty())
        fault = topLevelFault(xml, m_text.size());
    if (fault.text.empty())
        fault = depthFault(xml);
    if (fault.text.empty()) {
        PieceParser(m_text, m_pieces).run();
        fault = pieceFault(xml.root(), m_pieces.top());
    }
    if (!fault.text.empty())
        error = messageAt(fault.offset, true, fault.text);
    else
        m_nodeDefs.emplace(documentElement());
    return fault.text.empty();
}

Message XmlSource::messageAt(std::size_t offset, bool isError, const std::string& text) const
{
    if (offset < m_counted.offset)
        m_counted = {};
    const std::string_view passed =
        std::string_view(m_text).substr(m_counted.offset, offset - m_counted.offset);
    const std::size_t lineEnd = passed.rfind('\n');
    if (lineEnd != std::string_view::npos) {
        m_counted.line += static_cast<int>(std::count(passed.begin(), passed.end(), '\n'));
        m_counted.column = 1;
    }
    m_counted.column += static_cast<int>(countCharacters(passed.substr(lineEnd + 1)));
    m_counted.offset = offset;
    Message message;
    message.file = m_path;
    message.line = m_counted.line;
    message.column = m_counted.column;
    message.isError = isError;
    message.text = text;
    return message;
}

} // namespace shading
