#pragma once

#include "document/pointers.h"
#include "format/piece.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace shading {

class Document;

/// A frame around nodes of one compound, drawn and nothing else: the network does not show it. It
/// stays one object over undo and redo.
///
/// Where it is drawn and what it says are attributes of its element, `xpos`, `ypos`, `width`,
/// `height` and `doc`, in the host's Attributes. Nodes follow what becomes of them: one that was
/// collapsed stands for the graph that was made around it, one that left is not among them.
class Backdrop {
public:
    /// What steps change. The backdrop is in the document while it has an owner.
    struct State {
        NodePtr owner;              ///< The node of the compound that it is in.
        std::string name;           ///< May be empty where the document says none.
        std::vector<NodePtr> nodes; ///< As they were named or given.

        bool operator==(const State& other) const
        {
            return owner == other.owner && name == other.name && nodes == other.nodes;
        }
    };

    /// Read from the element, which must outlive it.
    explicit Backdrop(const Piece& read) : m_read(&read) {}
    /// A new one.
    Backdrop() { m_made.text = "backdrop"; }
    Backdrop(const Backdrop&) = delete;
    Backdrop& operator=(const Backdrop&) = delete;

    const State& state() const { return m_state; }
    const std::string& name() const { return m_state.name; }
    /// Empty: it is not in the document.
    const NodePtr& owner() const { return m_state.owner; }
    /// Those in its compound now, each once.
    std::vector<NodePtr> nodes() const;
    /// The node in its compound that the given one stands for now; empty when there is none.
    NodePtr standingFor(const NodePtr& given) const;
    /// Its attributes are those of this element. One that was made says nothing itself.
    const Piece& element() const { return m_read ? *m_read : m_made; }
    /// Null for one that was made.
    const Piece* readElement() const { return m_read; }
    /// The nodes that the element names, by those names.
    const std::unordered_map<std::string, NodePtr>& readNodes() const { return m_readNodes; }

private:
    friend class Backdrops;

    const Piece* m_read = nullptr; ///< Not owned.
    Piece m_made;                  ///< Bears the attributes of one that was made.
    State m_state;
    std::unordered_map<std::string, NodePtr> m_readNodes;
};

using BackdropPtr = std::shared_ptr<Backdrop>;

/// The backdrops of a document: those directly inside it and inside its graphs.
class Backdrops {
public:
    /// Must outlive it.
    explicit Backdrops(Document& document) : m_document(document) {}

    /// Finds those of the document as it was read, once, when its network is there.
    void read();
    /// Forgets all, before the document is taken apart.
    void clear();

    /// In the order in which they were read and made.
    std::vector<BackdropPtr> in(ZEL::Compound& compound) const;
    /// The first one of that name; null without one, and for no name.
    BackdropPtr named(ZEL::Compound& compound, const std::string& name) const;
    /// The one that has the element; null for any other element.
    BackdropPtr of(const Piece& element) const;
    /// Also those that are not in the document now.
    const std::vector<BackdropPtr>& all() const { return m_all; }

    /// A new one, in no compound yet.
    BackdropPtr add();
    /// A step of the edit that runs.
    void set(const BackdropPtr& backdrop, const Backdrop::State& state);

private:
    void readGraph(const Piece& graph, std::unordered_map<const Piece*, NodePtr>& owners);

    Document& m_document;
    std::vector<BackdropPtr> m_all;
    std::unordered_map<const Piece*, BackdropPtr> m_byElement;
};

} // namespace shading
