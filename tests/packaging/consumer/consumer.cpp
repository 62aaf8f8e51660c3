#include <cstdio>
#include <cstring>
#include <zel.h>

namespace {

/// A node that takes connections of its own data type only.
class TypedNode : public ZEL::Node {
public:
    using Node::Node;

    bool onPortAddConnection(const ZEL::AddRefWrapper<ZEL::Port>& port,
                             const ZEL::AddRefWrapper<ZEL::Port>& other) override
    {
        return *port->getDataType() == *other->getDataType();
    }
};

class Document : public ZEL::Container {
public:
    ZEL::AddRefWrapper<ZEL::Node> getRootNode() override { return m_root; }
    void rebuildCompounds() override {}
    ZEL::Runtime* getRuntime() override { return nullptr; }

private:
    ZEL::AddRefWrapper<ZEL::Node> m_root = ZEL::Node::createNew(this, "Top");
};

bool expect(bool holds, const char* what)
{
    if (!holds)
        std::fprintf(stderr, "consumer: wrong: %s\n", what);
    return holds;
}

} // namespace

int main()
{
    Document document;
    auto network = ZEL::Compound::createNew(document.getRootNode(), nullptr);
    auto image = ZEL::PortDataType::createNew("image");
    auto number = ZEL::PortDataType::createNew("number");

    ZEL::AddRefWrapper<ZEL::Node> load = new TypedNode(&document);
    load->setName("Load");
    network->nodes().add(load);
    ZEL::AddRefWrapper<ZEL::Node> blur = new TypedNode(&document);
    blur->setName("Blur");
    network->nodes().add(blur);
    auto out = load->outputs().addPort("Out", image);
    auto in = blur->inputs().addPort("In", image);
    auto radius = blur->inputs().addPort("Radius", number);

    bool good = expect(out->addConnection(in), "the node agrees to its own type");
    good &= expect(!out->addConnection(radius), "the node refuses another type");
    good &= expect(
        document.findPortFromPath("Top.Blur.In", ZEL::PortInput, ZEL::Container::eSearchNode) == in,
        "the path leads to the port");
    good &= expect(in->getParentNode() == blur, "the port knows a node of the host's class");
    good &=
        expect(std::strcmp(in->connectedTo()[0]->getFullPathName().getName(), "Top.Load.Out") == 0,
               "the connection leads to the output");
    if (good)
        std::puts("consumer: all as expected");
    return good ? 0 : 1;
}
