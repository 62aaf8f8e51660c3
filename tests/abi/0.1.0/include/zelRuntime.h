#pragma once

#include "zelCore.h"

namespace ZEL {

class Container;
class NodeLibrary;
class PortDataType;

/// What a plugin contributes: the port data types of one kind of network, the root of its node
/// library, and the containers that use it. Not counted: the plugin that makes a runtime owns it,
/// and deletes it in its unregistration function, when no container uses it any more. Its name is
/// the one under which the host files it; it is set before the registration.
class ZEL_API Runtime : public Namable {
public:
    Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    // Virtual operations: the order is binary contract.
    /// Releases the data types in order and the node library. The containers are not told.
    ~Runtime() override;
    /// Holds the library and releases the one before; an empty wrapper clears it.
    virtual void setNodeLibrary(AddRefWrapper<NodeLibrary>& library);
    /// Empty when none was set.
    virtual AddRefWrapper<NodeLibrary> getNodeLibrary();
    /// NodeLibrary::findLibrary of what the virtual getNodeLibrary answers; empty when that is
    /// empty. A null path counts as empty.
    virtual AddRefWrapper<NodeLibrary> findLibrary(const char* path);
    /// Data types are never removed; indexes count from 0 in the order of creation.
    virtual int getNumberOfPortDataTypes();
    /// Empty when index is not below the virtual getNumberOfPortDataTypes, or negative.
    virtual AddRefWrapper<PortDataType> getPortDataType(int index);
    /// The first data type of that name, where null counts as empty; empty when there is none.
    virtual AddRefWrapper<PortDataType> getPortDataType(const char* name);
    /// What the virtual getPortDataType finds under the name; otherwise a new data type, appended.
    virtual AddRefWrapper<PortDataType> createPortDataType(const char* name);

    // The containers that use this runtime; none is owned. A container unregisters before it dies,
    // and neither registers nor unregisters while it is being rebuilt.
    /// Nothing happens when the container is registered.
    void registerContainer(Container* container);
    /// Nothing happens when the container is not registered.
    void unregisterContainer(Container* container);
    /// Calls rebuildCompounds on every registered container, in ascending order of their addresses.
    /// One that is unregistered meanwhile is passed over; one that is registered is reached when
    /// its address is higher.
    void forceRebuildCompounds();

private:
    struct Impl;
    Impl* m_impl; ///< Owned, never null.
};

} // namespace ZEL
