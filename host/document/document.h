#pragma once

#include "base/message.h"
#include "definitions/definitionIndex.h"
#include "zel.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace shading {

class Journal;
class Origins;
class XmlSource;

struct OpenOptions {
    bool isStrict = false; ///< Warnings become errors: the document does not open.
    /// Not owned; must outlive the document. Null: the document makes an empty one of its own.
    ZEL::Runtime* runtime = nullptr;
    /// Called now and then with how far the opening is; empty: nobody is told.
    std::function<void(int permille)> progress;
};

/// One shading document: the XML of its file and the network made from it, below a root node named
/// `Top`. What is no part of the network stays in the XML.
///
/// The library asks a host for this class: it gives the lookups by path, the host gives the root.
/// The document must outlive every wrapper of its nodes.
class Document : public ZEL::Container {
public:
    /// Opens the document in that file. Adds what is wrong with it to messages, in the order of
    /// lines. Empty when there is an error among them.
    static std::unique_ptr<Document>
    open(const std::string& path, const OpenOptions& options, std::vector<Message>& messages);
    /// A document of that text in UTF-8, with the runtime and the definitions of this one. Empty,
    /// with an error, when it cannot be opened.
    std::unique_ptr<Document> openText(const std::string& text, Message& error) const;
    ~Document() override;

    ZEL::AddRefWrapper<ZEL::Node> getRootNode() override;
    /// Reads the runtime's node library anew and brings every node of the document up to its
    /// definition. Connections stay, and so does all that the document says.
    void rebuildCompounds() override;
    /// Never null. The document is registered with it from opening to its end.
    ZEL::Runtime* getRuntime() override;

    /// The definitions of the runtime, as they were at opening or at the last rebuild.
    const DefinitionIndex& definitions() const;
    /// How many bytes the file had that the document was opened from.
    std::uintmax_t fileSize() const;
    /// The text under which ZEL::Container::getFromUUID finds this document while it lives: random,
    /// in the form of a UUID of version 4.
    const std::string& uuid() const;
    /// The runtime's type of that name, made at the first call: all ports of one type share it.
    ZEL::AddRefWrapper<ZEL::PortDataType> dataType(const std::string& name);

    /// Hears all changes. Lives as long as the document.
    Journal& journal();
    /// What the document said when it was opened; edits do not change it.
    const XmlSource& xml() const;
    Origins& origins();

private:
    explicit Document(ZEL::Runtime* runtime);

    struct Impl;
    std::unique_ptr<Impl> m_impl; ///< Never empty.
};

} // namespace shading
