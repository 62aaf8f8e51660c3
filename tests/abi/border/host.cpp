// The host: loads the module named by its argument, privately, and looks at objects from both sides
// of the border. Prints what does not hold and fails.

#include "../zelModule.h"
#include "border.h"

#include <cstdio>
#include <cstring>

using ZEL::AddRefWrapper;

namespace {

bool g_good = true;

void expect(bool holds, const char* what)
{
    if (!holds)
        std::fprintf(stderr, "border: wrong: %s\n", what);
    g_good = g_good && holds;
}

/// Each module of Windows has type information of its own, which is compared by name.
bool isSame(const std::type_info* ofModule, const std::type_info& ofHost)
{
#if defined(_WIN32)
    return *ofModule == ofHost;
#else
    return ofModule == &ofHost;
#endif
}

void seeNodesOfTheModule(const Module& module)
{
    const AddRefWrapper<ZEL::Node> tone = module.createTone();
    const AddRefWrapper<ZEL::Node> plain = module.createPlain();
    const AddRefWrapper<ZEL::Node> own = module.createOwn();
    if (kInlineClassIsOne) {
        auto* asTone = dynamic_cast<ToneNode*>(tone.get());
        expect(asTone && asTone->tone() == 7, "the host casts to an exported class of the header");
        auto* asPlain = dynamic_cast<PlainNode*>(plain.get());
        expect(asPlain && asPlain->plain() == 8, "the host casts to a hidden class of the header");
    }
    expect(!dynamic_cast<ToneNode*>(own.get()), "the module's own class is no ToneNode");
    const ZEL::Node* ownNode = own.get();
    const ZEL::Node* toneNode = tone.get();
    if (!ownNode || !toneNode)
        return expect(false, "the module makes nodes");
    expect(typeid(*ownNode) != typeid(ZEL::Node), "its type is not Node's");
    if (kInlineClassIsOne)
        expect(typeid(*toneNode) == typeid(ToneNode) && *module.tone == typeid(ToneNode),
               "both sides mean one type by ToneNode");
    ZEL::PortNotification* listener = own.get();
    expect(dynamic_cast<ZEL::Node*>(listener) == own.get(), "the host casts across to Node");
}

void seeNodesOfTheHost(const Module& module)
{
    struct LocalNode : ZEL::Node {
        using Node::Node;
    };
    const AddRefWrapper<ZEL::Node> tone = new ToneNode(nullptr);
    const AddRefWrapper<ZEL::Node> plain = new PlainNode(nullptr);
    const AddRefWrapper<ZEL::Node> local = new LocalNode(nullptr);
    if (kInlineClassIsOne) {
        expect(!std::strcmp("Tone", module.classOf(tone.get())),
               "the module knows the host's ToneNode");
        expect(!std::strcmp("Plain", module.classOf(plain.get())),
               "the module knows its PlainNode");
    }
    expect(!std::strcmp("Node", module.classOf(local.get())),
           "the module takes no class for another");
    expect(!std::strcmp("Own", module.classOf(module.createOwn().get())), "it knows its own");
    const AddRefWrapper<ZEL::Compound> compound = ZEL::Compound::createNew(local, nullptr);
    expect(module.isCompound(compound.get()), "the module casts across to Compound");
    expect(!module.isCompound(local.get()), "and takes no node for one");
}

/// The library finds out by dynamic_cast what the parent of a port is.
void seeParents(const Module& module)
{
    const AddRefWrapper<ZEL::Node> own = module.createOwn();
    const AddRefWrapper<ZEL::Compound> compound = module.createCompound(own);
    const int place = compound->createCompoundPort(ZEL::PortInput, "In", nullptr);
    const AddRefWrapper<ZEL::Port> outer = own->inputs()["In"];
    const AddRefWrapper<ZEL::Port> inner = compound->innerInputs()[place];
    expect(outer->getParentNode() == own, "a port knows a node of the module's class");
    expect(inner->getParentCompound() == compound, "a port knows a compound of the module's class");
    expect(inner->isCompoundInternalPort() && !outer->isCompoundInternalPort(),
           "and which is which");
    expect(!std::strcmp("Own", compound->getSpecializedCompoundTypeName()), "overrides are called");
}

/// The module registered when it was loaded.
void seeRegistry()
{
    ZEL::Host host;
    expect(host.getRuntimeByName(kModuleRuntime) != nullptr,
           "the module's runtime is in the host's registry");
    host.terminate();
}

} // namespace

int main(int argc, char** argv)
{
    void* const handle = argc == 2 ? loadModule(argv[1]) : nullptr;
    auto* const entry = handle ? functionOf<Module()>(handle, "borderModule") : nullptr;
    if (!entry) {
        std::fprintf(stderr, "border: no module: %s\n",
                     argc == 2 ? whyNot().c_str() : "none given");
        return 2;
    }
    const Module module = entry();
    expect(isSame(module.node, typeid(ZEL::Node)) &&
               isSame(module.compound, typeid(ZEL::Compound)) &&
               isSame(module.port, typeid(ZEL::Port)),
           "the library's type information exists once");
    seeNodesOfTheModule(module);
    seeNodesOfTheHost(module);
    seeParents(module);
    seeRegistry();
    if (g_good)
        std::puts("border: all as expected");
    return g_good ? 0 : 1;
}
