#pragma once

#include "definitions/definitionIndex.h"
#include "document/backdrops.h"
#include "document/history.h"
#include "document/node.h"
#include "edits/renamings.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace shading {

class Document;
struct AttributeOwner;
struct Frame;
struct GivenPorts;
struct NodePlace;
struct PasteOptions;
struct Position;

/// The edits of a document, each undone and redone as one. An edit that answers false was refused:
/// nothing changed, and problem() says why. The library's commands make the changes where there is
/// one.
///
/// Each edit is there on objects, and by path, which finds the objects and does the same: the first
/// of a path wins. An object must be in the document. A compound is edited by commands that find it
/// by its path: when another node has the same one, that is refused.
class Edits {
public:
    /// A thing and what is wrong with it.
    struct Problem {
        std::string subject;
        std::string reason;
    };

    /// The document is not owned and must outlive the edits. Throws std::logic_error when the
    /// document has edits already: it has one history.
    explicit Edits(Document& document);

    const Problem& problem() const { return m_problem; }
    // What a path leads to. Empty, and noted as the problem, when it leads to none.
    NodePtr findNode(const std::string& path);
    CompoundPtr findCompound(const std::string& path);
    /// The input that setValue takes.
    PortPtr findInput(const std::string& path);
    NodePtr findChild(ZEL::Compound& compound, const std::string& name);
    // Of an object. False, and noted as the problem, for what is no part of the document.
    bool has(const NodePtr& node);
    bool has(const PortPtr& port);
    /// Its path leads to it, and to no other node.
    bool reaches(const NodePtr& node);
    /// For groups of edits, for observers, and for what the edits are called.
    History& history() { return m_history; }

    // Connections.
    /// A source that the target has is replaced. What would run in a circle is refused.
    bool connect(const PortPtr& source, const PortPtr& target);
    bool disconnect(const PortPtr& source, const PortPtr& target);
    bool disconnectAll(const PortPtr& port);
    /// The two paths may come in either order; where both orders make sense, the first is the
    /// source. The port of a compound node means its inner port when the other end lies inside.
    bool connect(const std::string& a, const std::string& b);
    bool disconnect(const std::string& a, const std::string& b);
    /// All connections of the ports at the path, those inside a compound too.
    bool disconnectAll(const std::string& path);
    /// Why connect refuses the two, listeners aside; empty when it does not. Both are in the
    /// document.
    std::string connectProblem(const PortPtr& source, const PortPtr& target) const;
    /// Leads all that a source feeds to another source, or what feeds a target to another target,
    /// where it replaces a source that is there. Both lie in one compound.
    bool reroute(const PortPtr& from, const PortPtr& to);
    /// The ports of nodes go before the inner ones, which alone are meant with isInside.
    bool reroute(const std::string& from, const std::string& to, bool isInside = false);
    /// The two ports that connect (isPresent: disconnect) takes, or reroute. False, and noted as
    /// the problem, when there are none.
    bool findConnection(const GivenPorts& a,
                        const GivenPorts& b,
                        bool isPresent,
                        PortPtr& sender,
                        PortPtr& receiver);
    bool findRoute(const GivenPorts& from,
                   const GivenPorts& to,
                   bool isInside,
                   PortPtr& present,
                   PortPtr& next);
    /// Leads one connection from another source, or to another target, whichever is given anew.
    bool reconnect(const PortPtr& source,
                   const PortPtr& target,
                   const PortPtr& newSource,
                   const PortPtr& newTarget);

    /// How a node may stand in a connection. With a problem it may not.
    struct Insertion {
        PortPtr input;  ///< The first free one that takes what the source gives.
        PortPtr output; ///< The first one that the target takes.
        std::string problem;
    };
    /// Of a node, an inner node of the document, and two ports of it. Changes nothing.
    Insertion insertionFor(const NodePtr& node, const PortPtr& source, const PortPtr& target) const;
    /// Puts a node into a connection: the source feeds the node and that the target.
    bool insertNode(const NodePtr& node, const PortPtr& source, const PortPtr& target);
    bool insertNode(const std::string& path, const std::string& a, const std::string& b);

