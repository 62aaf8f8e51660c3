#pragma once

#include "base/pointerMap.h"
#include "zel.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace shading {

struct Piece;
class Progress;

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

    /// What the document called the port; empty for one that it does not mention.
    std::string nameOf(const ZEL::Port& port) const;

    /// Notes the source of a port that receives: the network does not show it.
    void setHiddenSource(const ZEL::AddRefWrapper<ZEL::Port>& port, const std::string& name);
    /// As it was noted; empty without one.
    std::string hiddenSourceOf(const ZEL::Port& port) const;

    void setConnected(const Piece& element);
    /// False for a reference that named nothing when the document was opened.
    bool wasConnected(const Piece& element) const;

    /// Lets go of the ports one by one. Nothing is known of any port then.
    void release(Progress& progress);

private:
    std::vector<ZEL::AddRefWrapper<ZEL::Port>> m_held;
    PointerMap<ZEL::Port, const Piece*> m_elements; ///< Not owned.
    std::unordered_map<const ZEL::Port*, std::string> m_impliedNames;
    std::unordered_map<const ZEL::Port*, std::string> m_hiddenSources;
    std::vector<bool> m_connected; ///< By the numbers of the pieces; false behind its end.
};

} // namespace shading
