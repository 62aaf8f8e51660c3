#include "format/nodeDefs.h"

#include <algorithm>
#include <utility>

namespace shading {

NodeDefs::NodeDefs(const Piece& document)
{
    std::unordered_map<std::string, const Piece*> graphs;
    std::vector<std::pair<const Piece*, const Piece*>> ties; // Graphs that tie themselves.
    std::vector<const Piece*> implementations;
    for (const Piece& element : ElementsIn(document)) {
        if (element.text == "nodedef") {
            m_elements.emplace(attributeOf(element, "name"), &element);
        } else if (element.text == "nodegraph") {
            graphs.emplace(attributeOf(element, "name"), &element);
            ties.emplace_back(&element, &element);
        } else if (element.text == "implementation") {
            implementations.push_back(&element);
        }
    }
    for (const Piece* const element : implementations) {
        const auto graph = graphs.find(attributeOf(*element, "nodegraph"));
        if (graph != graphs.end())
            ties.emplace_back(graph->second, element);
    }
    for (const auto& [graph, element] : ties) {
        const std::string name = attributeOf(*element, "nodedef");
        if (!name.empty())
            m_ties.emplace(graph, Tie{name, named(name), element});
    }
}

const Piece* NodeDefs::named(const std::string& name) const
{
    const auto found = m_elements.find(name);
    return name.empty() || found == m_elements.end() ? nullptr : found->second;
}

std::vector<const Piece*> NodeDefs::lineOf(const Piece& nodeDef) const
{
    std::vector<const Piece*> line;
    for (const Piece* element = &nodeDef; element;
         element = named(attributeOf(*element, "inherit"))) {
        if (std::find(line.begin(), line.end(), element) != line.end())
            break;
        line.push_back(element);
    }
    std::reverse(line.begin(), line.end());
    return line;
}

const Tie* NodeDefs::tieOf(const Piece& graph) const
{
    const auto found = m_ties.find(&graph);
    return found == m_ties.end() ? nullptr : &found->second;
}

std::vector<const Piece*> NodeDefs::inputsOf(const Tie& tie) const
{
    std::vector<const Piece*> inputs;
    if (!tie.nodeDef)
        return inputs;
    std::unordered_map<std::string, std::size_t> places;
    for (const Piece* const nodeDef : lineOf(*tie.nodeDef)) {
        for (const Piece& child : ElementsIn(*nodeDef)) {
            const std::string name = attributeOf(child, "name");
            if (kindOf(child) != ElementKind::Input || name.empty())
                continue;
            const auto [place, isNew] = places.emplace(name, inputs.size());
            if (isNew)
                inputs.push_back(&child);
            else
                inputs[place->second] = &child;
        }
    }
    return inputs;
}

} // namespace shading
