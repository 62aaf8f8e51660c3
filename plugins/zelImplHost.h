#pragma once

#include "zelPlugin.h"

#include <map>
#include <string>
#include <vector>

namespace ZEL {

/// The record that the registry keeps of one plugin.
class ImplPluginInfo : public PluginInfo {
public:
    void setUserName(const char* name) override;
    const char* getUserName() const override;

    std::string userName;
    void (*registerFunction)(PluginRegistrar&, PluginInfo&) = nullptr;
    void (*unregisterFunction)(const PluginInfo&) = nullptr; ///< Null: nothing to call.
};

/// The registry of the process. Its end calls no plugin and deletes no runtime.
class ImplHost {
public:
    void registerPlugin(void (*registerFunction)(PluginRegistrar&, PluginInfo&),
                        void (*unregisterFunction)(const PluginInfo&));
    StatusStr registerRuntime(const PluginInfo& info, Runtime* runtime);
    StatusStr initialize(const char* text);
    void terminate();
    int getNumberOfRuntimes();
    Runtime* getRuntimeAt(int index);
    Runtime* getRuntimeByName(const char* name);

private:
    std::string m_initString;                   ///< The text of the last initialize.
    std::vector<ImplPluginInfo> m_plugins;      ///< In the order of registration.
    std::map<std::string, Runtime*> m_runtimes; ///< By the name at registration; not owned.
};

/// The one registry. Made when the library is loaded, before any module that links it runs a static
/// initialiser; as a part of a program, before the program's own initialisers, or by the first of
/// them that asks for it.
ImplHost& registry();

} // namespace ZEL
