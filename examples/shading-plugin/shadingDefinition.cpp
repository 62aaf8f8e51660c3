#include "shadingDefinition.h"

#include <utility>

namespace shading {

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
