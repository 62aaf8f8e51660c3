#pragma once

#include "base/encoding.h"
#include "base/message.h"

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <vector>

namespace shading {

/// The XML of one document, kept whole: comments, white space, processing instructions and all that
/// is no part of the network stay in it for saving. Private to the host's library.
class XmlSource {
public:
    XmlSource() = default;
    XmlSource(const XmlSource&) = delete;
    XmlSource& operator=(const XmlSource&) = delete;

    /// Reads and parses the file. False when it cannot be read, is not XML, not a `materialx`
    /// document, or nested too deep: error says where and why. Called once.
    bool load(const std::string& path, Message& error);
    /// The same with a text in UTF-8, as if it stood in that file.
    bool loadText(const std::string& path, const std::string& text, Message& error);
    /// The `materialx` element.
    pugi::xml_node documentElement() const { return m_xml.document_element(); }
    /// The whole document in UTF-8, and how the file had it.
    const std::string& text() const { return m_text; }
    const Encoding& encoding() const { return m_encoding; }
    /// How many bytes the file has; 0 for a text without one.
    std::size_t fileSize() const { return m_fileSize; }
    /// A warning about that element, at its place in the file.
    Message warningAt(pugi::xml_node element, const std::string& text) const;

private:
    bool read(Message& error);
    void indexText();
    /// How many of the first bytes of the text continue a character.
    std::size_t innerBefore(std::size_t offset) const;
    bool parse(Message& error);
    bool checkTopLevel(Message& error) const;
    bool checkDepth(Message& error) const;
    Message messageAt(std::size_t offset, bool isError, const std::string& text) const;

    std::string m_path;
    std::string m_text; ///< The file in UTF-8; offsets count its bytes.
    Encoding m_encoding;
    std::size_t m_fileSize = 0;
    std::vector<std::size_t> m_lineStarts; ///< Offsets; the first is 0.
    /// How many bytes continue a character before each block of the text.
    std::vector<std::size_t> m_innerBefore;
    pugi::xml_document m_xml;
};

/// Where the element begins in the text.
std::size_t offsetOf(pugi::xml_node node);

} // namespace shading
