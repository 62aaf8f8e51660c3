#include "document/reservedNames.h"

#include "document/origins.h"
#include "format/piece.h"

namespace shading {

namespace {

std::string titleOf(const Piece& element)
{
    return std::string(element.text) + " \"" + attributeOf(element, "name") + "\"";
}

} // namespace

ReservedNames::ReservedNames(const Piece& documentElement, const Origins& origins)
{
    collect(documentElement, documentElement, origins);
}

void ReservedNames::collect(const Piece& graph,
                            const Piece& documentElement,
                            const Origins& origins)
{
    const auto reserve = [&](const Piece& scope, std::string name, const std::string& holder) {
        if (!name.empty())
            m_holders[&scope].emplace(std::move(name), holder);
    };
    const auto reserveReference = [&](const Piece& element) {
        if (!hasReference(element) || origins.wasConnected(element))
            return;
        const std::string holder = titleOf(element) + " refers to it";
        reserve(graph, attributeOf(element, "nodename"), holder);
        reserve(graph, attributeOf(element, "nodegraph"), holder);
        reserve(documentElement, attributeOf(element, "nodegraph"), holder);
        if (namesOutputOnly(element))
            reserve(documentElement, attributeOf(element, "output"), holder);
    };
    for (const Piece& child : ElementsIn(graph)) {
        const ElementKind kind = kindOf(child);
        if (kind == ElementKind::Other && child.text != "backdrop")
            reserve(graph, attributeOf(child, "name"), titleOf(child) + " has it");
        else if (kind != ElementKind::Other)
            reserveReference(child);
        if (kind == ElementKind::Graph)
            collect(child, documentElement, origins);
        if (kind != ElementKind::Node)
            continue;
        for (const Piece& input : ElementsIn(child))
            reserveReference(input);
    }
}

std::string ReservedNames::holderOf(const Piece& graph, const std::string& name) const
{
    const auto holders = m_holders.find(&graph);
    if (holders == m_holders.end())
        return "";
    const auto holder = holders->second.find(name);
    return holder == holders->second.end() ? "" : holder->second;
}

void ReservedNames::addAll(const Piece& graph, const Piece& other)
{
    const auto holders = m_holders.find(&graph);
    if (holders == m_holders.end())
        return;
    const Holders added = holders->second; // The table may grow.
    m_holders[&other].insert(added.begin(), added.end());
}

} // namespace shading
