#pragma once

#include "document/pointers.h"

#include <array>
#include <string>
#include <vector>

namespace shading {

class Document;

/// The attributes that hold for all that is inside the element that has them.
constexpr std::array<const char*, 3> kInherited = {"colorspace", "fileprefix", "geomprefix"};

/// What holds for the node, by itself or from around it; empty: nothing does.
std::string inheritedValue(Document& document, const NodePtr& node, const char* name);

/// Keeps what nodes have from around them while an edit moves them elsewhere.
class Inheritance {
public:
    /// Notes what holds for the nodes now. The document must outlive it.
    Inheritance(Document& document, const std::vector<NodePtr>& nodes);

    /// Gives them attributes of their own where something else holds there. A part of the edit that
    /// runs.
    void keep() const;

private:
    Document& m_document;
    std::vector<NodePtr> m_nodes;
    std::vector<std::array<std::string, kInherited.size()>> m_values; ///< As the nodes.
};

} // namespace shading
