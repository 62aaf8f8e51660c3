#include "zelPlugin.h"

#include "zelImplHost.h"

namespace ZEL {

PluginInfo::~PluginInfo() = default;

PluginRegistrar::~PluginRegistrar() = default;

StatusStr PluginRegistrar::registerRuntime(const PluginInfo& info, Runtime* runtime)
{
    return g_host.registerRuntime(info, runtime);
}

Host::Host() = default;

Host::~Host() = default;

StatusStr Host::initialize(const char* text)
{
    return g_host.initialize(text);
}

void Host::terminate()
{
    g_host.terminate();
}

int Host::getNumberOfRuntimes()
{
    return g_host.getNumberOfRuntimes();
}

Runtime* Host::getRuntimeAt(int index)
{
    return g_host.getRuntimeAt(index);
}

Runtime* Host::getRuntimeByName(const char* name)
{
    return g_host.getRuntimeByName(name);
}

void selfRegisterPlugin(void (*registerFunction)(PluginRegistrar&, PluginInfo&),
                        void (*unregisterFunction)(const PluginInfo&))
{
    g_host.registerPlugin(registerFunction, unregisterFunction);
}

} // namespace ZEL
