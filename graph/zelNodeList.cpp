#include "core/zelKeepAlive.h"
#include "core/zelSequence.h"
#include "zelCompound.h"
#include "zelNode.h"
#include "zelReleaseEach.h"

namespace ZEL {

namespace {

void* toEntry(Node* node)
{
    return static_cast<Namable*>(node);
}

Node* toNode(void* entry)
{
    return static_cast<Node*>(static_cast<Namable*>(entry));
}

/// Empties the sequence, then drops the references of its entries: a node that dies finds the list
/// without it. What lives on is given to orphan.
template <class Orphan>
void releaseAll(Sequence nodes, Orphan orphan)
{
    nodes.dropIndex();
    std::uintptr_t data = 0;
    Sequence released(data);
    released.swap(nodes);
    releaseEach(
        released.size(), [&released](int i) { return toNode(released.at(i)); }, orphan);
    released.clear();
}

/// A compound that an addition goes back to if it is refused; null when it died meanwhile. It lies
/// on the stack of the addition.
struct FormerParent {
    explicit FormerParent(Compound* former) : compound(former), outer(innermost)
    {
        innermost = this;
    }
    FormerParent(const FormerParent&) = delete;
    FormerParent& operator=(const FormerParent&) = delete;
    ~FormerParent() { innermost = outer; }

    static FormerParent* innermost; ///< Null: no addition is under way.

    Compound* compound;  ///< Not owned, and never looked into: it may be long dead.
    FormerParent* outer; ///< Of the addition in whose question this one began, or null.
};

FormerParent* FormerParent::innermost = nullptr;

} // namespace

AddRefWrapper<NodeList> NodeList::createNew()
{
    return new NodeList;
}

NodeList::NodeList() = default;

// Contract: the nodes only; a new list has no parent compound.
NodeList::NodeList(const NodeList& other) : ReferenceCounted(other)
{
    const Sequence nodes = other.entries();
    for (int i = 0; i < nodes.size(); ++i)
        append(toNode(nodes.at(i)));
}

NodeList& NodeList::operator=(const NodeList& other)
{
    if (this == &other)
        return *this;
    // The old nodes are released last: one that dies finds the list in its new state.
    NodeList old;
    entries().dropIndex();
    entries().swap(old.entries());
    const Sequence nodes = other.entries();
    for (int i = 0; i < nodes.size(); ++i)
        append(toNode(nodes.at(i)));
    return *this;
}

NodeList::~NodeList()
{
    releaseAll(entries(), [](const Node&) {});
}

int NodeList::size()
{
    return entries().size();
}

AddRefWrapper<Node> NodeList::operator[](int index)
{
    return entryAt(index);
}

AddRefWrapper<Node> NodeList::operator[](const char* name)
{
    return name ? findNamed(name) : nullptr;
}

AddRefWrapper<Compound> NodeList::getParentCompound()
{
    return m_parentCompound;
}

void NodeList::setParentCompound(Compound* compound)
{
    m_parentCompound = compound;
    const Sequence nodes = entries();
    for (int i = 0; i < nodes.size(); ++i)
        toNode(nodes.at(i))->setParentCompound(compound);
}

bool NodeList::add(const AddRefWrapper<Node>& node)
{
    if (!m_parentCompound || !node)
        return false;
    const KeepAlive self(this);
    const AddRefWrapper<Node> held(node.get());
    const FormerParent former(held->m_parentCompound);
    held->setParentCompound(m_parentCompound);
    const bool agreed = m_parentCompound->onNodeAdd(held);
    // No compound any more: it died while it was asked.
    if (!agreed || !m_parentCompound) {
        held->setParentCompound(former.compound);
        return false;
    }
    append(held.get());
    return true;
}

bool NodeList::remove(const AddRefWrapper<Node>& node)
{
    if (!m_parentCompound || !node || !entries().containsNamed(node.get()))
        return false;
    const KeepAlive self(this);
    const AddRefWrapper<Node> held(node.get());
    if (!m_parentCompound->onNodeRemove(held))
        return false;
    held->onThisNodeDeleted();
    // Looked for again: the host may have changed the list in either call.
    if (entries().eraseFirstNamed(held.get()))
        held->release();
    return true;
}

Sequence NodeList::entries() const
{
    return Sequence(m_entries);
}

Node* NodeList::entryAt(int index) const
{
    const Sequence nodes = entries();
    return index < 0 || index >= nodes.size() ? nullptr : toNode(nodes.at(index));
}

void NodeList::append(Node* node)
{
    node->addRef();
    entries().append(toEntry(node));
}

Node* NodeList::findNamed(std::string_view name)
{
    return static_cast<Node*>(entries().findNamed(name));
}

void NodeList::onCompoundDied(Compound* compound)
{
    for (FormerParent* former = FormerParent::innermost; former; former = former->outer) {
        if (former->compound == compound)
            former->compound = nullptr;
    }
    const auto orphan = [compound](Node& node) {
        if (node.m_parentCompound == compound)
            node.m_parentCompound = nullptr;
    };
    if (m_parentCompound == compound) {
        if (getRefCount() == 1) // The nodes die with the compound: as long as they can name it.
            releaseAll(entries(), orphan);
        m_parentCompound = nullptr;
    }
    const Sequence nodes = entries();
    for (int i = 0; i < nodes.size(); ++i)
        orphan(*toNode(nodes.at(i)));
}

} // namespace ZEL
