#include "views/libraryReport.h"

#include "shadingDefinition.h"

#include <algorithm>
#include <set>

namespace shading {

namespace {

std::string portsText(const std::vector<PortDescription>& ports)
{
    std::string result;
    for (const PortDescription& port : ports)
        result += (result.empty() ? "" : ", ") + port.name + " " + port.type;
    return "(" + result + ")";
}

std::string definitionText(const ZEL::AddRefWrapper<ZEL::NodeDefinition>& definition)
{
    const ZEL::AddRefWrapper<Definition> known = Definition::from(definition);
    std::string result = definition->getName();
    if (known) {
        const DefinitionRecord& record = known->record();
        result +=
            " " + record.name + " " + portsText(record.inputs) + " -> " + portsText(record.outputs);
    }
    return result + "\n";
}

void addText(ZEL::NodeLibrary& library,
             bool withDefinitions,
             const std::string& indent,
             std::string& text)
{
    const int count = library.getNumberOfNodes();
    text += indent + library.getName() + " " + std::to_string(count) + "\n";
    std::vector<std::string> lines;
    for (int i = 0; withDefinitions && i < count; ++i)
        lines.push_back(definitionText(library.getNodeAt(i)));
    // The library sorts by node type; the order within one is open.
    std::sort(lines.begin(), lines.end());
    for (const std::string& line : lines)
        text.append(indent).append("  ").append(line);
    for (int i = 0; i < library.getNumberOfSubLibraries(); ++i)
        addText(*library.getSubLibraryAt(i), withDefinitions, indent + "  ", text);
}

} // namespace

std::string typesText(ZEL::Runtime& runtime)
{
    std::string result;
    for (int i = 0; i < runtime.getNumberOfPortDataTypes(); ++i)
        result += std::string(runtime.getPortDataType(i)->getName()) + "\n";
    return result;
}

std::string libraryText(ZEL::NodeLibrary& library, bool withDefinitions)
{
    std::string result;
    addText(library, withDefinitions, "", result);
    return result;
}

std::string runtimesText(ZEL::Host& host, ZEL::Runtime& own)
{
    std::string result;
    std::set<std::string> names = {own.getName()};
    for (int i = 0; i < host.getNumberOfRuntimes(); ++i) {
        const char* const name = host.getRuntimeAt(i)->getName();
        names.insert(name);
        result += "index " + std::to_string(i) + " " + name + "\n";
    }
    for (const std::string& name : names) {
        const ZEL::Runtime* const runtime = host.getRuntimeByName(name.c_str());
        if (runtime)
            result += "name " + name + (runtime == &own ? " in use\n" : "\n");
    }
    return result.empty() ? "no runtimes\n" : result;
}

} // namespace shading
