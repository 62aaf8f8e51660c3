// A plugin as its author built it against a stored release: a runtime with data types and a library
// of definitions, node classes of its own, registered when it is loaded.

#include "plugin.h"

#include "zel.h"

#include <cstdio>

using ZEL::AddRefWrapper;

namespace {

class Definition : public ZEL::NodeDefinition {
public:
    explicit Definition(const char* name) : NodeDefinition(name) {}
    ~Definition() override { std::printf("definition %s goes\n", getName()); }
};

class ToneType : public ZEL::PortDataType {
public:
    explicit ToneType(const char* name) : PortDataType(name) {}
    bool operator==(const PortDataType& other) const override
    {
        std::printf("type %s against %s\n", getName(), other.getName());
        return getName()[0] == other.getName()[0];
    }
};

class Tones : public ZEL::Runtime {
public:
    Tones()
    {
        Runtime::setName("tones");
        AddRefWrapper<ZEL::NodeLibrary> library = ZEL::NodeLibrary::createNew("all");
        const AddRefWrapper<ZEL::NodeLibrary> basic = ZEL::NodeLibrary::createNew("basic");
        library->addSubLibrary(basic);
        for (const char* name : {"tone", "mix", "add"})
            basic->addNode(new Definition(name));
        library->sort();
        setNodeLibrary(library);
    }
    AddRefWrapper<ZEL::PortDataType> createPortDataType(const char* name) override
    {
        std::printf("runtime makes %s\n", name);
        return Runtime::createPortDataType(name);
    }
    int getNumberOfPortDataTypes() override { return Runtime::getNumberOfPortDataTypes(); }
};

class PluginNode : public ZEL::Node {
public:
    using Node::Node;
    ~PluginNode() override { std::printf("plugin node %s goes\n", getName()); }
    bool onPortAddConnection(const AddRefWrapper<ZEL::Port>& port,
                             const AddRefWrapper<ZEL::Port>& other) override
    {
        return !port->getDataType() || *port->getDataType() == *other->getDataType();
    }
    const char* onPortGetDefaultValue(const AddRefWrapper<ZEL::Port>& port) override
    {
        return port->isConnected() ? "connected" : nullptr;
    }
};

Tones* g_tones = nullptr;

void registerTones(ZEL::PluginRegistrar& registrar, ZEL::PluginInfo& info)
{
    info.setUserName("the tones plugin");
    g_tones = new Tones;
    std::printf("registered: %d\n", !!registrar.registerRuntime(info, g_tones) ? 0 : 1);
}

void unregisterTones(const ZEL::PluginInfo& info)
{
    std::printf("unregistered: %s\n", info.getUserName());
    delete g_tones;
}

const bool kRegistered = (ZEL::selfRegisterPlugin(registerTones, unregisterTones), true);

} // namespace

void createPluginNode(ZEL::Container* container, const char* name, AddRefWrapper<ZEL::Node>* made)
{
    *made = new PluginNode(container);
    (*made)->setName(name);
    const AddRefWrapper<ZEL::PortDataType> type = new ToneType("tone");
    (*made)->inputs().addPort("In", type);
    (*made)->outputs().addPort("Out", type);
}
