// The C++ side of python/costs.py: the same jobs, a line each with the name and the nanoseconds.

#include "zelBenchNetworks.h"

#include <cstdio>
#include <ctime>

namespace {

/// What the compiler may not leave out.
volatile std::size_t g_seen = 0;

/// Processor time, as the Python side measures it.
class StopWatch {
public:
    void print(const char* name, int count) const
    {
        const double seconds = static_cast<double>(std::clock() - m_start) / CLOCKS_PER_SEC;
        std::printf("%s\t%.2f\n", name, seconds / count * 1e9);
    }

private:
    std::clock_t m_start = std::clock();
};

template <class Job>
void measure(const char* name, int count, Job job)
{
    const StopWatch watch;
    for (int i = 0; i < count; ++i)
        job();
    watch.print(name, count);
}

template <class Object>
void see(Object* object)
{
    g_seen = g_seen + reinterpret_cast<std::size_t>(object);
}

/// Refuses every name.
class Asked : public ZEL::Node {
public:
    using Node::Node;
    using Node::operator=;
    bool onPortSetName(const ZEL::AddRefWrapper<ZEL::Port>& port, const char* /*name*/) override
    {
        see(port.get());
        return false;
    }
};

class Derived : public ZEL::Node {
public:
    using Node::Node;
    using Node::operator=;
};

template <class Kind>
void fill(LibraryNetwork& network, int count)
{
    for (int i = 0; i < count; ++i) {
        const ZEL::AddRefWrapper<ZEL::Node> node(new Kind(&network));
        node->setName(nodeName(i).c_str());
        network.network->nodes().add(node);
    }
}

void calls()
{
    LibraryNetwork network;
    fill<ZEL::Node>(network, 1);
    ZEL::NodeList& nodes = network.network->nodes();
    const ZEL::AddRefWrapper<ZEL::Node> node = nodes[0];
    const ZEL::AddRefWrapper<ZEL::Port> port = node->inputs().addPort("In", nullptr);
    constexpr int kCount = 2000000;
    measure("a call with a text as answer", kCount, [&] { see(node->getName()); });
    measure("a call with a yes or no", kCount, [&] { g_seen = g_seen + port->isConnected(); });
    measure("the length of a list", kCount, [&] { g_seen = g_seen + nodes.size(); });
    measure("a call with a text as argument", kCount, [&] { node->setNodeTypeName("noise2d"); });
    measure("a call that gives an object, held already", kCount,
            [&] { see(node->getParentCompound().get()); });
    measure("a call that gives an object, not held", kCount, [&] { see(&node->inputs()); });
}

template <class Kind>
void lookups(const char* name, const char* path)
{
    LibraryNetwork network;
    fill<Kind>(network, 10000);
    ZEL::NodeList& nodes = network.network->nodes();
    for (int i = 0; i < 100; ++i)
        see(nodes["Node5000"].get());
    measure(name, 500000, [&] { see(nodes["Node5000"].get()); });
    if (path)
        measure(path, 500000, [&] { see(network.findNodeFromPath("Top.Node5000").get()); });
}

void connections()
{
    LibraryNetwork network;
    fill<ZEL::Node>(network, 2);
    ZEL::NodeList& nodes = network.network->nodes();
    const ZEL::AddRefWrapper<ZEL::Port> source = nodes[0]->outputs().addPort("Out", nullptr);
    const ZEL::AddRefWrapper<ZEL::Port> target = nodes[1]->inputs().addPort("In", nullptr);
    measure("connect, and disconnect", 500000, [&] {
        target->addConnection(source);
        target->removeConnection(source);
    });
}

void overrides()
{
    LibraryNetwork network;
    fill<Asked>(network, 1);
    const ZEL::AddRefWrapper<ZEL::Port> port =
        network.network->nodes()[0]->inputs().addPort("In", nullptr);
    measure("an override asked, and what asks it", 500000, [&] { port->setName("Other"); });
}

template <class Kind>
void make(const char* name)
{
    LibraryNetwork network;
    measure(name, 500000, [&] {
        const ZEL::AddRefWrapper<ZEL::Node> node(new Kind(&network));
        node->setName("Node");
    });
}

template <class Kind>
void walk(const char* name)
{
    LibraryNetwork network;
    fill<Kind>(network, 100000);
    const StopWatch watch;
    for (const ZEL::Node* const node : network.network->nodes())
        see(node->getName());
    watch.print(name, 100000);
}

} // namespace

int main()
{
    calls();
    lookups<ZEL::Node>("by name in a list, of 10,000 nodes", "by path, of 10,000 nodes");
    lookups<Derived>("by name in a list, of 10,000 nodes of a Python class", nullptr);
    connections();
    overrides();
    make<ZEL::Node>("make a node, and drop it");
    make<Derived>("make a node of a Python class, and drop it");
    walk<ZEL::Node>("walk 100,000 nodes with getName, each");
    walk<Derived>("walk 100,000 nodes of a Python class with getName, each");
}
