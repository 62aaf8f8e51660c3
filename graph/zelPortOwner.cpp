// The one place where ports look up at what owns them.

#include "zelCompound.h"
#include "zelNode.h"

#include <typeinfo>

namespace ZEL {

namespace {

/// A class, by the address of its type information and of its name: another class may lie at the
/// first when a module was unloaded.
struct KnownClass {
    const std::type_info* type = nullptr;
    const char* name = nullptr;

    bool is(const std::type_info& other) const { return type == &other && name == other.name(); }
};

/// Asks the class of the parent whether it is an Other, too. Classes that are both nodes and
/// compounds are allowed, but hardly ever seen: the classes met last that are not both are
/// remembered.
template <class Other>
Other* findOther(PortNotification* parent)
{
    constexpr std::size_t kSize = 16;      // A power of two.
    constexpr std::size_t kAlignment = 16; // Of most type information.
    static KnownClass notOther[kSize];
    const std::type_info& type = typeid(*parent);
    KnownClass& known = notOther[reinterpret_cast<std::uintptr_t>(&type) / kAlignment % kSize];
    if (known.is(type))
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
    if (parentKind() == ParentKind::Node)
        return static_cast<Node*>(m_parent);
    if (parentKind() == ParentKind::Compound)
        return findOther<Node>(m_parent);
    return dynamic_cast<Node*>(m_parent);
}

Compound* Port::findParentCompound() const
{
    if (parentKind() == ParentKind::Compound)
        return static_cast<Compound*>(m_parent);
    if (parentKind() == ParentKind::Node)
        return findOther<Compound>(m_parent);
    return dynamic_cast<Compound*>(m_parent);
}

} // namespace ZEL
