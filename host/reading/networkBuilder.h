#pragma once

#include "base/message.h"
#include "document/node.h"
#include "format/piece.h"
#include "zel.h"

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace shading {

class Document;
class Progress;
class XmlSource;

/// One compound while a document is read, with its nodes by name: where siblings have one name, the
/// first.
struct Scope {
    ZEL::AddRefWrapper<ZEL::Compound> compound;
    std::unordered_map<std::string, ZEL::AddRefWrapper<Node>> nodes;
    std::unordered_map<std::string, ZEL::AddRefWrapper<Node>> graphs; ///< The compound nodes.
};

/// An `input` or `output` element that names a source.
struct Reference {
    const Piece* element;
    ZEL::AddRefWrapper<ZEL::Port> target; ///< The receiving end.
    const Scope* scope; ///< Where the names are looked up. Null: outside the document.
};

/// A network whose references are not connected yet.
struct UnconnectedNetwork {
    ZEL::AddRefWrapper<Node> root;
    std::deque<Scope> scopes;          ///< The first is the document's; addresses stay.
    std::vector<Reference> references; ///< In document order.
};

/// The first pass over a document: makes the nodes, the compounds and their ports, and collects the
/// references between them. Private to the host's library.
class NetworkBuilder {
public:
    /// Nothing given is owned; all must outlive the builder.
    NetworkBuilder(Document& document,
                   const XmlSource& xml,
                   std::vector<Message>& warnings,
                   UnconnectedNetwork& network,
                   Progress& progress);

    void build();

private:
    class SiblingNames;

    void fillCompound(const Piece& element, Scope& scope, const Scope* outer);
    void
    addCompoundPort(const Piece& element, SiblingNames& names, Scope& scope, const Scope* outer);
    void addGraph(const Piece& element, SiblingNames& names, Scope& scope);
    void addPlainNode(const Piece& element, SiblingNames& names, Scope& scope);
    void addInput(const Piece& element, SiblingNames& names, Node& node, const Scope& scope);
    void addOutput(const Piece& element, SiblingNames& names, Node& node);

    ZEL::AddRefWrapper<ZEL::PortDataType> typeOf(const Piece& element, const std::string& path);
    /// The name of the node or port that the element becomes; warns of one that causes trouble.
    std::string takeName(const Piece& element, SiblingNames& names);
    void addReference(const Piece& element,
                      const ZEL::AddRefWrapper<ZEL::Port>& target,
                      const Scope* scope);
    void warn(const Piece& element, const std::string& path, const std::string& text);

    Document& m_document;
    const XmlSource& m_xml;
    std::vector<Message>& m_warnings;
    UnconnectedNetwork& m_network;
    Progress& m_progress;
};

} // namespace shading
