#pragma once

#include "document/names.h"
#include "format/draft.h"
#include "zel.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace shading {

class Document;

/// What cannot be saved, and why.
struct SaveProblem {
    std::string path;
    std::string reason;
};

/// A draft of a document's text, and what its elements are to the network as it is now. The
/// network and the document's XML are only looked at. Private to the host's library.
class DraftNetwork {
public:
    /// The document must outlive it, and its network must not change meanwhile.
    explicit DraftNetwork(Document& document);
    DraftNetwork(const DraftNetwork&) = delete;
    DraftNetwork& operator=(const DraftNetwork&) = delete;

    Document& document() { return m_document; }
    Draft& draft() { return m_draft; }
    /// True when the draft has the elements of the document's XML, each at its place.
    bool isWhole() const;

    /// Notes that the element stands for the node, or for the port (the compound node's own one).
    void claim(DraftItem& item, ZEL::Node& node);
    void claim(DraftItem& item, ZEL::Port& port);
    /// Null when there is none.
    DraftItem* itemOf(const ZEL::Node& node) const;
    DraftItem* itemOf(const ZEL::Port& port) const;
    ZEL::Node* nodeOf(const DraftItem* item) const;
    ZEL::Port* portOf(const DraftItem* item) const;
    /// The element that was read for the node or port and is meant to stay; null when it has none.
    DraftItem* readItemOf(const ZEL::Node& node) const;
    DraftItem* readItemOf(const ZEL::Port& port) const;

    /// Brings the elements into that order below the parent; they may come from anywhere or
    /// nowhere. The first one, if it has no place, comes behind that sibling; null: before all.
    /// True when something moved.
    bool arrange(DraftItem& parent, const std::vector<DraftItem*>& items, DraftItem* start);
    /// Gives a port of the node an element of its own, in the order of its list.
    void declare(ZEL::Node& node, ZEL::Port& port);

private:
    std::pair<ZEL::Node*, ZEL::Port*>& claimOf(const DraftItem& item);

    Document& m_document;
    Draft m_draft;
    std::unordered_map<const ZEL::Node*, DraftItem*> m_nodeItems;
    std::unordered_map<const ZEL::Port*, DraftItem*> m_portItems;
    std::vector<std::pair<ZEL::Node*, ZEL::Port*>> m_claims; ///< By the numbers of the pieces.
};

/// The last piece before the item that is no white space; null when there is none.
DraftItem* pieceBefore(const DraftItem& item);
/// The last piece inside that is no white space; null when there is none.
DraftItem* lastPiece(const DraftItem& parent);

} // namespace shading
