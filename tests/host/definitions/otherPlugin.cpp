#include "zel.h"

// A plugin with a runtime for another kind of network.
namespace {

ZEL::Runtime* g_runtime = nullptr;

struct Registration {
    Registration()
    {
        ZEL::selfRegisterPlugin(
            [](ZEL::PluginRegistrar& registrar, ZEL::PluginInfo& info) {
                g_runtime = new ZEL::Runtime;
                g_runtime->setName("Other");
                registrar.registerRuntime(info, g_runtime);
            },
            [](const ZEL::PluginInfo& /*info*/) { delete g_runtime; });
    }
};
Registration g_registration;

} // namespace
