#include "document/backdrops.h"

#include "document/document.h"
#include "document/journal.h"
#include "document/node.h"
#include "format/xml.h"

#include <algorithm>
#include <unordered_set>

namespace shading {

namespace {

const char* const kBackdrop = "backdrop";

/// The compounds that were read, by their elements.
void collectOwners(const NodePtr& node, std::unordered_map<const Piece*, NodePtr>& owners)
{
    const auto* const own = dynamic_cast<const Node*>(node.get());
    if (own && own->element())
        owners[own->element()] = node;
    for (const NodePtr& inner : node->getAsCompound()->nodes()) {
        if (inner->isCompound())
            collectOwners(inner, owners);
    }
}

bool hasBackdrops(const Piece& graph)
{
    for (const Piece& child : ElementsIn(graph)) {
        if (child.text == kBackdrop || (kindOf(child) == ElementKind::Graph && hasBackdrops(child)))
            return true;
    }
    return false;
}

} // namespace

NodePtr Backdrop::standingFor(const NodePtr& given) const
{
    const CompoundPtr compound = m_state.owner ? m_state.owner->getAsCompound() : nullptr;
    NodePtr node = given;
    while (node && node->getParentCompound() != compound) {
        const CompoundPtr around = node->getParentCompound();
        node = around ? around->getAsNode() : nullptr;
        const auto* const graph = dynamic_cast<const Node*>(node.get());
        if (graph && graph->element())
            return nullptr; // A graph that was there before, or the document.
    }
    // A node that was removed still knows where it was.
    auto* const document =
        compound ? dynamic_cast<Document*>(m_state.owner->getContainer()) : nullptr;
    return document && document->has(node) ? node : nullptr;
}

std::vector<NodePtr> Backdrop::nodes() const
{
    std::vector<NodePtr> nodes;
    std::unordered_set<const ZEL::Node*> seen;
    for (const NodePtr& given : m_state.nodes) {
        const NodePtr node = standingFor(given);
        if (node && seen.insert(node.get()).second)
            nodes.push_back(node);
    }
    return nodes;
}

void Backdrops::read()
{
    const Piece& root = m_document.xml().documentElement();
    if (!hasBackdrops(root))
        return;
    std::unordered_map<const Piece*, NodePtr> owners;
    collectOwners(m_document.getRootNode(), owners);
    owners[&root] = m_document.getRootNode();
    readGraph(root, owners);
}

void Backdrops::readGraph(const Piece& graph, std::unordered_map<const Piece*, NodePtr>& owners)
{
    const NodePtr owner = owners[&graph];
    for (const Piece& child : ElementsIn(graph)) {
        if (kindOf(child) == ElementKind::Graph)
            readGraph(child, owners);
        if (child.text != kBackdrop || !owner)
            continue;
        const auto backdrop = std::make_shared<Backdrop>(child);
        backdrop->m_state.owner = owner;
        backdrop->m_state.name = attributeOf(child, "name");
        for (const std::string& name : namesIn(attributeOf(child, "contains"))) {
            const NodePtr node = owner->getAsCompound()->nodes()[name.c_str()];
            if (node && backdrop->m_readNodes.emplace(name, node).second)
                backdrop->m_state.nodes.push_back(node);
        }
        m_all.push_back(backdrop);
        m_byElement[&child] = backdrop;
    }
}

void Backdrops::clear()
{
    m_byElement.clear();
    m_all.clear();
}

std::vector<BackdropPtr> Backdrops::in(ZEL::Compound& compound) const
{
    const NodePtr owner = m_all.empty() ? nullptr : compound.getAsNode();
    std::vector<BackdropPtr> found;
    for (const BackdropPtr& backdrop : m_all) {
        if (backdrop->owner() == owner)
            found.push_back(backdrop);
    }
    return found;
}

BackdropPtr Backdrops::named(ZEL::Compound& compound, const std::string& name) const
{
    const NodePtr owner = m_all.empty() || name.empty() ? nullptr : compound.getAsNode();
    if (!owner)
        return nullptr;
    const auto found = std::find_if(m_all.begin(), m_all.end(), [&](const BackdropPtr& backdrop) {
        return backdrop->owner() == owner && backdrop->name() == name;
    });
    return found == m_all.end() ? nullptr : *found;
}

BackdropPtr Backdrops::of(const Piece& element) const
{
    const auto found = m_byElement.find(&element);
    return found == m_byElement.end() ? nullptr : found->second;
}

BackdropPtr Backdrops::add()
{
    m_all.push_back(std::make_shared<Backdrop>());
    m_byElement[&m_all.back()->element()] = m_all.back();
    return m_all.back();
}

void Backdrops::set(const BackdropPtr& backdrop, const Backdrop::State& state)
{
    if (state == backdrop->state())
        return;
    m_document.journal().setsBackdrop(*this, backdrop, state);
    backdrop->m_state = state;
}

} // namespace shading
