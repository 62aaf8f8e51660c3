#pragma once

#include "definitions/pluginModule.h"
#include "reading/definitionReader.h"

namespace shading {

/// What documents are opened with: the runtime of the plugin, or without one a runtime of the
/// host's own, and the libraries read into it. One for the life of the process, as the plugin is;
/// sessions share it, and it goes last.
class Environment {
public:
    /// Loads the plugin. The problem is why there is none; empty when it is loaded.
    Environment(const std::string& pluginPath, std::string& problem)
    {
        m_plugin.load(pluginPath, problem);
    }

    /// Reads more data types and definitions, for the documents that are opened from now on. False,
    /// with an error, when the file cannot be read.
    bool addLibrary(const std::string& path, std::vector<Message>& messages)
    {
        return readDefinitions(path, runtime(), messages);
    }

    ZEL::Runtime& runtime() { return m_plugin.runtime() ? *m_plugin.runtime() : m_ownRuntime; }

private:
    // Destroyed in reverse order: the plugin is the last.
    PluginModule m_plugin;
    ZEL::Runtime m_ownRuntime;
};

} // namespace shading
