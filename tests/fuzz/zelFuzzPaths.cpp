// Paths: any text on a small network whose names repeat, are empty, hold dots, and are shared by
// inputs, outputs and inner ports. Every answer is compared with that of a plain reading of the
// rules. The input: a byte for the direction and the mode, then two paths, parted by a byte of 0.

#include "zel.h"
#include "zelFuzzInput.h"

#include <cstring>

namespace {

using NodePtr = ZEL::AddRefWrapper<ZEL::Node>;
using PortPtr = ZEL::AddRefWrapper<ZEL::Port>;
using CompoundPtr = ZEL::AddRefWrapper<ZEL::Compound>;

class Document final : public ZEL::Container {
public:
    Document()
    {
        root = ZEL::Node::createNew(this, "Top");
        const CompoundPtr top = makeCompound(root, {"a", "in"}, {"out", "a"});
        add(top, "a", {"in", "in", ""}, {"out", "a"});
        add(top, "a", {"other"}, {"other"});
        add(top, "", {"in"}, {""});
        add(top, "b.c", {"in"}, {"out"});
        const NodePtr sub = add(top, "sub", {}, {});
        const CompoundPtr inside = makeCompound(sub, {"a", "in", "x.y"}, {"out", "a"});
        // An inner port without a mirror, and a mirror without an inner port.
        inside->innerInputs().addPort("alone", nullptr);
        sub->outputs().addPort("open", nullptr);
        add(inside, "a", {"in"}, {"out"});
        add(inside, "sub", {"a"}, {"a"});
        for (int i = 0; i < 40; ++i) // Enough for the tables of a long list.
            add(top, ("n" + std::to_string(i % 30)).c_str(), {"in"}, {"out"});
    }

    NodePtr getRootNode() override { return root; }
    void rebuildCompounds() override {}
    ZEL::Runtime* getRuntime() override { return nullptr; }

    NodePtr root;

private:
    using Names = std::vector<const char*>;

    NodePtr add(const CompoundPtr& compound, const char* name, const Names& in, const Names& out)
    {
        NodePtr node = ZEL::Node::createNew(this, name);
        for (const char* const port : in)
            node->inputs().addPort(port, nullptr);
        for (const char* const port : out)
            node->outputs().addPort(port, nullptr);
        compound->nodes().add(node);
        return node;
    }

