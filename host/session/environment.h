#pragma once

#include "definitions/pluginModule.h"
#include "reading/definitionReader.h"

#include <memory>

namespace shading {

/// What documents are opened with: the runtime of the plugin, or without one a runtime of the
/// host's own, and the libraries read into it. One for the life of the process, as the plugin is,
/// and others made from it; sessions share it, and it goes last.
class Environment {
public:
    /// Without a plugin.
    Environment() = default;
    /// Loads the plugin. The problem is why there is none; empty when it is loaded.
    Environment(const std::string& pluginPath, std::string& problem)
    {
        m_plugin.load(pluginPath, problem);
    }

    /// With the data types and definitions that the other one has now, in a runtime of its own:
    /// libraries that are read into it are for its documents alone.
    explicit Environment(const std::shared_ptr<Environment>& base);

    /// Reads more data types and definitions, for the documents that are opened from now on. False,
    /// with an error, when the file cannot be read.
    bool addLibrary(const std::string& path, std::vector<Message>& messages)
    {
        return readDefinitions(path, runtime(), messages);
    }

    ZEL::Runtime& runtime() { return m_plugin.runtime() ? *m_plugin.runtime() : m_ownRuntime; }

private:
    // Destroyed in reverse order: the plugin is the last.
    std::shared_ptr<Environment> m_base; ///< Whose definitions these are. Null: nobody's.
    PluginModule m_plugin;
    ZEL::Runtime m_ownRuntime;
};

} // namespace shading
