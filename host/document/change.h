#pragma once

#include "document/pointers.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace shading {

/// What an edit is called.
struct EditName {
    std::string title; ///< For people: "Rename rust to oxide".
    /// Lines of the shell that do the same, in order: "rename Top.rust oxide". A comment stands for
    /// what no line of the shell does.
    std::vector<std::string> lines;
};

/// What an edit changed when it was done, undone or redone: each thing once, as it is afterwards.
struct Change {
    enum class Kind {
        Done,
        /// More was done, as a part of the last edit, which has the name now: see
        /// History::Repeating.
        GoneOn,
        Undone,
        Redone,
        /// The document was changed past its history, which is empty now; nothing is named.
        Outside,
    };

    Kind kind = Kind::Done;
    EditName name;
    std::vector<NodePtr> added;
    std::vector<NodePtr> removed;
    /// In the network before and after: with another name, place, definition, port, value or
    /// connection.
    std::vector<NodePtr> changed;
    std::vector<CompoundPtr> compounds; ///< Where any of this shows; also those that are gone.
};

/// Makes a Change of steps.
class ChangeCollector {
public:
    explicit ChangeCollector(Change& change) : m_change(change) {}

    void addNode(const CompoundPtr& compound, const NodePtr& node, bool isAdded);
    void changeNode(const NodePtr& node);
    /// The port's node, around it and, for that of a compound, inside.
    void changePort(ZEL::Port& port);
    /// Something in the node's compound that no node in it has.
    void changeInside(const NodePtr& owner) { show(owner->getAsCompound()); }
    /// Where the end of a connection shows.
    void changeEnd(ZEL::Port& port);
    /// Called last.
    void finish();

private:
    void touch(const NodePtr& node);
    void show(const CompoundPtr& compound);

    Change& m_change;
    std::vector<NodePtr> m_nodes;                    ///< In the order in which they came.
    std::unordered_map<ZEL::Node*, int> m_additions; ///< Less the removals.
    std::unordered_set<ZEL::Compound*> m_shown;
};

} // namespace shading
