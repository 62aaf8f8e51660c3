#include "format/format.h"

#include <cstring>
#include <unordered_set>

namespace shading {

const char* const kMultiOutput = "multioutput";
const char* const kNoType = "none";
const char* const kDefaultOutput = "out";

ElementKind kindOf(pugi::xml_node element)
{
    return element.type() == pugi::node_element ? kindOf(std::string_view(element.name()))
                                                : ElementKind::Other;
}

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

std::string attributeOf(pugi::xml_node element, const char* name)
{
    return element.attribute(name).value();
}

bool hasReference(pugi::xml_node element)
{
    for (const char* const name : {"nodename", "nodegraph", "interfacename", "output"}) {
        if (*element.attribute(name).value() != '\0')
            return true;
    }
    return false;
}

} // namespace shading
