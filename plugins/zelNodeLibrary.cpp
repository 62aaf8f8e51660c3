#include "zelNodeLibrary.h"

#include "core/zelText.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace ZEL {

// NodeDefinition.

struct NodeDefinition::Impl {};

AddRefWrapper<NodeDefinition> NodeDefinition::createNew(const char* name)
{
    return new NodeDefinition(name);
}

NodeDefinition::NodeDefinition() : m_impl(new Impl) {}

NodeDefinition::NodeDefinition(const char* name) : Namable(name), m_impl(new Impl) {}

NodeDefinition::~NodeDefinition()
{
    delete m_impl;
}

bool sortFunc(const AddRefWrapper<NodeDefinition>& a, const AddRefWrapper<NodeDefinition>& b)
{
    return std::strcmp(a->getName(), b->getName()) < 0;
}

// NodeLibrary.

struct NodeLibrary::Impl {
    std::vector<AddRefWrapper<NodeDefinition>> nodes;
    std::vector<AddRefWrapper<NodeLibrary>> subLibraries;
};

namespace {

/// The entry at the index; empty when the index is out of range.
template <class T>
AddRefWrapper<T> entryAt(const std::vector<AddRefWrapper<T>>& entries, int index)
{
    if (index < 0 || index >= static_cast<int>(entries.size()))
        return nullptr;
    return entries[index];
}

/// Empties the entries one after the other, first to last.
template <class T>
void releaseInOrder(std::vector<AddRefWrapper<T>>& entries)
{
    for (AddRefWrapper<T>& entry : entries)
        entry = nullptr;
}

} // namespace

AddRefWrapper<NodeLibrary> NodeLibrary::createNew(const char* name)
{
    AddRefWrapper<NodeLibrary> library(new NodeLibrary);
    if (name)
        library->setName(name);
    return library;
}

NodeLibrary::NodeLibrary() : m_impl(new Impl) {}

NodeLibrary::~NodeLibrary()
{
    releaseInOrder(m_impl->subLibraries);
    releaseInOrder(m_impl->nodes);
    delete m_impl;
}

int NodeLibrary::getNumberOfSubLibraries() const
{
    return static_cast<int>(m_impl->subLibraries.size());
}

AddRefWrapper<NodeLibrary> NodeLibrary::getSubLibraryAt(int index)
{
    return entryAt(m_impl->subLibraries, index);
}

void NodeLibrary::removeSubLibraryAt(int index)
{
    // Held until the list is whole again: the library may die with this reference.
    const AddRefWrapper<NodeLibrary> removed = getSubLibraryAt(index);
    if (index >= 0 && index < getNumberOfSubLibraries())
        m_impl->subLibraries.erase(m_impl->subLibraries.begin() + index);
}

void NodeLibrary::addSubLibrary(AddRefWrapper<NodeLibrary> library)
{
    m_impl->subLibraries.push_back(std::move(library));
}

AddRefWrapper<NodeLibrary> NodeLibrary::findLibrary(const char* path)
{
    path = orEmpty(path);
    if (std::strcmp(path, getName()) == 0)
        return this;
    for (const AddRefWrapper<NodeLibrary>& library : m_impl->subLibraries) {
        if (std::strcmp(path, library->getName()) == 0)
            return library;
    }
    for (const AddRefWrapper<NodeLibrary>& library : m_impl->subLibraries) {
        if (AddRefWrapper<NodeLibrary> found = library->findLibrary(path))
            return found;
    }
    return nullptr;
}

int NodeLibrary::getNumberOfNodes() const
{
    return static_cast<int>(m_impl->nodes.size());
}

AddRefWrapper<NodeDefinition> NodeLibrary::getNodeAt(int index) const
{
    return entryAt(m_impl->nodes, index);
}

void NodeLibrary::addNode(AddRefWrapper<NodeDefinition> definition)
{
    m_impl->nodes.push_back(std::move(definition));
}

void NodeLibrary::addNode(const char* name)
{
    addNode(NodeDefinition::createNew(name));
}

void NodeLibrary::sort()
{
    std::sort(m_impl->nodes.begin(), m_impl->nodes.end(), sortFunc);
}

} // namespace ZEL
