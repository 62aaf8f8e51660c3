#pragma once

#include "base/encoding.h"
#include "base/file.h"
#include "base/message.h"
#include "format/nodeDefs.h"
#include "format/piece.h"

#include <cstddef>
#include <optional>
#include <string>

namespace shading {

/// The text of one document in pieces, kept whole: comments, white space, processing instructions
/// and all that is no part of the network stay in it for saving.
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
    const Piece& documentElement() const { return *ElementsIn(m_pieces.top()).begin(); }
    const PieceTree& pieces() const { return m_pieces; }
    const NodeDefs& nodeDefs() const { return *m_nodeDefs; }
    /// The whole document in UTF-8, and how the file had it.
    const std::string& text() const { return m_text; }
    const Encoding& encoding() const { return m_encoding; }
    /// Of the file that was read; of size 0 for a text without one.
    const FileStamp& fileStamp() const { return m_fileStamp; }
    /// A warning about that element, at its place in the file.
    Message warningAt(const Piece& element, const std::string& text) const;
    /// Where the element begins in the text.
    std::size_t offsetOf(const Piece& element) const;

private:
    struct Place {
        std::size_t offset = 0;
        int line = 1;
        int column = 1; ///< In characters.
    };

    bool read(Message& error);
    Message messageAt(std::size_t offset, bool isError, const std::string& text) const;

    std::string m_path;
    std::string m_text; ///< The file in UTF-8; offsets count its bytes.
    Encoding m_encoding;
    FileStamp m_fileStamp;
    PieceTree m_pieces;
    std::optional<NodeDefs> m_nodeDefs; ///< Empty until it is read.
    mutable Place m_counted; ///< The place of the last message: most of the next lie behind it.
};

} // namespace shading
