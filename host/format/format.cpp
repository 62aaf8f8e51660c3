#include "format/format.h"

#include <unordered_set>

namespace shading {

const char* const kMultiOutput = "multioutput";
const char* const kNoType = "none";
const char* const kDefaultOutput = "out";

ElementKind kindOf(std::string_view name)
{
    // The names of versions 1.38 and 1.39, and the older ones that documents still carry.
    static const std::unordered_set<std::string_view> noNodes = {
        "attributedef",   "backdrop",
        "bindinput",      "bindparam",
        "bindtoken",      "collection",
        "collectionadd",  "collectionremove",
        "comment",        "geomattr",
        "geominfo",       "geomprop",
        "geompropdef",    "implementation",
        "look",           "lookgroup",
        "lookinherit",    "material",
        "materialassign", "materialinherit",
        "materialx",      "member",
        "nodedef",        "opgraph",
        "override",       "parameter",
        "property",       "propertyassign",
        "propertyset",    "propertysetassign",
        "shaderref",      "targetdef",
        "token",          "typedef",
        "unit",           "unitdef",
        "unittypedef",    "variant",
        "variantassign",  "variantassignset",
        "variantset",     "visibility",
    };
    if (name == "input")
        return ElementKind::Input;
    if (name == "output")
        return ElementKind::Output;
    if (name == "nodegraph")
        return ElementKind::Graph;
    const bool isNode = name.find(':') == std::string_view::npos && noNodes.count(name) == 0;
    return isNode ? ElementKind::Node : ElementKind::Other;
}

} // namespace shading
