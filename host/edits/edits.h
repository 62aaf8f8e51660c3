#pragma once

#include "document/history.h"

#include <string>
#include <vector>

namespace shading {

class Document;

/// The edits of a document, each undone and redone as one. Things are named by path; the first
/// match wins. An edit that answers false was refused: nothing changed, and problem() says why.
///
/// The library's commands make the changes where there is one.
class Edits {
public:
    /// A thing and what is wrong with it.
    struct Problem {
        std::string subject;
        std::string reason;
    };

    /// The document is not owned and must outlive the edits.
    explicit Edits(Document& document);

    const Problem& problem() const { return m_problem; }
    History& history() { return m_history; }

    // Connections. The two paths may come in either order; where both orders make sense, the first
    // is the source. The port of a compound node means its inner port when the other end lies
    // inside. A source that the target has is replaced.
    bool connect(const std::string& a, const std::string& b);
    bool disconnect(const std::string& a, const std::string& b);
    /// All connections of the ports at the path, those inside a compound too.
    bool disconnectAll(const std::string& path);

    // Compounds.
    /// Moves the nodes of the compound into a new compound node there. Its name, and those of its
    /// ports, are made unique. Gives the path of the new node.
    bool collapse(const std::string& path,
                  const std::string& name,
                  const std::vector<std::string>& nodes,
                  std::string& createdPath);
    /// Moves the nodes of the compound node up and removes it. Connections through its ports become
    /// direct, and what an unconnected input gave is given to the ports that it fed. A name that is
    /// taken above is made unique; gives "OLD PATH -> NEW PATH" for each of those.
    bool expand(const std::string& path, std::vector<std::string>& renamed);

    // Ports of compounds.
    bool addPort(const std::string& path,
                 ZEL::PortIOType ioType,
                 const std::string& name,
                 const std::string& type);
    bool deletePort(const std::string& path, const std::string& name);
    bool
    renamePort(const std::string& path, const std::string& oldName, const std::string& newName);

    // Values.
    /// Gives the input of a node, or of a compound from both sides, a value: a text that its data
    /// type knows. It counts where nothing feeds the input.
    bool setValue(const std::string& path, const std::string& value);

    // Nodes.
    bool deleteNode(const std::string& path);
    bool renameNode(const std::string& path, const std::string& name);

    /// Any other change as one edit; on failure the problem is about the subject.
    bool run(const std::string& title, const std::string& subject, const History::Action& action);

private:
    bool fail(const std::string& subject, const std::string& reason);
    bool runKeepingTypes(const std::string& title,
                         const std::string& subject,
                         const History::Action& action);
    NodePtr findNode(const std::string& path);
    /// Like findNode, and the root node is refused.
    NodePtr findInnerNode(const std::string& path);
    CompoundPtr findCompound(const std::string& path);
    /// The inner port of the compound, an input before an output.
    PortPtr findCompoundPort(ZEL::Compound& compound, const std::string& name);
    bool findConnection(const std::string& a,
                        const std::string& b,
                        bool isPresent,
                        PortPtr& sender,
                        PortPtr& receiver);

    Document& m_document;
    History m_history;
    Problem m_problem;
};

} // namespace shading
