#include "zelFuzzUniverse.h"

#include "zelCallerRules.h"
#include "zelFuzzSteps.h"
#include "zelInvariants.h"

namespace zelFuzz {

namespace {

constexpr int kMaxDepth = 3;   ///< Steps inside questions of steps inside questions.
constexpr int kMaxSteps = 200; ///< Of one input; more would only be slow.

} // namespace

Universe::Universe(Input& bytes) : input(bytes), listener(*this)
{
    for (const char* const type : {"float", "color"})
        runtime.createPortDataType(type);
    runtime.registerContainer(this);
    listenerList = ZEL::PortList::createNew();
    listenerList->setParent(&listener);
    freeList = ZEL::PortList::createNew();
    stranger = ZEL::Port::createNew("stranger", ZEL::PortInput);
    root = new FuzzNode(*this, this);
    root->setName("Top");
    const CompoundPtr made(new FuzzCompound(*this, root));
}

Universe::~Universe()
{
    ++quiet;
    runtime.unregisterContainer(this);
    for (auto& slot : editors)
        slot = nullptr;
    manyEditors.clear();
    for (auto& slot : connects)
        slot = nullptr;
    // What is held goes while all is alive, and disconnected.
    for (auto& slot : collapses)
        letGo(*this, slot);
    for (auto& slot : modifies)
        letGo(*this, slot);
    for (PortPtr& port : ports)
        letGo(*this, port);
    for (ZEL::Port* const port : *listenerList)
        port->removeAllConnections();
    listenerList = nullptr;
    freeList = nullptr;
    for (PortPtr& port : freePorts)
        letGo(*this, port);
    freePorts.clear();
    for (CompoundPtr& compound : compounds)
        letGo(*this, compound);
    for (NodePtr& node : nodes)
        letGo(*this, node);
    callerRules::prepareClosing(*this);
    root = nullptr;
}

void Universe::run()
{
    checkInvariants(*this);
    for (int i = 0; i < kMaxSteps && !input.isAtEnd(); ++i) {
        makeStep(*this);
        checkInvariants(*this);
    }
}

bool Universe::ask(ZEL::Port* port)
{
    ++moment;
    if (quiet > 0)
        return true;
    const int question = questions++;
    if (countdown > 0 && --countdown == 0 && depth < kMaxDepth && !input.isAtEnd()) {
        ++troubles;
        ++depth;
        if (port)
            askedPorts.push_back(port);
        ZEL::Port* const formerlyAsked = std::exchange(asked, port);
        const int formerMirrorDepth = std::exchange(mirrorDepth, 0);
        makeStep(*this);
        mirrorDepth = formerMirrorDepth;
        asked = formerlyAsked;
        if (port)
            askedPorts.pop_back();
        --depth;
        ++moment;
    }
    const bool isRefused = ((refusals >> (question % 8)) & 1) != 0;
    troubles += isRefused ? 1 : 0;
    return !isRefused;
}

Census Universe::census() const
{
    Census census;
    if (listenerList)
        census.addList(listenerList.get());
    if (root)
        census.addNode(root.get());
    for (const NodePtr& node : nodes) {
        if (node)
            census.addNode(node.get());
    }
    for (const CompoundPtr& compound : compounds) {
        if (compound)
            census.addCompound(compound.get());
    }
    for (const auto& slot : collapses) {
        if (slot && slot->parent)
            census.addCompound(slot->parent);
        for (const auto& entry : slot ? slot->nodes : decltype(slot->nodes)())
            census.addNode(entry.second);
    }
    for (const auto& slot : modifies) {
        if (slot && slot->compound)
            census.addCompound(slot->compound);
    }
    for (const PortPtr& port : ports) {
        if (port)
            census.addPort(port.get());
    }
    for (const PortPtr& port : freePorts)
        census.addPort(port.get());
    for (ZEL::Node* const node : heldNodes)
        census.addNode(node);
    for (ZEL::Compound* const compound : heldCompounds)
        census.addCompound(compound);
    for (ZEL::Port* const port : heldPorts)
        census.addPort(port);
    return census;
}

} // namespace zelFuzz
