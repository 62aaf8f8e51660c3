#include "zelPlugin.h"

#include "zelImplHost.h"

namespace ZEL {

PluginInfo::~PluginInfo() = default;

PluginRegistrar::~PluginRegistrar() = default;

StatusStr PluginRegistrar::registerRuntime(const PluginInfo& info, Runtime* runtime)
{
    return registry().registerRuntime(info, runtime);
}

Host::Host() = default;

Host::~Host() = default;

StatusStr Host::initialize(const char* text)
{
    return registry().initialize(text);
}

void Host::terminate()
{
    registry().terminate();
}

int Host::getNumberOfRuntimes()
{
    return registry().getNumberOfRuntimes();
}

Runtime* Host::getRuntimeAt(int index)
{
    return registry().getRuntimeAt(index);
}

Runtime* Host::getRuntimeByName(const char* name)
{
    return registry().getRuntimeByName(name);
}

void selfRegisterPlugin(void (*registerFunction)(PluginRegistrar&, PluginInfo&),
                        void (*unregisterFunction)(const PluginInfo&))
{
    registry().registerPlugin(registerFunction, unregisterFunction);
}

} // namespace ZEL