    static CompoundPtr makeCompound(const NodePtr& node, const Names& in, const Names& out)
    {
        CompoundPtr compound = ZEL::Compound::createNew(node, nullptr);
        for (const char* const port : in)
            compound->createCompoundPort(ZEL::PortInput, port, nullptr);
        for (const char* const port : out)
            compound->createCompoundPort(ZEL::PortOutput, port, nullptr);
        return compound;
    }
};

// The plain reading.

std::vector<std::string> namesIn(const std::string& path)
{
    std::vector<std::string> names;
    std::string name;
    for (const char letter : path) {
        if (letter == '.')
            names.push_back(std::exchange(name, ""));
        else
            name += letter;
    }
    if (!name.empty())
        names.push_back(name);
    return names;
}

ZEL::Node* nodeAt(Document& document, const std::vector<std::string>& names, std::size_t count)
{
    if (count == 0 || names[0] != document.root->getName())
        return nullptr;
    ZEL::Node* node = document.root.get();
    for (std::size_t i = 1; i < count && node; ++i) {
        ZEL::Node* found = nullptr;
        const CompoundPtr compound = node->getAsCompound();
        for (int j = compound ? compound->nodes().size() - 1 : -1; j >= 0; --j) {
            if (names[i] == compound->nodes()[j]->getName())
                found = compound->nodes()[j].get();
        }
        node = found;
    }
    return node;
}

ZEL::Port* portIn(ZEL::PortList& list, const std::string& name)
{
    for (int i = 0; i < list.size(); ++i) {
        if (name == list[i]->getName())
            return list[i].get();
    }
    return nullptr;
}

ZEL::Port* portAt(Document& document, const std::string& path, ZEL::PortIOType ioType, int mode)
{
    const std::vector<std::string> names = namesIn(path);
    ZEL::Node* const node = names.size() < 2 ? nullptr : nodeAt(document, names, names.size() - 1);
    if (!node)
        return nullptr;
    const bool isInput = ioType == ZEL::PortInput;
    ZEL::Port* const port = portIn(isInput ? node->inputs() : node->outputs(), names.back());
    const CompoundPtr compound = node->getAsCompound();
    if (port || mode != 1 || !compound)
        return port;
    return portIn(isInput ? compound->innerOutputs() : compound->innerInputs(), names.back());
}

ZEL::Port* endAt(Document& document, const std::string& path)
{
    ZEL::Port* const port = portAt(document, path, ZEL::PortOutput, 0);
    return port ? port : portAt(document, path, ZEL::PortInput, 0);
}

/// The port at the same place of the other list.
ZEL::Port* mirrorOf(ZEL::Port* port, ZEL::Node& node)
{
    const CompoundPtr compound = node.getAsCompound();
    for (int i = 0; i < node.inputs().size(); ++i) {
        if (node.inputs()[i] == port)
            return compound->innerInputs()[i].get();
    }
    for (int i = 0; i < node.outputs().size(); ++i) {
        if (node.outputs()[i] == port)
            return compound->innerOutputs()[i].get();
    }
    return nullptr;
}

bool isBorderOf(ZEL::Port* port, ZEL::Port* other)
{
    const CompoundPtr compound = port->getParentNode()->getAsCompound();
    return compound && compound == other->getParentNode()->getParentCompound();
}

void checkEnds(Document& document, const std::string& pathA, const std::string& pathB)
{
    PortPtr out;
    PortPtr in;
    const bool isFound = document.findPortsForConnection(pathA.c_str(), pathB.c_str(), &out, &in);
    ZEL::Port* a = endAt(document, pathA);
    ZEL::Port* b = endAt(document, pathB);
    bool isExpected = a && b;
    if (isExpected && a->getPortIOType() == b->getPortIOType()) {
        if (isBorderOf(a, b))
            a = mirrorOf(a, *a->getParentNode());
        else if (isBorderOf(b, a))
            b = mirrorOf(b, *b->getParentNode());
        else
            isExpected = false;
    }
    zelFuzz::expect(isFound == isExpected, "the ends of " + pathA + " and " + pathB);
    if (!isExpected)
        return;
    if (a && a->getPortIOType() == ZEL::PortInput)
        std::swap(a, b);
    zelFuzz::expect(out == a && in == b, "other ends for " + pathA + " and " + pathB);
}

} // namespace

// NOLINTNEXTLINE(readability-identifier-naming): the name that a fuzzer calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Document document;
    zelFuzz::Input input(data, size);
    const int options = input.byte();
    const std::string rest = input.rest();
    const std::string pathA = rest.substr(0, rest.find('\0'));
    const std::string pathB = rest.size() > pathA.size() ? &rest[pathA.size() + 1] : "";
    const ZEL::PortIOType ioType = (options & 1) != 0 ? ZEL::PortOutput : ZEL::PortInput;
    const int mode = options >> 1 & 3;

    std::vector<std::string> tokens{"kept"};
    ZEL::Container::tokenizePath(rest, tokens);
    std::vector<std::string> names = namesIn(rest);
    names.insert(names.begin(), "kept");
    zelFuzz::expect(tokens == names, "the names in " + rest);
    names = namesIn(pathA);
    zelFuzz::expect(document.findNodeFromPath(pathA.c_str()) ==
                        nodeAt(document, names, names.size()),
                    "the node at " + pathA);
    const PortPtr port = document.findPortFromPath(pathA.c_str(), ioType,
                                                   static_cast<ZEL::Container::ESearchMode>(mode));
    zelFuzz::expect(port == portAt(document, pathA, ioType, mode), "the port at " + pathA);
    checkEnds(document, pathA, pathB);
    return 0;
}