    // Compounds.
    /// Moves the nodes of the compound into a new compound node there. Its name, and those of its
    /// ports, are made unique; it has one port for each source, and one for a material or shader at
    /// the end of the network. Gives the new node.
    bool collapse(const CompoundPtr& compound,
                  const std::string& name,
                  const std::vector<NodePtr>& nodes,
                  NodePtr& created);
    bool collapse(const std::string& path,
                  const std::string& name,
                  const std::vector<std::string>& nodes,
                  std::string& createdPath);
    /// Moves the nodes of the compound node up and removes it. Connections through its ports become
    /// direct, and what an unconnected input gave is given to the ports that it fed, with its
    /// colour space, its unit and the like. A name that is taken above is made unique; gives the
    /// renaming of each of those. A graph with tokens is not expanded.
    bool expand(const NodePtr& graph, Renamings& renamed);
    bool expand(const std::string& path, Renamings& renamed);

    /// Moves nodes of one compound into another one of the document. Their connections lead through
    /// ports of the graphs between, which are made and removed as they are needed. A name that is
    /// taken there is made unique.
    bool reparent(const CompoundPtr& compound, const std::vector<NodePtr>& nodes);

    // Ports of compounds. The port may be that of the node or the inner one.
    // What a deleted one fed gets its value.
    bool addPort(const CompoundPtr& compound,
                 ZEL::PortIOType ioType,
                 const std::string& name,
                 const std::string& type);
    bool deletePort(const PortPtr& port);
    bool renamePort(const PortPtr& port, const std::string& name);
    /// Gives the port a place, from 1, among the inputs or outputs of its compound.
    bool movePort(const PortPtr& port, int place);
    bool movePort(const std::string& path, const std::string& name, int place);
    /// Gives the port another data type. Refused while what it is connected to has another one; a
    /// value that the type does not have goes.
    bool setPortType(const PortPtr& port, const std::string& type);
    bool setPortType(const std::string& path, const std::string& name, const std::string& type);
    bool addPort(const std::string& path,
                 ZEL::PortIOType ioType,
                 const std::string& name,
                 const std::string& type);
    bool deletePort(const std::string& path, const std::string& name);
    bool
    renamePort(const std::string& path, const std::string& oldName, const std::string& newName);

    // Values.
    /// Gives the input of a node, or of a compound from both sides, a value: a text that its data
    /// type knows; empty: that of its definition. It counts where nothing feeds the input, and a
    /// document has it then only. The value that it has: done, no edit.
    bool setValue(const PortPtr& port, const std::string& value);
    bool setValue(const std::string& path, const std::string& value);

    // What the network does not show.
    /// Gives the attribute of a node, a port, or an element such as a look a value; an empty one
    /// takes it off. Those that the network shows are refused. One by which a look and the like
    /// name a node follows that. The version of a plain node may give it another definition; it is
    /// refused when that leaves it without one.
    bool setAttribute(const std::string& path, const std::string& name, const std::string& value);
    /// Why setAttribute refuses the attribute: the network shows it. Empty when it does not.
    static std::string attributeProblem(const AttributeOwner& owner, const std::string& name);
    /// What the path leads to: a node, an input, an output or another element. False, and noted as
    /// the problem, when it leads nowhere.
    bool findOwner(const std::string& path, AttributeOwner& owner);
    /// Reads one. False, and noted as the problem, when there is none, and when the network shows
    /// it.
    bool getAttribute(const std::string& path, const std::string& name, std::string& value);
    /// Changes where nodes are drawn, each named once: those that are there already stay.
    bool moveNodes(const std::vector<NodePlace>& places);
    bool moveNodes(const std::vector<std::pair<std::string, Position>>& places);
    bool moveNode(const NodePtr& node, const Position& position);
    bool moveNode(const std::string& path, const Position& position);

    // Backdrops: frames around nodes, which are drawn and nothing else.
    /// Makes one around nodes of the compound. Without a frame it gets one around their places, if
    /// they have any. The text is what it says to people, and may be empty.
    bool createBackdrop(const CompoundPtr& compound,
                        const std::string& name,
                        const std::vector<NodePtr>& nodes,
                        const std::optional<Frame>& frame,
                        const std::string& text,
                        BackdropPtr& created);
    bool deleteBackdrop(const BackdropPtr& backdrop);
    bool renameBackdrop(const BackdropPtr& backdrop, const std::string& name);
    /// Gives it other nodes: those that it contains from then on.
    bool setBackdropNodes(const BackdropPtr& backdrop, const std::vector<NodePtr>& nodes);
    /// Moves and resizes it alone.
    bool setBackdropFrame(const BackdropPtr& backdrop, const Frame& frame);
    /// Moves it with the nodes that it contains, as far as these have places.
    bool moveBackdrop(const BackdropPtr& backdrop, const Position& position);
    bool setBackdropText(const BackdropPtr& backdrop, const std::string& text);
    /// The backdrop at the path; null when there is none.
    BackdropPtr backdropAt(const std::string& path);

