#include "document/attributes.h"

#include "document/backdrops.h"
#include "document/document.h"
#include "document/journal.h"
#include "document/node.h"
#include "document/origins.h"
#include "format/piece.h"

namespace shading {

namespace {

const void* keyOf(const AttributeOwner& owner)
{
    if (owner.node)
        return owner.node.get();
    return owner.port ? static_cast<const void*>(owner.port.get()) : owner.element;
}

} // namespace

const Piece* Attributes::elementOf(const AttributeOwner& owner) const
{
    if (owner.port)
        return m_document.origins().elementOf(*owner.port);
    const auto* const own = dynamic_cast<const Node*>(owner.node.get());
    return own ? own->element() : owner.element;
}

NodePtr Attributes::nodeOf(const AttributeOwner& owner) const
{
    if (owner.element)
        return m_document.getRootNode();
    return owner.port ? owner.port->getParentNode() : owner.node;
}

NodePtr Attributes::frameOwner(const AttributeOwner& owner) const
{
    const BackdropPtr backdrop =
        owner.element ? m_document.backdrops().of(*owner.element) : nullptr;
    return backdrop ? backdrop->owner() : nullptr;
}

const AttributeValue* Attributes::changedValue(const AttributeOwner& owner,
                                               const std::string& name) const
{
    const auto place = m_places.find(keyOf(owner));
    if (place == m_places.end())
        return nullptr;
    const auto& values = m_changed[place->second].values;
    const auto found = values.find(name);
    return found == values.end() ? nullptr : &found->second;
}

std::string Attributes::get(const AttributeOwner& owner, const std::string& name) const
{
    if (const AttributeValue* const value = changedValue(owner, name))
        return value->now();
    const Piece* const element = elementOf(owner);
    return element ? attributeOf(*element, name) : "";
}

std::vector<std::pair<std::string, std::string>> Attributes::all(const AttributeOwner& owner) const
{
    std::vector<std::pair<std::string, std::string>> result;
    const auto add = [&](const std::string& name) {
        const std::string value = get(owner, name);
        if (!value.empty())
            result.emplace_back(name, value);
    };
    const Piece* const element = elementOf(owner);
    for (std::size_t i = 0; element && i < element->attributes.size(); ++i)
        add(std::string(element->attributes[i].name));
    const auto place = m_places.find(keyOf(owner));
    if (place == m_places.end())
        return result;
    for (const auto& [name, value] : m_changed[place->second].values) {
        if (!element || !element->attribute(name))
            add(name);
    }
    return result;
}

void Attributes::set(const AttributeOwner& owner,
                     const std::string& name,
                     const std::optional<AttributeValue>& value)
{
    const AttributeValue* const changed = changedValue(owner, name);
    const auto before = changed ? std::optional(*changed) : std::nullopt;
    if (before == value)
        return;
    journalOf(nodeOf(owner).get()).setsAttribute(*this, owner, name, value);
    const auto [place, isNew] = m_places.emplace(keyOf(owner), m_changed.size());
    if (isNew)
        m_changed.push_back({owner, {}});
    auto& values = m_changed[place->second].values;
    if (value)
        values[name] = *value;
    else
        values.erase(name);
}

} // namespace shading
