#include "shadingDefinition.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace shading {

namespace {

/// The parts between commas, without the blanks around them.
std::vector<std::string> partsOf(const std::string& text)
{
    static const char* const blanks = " \t\r\n";
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, ',');) {
        const std::size_t begin = std::min(part.find_first_not_of(blanks), part.size());
        parts.push_back(part.substr(begin, part.find_last_not_of(blanks) + 1 - begin));
    }
    return parts;
}

/// Of several numbers each, the values of choices stand in one row.
void pairUp(PortHints& hints)
{
    if (hints.values.empty())
        hints.values = hints.labels;
    const std::size_t count = hints.labels.size();
    if (count == 0 || hints.values.size() % count != 0) {
        hints.labels.clear();
        hints.values.clear();
        return;
    }
    const std::size_t size = hints.values.size() / count;
    std::vector<std::string> values(count);
    for (std::size_t i = 0; i < hints.values.size(); ++i)
        values[i / size].append(i % size == 0 ? "" : ", ").append(hints.values[i]);
    hints.values = std::move(values);
}

} // namespace

PortHints readHints(const std::function<std::string(const char* attribute)>& attribute)
{
    PortHints hints;
    hints.label = attribute("uiname");
    hints.help = attribute("doc");
    hints.folder = attribute("uifolder");
    hints.isAdvanced = attribute("uiadvanced") == "true";
    hints.min = attribute("uimin");
    hints.max = attribute("uimax");
    hints.softMin = attribute("uisoftmin");
    hints.softMax = attribute("uisoftmax");
    hints.step = attribute("uistep");
    hints.unit = attribute("unit");
    hints.unitType = attribute("unittype");
    hints.labels = partsOf(attribute("enum"));
    hints.values = partsOf(attribute("enumvalues"));
    pairUp(hints);
    return hints;
}

bool operator==(const PortDescription& a, const PortDescription& b)
{
    return a.name == b.name && a.type == b.type && a.value == b.value;
}

ZEL::AddRefWrapper<Definition> Definition::createNew(const char* nodeType, DefinitionRecord record)
{
    return new Definition(nodeType, std::move(record));
}

ZEL::AddRefWrapper<Definition>
Definition::from(const ZEL::AddRefWrapper<ZEL::NodeDefinition>& definition)
{
    return dynamic_cast<Definition*>(definition.get());
}

Definition::Definition(const char* nodeType, DefinitionRecord record)
    : ZEL::NodeDefinition(nodeType),
      m_record(std::move(record))
{
}

Definition::~Definition() = default;

ZEL::AddRefWrapper<ZEL::NodeLibrary> groupLibrary(ZEL::NodeLibrary& root, const std::string& group)
{
    // Not by findLibrary: that looks further down, and at the root itself.
    for (int i = 0; i < root.getNumberOfSubLibraries(); ++i) {
        ZEL::AddRefWrapper<ZEL::NodeLibrary> library = root.getSubLibraryAt(i);
        if (group == library->getName())
            return library;
    }
    ZEL::AddRefWrapper<ZEL::NodeLibrary> library = ZEL::NodeLibrary::createNew(group.c_str());
    root.addSubLibrary(library);
    return library;
}

} // namespace shading
