// A host: loads a plugin, makes a network of its node definitions, connects, undoes and redoes.

#include <cstdio>
#include <string>
#include <zel.h>

#if defined(_WIN32)
#include <system_error>
#include <windows.h>
#else
#include <dlfcn.h>
#endif

using namespace ZEL;

namespace {

/// The module of the plugin. Loaded, it is not null; otherwise whyNot says why.
struct Module {
#if defined(_WIN32)
    static void* load(const char* path)
    {
        return LoadLibraryA(path);
    }
    static void unload(void* module)
    {
        FreeLibrary(static_cast<HMODULE>(module));
    }
    static std::string whyNot(const char* path)
    {
        return path + (": " + std::system_category().message(static_cast<int>(GetLastError())));
    }
#else
    static void* load(const char* path)
    {
        return dlopen(path, RTLD_NOW | RTLD_LOCAL);
    }
    static void unload(void* module)
    {
        dlclose(module);
    }
    static std::string whyNot(const char* /*path*/)
    {
        return dlerror();
    }
#endif
};

/// Every node of the host. It answers the questions about its ports and changes nothing else.
class HostNode : public Node {
public:
    static AddRefWrapper<Node> createNew(Container* document, const char* name)
    {
        AddRefWrapper<Node> node(new HostNode(document)); // The first wrapper.
        node->setName(name);
        return node;
    }
    using Node::operator=;

    /// A connection leads between two ports of one type.
    bool onPortAddConnection(const AddRefWrapper<Port>& port,
                             const AddRefWrapper<Port>& other) override
    {
        return port->getDataType() == other->getDataType();
    }

    /// A port that goes is disconnected first: the library does not do it.
    bool onPortListPortRemoved(const PortList& /*list*/, const AddRefWrapper<Port>& port) override
    {
        port->removeAllConnections();
        return !port->isConnected();
    }

    /// The ports of a compound node have their mirrors inside, by place: no list is moved alone.
    bool onPortListPortMove(const PortList& /*list*/, int /*from*/, int /*to*/) override
    {
        return !isCompound();
    }

private:
    using Node::Node;
};

/// A node of a definition. Every such node has one input and one output here.
AddRefWrapper<Node> createImageNode(Container& document, const NodeDefinition& definition)
{
    AddRefWrapper<Node> node = HostNode::createNew(&document, definition.getName());
    node->setNodeTypeName(definition.getName());
    const AddRefWrapper<PortDataType> type = document.getRuntime()->getPortDataType("image");
    node->inputs().addPort("In", type);
    node->outputs().addPort("Out", type);
    return node;
}

/// The network inside a node.
class Network : public Compound {
public:
    using Compound::Compound;
    using Compound::operator=;

    /// CreateCompoundCommand asks for it.
    AddRefWrapper<Compound> createNewCompound(const char* name) override
    {
        const AddRefWrapper<Node> node = HostNode::createNew(getAsNode()->getContainer(), name);
        return nodes().add(node) ? new Network(node) : nullptr;
    }

    // As for the ports of a node.
    bool onPortAddConnection(const AddRefWrapper<Port>& port,
                             const AddRefWrapper<Port>& other) override
    {
        return port->getDataType() == other->getDataType();
    }
    bool onPortListPortRemoved(const PortList& /*list*/, const AddRefWrapper<Port>& port) override
    {
        port->removeAllConnections();
        return !port->isConnected();
    }
    bool onPortListPortMove(const PortList& /*list*/, int /*from*/, int /*to*/) override
    {
        return false;
    }

    /// A node that goes is disconnected first, so that it may be used again.
    bool onNodeRemove(const AddRefWrapper<Node>& node) override
    {
        for (PortList* list : {&node->inputs(), &node->outputs()}) {
            for (int i = 0; i < list->size(); ++i)
                (*list)[i]->removeAllConnections();
        }
        return true;
    }
};

/// The document. It holds the root node and outlives all other nodes.
class Document : public Container {
public:
    explicit Document(Runtime& runtime) : m_runtime(runtime)
    {
        new Network(m_root); // Held by the root node from its constructor on.
        m_runtime.registerContainer(this);
    }
    ~Document() override { m_runtime.unregisterContainer(this); }

    AddRefWrapper<Node> getRootNode() override { return m_root; }
    void rebuildCompounds() override {}
    Runtime* getRuntime() override { return &m_runtime; }
    NodeList& nodes() { return m_root->getAsCompound()->nodes(); }

private:
    Runtime& m_runtime;
    AddRefWrapper<Node> m_root = HostNode::createNew(this, "Top");
};

/// Prints what changes.
class Printer : public HostEditor {
public:
    void zel_onConnectionChange(ECnxChangeType type,
                                const AddRefWrapper<Port>& first,
                                const AddRefWrapper<Port>& second) override
    {
        std::printf("%s: %s > %s\n", type == eCnxAdded ? "connected" : "disconnected",
                    first->getFullPathName().getName(), second->getFullPathName().getName());
    }
};

/// The work of the host. All that came from the plugin is gone when it returns.
void edit(Runtime& runtime)
{
    Document document(runtime);
    const AddRefWrapper<NodeLibrary> library = runtime.getNodeLibrary();
    for (int i = 0; i < library->getNumberOfNodes(); ++i)
        document.nodes().add(createImageNode(document, *library->getNodeAt(i)));
    std::printf("nodes:");
    for (const Node* const node : document.nodes())
        std::printf(" %s", node->getName());
    std::printf("\n");
    const AddRefWrapper<Node> blur = document.findNodeFromPath("Top.Blur");
    AddRefWrapper<Port> first = blur->inputs()["In"];
    AddRefWrapper<Port> second =
        document.findPortFromPath("Top.Load.Out", PortOutput, Container::eSearchNode);

    Printer printer;
    blur->registerEditor(&printer);
    ConnectCommand command; // Takes the ports in either order; the output is the first afterwards.
    // The library notifies nobody by itself: the host does, after each change.
    if (command.connect(&document, first, second))
        blur->notifyConnectionChange(eCnxAdded, first, second);
    if (command.undo(&document))
        blur->notifyConnectionChange(eCnxRemoved, first, second);
    if (command.redo(&document))
        blur->notifyConnectionChange(eCnxAdded, first, second);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s PLUGIN, with the whole path\n", argv[0]);
        return 2;
    }
    void* const module = Module::load(argv[1]);
    if (!module) {
        std::fprintf(stderr, "%s: %s\n", argv[0], Module::whyNot(argv[1]).c_str());
        return 1;
    }
    Host host;
    host.initialize("first host");
    Runtime* const runtime = host.getRuntimeByName("Images");
    if (runtime)
        edit(*runtime);
    else
        std::fprintf(stderr, "%s: %s registers no runtime \"Images\"\n", argv[0], argv[1]);
    host.terminate(); // The plugin deletes its runtime.
    Module::unload(module);
    return runtime ? 0 : 1;
}
