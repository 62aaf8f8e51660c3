#pragma once

#include "base/file.h"
#include "definitions/definitionIndex.h"
#include "zel.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>

namespace shading {

class Attributes;
class Backdrops;
class History;
class Journal;
class NodeDefs;
class Origins;
class Progress;
class ReservedNames;
class XmlSource;

/// One shading document: the XML of its file and the network made from it, below a root node named
/// `Top`. What is no part of the network stays in the XML.
///
/// The library asks a host for this class: it gives the lookups by path, the host gives the root.
/// The document must outlive every wrapper of its nodes.
class Document : public ZEL::Container {
public:
    /// A document of that XML, with no network yet. The runtime is not owned and must outlive it;
    /// null: it makes an empty one of its own.
    Document(std::unique_ptr<XmlSource> xml, ZEL::Runtime* runtime);
    /// The same with the runtime and the definitions of the other one.
    Document(std::unique_ptr<XmlSource> xml, const Document& other);
    ~Document() override;

    /// The node stands in the network: it is the root node, or in the list of a compound that does.
    /// One that was taken out still knows where it was. False for none.
    bool has(const ZEL::AddRefWrapper<ZEL::Node>& node);
    /// Gives the document its network, once, when all of it is there.
    void setRootNode(const ZEL::AddRefWrapper<ZEL::Node>& root);
    /// Makes the document known: to its runtime, which rebuilds its compounds from now on, and by a
    /// text of its own. Needs the network. Called once, or never for a document that nobody else is
    /// to see.
    void makeKnown();
    /// Lets go of all that the document has, piece by piece, which lasts where it has much; what is
    /// left is to be destroyed. Nobody knows the document from now on, and it has no history.
    void takeApart(Progress& progress);

    ZEL::AddRefWrapper<ZEL::Node> getRootNode() override;
    /// Reads the runtime's node library anew and brings every node of the document up to its
    /// definition. Connections stay, and so does all that the document says. An edit of its own in
    /// the history, if there is one: the runtime rebuilds all its documents, whoever asked for it.
    void rebuildCompounds() override;
    /// Never null.
    ZEL::Runtime* getRuntime() override;

    /// The definitions of the runtime, as they were at opening or at the last rebuild.
    const DefinitionIndex& definitions() const;
    /// How many bytes the file had that the document was opened from.
    std::size_t fileSize() const;
    /// The files that have the document, by their canonical paths: as they were when it was read
    /// from them, or written last.
    using Files = std::map<std::string, FileStamp>;
    Files& files();
    /// The text under which ZEL::Container::getFromUUID finds this document while it is known:
    /// random, in the form of a UUID of version 4. Empty before.
    const std::string& uuid() const;
    /// The runtime's type of that name, made at the first call: all ports of one type share it.
    ZEL::AddRefWrapper<ZEL::PortDataType> dataType(const std::string& name);

    /// Hears all changes. Lives as long as the document.
    Journal& journal();
    /// Null without one. A history makes itself known here, and takes that back when it goes.
    History* history() const;
    void setHistory(History* history);
    /// What the document said when it was opened; edits do not change it.
    const XmlSource& xml() const;
    /// Those of it.
    const NodeDefs& nodeDefs() const;
    Origins& origins();
    /// The names that nodes and ports must not get. Made at the first call, after opening.
    ReservedNames& reservedNames();
    /// Those that the network does not show.
    Attributes& attributes();
    /// The frames around its nodes.
    Backdrops& backdrops();

private:
    void makeUnknown();

    struct Impl;
    std::unique_ptr<Impl> m_impl; ///< Never empty.
};

} // namespace shading
