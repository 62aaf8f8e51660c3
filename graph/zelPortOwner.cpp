// The one place where ports look up at what owns them.

#include "zelCompound.h"
#include "zelNode.h"
#include "zelPlainAnswers.h"

#include <typeinfo>

namespace ZEL {

namespace {

/// What is known of a class of parents. The class is known by the address of its type information
/// and of its name: another class may lie at the first when a module was unloaded.
struct ParentClass {
    const std::type_info* type = nullptr;
    const char* name = nullptr;
    bool isOther = false; ///< Of nodes: a compound, too. Of compounds: a node, too.

    bool is(const std::type_info& other) const { return type == &other && name == other.name(); }
};

/// The class of a parent of the kind that is not Other. Classes that are both nodes and compounds
/// are allowed, but hardly ever seen: the classes met last are remembered.
template <class Other>
const ParentClass& classOf(PortNotification* parent)
{
    constexpr std::size_t kSize = 16;      // A power of two.
    constexpr std::size_t kAlignment = 16; // Of most type information.
    static ParentClass classes[kSize];
    const std::type_info& type = typeid(*parent);
    ParentClass& known = classes[reinterpret_cast<std::uintptr_t>(&type) / kAlignment % kSize];
    if (!known.is(type))
        known = {&type, type.name(), dynamic_cast<Other*>(parent) != nullptr};
    return known;
}

template <class Other>
Other* findOther(PortNotification* parent)
{
    return classOf<Other>(parent).isOther ? dynamic_cast<Other*>(parent) : nullptr;
}

} // namespace

void PortList::giveParentTo(Port& port)
{
    port.setParent(m_parent, static_cast<ParentKind>(m_parentKind));
    if (m_parentIsPlainNode == 0)
        noteParentClass();
    port.m_parentIsPlainNode = m_parentIsPlainNode;
    port.m_parentAgrees = m_parentAgrees;
}

/// Notes what the class of the parent says, so that connecting need not go there. The class of an
/// object is settled once it is counted: it changes while the object is constructed.
void PortList::noteParentClass()
{
    if (static_cast<ParentKind>(m_parentKind) != ParentKind::Node ||
        static_cast<Node*>(m_parent)->getRefCount() == 0)
        return;
    m_parentIsPlainNode = classOf<Compound>(m_parent).isOther ? 0 : 1;
    m_parentAgrees = agreesLikeNode(*static_cast<Node*>(m_parent)) ? 1 : 0;
}

bool Port::isCompoundInternalPort()
{
    return m_parentIsPlainNode == 0 && findParentCompound() != nullptr;
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
    if (m_parentIsPlainNode != 0)
        return nullptr;
    if (parentKind() == ParentKind::Node)
        return findOther<Compound>(m_parent);
    return dynamic_cast<Compound*>(m_parent);
}

} // namespace ZEL
