#include "binding/keepers.h"

#include "binding/shared.h"
#include "zel.h"

namespace zelpython {

namespace {

bool hasKeepers()
{
    return !shared().keepers.empty();
}

Keeper keeperAt(const void* object)
{
    const auto& keepers = shared().keepers;
    const auto found = keepers.find(object);
    return found == keepers.end() ? nullptr : found->second.lock();
}

Keeper keeperOfNode(ZEL::Node* node)
{
    return node ? keeperOf(*node) : nullptr;
}

} // namespace

void keep(const ZEL::Container& container, const std::weak_ptr<void>& keeper)
{
    shared().keepers[&container] = keeper;
}

void forget(const ZEL::Container& container)
{
    shared().keepers.erase(&container);
}

void keep(const ZEL::Runtime& runtime, const std::weak_ptr<void>& keeper)
{
    shared().keepers[&runtime] = keeper;
}

void forget(const ZEL::Runtime& runtime)
{
    shared().keepers.erase(&runtime);
}

Keeper keeperOf(const ZEL::Container& container)
{
    return keeperAt(&container);
}

Keeper keeperOf(const ZEL::Runtime& runtime)
{
    return keeperAt(&runtime);
}

Keeper keeperOf(ZEL::Node& node)
{
    const ZEL::Container* const container = hasKeepers() ? node.getContainer() : nullptr;
    return container ? keeperOf(*container) : nullptr;
}

Keeper keeperOf(ZEL::Compound& compound)
{
    return hasKeepers() ? keeperOfNode(compound.getAsNode().get()) : nullptr;
}

Keeper keeperOf(ZEL::Port& port)
{
    return hasKeepers() ? keeperOfNode(port.getParentNode().get()) : nullptr;
}

Keeper keeperOf(ZEL::PortList& list)
{
    ZEL::PortNotification* const parent = hasKeepers() ? list.getParent() : nullptr;
    if (auto* const node = dynamic_cast<ZEL::Node*>(parent))
        return keeperOf(*node);
    if (auto* const compound = dynamic_cast<ZEL::Compound*>(parent))
        return keeperOf(*compound);
    return nullptr;
}

Keeper keeperOf(ZEL::NodeList& list)
{
    if (!hasKeepers())
        return nullptr;
    const ZEL::AddRefWrapper<ZEL::Compound> compound = list.getParentCompound();
    return compound ? keeperOf(*compound) : nullptr;
}

} // namespace zelpython
