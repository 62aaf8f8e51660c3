#pragma once

#include "zel.h"

#include <string>

namespace shading {

/// A loaded plugin and the runtime that it offers this host. One for the life of the process: the
/// library's registry remembers the names of runtimes that are gone.
///
/// Whatever comes from the plugin must be gone before this object is: documents that use the
/// runtime, with their nodes, and every data type, library and definition of it. Declare it before
/// them.
class PluginModule {
public:
    PluginModule() = default;
    PluginModule(const PluginModule&) = delete;
    PluginModule& operator=(const PluginModule&) = delete;
    /// Terminates the host, then unloads the module.
    ~PluginModule();

    /// Loads the module, initializes the host and finds the runtime `Shading`. False, with the
    /// problem, when there is no such file, it is no plugin, or it registers no such runtime: the
    /// host does without. Called once.
    bool load(const std::string& path, std::string& problem);
    /// Owned by the plugin, valid as long as this object; null when there is none.
    ZEL::Runtime* runtime() const { return m_runtime; }

private:
    ZEL::Host m_host;
    void* m_module = nullptr; ///< Null: nothing was loaded.
    ZEL::Runtime* m_runtime = nullptr;
};

/// The path of the plugin that lies beside the running program, or, where that was installed, in
/// libexec/zeledit.
std::string defaultPluginPath();

} // namespace shading
