#pragma once

#include <array>
#include <string_view>

namespace shading {

/// What an element of a document is to the network.
enum class ElementKind {
    Input,
    Output,
    Graph, ///< `nodegraph`: a compound node.
    Node,  ///< A plain node, whose type name is the element's name.
    Other, ///< No part of the network: looks, geometry, definitions, anything with a name space.
};

/// Any child of a document or a graph that the format does not name as something else is a node:
/// node definitions may add any name.
ElementKind kindOf(std::string_view elementName);

/// The format's names of two types that no port carries: a node that has several outputs, and
/// nothing.
extern const char* const kMultiOutput;
extern const char* const kNoType;

/// The output that a node with a type has, and that a reference without `output` means.
extern const char* const kDefaultOutput;

/// The attributes by which an element names its source.
constexpr std::array<const char*, 4> kReferences = {"nodename", "nodegraph", "interfacename",
                                                    "output"};

} // namespace shading
