#include "format/nodeDefs.h"

#include <algorithm>

namespace shading {

NodeDefs::NodeDefs(const Piece& document)
{
    for (const Piece& element : ElementsIn(document)) {
        if (element.text == "nodedef")
            m_elements.emplace(attributeOf(element, "name"), &element);
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

} // namespace shading
