#pragma once

#include "zel.h"

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace shading {

struct Piece;

/// Which elements of a document its ports were made from, and which of them found a source when it
/// was opened. A compound's port stands for its inner port too.
///
/// Contract: holds every port that it knows, so that one which an edit deleted is known again when
/// undo brings it back, and its address means no other port.
class Origins {
public:
    void setPort(const ZEL::AddRefWrapper<ZEL::Port>& port, const Piece* element);
    /// Null for a port that has no element: it was made, or a definition or a reference gave it.
    const Piece* elementOf(const ZEL::Port& port) const;

    /// Notes an input of a compound that a reference made: the document does not declare it.
    void setImplied(const ZEL::AddRefWrapper<ZEL::Port>& port);
    /// False for a port with an element, for one that an edit made and for one with another name.
    bool isImplied(const ZEL::Port& port) const;
    /// What the references called it that made it; empty for any other port.
    std::string impliedNameOf(const ZEL::Port& port) const;

    void setConnected(const Piece* element) { m_connected.insert(element); }
    /// False for a reference that named nothing when the document was opened.
    bool wasConnected(const Piece* element) const { return m_connected.count(element) > 0; }

private:
    struct Origin {
        ZEL::AddRefWrapper<ZEL::Port> port;
        const Piece* element;    ///< Not owned. Null: the port is implied.
        std::string impliedName; ///< Empty for a port with an element.
    };

    std::unordered_map<const ZEL::Port*, Origin> m_ports;
    std::unordered_set<const Piece*> m_connected;
};

} // namespace shading