    // Nodes.
    /// Makes a node of that definition inside the compound and gives it.
    bool createNode(const CompoundPtr& compound,
                    const DefinitionPtr& definition,
                    const std::string& name,
                    HostNodePtr& created);
    /// Makes an empty graph likewise.
    bool createGraph(const CompoundPtr& compound, const std::string& name, HostNodePtr& created);
    /// The type is the name of a definition or a node type, as definitionFor takes it, or
    /// `nodegraph`, which makes no data type.
    bool createNode(const std::string& path,
                    const std::string& type,
                    const std::string& name,
                    HostNodePtr& created,
                    const std::string& dataType = "");
    /// The definition of that name; or of those of that node type, old versions aside, one that
    /// makes the data type. Without a data type, one that makes a float, else the first by name.
    /// Empty when there is none.
    DefinitionPtr definitionFor(const std::string& type, const std::string& dataType = "") const;
    /// Makes the nodes of a document of the format in the compound; their names are made unique.
    /// What they refer to and the text lacks is what is called so beside them, unless the options
    /// say otherwise. Gives the new ones. Refused when the text has what is no part of a network.
    bool paste(const CompoundPtr& compound,
               const std::string& text,
               const PasteOptions& options,
               std::vector<NodePtr>& made);
    bool paste(const CompoundPtr& compound, const std::string& text, std::vector<NodePtr>& made);
    bool paste(const std::string& path, const std::string& text, std::vector<NodePtr>& made);
    bool deleteNode(const NodePtr& node);
    bool deleteNode(const std::string& path);
    /// Deletes nodes with their connections; one inside of another goes with that. With isHealed,
    /// where such a node has one input that is fed and one output that feeds something, the source
    /// of the one feeds the targets of the other, if their types fit; also through several.
    bool deleteNodes(const std::vector<NodePtr>& nodes, bool isHealed);
    bool deleteNodes(const std::vector<std::string>& paths, bool isHealed);
    bool renameNode(const NodePtr& node, const std::string& name);
    bool renameNode(const std::string& path, const std::string& name);
    /// Brings all nodes of this document, and of no other, up to their definitions.
    bool rebuild();

    // The history.
    /// Takes so many edits back, or does them again; gives their titles. More than there are: none,
    /// and refused. When a listener refuses one, those before it stay done.
    bool undo(int count, std::vector<std::string>& titles);
    bool redo(int count, std::vector<std::string>& titles);

    /// Any other change as one edit; on failure the problem is about the subject.
    bool run(const EditName& name, const std::string& subject, const History::Action& action);

private:
    bool fail(const std::string& subject, const std::string& reason);
    bool runKeepingTypes(const EditName& name,
                         const std::string& subject,
                         const History::Action& action);
    bool replay(bool isForward, int count, std::vector<std::string>& titles);
    bool disconnectPorts(const std::vector<PortPtr>& ports, const std::string& path);

    /// An inner node, for the root node stays as it is.
    bool hasInner(const NodePtr& node);
    /// A new name in the compound. The subject is what gets it, or the compound.
    bool mayName(ZEL::Compound& compound, const std::string& name, const std::string& subject);
    bool reaches(const CompoundPtr& compound);
    bool has(const BackdropPtr& backdrop);
    /// Nodes of the compound, each once.
    bool areIn(const CompoundPtr& compound, const std::vector<NodePtr>& nodes);
    EditName backdropName(const BackdropPtr& backdrop,
                          std::string title,
                          const char* verb,
                          const std::vector<std::string>& words);
    /// The compound's inner port that the port is or mirrors, which its name leads to.
    PortPtr compoundPort(const PortPtr& port);

    NodePtr nodeNamed(const std::string& path, const std::string& name, bool isOfDocument);

    // Empty, and noted as the problem, when the path leads to none.
    /// The inner port of the compound, an input before an output.
    PortPtr findCompoundPort(const std::string& path, const std::string& name);
    bool has(const GivenPorts& given);
    bool findConnection(const std::string& a,
                        const std::string& b,
                        bool isPresent,
                        PortPtr& sender,
                        PortPtr& receiver);
    EditName connectionName(std::string title,
                            std::vector<std::string> words,
                            const PortPtr& sender,
                            const PortPtr& receiver);
    bool moveReceiver(const PortPtr& from, const PortPtr& to, const EditName& name);
    bool moveSenders(const PortPtr& from, const PortPtr& to, const EditName& name);

    Document& m_document;
    History m_history;
    Problem m_problem;
};

} // namespace shading
