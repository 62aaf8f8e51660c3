#include "core/zelKeepAlive.h"
#include "zelCompound.h"
#include "zelNode.h"

#include <algorithm>
#include <cstring>

namespace ZEL {

AddRefWrapper<NodeList> NodeList::createNew()
{
    return new NodeList;
}

NodeList::NodeList() = default;

// Contract: the nodes only; a new list has no parent compound.
NodeList::NodeList(const NodeList& other) : ReferenceCounted(other), m_nodes(other.m_nodes) {}

NodeList& NodeList::operator=(const NodeList& other)
{
    // The old nodes are released last: one that dies finds the list in its new state.
    NodeList copy(other);
    m_nodes.swap(copy.m_nodes);
    return *this;
}

NodeList::~NodeList() = default;

int NodeList::size()
{
    return static_cast<int>(m_nodes.size());
}

AddRefWrapper<Node> NodeList::operator[](int index)
{
    if (index < 0 || index >= size())
        return nullptr;
    return m_nodes[index];
}

AddRefWrapper<Node> NodeList::operator[](const char* name)
{
    if (!name)
        return nullptr;
    const auto place =
        std::find_if(m_nodes.begin(), m_nodes.end(), [name](const AddRefWrapper<Node>& node) {
            return std::strcmp(node->getName(), name) == 0;
        });
    return place == m_nodes.end() ? nullptr : *place;
}

AddRefWrapper<Compound> NodeList::getParentCompound()
{
    return m_parentCompound;
}

void NodeList::setParentCompound(Compound* compound)
{
    m_parentCompound = compound;
    for (const AddRefWrapper<Node>& node : m_nodes)
        node->setParentCompound(compound);
}

bool NodeList::add(const AddRefWrapper<Node>& node)
{
    if (!m_parentCompound || !node)
        return false;
    const KeepAlive self(this);
    const AddRefWrapper<Node> held(node.get());
    Compound* const former = held->m_parentCompound;
    const KeepAlive formerHeld(former);
    held->setParentCompound(m_parentCompound);
    const bool agreed = m_parentCompound->onNodeAdd(held);
    // No compound any more: it died while it was asked.
    if (!agreed || !m_parentCompound) {
        held->setParentCompound(former);
        return false;
    }
    m_nodes.push_back(held);
    return true;
}

bool NodeList::remove(const AddRefWrapper<Node>& node)
{
    if (!m_parentCompound || std::find(m_nodes.begin(), m_nodes.end(), node) == m_nodes.end())
        return false;
    const KeepAlive self(this);
    const AddRefWrapper<Node> held(node.get());
    if (!m_parentCompound->onNodeRemove(held))
        return false;
    held->onThisNodeDeleted();
    // Found again: the host may have changed the list in either call.
    const auto place = std::find(m_nodes.begin(), m_nodes.end(), held);
    if (place != m_nodes.end())
        m_nodes.erase(place);
    return true;
}

void NodeList::onCompoundDied(Compound* compound)
{
    if (m_parentCompound == compound)
        m_parentCompound = nullptr;
    for (const AddRefWrapper<Node>& node : m_nodes) {
        if (node->m_parentCompound == compound)
            node->m_parentCompound = nullptr;
    }
}

} // namespace ZEL
