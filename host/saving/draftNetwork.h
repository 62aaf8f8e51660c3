#pragma once

#include "base/pointerMap.h"
#include "base/progress.h"
#include "document/names.h"
#include "format/draft.h"
#include "zel.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace shading {

struct AttributeOwner;
class Document;

/// What cannot be saved, and why.
struct SaveProblem {
    std::string path;
    std::string reason;
    int systemError = 0; ///< The errno of a file that cannot be written; 0: it is not that.
};

/// A draft of a document's text, and what its elements are to the network as it is now. The
/// network and the document's XML are only looked at. Private to the host's library.
class DraftNetwork {
public:
    /// Both must outlive it, and the document's network must not change meanwhile.
    DraftNetwork(Document& document, Progress& progress);
    DraftNetwork(const DraftNetwork&) = delete;
    DraftNetwork& operator=(const DraftNetwork&) = delete;
    ~DraftNetwork();

    Document& document() { return m_document; }
    Draft& draft() { return *m_draft; }
    /// For each node or element that is worked on, a step.
    Progress& progress() { return m_progress; }

    /// Notes that the element stands for the node, or for the port (the compound node's own one).
    void claim(Piece& item, ZEL::Node& node);
    void claim(Piece& item, ZEL::Port& port);
    /// Notes that the element stands for that one, which is none of the document.
    void claim(Piece& item, const Piece& made) { m_madeItems[&made] = &item; }
    /// That element; null when there is none.
    Piece* itemOf(const Piece& made) const;
    /// The port is an input with a source: then its value is not written, for an input has one
    /// binding. It counts again when the source goes.
    bool isFed(ZEL::Port& port) const;
    /// The port's element goes, and nothing stands for the port any more.
    void remove(ZEL::Port& port);
    /// Null when there is none.
    Piece* itemOf(const ZEL::Node& node) const;
    Piece* itemOf(const ZEL::Port& port) const;
    ZEL::Node* nodeOf(const Piece* item) const;
    ZEL::Port* portOf(const Piece* item) const;
    /// The element that was read for the node or port and is meant to stay; null when it has none.
    Piece* readItemOf(const ZEL::Node& node);
    Piece* readItemOf(const ZEL::Port& port);

    /// Gives a port of the node an element of its own, in the order of its list; likewise the
    /// inputs of a compound before it. Those of a graph that implements a `nodedef` get it there.
    /// False when that is elsewhere.
    bool declare(ZEL::Node& node, ZEL::Port& port);
    /// Writes the attributes that edits changed, and gives ports elements for them. Adds a problem
    /// for each that names a node which is gone. Called when all other names are written.
    void writeAttributes(std::vector<SaveProblem>& problems);

private:
    std::pair<ZEL::Node*, ZEL::Port*>& claimOf(const Piece& item);
    Piece* itemOf(const AttributeOwner& owner);
    bool sees(const Piece& item, ZEL::Node& node) const;

    Document& m_document;
    Progress& m_progress;
    std::optional<Draft> m_draft; ///< Never empty.
    PointerMap<ZEL::Node, Piece*> m_nodeItems;
    PointerMap<ZEL::Port, Piece*> m_portItems;
    std::unordered_map<const Piece*, Piece*> m_madeItems;
    std::vector<std::pair<ZEL::Node*, ZEL::Port*>> m_claims; ///< By the numbers of the pieces.
};

/// The element says no more than that there is such an input.
bool isBare(const Piece& item);
/// The last piece before the item that is no white space; null when there is none.
Piece* pieceBefore(const Piece& item);
/// The last piece inside that is no white space; null when there is none.
Piece* lastPiece(const Piece& parent);

} // namespace shading
