#include "shadingDefinition.h"
#include "shadingTable.h"
#include "zel.h"

#include <map>
#include <sstream>
#include <string_view>
#include <utility>

namespace shading {

namespace {

using Strings = std::vector<std::string>;

/// The data types of the format, in its order.
const char* const kDataTypes[] = {
    "boolean",      "integer",     "float",         "color3",        "color4",
    "vector2",      "vector3",     "vector4",       "matrix33",      "matrix44",
    "string",       "filename",    "geomname",      "surfaceshader", "displacementshader",
    "volumeshader", "lightshader", "material",      "none",          "integerarray",
    "floatarray",   "color3array", "color4array",   "vector2array",  "vector3array",
    "vector4array", "stringarray", "geomnamearray", "BSDF",          "EDF",
    "VDF",
};

/// The value of that type with the number everywhere.
std::string valueOf(const std::string& type, const std::string& number)
{
    static const std::map<std::string, int> sizes = {
        {"float", 1}, {"color3", 3}, {"color4", 4}, {"vector2", 2}, {"vector3", 3}, {"vector4", 4},
    };
    if (type == "boolean")
        return number == "0.0" ? "false" : "true";
    if (type == "integer")
        return number.substr(0, number.find('.'));
    const auto size = sizes.find(type);
    std::string value;
    for (int i = 0; size != sizes.end() && i < size->second; ++i)
        value += (i == 0 ? "" : ", ") + number;
    return value;
}

std::string withType(std::string text, const std::string& type)
{
    for (std::size_t at = 0; (at = text.find("$T", at)) != std::string::npos; at += type.size())
        text.replace(at, 2, type);
    return text;
}

std::vector<PortDescription> portsOf(const char* text, const std::string& type)
{
    std::vector<PortDescription> ports;
    std::istringstream stream(text);
    std::string entry;
    while (std::getline(stream >> std::ws, entry, ';')) {
        std::istringstream words(entry);
        PortDescription port;
        words >> port.name >> port.type;
        std::getline(words >> std::ws, port.value);
        port.type = withType(port.type, type);
        if (port.value[0] == '$')
            port.value = valueOf(type, port.value.substr(1));
        ports.push_back(port);
    }
    return ports;
}

/// The value of the attribute in a text such as "uiname=Gain; uimin=0"; empty when it is not there.
std::string hintIn(const std::string& text, const std::string& attribute)
{
    const std::string start = "; " + attribute + "=";
    const std::size_t found = ("; " + text).find(start);
    if (found == std::string::npos)
        return "";
    const std::size_t begin = found + start.size() - 2; // The text itself has no "; " before it.
    return text.substr(begin, text.find(';', begin) - begin);
}

void addHints(const char* nodeType, std::vector<PortDescription>& inputs)
{
    for (int i = 0; i < kHintsSize; ++i) {
        const HintRow& row = kHints[i];
        if (std::string_view(row.nodeType) != nodeType)
            continue;
        for (PortDescription& input : inputs) {
            if (input.name == row.input && (*row.type == '\0' || input.type == row.type))
                input.hints =
                    readHints([&](const char* attribute) { return hintIn(row.hints, attribute); });
        }
    }
}

void addDefinition(ZEL::NodeLibrary& root, const TableRow& row, const std::string& type)
{
    DefinitionRecord record;
    record.name = withType(row.name, type);
    record.version = row.version;
    record.isDefaultVersion = row.isDefaultVersion;
    record.inputs = portsOf(row.inputs, type);
    addHints(row.nodeType, record.inputs);
    record.outputs = portsOf(row.outputs, type);
    groupLibrary(root, row.group)->addNode(Definition::createNew(row.nodeType, std::move(record)));
}

ZEL::AddRefWrapper<ZEL::NodeLibrary> makeLibrary()
{
    ZEL::AddRefWrapper<ZEL::NodeLibrary> root = ZEL::NodeLibrary::createNew("Shading");
    for (int i = 0; i < kTableSize; ++i) {
        std::istringstream types(kTable[i].types);
        std::string type;
        if (*kTable[i].types == '\0')
            addDefinition(*root, kTable[i], "");
        while (types >> type)
            addDefinition(*root, kTable[i], type);
    }
    // Each by itself: sort does not go down the tree.
    for (int i = 0; i < root->getNumberOfSubLibraries(); ++i)
        root->getSubLibraryAt(i)->sort();
    return root;
}

/// The class is the module's own, and so is its virtual table: whoever calls a runtime after the
/// module is unloaded runs code that is gone.
class ShadingRuntime final : public ZEL::Runtime {
public:
    ShadingRuntime()
    {
        // Named before it is registered: that is when the host reads the name.
        setName("Shading");
        for (const char* const type : kDataTypes)
            createPortDataType(type);
        ZEL::AddRefWrapper<ZEL::NodeLibrary> library = makeLibrary();
        setNodeLibrary(library);
    }
};

/// Owned from the registration to the unregistration. Not a smart pointer: one would delete the
/// runtime again with the module's static objects, when a host that never terminated may use it.
ShadingRuntime* g_runtime = nullptr;

void registerPlugin(ZEL::PluginRegistrar& registrar, ZEL::PluginInfo& info)
{
    info.setUserName("shading nodes");
    g_runtime = new ShadingRuntime;
    registrar.registerRuntime(info, g_runtime);
}

void unregisterPlugin(const ZEL::PluginInfo& /*info*/)
{
    delete g_runtime;
    g_runtime = nullptr;
}

/// Registers when the module is loaded, before dlopen returns.
struct Registration {
    Registration() { ZEL::selfRegisterPlugin(&registerPlugin, &unregisterPlugin); }
};
Registration g_registration;

} // namespace

} // namespace shading
