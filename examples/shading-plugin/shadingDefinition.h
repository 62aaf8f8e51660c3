#pragma once

#include "zelNodeLibrary.h"

#include <functional>
#include <string>
#include <vector>

#define SHADING_API __attribute__((visibility("default")))

namespace shading {

/// How an editor may show an input, as the attributes of the format say it. Limits and steps are
/// values of the input's type: "0, 0, 0" for a colour. Empty is what nothing is said of.
struct PortHints {
    std::string label;               ///< `uiname`: for people, instead of the name.
    std::string help;                ///< `doc`.
    std::string folder;              ///< `uifolder`: "Base/Sheen".
    bool isAdvanced = false;         ///< `uiadvanced`.
    std::string min;                 ///< `uimin`: no value is below.
    std::string max;                 ///< `uimax`.
    std::string softMin;             ///< `uisoftmin`: a slider begins here; a value may be below.
    std::string softMax;             ///< `uisoftmax`.
    std::string step;                ///< `uistep`: of one click.
    std::string unit;                ///< `unit`: that of the default value, "degree".
    std::string unitType;            ///< `unittype`: what units there are, "angle".
    std::vector<std::string> labels; ///< `enum`: the choices, for people.
    std::vector<std::string> values; ///< `enumvalues`: those of the labels. As many of both.
};

/// Asks for each attribute that PortHints has and puts together what they say. Of a choice without
/// values the labels are the values.
SHADING_API PortHints readHints(const std::function<std::string(const char* attribute)>& attribute);

/// One input or output of a node type.
struct PortDescription {
    std::string name;
    std::string type;     ///< The name of a port data type.
    std::string value;    ///< The default of an input. Empty: none.
    PortHints hints = {}; ///< May be left out: an input can be edited without.
};

/// The same for nodes; hints do not count.
SHADING_API bool operator==(const PortDescription& a, const PortDescription& b);

/// One `nodedef` of the format: what nodes of a type have, for one combination of port types.
struct DefinitionRecord {
    std::string name;              ///< "ND_add_float": its own among all definitions.
    std::string version;           ///< Empty: the definition has no versions.
    bool isDefaultVersion = false; ///< The one meant by a node that asks for no version.
    std::vector<PortDescription> inputs;
    std::vector<PortDescription> outputs; ///< At least one.
};

/// A node definition that says which ports its nodes have. Its name is that of the node type
/// ("add"), which several definitions share.
///
/// Plugins make them and the host reads them, so the class has a shared library of its own that
/// both link. That gives it one virtual table and one type in the process: dynamic_cast finds it on
/// either side of the border, and its code stays when a plugin is unloaded.
class SHADING_API Definition : public ZEL::NodeDefinition {
public:
    /// A new definition, held by the wrapper.
    static ZEL::AddRefWrapper<Definition> createNew(const char* nodeType, DefinitionRecord record);
    /// The definition as one of this class; empty when it is of another, or empty.
    static ZEL::AddRefWrapper<Definition>
    from(const ZEL::AddRefWrapper<ZEL::NodeDefinition>& definition);
    ~Definition() override;

    /// Lives as long as the definition, and does not change.
    const DefinitionRecord& record() const { return m_record; }

private:
    Definition(const char* nodeType, DefinitionRecord record);

    DefinitionRecord m_record;
};

/// Where definitions of that group belong: the sub-library of that name, made when the root has
/// none.
SHADING_API ZEL::AddRefWrapper<ZEL::NodeLibrary> groupLibrary(ZEL::NodeLibrary& root,
                                                              const std::string& group);

} // namespace shading
