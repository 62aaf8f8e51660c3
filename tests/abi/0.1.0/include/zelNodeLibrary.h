#pragma once

#include "zelCore.h"

namespace ZEL {

/// One node type that a runtime offers: a name. What a node of the type does is the plugin's
/// business; a plugin derives from it to carry more.
class ZEL_API NodeDefinition : public Namable, public ReferenceCounted {
public:
    /// A new definition, held by the wrapper. A null name leaves it unnamed.
    static AddRefWrapper<NodeDefinition> createNew(const char* name);
    NodeDefinition();
    NodeDefinition(const char* name);
    NodeDefinition(const NodeDefinition&) = delete;
    NodeDefinition& operator=(const NodeDefinition&) = delete;
    ~NodeDefinition() override;

private:
    struct Impl;
    Impl* m_impl; ///< Owned, never null. Room for data of later versions.
};

/// Orders definitions by name, byte for byte, as NodeLibrary::sort does. Neither may be empty.
ZEL_API bool sortFunc(const AddRefWrapper<NodeDefinition>& a,
                      const AddRefWrapper<NodeDefinition>& b);

/// One level of the tree in which a runtime offers its node types: ordered definitions and ordered
/// sub-libraries. It holds one reference for each entry; at its end it releases the sub-libraries
/// in order, then the definitions. Indexes count from 0. Doubles and empty wrappers are taken as
/// they come; findLibrary and sort need every entry to be an object, and the tree to be free of
/// cycles.
class ZEL_API NodeLibrary : public Namable, public ReferenceCounted {
public:
    /// A new empty library, held by the wrapper. A null name leaves it unnamed.
    static AddRefWrapper<NodeLibrary> createNew(const char* name);
    NodeLibrary();
    NodeLibrary(const NodeLibrary&) = delete;
    NodeLibrary& operator=(const NodeLibrary&) = delete;
    ~NodeLibrary() override;

    // Sub-libraries.
    int getNumberOfSubLibraries() const;
    /// Empty when index is out of range.
    AddRefWrapper<NodeLibrary> getSubLibraryAt(int index);
    /// Drops the sub-library; the later ones move down. Nothing happens when index is out of range.
    void removeSubLibraryAt(int index);
    /// Holds the library, behind the others.
    void addSubLibrary(AddRefWrapper<NodeLibrary> library);
    /// This library, when that is its name; else the first sub-library of that name; else the first
    /// that a sub-library finds, asked in order. So a child wins over any grandchild. Empty when
    /// there is none. Contract: the path is one whole name; it is not split. Null counts as empty.
    AddRefWrapper<NodeLibrary> findLibrary(const char* path);

    // Definitions. There is no way to remove one.
    int getNumberOfNodes() const;
    /// Empty when index is out of range.
    AddRefWrapper<NodeDefinition> getNodeAt(int index) const;
    /// Holds the definition, behind the others.
    void addNode(AddRefWrapper<NodeDefinition> definition);
    /// Adds a new definition of that name; a null name leaves it unnamed.
    void addNode(const char* name);
    /// Sorts the definitions of this library with sortFunc; equal names end in any order. Contract:
    /// sub-libraries are neither sorted nor visited; each is sorted by a call of its own.
    void sort();

private:
    struct Impl;
    Impl* m_impl; ///< Owned, never null.
};

} // namespace ZEL
