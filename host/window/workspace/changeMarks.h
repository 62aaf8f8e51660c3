#pragma once

#include "document/pointers.h"
#include "zel.h"

#include <QObject>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

namespace shading {

class Document;

/// What changed in one compound since views were told last. The nodes are held: those that were
/// removed are among them and are no longer in the compound.
struct CompoundMarks {
    CompoundPtr compound;
    std::vector<NodePtr> nodes;     ///< Each once: added, removed, changed, or with another wire.
    bool hasOtherNodes = false;     ///< A node was added, removed or renamed.
    bool hasOtherWires = false;     ///< A connection inside was made or taken off.
    bool hasOtherPorts = false;     ///< An inner port was added, removed, renamed or moved.
    bool hasOtherBackdrops = false; ///< The compound's own node changed in what it alone tells.
};

using Marks = std::vector<CompoundMarks>;

/// Hears the library for the views of one document. An editor is told in the middle of things, and
/// as often as there are steps in an edit; so it only marks, and tells once, when the event loop
/// turns: a collapse of a thousand nodes is painted once.
///
/// Registers with the node of every compound, also of those that come later; it is registered as
/// long as they live, and holds none of them but those that are marked.
class ChangeMarks : public QObject, private ZEL::HostEditor {
    Q_OBJECT

public:
    /// The document is not owned and must outlive this.
    explicit ChangeMarks(Document& document, QObject* parent = nullptr);

    /// Tells now what is marked; nothing when nothing is.
    void flush();

Q_SIGNALS:
    /// Views may edit when they are told: that is marked and told at the next turn.
    void flushed(const shading::Marks& marks);

private:
    void zel_onConnectionChange(ZEL::ECnxChangeType type,
                                const ZEL::AddRefWrapper<ZEL::Port>& first,
                                const ZEL::AddRefWrapper<ZEL::Port>& second) override;
    void zel_onCompoundConnectionChange(ZEL::ECnxChangeType type,
                                        const ZEL::AddRefWrapper<ZEL::Port>& first,
                                        const ZEL::AddRefWrapper<ZEL::Port>& second) override;
    void zel_onCompoundPortChange(ZEL::ECompoundPortChangeType type,
                                  const ZEL::AddRefWrapper<ZEL::Port>& port) override;
    void zel_onNodeChange(ZEL::ENodeChangeType type,
                          const ZEL::AddRefWrapper<ZEL::Compound>& compound,
                          const ZEL::AddRefWrapper<ZEL::Node>& node) override;

    void watch(const NodePtr& node);
    CompoundMarks& marksOf(const CompoundPtr& compound);
    void markNode(const CompoundPtr& compound, const NodePtr& node);
    void markWire(const PortPtr& first, const PortPtr& second);

    Marks m_marks;
    std::unordered_map<ZEL::Compound*, std::size_t> m_places; ///< In m_marks.
    std::set<std::pair<ZEL::Compound*, ZEL::Node*>> m_marked; ///< All nodes in m_marks.
    bool m_isDue = false;                                     ///< A flush is on its way.
};

} // namespace shading
