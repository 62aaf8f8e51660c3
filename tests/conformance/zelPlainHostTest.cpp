// The least host that there is passes the kit, and so does one that is particular by right.
#include "zelPlainHost.h"

namespace {

/// Takes one source for each input, and that of its own type only.
class OneSourceNode : public plain::Node {
public:
    using plain::Node::Node;
    using ZEL::Node::operator=;
    bool onPortAddConnection(const plain::PortPtr& port, const plain::PortPtr& other) override
    {
        return *port->getDataType() == *other->getDataType() && plain::disconnect(other);
    }
};

/// Has the runtime of all documents, and is known to it while it lives.
class SharingDocument : public plain::Document<OneSourceNode, plain::Compound> {
public:
    SharingDocument() { shared().registerContainer(this); }
    ~SharingDocument() override { shared().unregisterContainer(this); }
    ZEL::Runtime* getRuntime() override { return &shared(); }

private:
    static ZEL::Runtime& shared()
    {
        static ZEL::Runtime runtime;
        return runtime;
    }
};

template <class Host>
bool add(const char* name)
{
    return ZEL::registerConformanceTests(name, [] { return std::make_unique<Host>(); });
}

const bool kPlainHosts =
    add<plain::Host<>>("PlainHost") &&
    add<plain::Host<OneSourceNode, plain::Compound, SharingDocument>>("ParticularHost");

} // namespace
