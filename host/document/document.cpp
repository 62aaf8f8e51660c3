#include "document/document.h"

#include "base/progress.h"
#include "document/definedNode.h"
#include "document/journal.h"
#include "document/origins.h"
#include "format/xml.h"
#include "reading/reader.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <random>

namespace shading {

struct Document::Impl {
    // Destroyed in reverse order: the nodes before the XML whose elements they remember, and before
    // the runtime.
    ZEL::Runtime ownRuntime; ///< Serves a document that was given none.
    ZEL::Runtime* runtime;   ///< Not owned, never null: the one given or the own one.
    std::string uuid;
    DefinitionIndex definitions;
    Journal journal;
    XmlSource xml;
    Origins origins;
    std::uintmax_t fileSize = 0;
    ZEL::AddRefWrapper<ZEL::Node> root; ///< Never empty in an open document.
};

namespace {

std::string makeUuid()
{
    std::random_device source;
    std::array<unsigned, 8> words; // 16 bits each
    for (unsigned& word : words)
        word = source() & 0xFFFFU;
    words[3] = (words[3] & 0x0FFFU) | 0x4000U; // Version 4, random.
    words[4] = (words[4] & 0x3FFFU) | 0x8000U; // The usual variant.
    std::array<char, 37> text;
    std::snprintf(text.data(), text.size(), "%04x%04x-%04x-%04x-%04x-%04x%04x%04x", words[0],
                  words[1], words[2], words[3], words[4], words[5], words[6], words[7]);
    return text.data();
}

} // namespace

Document::Document(ZEL::Runtime* runtime) : m_impl(std::make_unique<Impl>())
{
    m_impl->runtime = runtime ? runtime : &m_impl->ownRuntime;
    m_impl->uuid = makeUuid();
    m_impl->definitions = DefinitionIndex(*m_impl->runtime);
    m_impl->runtime->registerContainer(this);
    registerWithUUID(uuid().c_str(), this);
}

Document::~Document()
{
    // Both tables hold plain pointers and are not told when a document dies.
    registerWithUUID(uuid().c_str(), nullptr);
    m_impl->runtime->unregisterContainer(this);
}

std::unique_ptr<Document>
Document::open(const std::string& path, const OpenOptions& options, std::vector<Message>& messages)
{
    std::unique_ptr<Document> document(new Document(options.runtime));
    Impl& impl = *document->m_impl;
    Message error;
    if (!impl.xml.load(path, error)) {
        messages.push_back(error);
        return nullptr;
    }
    std::error_code ignored;
    impl.fileSize = std::filesystem::file_size(path, ignored);
    std::vector<Message> found;
    Progress progress(options.progress);
    impl.root = readNetwork(*document, impl.xml, found, progress);
    std::stable_sort(found.begin(), found.end(),
                     [](const Message& a, const Message& b) { return a.line < b.line; });
    for (Message& message : found) {
        message.isError = options.isStrict;
        messages.push_back(message);
    }
    if (options.isStrict && !found.empty())
        return nullptr;
    return document;
}

std::unique_ptr<Document> Document::openText(const std::string& text, Message& error) const
{
    std::unique_ptr<Document> document(new Document(m_impl->runtime));
    Impl& impl = *document->m_impl;
    impl.definitions = m_impl->definitions;
    if (!impl.xml.loadText("the saved document", text, error))
        return nullptr;
    std::vector<Message> ignored;
    Progress untold({});
    impl.root = readNetwork(*document, impl.xml, ignored, untold);
    return document;
}

ZEL::AddRefWrapper<ZEL::Node> Document::getRootNode()
{
    return m_impl->root;
}

void Document::rebuildCompounds()
{
    m_impl->definitions = DefinitionIndex(*m_impl->runtime);
    defineNodes(*this, *m_impl->root->getAsCompound(), {});
}

ZEL::Runtime* Document::getRuntime()
{
    return m_impl->runtime;
}

const DefinitionIndex& Document::definitions() const
{
    return m_impl->definitions;
}

std::uintmax_t Document::fileSize() const
{
    return m_impl->fileSize;
}

const std::string& Document::uuid() const
{
    return m_impl->uuid;
}

ZEL::AddRefWrapper<ZEL::PortDataType> Document::dataType(const std::string& name)
{
    return m_impl->runtime->createPortDataType(name.c_str());
}

Journal& Document::journal()
{
    return m_impl->journal;
}

const XmlSource& Document::xml() const
{
    return m_impl->xml;
}

Origins& Document::origins()
{
    return m_impl->origins;
}

} // namespace shading
