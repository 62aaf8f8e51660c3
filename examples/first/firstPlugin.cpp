// A plugin: one runtime, with a data type and two node definitions.

#include <zel.h>

namespace {

ZEL::Runtime* g_runtime = nullptr; // The plugin's own: made and deleted by the functions below.

void registerPlugin(ZEL::PluginRegistrar& registrar, ZEL::PluginInfo& info)
{
    info.setUserName("First plugin");
    g_runtime = new ZEL::Runtime;
    g_runtime->setName("Images"); // The host finds it by this name.
    g_runtime->createPortDataType("image");
    ZEL::AddRefWrapper<ZEL::NodeLibrary> library = ZEL::NodeLibrary::createNew("Images");
    library->addNode("Load");
    library->addNode("Blur");
    library->sort();
    g_runtime->setNodeLibrary(library);
    registrar.registerRuntime(info, g_runtime);
}

void unregisterPlugin(const ZEL::PluginInfo& /*info*/)
{
    delete g_runtime;
    g_runtime = nullptr;
}

struct Registration {
    Registration() { ZEL::selfRegisterPlugin(registerPlugin, unregisterPlugin); }
} g_registration;

} // namespace
