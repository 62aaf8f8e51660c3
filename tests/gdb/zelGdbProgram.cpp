// What the gdb test looks at: it stops in lookHere and never comes back.
#include "zel.h"

#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <vector>

namespace {

class Document : public ZEL::Container {
public:
    ZEL::AddRefWrapper<ZEL::Node> getRootNode() override { return m_root; }
    void rebuildCompounds() override {}
    ZEL::Runtime* getRuntime() override { return nullptr; }

private:
    ZEL::AddRefWrapper<ZEL::Node> m_root = ZEL::Node::createNew(this, "Top");
};

class BlurNode : public ZEL::Node {
public:
    using ZEL::Node::Node;
    using ZEL::Node::operator=;
    int radius = 3;
};

} // namespace

void lookHere(std::initializer_list<const void*> /*values*/) {}

int main()
{
    Document document;
    const ZEL::AddRefWrapper<ZEL::Node> top = document.getRootNode();
    const ZEL::AddRefWrapper<ZEL::Compound> network = ZEL::Compound::createNew(top, nullptr);
    const ZEL::AddRefWrapper<ZEL::PortDataType> image = ZEL::PortDataType::createNew("image");
    network->createCompoundPort(ZEL::PortOutput, "Result", image);

    const ZEL::AddRefWrapper<ZEL::Node> load = ZEL::Node::createNew(&document, "Load");
    load->outputs().addPort("Out", image);
    const ZEL::AddRefWrapper<BlurNode> blur = new BlurNode(&document);
    blur->setName("Blur");
    blur->setNodeTypeName("blur");
    const ZEL::AddRefWrapper<ZEL::Port> in = blur->inputs().addPort("In", image);
    blur->inputs().addPort("Radius \"px\"", nullptr);
    blur->outputs().addPort("Out", image);
    network->nodes().add(load);
    network->nodes().add(blur);
    network->makeConnection(load, "Out", blur, "In");
    network->makeConnection(blur, "Out", top, "Result");
    const ZEL::AddRefWrapper<ZEL::Port> inner = network->innerOutputs()[0];
    const ZEL::AddRefWrapper<ZEL::Port> alone = ZEL::Port::createNew("Alone", ZEL::PortInput);

    // A long list: erased entries leave holes in it.
    const ZEL::AddRefWrapper<ZEL::Node> many = ZEL::Node::createNew(&document, "Many");
    for (int i = 0; i < 60; ++i)
        many->inputs().addPort(("P" + std::to_string(i)).c_str(), nullptr);
    std::vector<ZEL::AddRefWrapper<ZEL::Port>> ports;
    for (ZEL::Port* const port : many->inputs())
        ports.emplace_back(port);
    for (int i = 0; i < 60; ++i)
        many->inputs().findPort(ports[59 - i]);
    for (int i = 59; i >= 0; --i) {
        if (i < 3 || i == 5 || i > 8)
            many->inputs().remove(ports[i]);
    }
    const ZEL::AddRefWrapper<ZEL::Node> emptied = ZEL::Node::createNew(&document, "Emptied");
    emptied->inputs().addPort("A", nullptr);
    emptied->inputs().addPort("B", nullptr);
    emptied->inputs().remove(emptied->inputs()[0]);
    emptied->inputs().remove(emptied->inputs()[0]);

    ZEL::PropertyList properties;
    properties.addStringPair("Output", "Top.A.Out");
    properties.addChildList("Connections")->addStringPair("0", "Top.B.In");
    const ZEL::Namable path = in->getFullPathName();
    const ZEL::Namable lines("one\n\"two\"");
    const ZEL::StatusStr good;
    const ZEL::StatusStr bad("no such file");

    // What a debugger meets in a broken program.
    const ZEL::AddRefWrapper<ZEL::Port> none;
    std::uintptr_t wrong = 0x10; // Not memory of the program.
    std::uintptr_t noise[64];
    for (std::uintptr_t& word : noise)
        word = static_cast<std::uintptr_t>(0x4141414141414140);
    const void* const places[] = {&wrong, noise};
    const auto* const lost = static_cast<const ZEL::AddRefWrapper<ZEL::Node>*>(places[0]);
    const auto* const rubbish = static_cast<const ZEL::Port*>(places[1]);
    const auto* const rubbishNode = static_cast<const ZEL::Node*>(places[1]);
    const auto* const rubbishList = static_cast<const ZEL::PortList*>(places[1]);
    lookHere({&inner, &alone, &path, lost, rubbish, rubbishNode, rubbishList});
    std::abort();
}
