#include "document/document.h"

#include "base/progress.h"
#include "document/attributes.h"
#include "document/backdrops.h"
#include "document/definedNode.h"
#include "document/history.h"
#include "document/journal.h"
#include "document/origins.h"
#include "document/release.h"
#include "document/reservedNames.h"
#include "format/xml.h"

#include <array>
#include <cstdio>
#include <optional>
#include <random>
#include <utility>

namespace shading {

struct Document::Impl {
    Impl(Document& document, std::unique_ptr<XmlSource> source, ZEL::Runtime* given)
        : runtime(given ? given : &ownRuntime),
          xml(std::move(source)),
          attributes(document),
          backdrops(document)
    {
    }

    // Destroyed in reverse order: the nodes before the XML whose elements they remember, and before
    // the runtime.
    ZEL::Runtime ownRuntime; ///< Serves a document that was given none.
    ZEL::Runtime* runtime;   ///< Not owned, never null: the one given or the own one.
    std::string uuid;        ///< Empty: nobody knows the document.
    std::shared_ptr<const DefinitionIndex> definitions;
    Journal journal;
    History* history = nullptr; ///< Not owned.
    std::unique_ptr<XmlSource> xml;
    Origins origins;
    std::optional<ReservedNames> reservedNames; ///< Empty until somebody asks.
    Attributes attributes;
    Backdrops backdrops;
    Files files;
    ZEL::AddRefWrapper<ZEL::Node> root; ///< Empty until the document was read.
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

/// Mostly the node is the first of its name.
bool holds(ZEL::NodeList& list, const NodePtr& node)
{
    if (list[node->getName()] == node)
        return true;
    for (ZEL::Node* const other : list) {
        if (other == node.get())
            return true;
    }
    return false;
}

} // namespace

Document::Document(std::unique_ptr<XmlSource> xml, ZEL::Runtime* runtime)
    : m_impl(std::make_unique<Impl>(*this, std::move(xml), runtime))
{
    m_impl->definitions = std::make_shared<DefinitionIndex>(*m_impl->runtime);
}

Document::Document(std::unique_ptr<XmlSource> xml, const Document& other)
    : m_impl(std::make_unique<Impl>(*this, std::move(xml), other.m_impl->runtime))
{
    m_impl->definitions = other.m_impl->definitions;
}

Document::~Document()
{
    makeUnknown();
}

void Document::makeUnknown()
{
    if (uuid().empty())
        return;
    // Both tables hold plain pointers and are not told when a document dies.
    registerWithUUID(uuid().c_str(), nullptr);
    m_impl->runtime->unregisterContainer(this);
    m_impl->uuid.clear();
}

void Document::takeApart(Progress& progress)
{
    makeUnknown();
    m_impl->backdrops.clear();
    Release release;
    release.add(m_impl->root, progress);
    m_impl->root = nullptr;
    release.run(progress);
    m_impl->origins.release(progress);
    progress.awaitResult([this] {
        m_impl->reservedNames.reset();
        m_impl->xml.reset();
    });
}

bool Document::has(const NodePtr& node)
{
    NodePtr top = node;
    while (top && top != getRootNode()) {
        const CompoundPtr around = top->getParentCompound();
        top = around && holds(around->nodes(), top) ? around->getAsNode() : nullptr;
    }
    return top == getRootNode();
}

void Document::setRootNode(const ZEL::AddRefWrapper<ZEL::Node>& root)
{
    m_impl->root = root;
    m_impl->backdrops.read();
}

void Document::makeKnown()
{
    m_impl->uuid = makeUuid();
    m_impl->runtime->registerContainer(this);
    registerWithUUID(uuid().c_str(), this);
}

ZEL::AddRefWrapper<ZEL::Node> Document::getRootNode()
{
    return m_impl->root;
}

void Document::rebuildCompounds()
{
    const auto rebuild = [this] {
        m_impl->definitions = std::make_shared<DefinitionIndex>(*m_impl->runtime);
        defineNodes(*this, *m_impl->root->getAsCompound(), {});
        return "";
    };
    std::string ignored; // Who refused a change knows of it; the runtime asks for no answer.
    if (m_impl->history)
        m_impl->history->run({"Rebuild", {"rebuild"}}, false, rebuild, ignored);
    else
        rebuild();
}

ZEL::Runtime* Document::getRuntime()
{
    return m_impl->runtime;
}

const DefinitionIndex& Document::definitions() const
{
    return *m_impl->definitions;
}

std::size_t Document::fileSize() const
{
    return m_impl->xml->fileStamp().size;
}

Document::Files& Document::files()
{
    return m_impl->files;
}

const std::string& Document::uuid() const
{
    return m_impl->uuid;
}

ZEL::AddRefWrapper<ZEL::PortDataType> Document::dataType(const std::string& name)
{
    return m_impl->runtime->createPortDataType(name.c_str());
}

Backdrops& Document::backdrops()
{
    return m_impl->backdrops;
}

Journal& Document::journal()
{
    return m_impl->journal;
}

History* Document::history() const
{
    return m_impl->history;
}

void Document::setHistory(History* history)
{
    m_impl->history = history;
}

const XmlSource& Document::xml() const
{
    return *m_impl->xml;
}

const NodeDefs& Document::nodeDefs() const
{
    return m_impl->xml->nodeDefs();
}

Origins& Document::origins()
{
    return m_impl->origins;
}

ReservedNames& Document::reservedNames()
{
    if (!m_impl->reservedNames)
        m_impl->reservedNames.emplace(m_impl->xml->documentElement(), m_impl->origins);
    return *m_impl->reservedNames;
}

Attributes& Document::attributes()
{
    return m_impl->attributes;
}

} // namespace shading
