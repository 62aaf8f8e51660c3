// Counts the blocks and bytes of memory that nodes, ports and connections take, and prints them
// with the sizes of the classes, a line each with tabs between:
//   heap    WHAT  SIZE  GOAL  BLOCKS  ASKED  TAKEN  BLOCKS  ASKED  TAKEN   (the baseline's; -:
//   none) sizeof  CLASS  BYTES

#include "zelBenchNetworks.h"
#include "zelHeapTally.h"
#include "zelLooseNodes.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

using namespace ZEL;

namespace {

struct Measured {
    HeapTally library;
    HeapTally baseline; ///< No blocks: there is none.
    int divisor = 1;    ///< So many nodes were counted together.
};

/// What the heap grows by while make runs and its result lives.
template <class Make>
HeapTally growth(Make make)
{
    const HeapTally before = heapTally();
    const auto kept = make();
    return heapTally() - before;
}

std::unique_ptr<baseline::Node> plainNode()
{
    auto node = std::make_unique<baseline::Node>();
    node->name = "Node";
    return node;
}

Measured port()
{
    return {growth([] { return Port::createNew("In0", PortInput); }), growth([] {
                auto plain = std::make_unique<baseline::Port>();
                plain->name = "In0";
                return plain;
            })};
}

Measured bareNode()
{
    return {growth([] { return Node::createNew(nullptr, "Node"); }), growth(plainNode)};
}

Measured compoundNode()
{
    return {growth([] {
                AddRefWrapper<Node> node = Node::createNew(nullptr, "Node");
                Compound::createNew(node, nullptr);
                return node;
            }),
            growth([] {
                auto node = plainNode();
                node->compound = std::make_unique<baseline::Compound>();
                return node;
            })};
}

constexpr int kLoose = 20;

/// So many nodes, each input fed by another one, each output feeding two.
template <class Nodes>
HeapTally fedNodes(bool connected)
{
    Nodes nodes(kLoose);
    const HeapTally before = heapTally();
    for (int i = 0; i < kLoose; ++i)
        nodes.makeNode();
    for (int i = 0; connected && i < kLoose; ++i) {
        for (int j = 0; j < kInputs; ++j)
            nodes.connect(sourceOf(i, j, kLoose), j % kOutputs, i, j);
    }
    return heapTally() - before;
}

/// A node, and what its connections to four other ones take.
template <class Nodes>
HeapTally feedingNode()
{
    Nodes nodes(kLoose);
    for (int i = 0; i < 4; ++i)
        nodes.makeNode();
    const HeapTally before = heapTally();
    nodes.makeNode();
    for (int i = 0; i < 4; ++i)
        nodes.connect(4, 0, i, 0);
    return heapTally() - before;
}

void find(LibraryNetwork& network, const char* path)
{
    network.findPortFromPath(path, PortInput, Container::eSearchNode);
}

void find(const BaselineNetwork& /*network*/, const char* /*path*/) {} // Has its table anyway.

/// All of a network, and the table that finding by name makes.
template <class Network>
HeapTally wholeNetwork(int count)
{
    const std::string path = "Top." + nodeName(count - 1) + ".In0";
    return growth([count, &path] {
        auto network = std::make_unique<Network>(count);
        network->connectAll();
        for (int i = 0; i < 100; ++i)
            find(*network, path.c_str());
        return network;
    });
}

Measured network(int count, int divisor)
{
    return {wholeNetwork<LibraryNetwork>(count), wholeNetwork<BaselineNetwork>(count), divisor};
}

void printTally(const HeapTally& tally, int divisor)
{
    for (const long long figure : {tally.blocks, tally.asked, tally.taken})
        std::printf("\t%.2f", static_cast<double>(figure) / divisor);
}

void printRow(const char* what, int size, const char* goal, const Measured& measured)
{
    std::printf("heap\t%s\t%d\t%s", what, size, goal);
    printTally(measured.library, measured.divisor);
    if (measured.baseline.blocks > 0)
        printTally(measured.baseline, measured.divisor);
    else
        std::printf("\t-\t-\t-");
    std::printf("\n");
    std::fflush(stdout);
}

void printRows(int largest)
{
    printRow("a port", 1, "1 block", port());
    printRow("a bare node", 1, "2 blocks", bareNode());
    printRow("a compound node, with nothing inside", 1, "", compoundNode());
    printRow("a node with 6 ports", 1, "",
             {fedNodes<LooseLibraryNodes>(false), fedNodes<LooseBaselineNodes>(false), kLoose});
    printRow("a node with 6 ports, 4 inputs fed and each output feeding 2", 1, "1200 bytes",
             {fedNodes<LooseLibraryNodes>(true), fedNodes<LooseBaselineNodes>(true), kLoose});
    printRow("a node with 6 ports, one output feeding 4", 1, "1200 bytes",
             {feedingNode<LooseLibraryNodes>(), feedingNode<LooseBaselineNodes>()});
    printRow("a network of 10 connected nodes, all of it", 10, "as before", network(10, 1));
    const char* const ofMany = "a node in a connected network, lists and tables included";
    for (const int count : {1000, 10000, 100000, 1000000}) {
        if (count <= largest)
            printRow(ofMany, count, count < 1000000 ? "" : "1.3x of 100000", network(count, count));
    }
}

template <class Class>
void printSize(const char* name)
{
    std::printf("sizeof\t%s\t%zu\n", name, sizeof(Class));
}

void printSizes()
{
    printSize<AddRefWrapper<Node>>("AddRefWrapper");
    printSize<ReferenceCounted>("ReferenceCounted");
    printSize<Namable>("Namable");
    printSize<StatusStr>("StatusStr");
    printSize<PropertyList>("PropertyList");
    printSize<PortDataType>("PortDataType");
    printSize<Port>("Port");
    printSize<PortList>("PortList");
    printSize<Node>("Node");
    printSize<NodeList>("NodeList");
    printSize<Compound>("Compound");
    printSize<Container>("Container");
    printSize<HostEditor>("HostEditor");
    printSize<HostEditorNotifier>("HostEditorNotifier");
    printSize<ConnectCommand>("ConnectCommand");
    printSize<CreateCompoundCommand>("CreateCompoundCommand");
    printSize<ModifyCompoundPortCommand>("ModifyCompoundPortCommand");
}

} // namespace

int main(int argc, char** argv)
{
    printRows(argc > 1 ? std::atoi(argv[1]) : 1000000);
    printSizes();
    return 0;
}
