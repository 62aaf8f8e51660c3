#include "edits/inheritance.h"

#include "document/attributes.h"
#include "document/document.h"

namespace shading {

std::string inheritedValue(Document& document, const NodePtr& node, const char* name)
{
    for (NodePtr holder = node; holder;) {
        std::string value = document.attributes().get({holder, nullptr}, name);
        if (!value.empty())
            return value;
        const CompoundPtr around = holder->getParentCompound();
        holder = around ? around->getAsNode() : nullptr;
    }
    return "";
}

Inheritance::Inheritance(Document& document, const std::vector<NodePtr>& nodes)
    : m_document(document),
      m_nodes(nodes),
      m_values(nodes.size())
{
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        for (std::size_t k = 0; k < kInherited.size(); ++k)
            m_values[i][k] = inheritedValue(document, nodes[i], kInherited[k]);
    }
}

void Inheritance::keep() const
{
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        for (std::size_t k = 0; k < kInherited.size(); ++k) {
            if (inheritedValue(m_document, m_nodes[i], kInherited[k]) == m_values[i][k])
                continue;
            // Colours outside of any space have one of that name; no prefix has no name.
            const bool isColour = k == 0 && m_values[i][k].empty();
            m_document.attributes().set({m_nodes[i], nullptr}, kInherited[k],
                                        AttributeValue{isColour ? "none" : m_values[i][k], {}});
        }
    }
}

} // namespace shading
