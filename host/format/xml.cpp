#include "format/xml.h"

#include "base/encoding.h"
#include "base/file.h"

#include <algorithm>
#include <cstring>

namespace shading {

namespace {

/// Elements nested deeper than this are refused, so that no later walk down a document or its
/// network can exhaust the stack.
constexpr int kMaxDepth = 512;

/// Small enough to be counted for each message, large enough that counts for all cost no memory.
constexpr std::size_t kBlock = 4096;

constexpr unsigned kParseEverything =
    pugi::parse_full | pugi::parse_ws_pcdata | pugi::parse_fragment;

bool isInner(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

} // namespace

std::size_t offsetOf(pugi::xml_node node)
{
    const std::size_t offset =
        static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug(), 0));
    const bool isElement = node.type() == pugi::node_element;
    return isElement && offset > 0 ? offset - 1 : offset; // An element begins before its name.
}

bool XmlSource::load(const std::string& path, Message& error)
{
    m_path = path;
    std::string bytes;
    std::string problem;
    if (!readFile(path, bytes, problem)) {
        indexText();
        error = messageAt(0, true, "cannot be read: " + problem);
        return false;
    }
    m_fileSize = bytes.size();
    const bool isConverted = convertToUtf8(bytes, m_text, m_encoding, problem);
    indexText();
    if (!isConverted) {
        error = messageAt(m_text.size(), true, "not XML: " + problem);
        return false;
    }
    return read(error);
}

bool XmlSource::loadText(const std::string& path, const std::string& text, Message& error)
{
    m_path = path;
    m_text = text;
    indexText();
    return read(error);
}

Message XmlSource::warningAt(pugi::xml_node element, const std::string& text) const
{
    return messageAt(offsetOf(element), false, text);
}

bool XmlSource::read(Message& error)
{
    return parse(error) && checkTopLevel(error) && checkDepth(error);
}

void XmlSource::indexText()
{
    m_lineStarts = {0};
    m_innerBefore.clear();
    std::size_t inner = 0;
    for (std::size_t i = 0; i < m_text.size(); ++i) {
        if (i % kBlock == 0)
            m_innerBefore.push_back(inner);
        if (m_text[i] == '\n')
            m_lineStarts.push_back(i + 1);
        inner += isInner(m_text[i]) ? 1 : 0;
    }
    m_innerBefore.push_back(inner); // For the end of a text of whole blocks.
}

std::size_t XmlSource::innerBefore(std::size_t offset) const
{
    const std::size_t block = offset / kBlock;
    const auto begin = m_text.begin() + static_cast<std::ptrdiff_t>(block * kBlock);
    const auto end = m_text.begin() + static_cast<std::ptrdiff_t>(offset);
    return m_innerBefore[block] + static_cast<std::size_t>(std::count_if(begin, end, isInner));
}

bool XmlSource::parse(Message& error)
{
    const std::size_t nul = m_text.find('\0');
    if (nul != std::string::npos) {
        error = messageAt(nul, true, "not XML: a byte of value 0");
        return false;
    }
    const pugi::xml_parse_result result =
        m_xml.load_buffer(m_text.data(), m_text.size(), kParseEverything, pugi::encoding_utf8);
    if (result)
        return true;
    const std::size_t offset = std::min(
        m_text.size(), static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0)));
    const char* const place = offset + 1 >= m_text.size() ? ", where the file ends" : "";
    error = messageAt(offset, true, std::string("not XML: ") + result.description() + place);
    return false;
}

/// The parser takes any mixture of elements and text; a document has one element and no text.
bool XmlSource::checkTopLevel(Message& error) const
{
    const pugi::xml_node root = m_xml.document_element();
    for (const pugi::xml_node node : m_xml.children()) {
        const bool isText = node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
        const std::size_t blanks = isText ? std::strspn(node.value(), " \t\r\n") : 0;
        if (isText && node.value()[blanks] != '\0') {
            error = messageAt(offsetOf(node) + blanks, true,
                              "not XML: text outside the document element");
            return false;
        }
        if (node.type() == pugi::node_element && node != root) {
            error = messageAt(offsetOf(node), true, "not XML: a second document element");
            return false;
        }
    }
    if (!root) {
        error = messageAt(m_text.size(), true, "not XML: no element");
        return false;
    }
    if (std::strcmp(root.name(), "materialx") != 0) {
        error = messageAt(offsetOf(root), true,
                          std::string("not a materialx document: the document element is \"") +
                              root.name() + "\"");
        return false;
    }
    return true;
}

bool XmlSource::checkDepth(Message& error) const
{
    int depth = 1;
    pugi::xml_node node = m_xml.document_element();
    while (node && depth > 0) {
        if (depth > kMaxDepth && node.type() == pugi::node_element) {
            error = messageAt(offsetOf(node), true,
                              "nested deeper than " + std::to_string(kMaxDepth) + " elements");
            return false;
        }
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
    return true;
}

Message XmlSource::messageAt(std::size_t offset, bool isError, const std::string& text) const
{
    const auto next = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
    Message message;
    message.file = m_path;
    message.line = static_cast<int>(next - m_lineStarts.begin());
    const std::size_t lineStart = *(next - 1);
    const std::size_t inner = innerBefore(offset) - innerBefore(lineStart);
    message.column = static_cast<int>(offset - lineStart - inner) + 1;
    message.isError = isError;
    message.text = text;
    return message;
}

} // namespace shading
