// The module: loaded at run time, everything hidden but its one function.

#include "border.h"

using ZEL::AddRefWrapper;

namespace {

class Extra {
public:
    virtual ~Extra() = default;
    long room[3] = {};
};

class OwnNode : public Extra, public ZEL::Node {
public:
    OwnNode() : Node(nullptr) {}
};

class OwnCompound : public ZEL::Compound {
public:
    using Compound::Compound;
    const char* getSpecializedCompoundTypeName() override { return "Own"; }
};

const char* classOf(ZEL::Node* node)
{
    if (dynamic_cast<ToneNode*>(node))
        return "Tone";
    if (dynamic_cast<PlainNode*>(node))
        return "Plain";
    return dynamic_cast<OwnNode*>(node) ? "Own" : "Node";
}

ZEL::Runtime* g_runtime = nullptr;

struct Registration {
    Registration()
    {
        ZEL::selfRegisterPlugin(
            [](ZEL::PluginRegistrar& registrar, ZEL::PluginInfo& info) {
                g_runtime = new ZEL::Runtime;
                g_runtime->setName(kModuleRuntime);
                registrar.registerRuntime(info, g_runtime);
            },
            [](const ZEL::PluginInfo& /*info*/) {
                delete g_runtime;
                g_runtime = nullptr;
            });
    }
} g_registration;

template <class Class>
AddRefWrapper<ZEL::Node> create()
{
    return new Class(nullptr);
}

} // namespace

extern "C" ZEL_TEST_EXPORT Module borderModule()
{
    return {create<ToneNode>,
            create<PlainNode>,
            []() -> AddRefWrapper<ZEL::Node> { return new OwnNode; },
            [](const AddRefWrapper<ZEL::Node>& owner) -> AddRefWrapper<ZEL::Compound> {
                return new OwnCompound(owner);
            },
            classOf,
            [](ZEL::PortNotification* listener) {
                return dynamic_cast<ZEL::Compound*>(listener) != nullptr;
            },
            &typeid(ZEL::Node),
            &typeid(ZEL::Compound),
            &typeid(ZEL::Port),
            &typeid(ToneNode)};
}
