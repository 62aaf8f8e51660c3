#include "definitions/pluginModule.h"

#include "base/programPath.h"

#include <dlfcn.h>
#include <filesystem>

namespace shading {

namespace {

const char* const kRuntimeName = "Shading";

} // namespace

PluginModule::~PluginModule()
{
    if (!m_module)
        return;
    // Terminate calls the plugin's unregistration function, and that deletes the runtime, whose
    // class is the plugin's: both are code of the module. Unloaded before, or before the last thing
    // that came from it is gone, that code is called at an address where nothing is any more.
    m_host.terminate();
    dlclose(m_module);
}

bool PluginModule::load(const std::string& path, std::string& problem)
{
    // A name without a "/" would be searched for in the system's folders.
    std::error_code ignored;
    const std::string file = std::filesystem::absolute(path, ignored).string();
    if (!std::filesystem::is_regular_file(file, ignored)) {
        problem = "no such file";
        return false;
    }
    const int before = m_host.getNumberOfRuntimes();
    // Now: a module that needs what is not there fails here, not in the middle of a session. Local:
    // its names serve no one else.
    m_module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!m_module) {
        problem = std::string("cannot be loaded: ") + dlerror();
        return false;
    }
    // The plugin registered itself while it was loaded.
    m_host.initialize("zelsh");
    m_runtime = m_host.getRuntimeByName(kRuntimeName);
    if (m_runtime)
        return true;
    if (m_host.getNumberOfRuntimes() == before)
        problem = "no plugin: it registers no runtime";
    else
        problem = std::string("registers no runtime \"") + kRuntimeName + "\"";
    return false;
}

std::string defaultPluginPath()
{
    std::error_code ignored;
    const std::filesystem::path folder = programPath().parent_path();
    const char* const file = "shadingPlugin.so";
    const std::filesystem::path installed = folder.parent_path() / "libexec/zeledit" / file;
    const bool isInstalled = !std::filesystem::exists(folder / file, ignored) &&
                             std::filesystem::exists(installed, ignored);
    return (isInstalled ? installed : folder / file).string();
}

} // namespace shading
