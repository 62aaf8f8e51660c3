#include "zelRuntime.h"

#include "core/zelText.h"
#include "zelContainer.h"
#include "zelNodeLibrary.h"
#include "zelPort.h"

#include <cstring>
#include <set>
#include <vector>

namespace ZEL {

struct Runtime::Impl {
    AddRefWrapper<NodeLibrary> nodeLibrary; ///< Empty: none was set.
    std::set<Container*> containers;        ///< Not owned.
    std::vector<AddRefWrapper<PortDataType>> portDataTypes;
};

Runtime::Runtime() : m_impl(new Impl) {}

Runtime::~Runtime()
{
    for (AddRefWrapper<PortDataType>& type : m_impl->portDataTypes)
        type = nullptr;
    m_impl->containers.clear();
    delete m_impl;
}

void Runtime::setNodeLibrary(AddRefWrapper<NodeLibrary>& library)
{
    m_impl->nodeLibrary = library;
}

AddRefWrapper<NodeLibrary> Runtime::getNodeLibrary()
{
    return m_impl->nodeLibrary;
}

AddRefWrapper<NodeLibrary> Runtime::findLibrary(const char* path)
{
    const AddRefWrapper<NodeLibrary> library = getNodeLibrary();
    return library ? library->findLibrary(path) : nullptr;
}

int Runtime::getNumberOfPortDataTypes()
{
    return static_cast<int>(m_impl->portDataTypes.size());
}

AddRefWrapper<PortDataType> Runtime::getPortDataType(int index)
{
    if (index < 0 || index >= getNumberOfPortDataTypes())
        return nullptr;
    // An override may count types of its own: those are not kept here.
    return index < static_cast<int>(m_impl->portDataTypes.size()) ? m_impl->portDataTypes[index]
                                                                  : nullptr;
}

AddRefWrapper<PortDataType> Runtime::getPortDataType(const char* name)
{
    for (const AddRefWrapper<PortDataType>& type : m_impl->portDataTypes) {
        if (std::strcmp(type->getName(), orEmpty(name)) == 0)
            return type;
    }
    return nullptr;
}

AddRefWrapper<PortDataType> Runtime::createPortDataType(const char* name)
{
    if (AddRefWrapper<PortDataType> type = getPortDataType(name))
        return type;
    AddRefWrapper<PortDataType> type = PortDataType::createNew(name);
    m_impl->portDataTypes.push_back(type);
    return type;
}

void Runtime::registerContainer(Container* container)
{
    m_impl->containers.insert(container);
}

void Runtime::unregisterContainer(Container* container)
{
    m_impl->containers.erase(container);
}

void Runtime::forceRebuildCompounds()
{
    // Looked up again after each call: a rebuild may close another document.
    std::set<Container*>& containers = m_impl->containers;
    for (auto place = containers.begin(); place != containers.end();) {
        Container* const container = *place;
        container->rebuildCompounds();
        place = containers.upper_bound(container);
    }
}

} // namespace ZEL
