#pragma once

#include "zelCore.h"

namespace ZEL {

class Runtime;

/// What the registry knows of a plugin. The library makes it; valid during the registration and the
/// unregistration function only.
class ZEL_API PluginInfo {
public:
    PluginInfo() = default;

    // Virtual operations: the order is binary contract.
    virtual ~PluginInfo();
    /// Copies the name; a null one counts as empty. It is only handed back to the unregistration
    /// function.
    virtual void setUserName(const char* name) = 0;
    /// Never null; empty when unset. Valid until the name changes.
    virtual const char* getUserName() const = 0;

protected:
    PluginInfo(const PluginInfo&) = default;
    PluginInfo& operator=(const PluginInfo&) = default;
};

/// Through it a plugin registers its runtimes. The one handed to a registration function is valid
/// during that call only.
class ZEL_API PluginRegistrar {
public:
    PluginRegistrar() = default;

    // Virtual operations: the order is binary contract.
    virtual ~PluginRegistrar();
    /// Files the runtime, which stays the plugin's, under the name it has now; renaming it later
    /// moves nothing. Always success: null is ignored. Contract: a runtime of the same name is
    /// replaced without a word. The info is not looked at.
    virtual StatusStr registerRuntime(const PluginInfo& info, Runtime* runtime);

protected:
    PluginRegistrar(const PluginRegistrar&) = default;
    PluginRegistrar& operator=(const PluginRegistrar&) = default;
};

/// The host application's view of the one registry of the process. All hosts show the same
/// registry, which exists from the moment the library is loaded. The runtimes it gives out are not
/// owned by the caller and valid until terminate.
class ZEL_API Host : public PluginRegistrar {
public:
    Host();
    ~Host() override;

    /// Stores a copy of the text; null counts as empty. Always success; nothing else happens.
    StatusStr initialize(const char* text);
    /// Calls the unregistration function of every plugin in the order of registration, then forgets
    /// the plugins. The number of plugins is read again after each call: a plugin registered
    /// meanwhile is unregistered in the same pass. A second call finds no plugins. Contract: the
    /// runtimes stay in the registry, also those that the plugins have deleted: they count, and
    /// lookups return them. A host uses no runtime after terminate.
    void terminate();

    int getNumberOfRuntimes();
    /// Runtimes in ascending order of their names, byte for byte.
    /// Contract: 0 and 1 both give the first, any other index the one at index - 1; so of two or
    /// more runtimes the last is reached by name only. Null when index is negative or not below
    /// getNumberOfRuntimes.
    Runtime* getRuntimeAt(int index);
    /// The runtime filed under exactly that name; null when there is none, and for a null name.
    Runtime* getRuntimeByName(const char* name);
};

/// Registers a plugin, usually from a static initialiser of its module: calls registerFunction at
/// once, and stores the plugin for Host::terminate. A null registerFunction is no plugin: nothing
/// happens. A null unregisterFunction is passed over at the end. When registerFunction throws, the
/// plugin is not stored; the runtimes that it registered before stay. Both functions may register
/// plugins and runtimes. The unregistration function must not call Host::terminate.
ZEL_API void selfRegisterPlugin(void (*registerFunction)(PluginRegistrar&, PluginInfo&),
                                void (*unregisterFunction)(const PluginInfo&));

} // namespace ZEL
