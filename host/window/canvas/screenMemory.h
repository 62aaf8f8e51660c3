#pragma once

#include "edits/positions.h"
#include "window/canvas/sceneParts.h"

#include <unordered_map>

namespace shading {

/// The place on the screen of a position, and the reverse.
QPointF pointOf(const Position& position);
Position positionAt(const QPointF& point);

/// What the screen remembers of a document and the document does not say: where nodes without a
/// position stand, how far they are folded, and what was seen of each compound. It holds the nodes
/// and compounds, so it goes before the document.
class ScreenMemory {
public:
    struct View {
        double scale = 1;
        QPointF centre;
    };

    /// The place that a node got on the screen; empty when the document places it. One that was
    /// given in the place of an odd position holds as long as the node has that position.
    std::optional<QPointF> place(const NodePtr& node,
                                 const std::optional<Position>& position) const;
    void
    setPlace(const NodePtr& node, const QPointF& place, const std::optional<Position>& instead);

    Fold fold(const NodePtr& node) const;
    void setFold(const NodePtr& node, Fold fold);

    /// How far below the top of the content the bars begin; empty until they were shown.
    std::optional<double> barTop(const CompoundPtr& compound, bool isInput) const;
    void setBarTop(const CompoundPtr& compound, bool isInput, double top);

    /// What was seen last of the compound; empty when it was not shown.
    std::optional<View> view(const CompoundPtr& compound) const;
    void setView(const CompoundPtr& compound, const View& view);

    /// Forgets all: before the document goes, or after it was read anew.
    void clear();

private:
    struct OfNode {
        NodePtr node;
        std::optional<QPointF> place;
        std::optional<Position> instead;
        Fold fold = Fold::Brief;
    };
    struct OfCompound {
        CompoundPtr compound;
        std::optional<double> barTops[2];
        std::optional<View> view;
    };

    std::unordered_map<const ZEL::Node*, OfNode> m_nodes;
    std::unordered_map<const ZEL::Compound*, OfCompound> m_compounds;
};

} // namespace shading
