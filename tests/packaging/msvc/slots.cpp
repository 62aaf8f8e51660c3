// A class of each public class that has virtual operations, as a host derives it: the compiler then
// tells what stands in which slot, and in which order the bases lie.

#include "zel.h"

namespace {

template <class Base>
struct Derived : Base {
    using Base::Base;
    using Base::operator=; // Virtual in Node and Compound.
};

struct Document : ZEL::Container {
    ZEL::AddRefWrapper<ZEL::Node> getRootNode() override { return nullptr; }
    void rebuildCompounds() override {}
    ZEL::Runtime* getRuntime() override { return nullptr; }
};

struct Type : ZEL::PortDataType {
    Type() : PortDataType("type") {}
};

struct End : ZEL::Port {
    End() : Port("end", ZEL::PortInput) {}
};

struct Info : ZEL::PluginInfo {
    void setUserName(const char* /*name*/) override {}
    const char* getUserName() const override { return ""; }
};

struct Editor : ZEL::HostEditor {};
struct Notifier : ZEL::HostEditorNotifier {};

} // namespace

/// Makes one of each: a table is laid out where an object is made.
void makeEach()
{
    static Derived<ZEL::ReferenceCounted> counted;
    static Derived<ZEL::Namable> namable;
    static Type type;
    static End end;
    static Derived<ZEL::PortList> ports;
    static Derived<ZEL::NodeList> nodes;
    static Derived<ZEL::Node> node(nullptr);
    static Derived<ZEL::Compound> compound(&node);
    static Document document;
    static Editor editor;
    static Notifier notifier;
    static Derived<ZEL::NodeDefinition> definition("definition");
    static Derived<ZEL::NodeLibrary> library;
    static Derived<ZEL::Runtime> runtime;
    static Derived<ZEL::PluginRegistrar> registrar;
    static Derived<ZEL::Host> host;
    static Info info;
}
