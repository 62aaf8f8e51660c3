#pragma once

#include "shadingDefinition.h"
#include "zel.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace shading {

using DefinitionPtr = ZEL::AddRefWrapper<Definition>;

/// What a node tells about the definition that it means.
struct Signature {
    struct Port {
        std::string name;
        std::string type; ///< Empty: any.
    };

    std::string nodeType;
    std::string type;    ///< Of the output, or `multioutput`. Empty: any.
    std::string version; ///< Empty: the default version.
    std::string nodeDef; ///< The name of a definition. Empty: found by the rest.
    std::vector<Port> inputs;
    std::vector<Port> outputs; ///< Those that are listed or referred to.
};

/// The definitions in the node library of a runtime, as it was when the index was made. Holds them.
class DefinitionIndex {
public:
    DefinitionIndex() = default;
    explicit DefinitionIndex(ZEL::Runtime& runtime);

    /// The definition of that name ("ND_add_float"), the first one where several have it; empty
    /// when there is none.
    DefinitionPtr named(const std::string& name) const;
    /// The definitions of that node type ("add"), ordered by their names.
    const std::vector<DefinitionPtr>& ofNodeType(const std::string& nodeType) const;
    /// The definition that the signature means, as the format finds it: the one it names; else,
    /// among those of its node type whose output has its type and whose inputs and outputs have the
    /// types of its own, the one of the version, that knows most of its ports; of several, the
    /// first by name. Empty when none fits.
    DefinitionPtr matching(const Signature& signature) const;

private:
    void add(ZEL::NodeLibrary& library);

    std::unordered_map<std::string, DefinitionPtr> m_byName;
    std::unordered_map<std::string, std::vector<DefinitionPtr>> m_byNodeType;
};

} // namespace shading
