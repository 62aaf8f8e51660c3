// The one place where ports look up at what owns them.

#include "zelCompound.h"
#include "zelNode.h"

#include <typeinfo>

namespace ZEL {

namespace {

/// Asks the class of the parent whether it is an Other, too. Classes that are both nodes and
/// compounds are allowed, but hardly ever seen: the classes met last that are not are remembered,
/// by the address of their type information and of its name.
template <class Other>
Other* findOther(PortNotification* parent)
{
    struct Known {
        const std::type_info* type = nullptr;
        const char* name = nullptr;
    };
    constexpr std::size_t kSize = 16; // A power of two.
    static Known g_notOther[kSize];

    const std::type_info& type = typeid(*parent);
    constexpr int kAlignment = 4; // Lowest bits of an address that are alike.
    Known& known = g_notOther[(reinterpret_cast<std::uintptr_t>(&type) >> kAlignment) % kSize];
    if (known.type == &type && known.name == type.name())
        return nullptr;
    Other* const other = dynamic_cast<Other*>(parent);
    if (!other)
        known = {&type, type.name()};
    return other;
}

} // namespace

bool Port::isCompoundInternalPort()
{
    return findParentCompound() != nullptr;
}

AddRefWrapper<Node> Port::getParentNode()
{
    if (Node* const node = findParentNode())
        return node;
    Compound* const compound = findParentCompound();
    return compound ? compound->getAsNode() : nullptr;
}

AddRefWrapper<Compound> Port::getParentCompound()
{
    return findParentCompound();
}

Node* Port::findParentNode() const
{
    if (m_parentKind == ParentKind::Node)
        return static_cast<Node*>(m_parent);
    if (m_parentKind == ParentKind::Compound)
        return findOther<Node>(m_parent);
    return dynamic_cast<Node*>(m_parent);
}

Compound* Port::findParentCompound() const
{
    if (m_parentKind == ParentKind::Compound)
        return static_cast<Compound*>(m_parent);
    if (m_parentKind == ParentKind::Node)
        return findOther<Compound>(m_parent);
    return dynamic_cast<Compound*>(m_parent);
}

} // namespace ZEL
