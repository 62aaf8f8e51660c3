// A program that has a plugin in itself. Its registration runs before the static objects of the
// library, were these an accident of the order of linking; and a static object that is older than
// the registration asks the registry at the very end.

#include "zel.h"

#include <cstdio>
#include <cstdlib>

namespace {

ZEL::Runtime* g_runtime = nullptr;
bool g_good = true;

void expect(bool holds, const char* what)
{
    if (!holds)
        std::fprintf(stderr, "built in: wrong: %s\n", what);
    g_good = g_good && holds;
}

/// A document that is a static object: known by its UUID as long as it lives.
class Document : public ZEL::Container {
public:
    Document() { registerWithUUID("static", this); }
    ~Document() override
    {
        expect(getFromUUID("static") == this, "the table of UUIDs outlives static objects");
        registerWithUUID("static", nullptr);
    }
    ZEL::AddRefWrapper<ZEL::Node> getRootNode() override { return nullptr; }
    void rebuildCompounds() override {}
    ZEL::Runtime* getRuntime() override { return g_runtime; }
};

/// A host that terminates the library as late as it can.
struct LateHost {
    ~LateHost()
    {
        ZEL::Host host;
        expect(host.getRuntimeByName("Built in") == g_runtime,
               "the registry outlives static objects");
        host.terminate();
        expect(g_runtime == nullptr, "terminate unregisters the plugin");
        if (!g_good)
            std::_Exit(1);
    }
} g_host;

Document g_document;

struct Registration {
    Registration()
    {
        ZEL::selfRegisterPlugin(
            [](ZEL::PluginRegistrar& registrar, ZEL::PluginInfo& info) {
                g_runtime = new ZEL::Runtime;
                g_runtime->setName("Built in");
                registrar.registerRuntime(info, g_runtime);
            },
            [](const ZEL::PluginInfo& /*info*/) {
                delete g_runtime;
                g_runtime = nullptr;
            });
    }
} g_registration;

} // namespace

int main()
{
    ZEL::Host host;
    host.initialize("");
    expect(g_runtime && host.getRuntimeByName("Built in") == g_runtime,
           "what registered before main is there");
    expect(ZEL::Container::getFromUUID("static") == &g_document, "so is a static document");
    return 0;
}
