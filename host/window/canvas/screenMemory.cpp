#include "window/canvas/screenMemory.h"

namespace shading {

QPointF pointOf(const Position& position)
{
    return {position.x * kPositionWidth, position.y * kPositionHeight};
}

Position positionAt(const QPointF& point)
{
    return {point.x() / kPositionWidth, point.y() / kPositionHeight};
}

std::optional<QPointF> ScreenMemory::place(const NodePtr& node,
                                           const std::optional<Position>& position) const
{
    const auto found = m_nodes.find(node.get());
    if (found == m_nodes.end() || !found->second.place)
        return std::nullopt;
    const std::optional<Position>& instead = found->second.instead;
    const bool holds = position && instead ? position->x == instead->x && position->y == instead->y
                                           : !position && !instead;
    return holds ? found->second.place : std::nullopt;
}

void ScreenMemory::setPlace(const NodePtr& node,
                            const QPointF& place,
                            const std::optional<Position>& instead)
{
    OfNode& entry = m_nodes[node.get()];
    entry.node = node;
    entry.place = place;
    entry.instead = instead;
}

Fold ScreenMemory::fold(const NodePtr& node) const
{
    const auto found = m_nodes.find(node.get());
    return found == m_nodes.end() ? Fold::Brief : found->second.fold;
}

void ScreenMemory::setFold(const NodePtr& node, Fold fold)
{
    OfNode& entry = m_nodes[node.get()];
    entry.node = node;
    entry.fold = fold;
}

std::optional<double> ScreenMemory::barTop(const CompoundPtr& compound, bool isInput) const
{
    const auto found = m_compounds.find(compound.get());
    return found == m_compounds.end() ? std::nullopt : found->second.barTops[isInput ? 0 : 1];
}

void ScreenMemory::setBarTop(const CompoundPtr& compound, bool isInput, double top)
{
    OfCompound& entry = m_compounds[compound.get()];
    entry.compound = compound;
    entry.barTops[isInput ? 0 : 1] = top;
}

std::optional<ScreenMemory::View> ScreenMemory::view(const CompoundPtr& compound) const
{
    const auto found = m_compounds.find(compound.get());
    return found == m_compounds.end() ? std::nullopt : found->second.view;
}

void ScreenMemory::setView(const CompoundPtr& compound, const View& view)
{
    OfCompound& entry = m_compounds[compound.get()];
    entry.compound = compound;
    entry.view = view;
}

void ScreenMemory::clear()
{
    m_nodes.clear();
    m_compounds.clear();
}

} // namespace shading
