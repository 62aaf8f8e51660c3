#include "zelCore.h"
#include "zelText.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace ZEL {

struct PropertyList::Impl {
    std::vector<std::pair<std::string, std::string>> pairs;
    /// Held by pointers so that an addition does not move the lists given out before.
    std::vector<std::pair<std::string, std::unique_ptr<PropertyList>>> children;
};

namespace {

/// Matches an entry whose key or name is exactly the text.
struct NameSearch {
    const char* text;

    template <class Entry>
    bool operator()(const Entry& entry) const
    {
        return entry.first == text;
    }
};

template <class Entries>
bool inRange(const Entries& entries, int index)
{
    return index >= 0 && index < static_cast<int>(entries.size());
}

} // namespace

PropertyList::PropertyList() : m_impl(new Impl) {}

PropertyList::PropertyList(const PropertyList& other) : PropertyList()
{
    m_impl->pairs = other.m_impl->pairs;
    for (const auto& [name, child] : other.m_impl->children)
        m_impl->children.emplace_back(name, std::make_unique<PropertyList>(*child));
}

PropertyList& PropertyList::operator=(const PropertyList& other)
{
    // Copied before the old lists are freed: other may be one of them.
    PropertyList copy(other);
    std::swap(m_impl, copy.m_impl);
    return *this;
}

PropertyList::~PropertyList()
{
    delete m_impl;
}

void PropertyList::addStringPair(const char* key, const char* value)
{
    m_impl->pairs.emplace_back(orEmpty(key), orEmpty(value));
}

const char* PropertyList::getStringPairValue(const char* key)
{
    const auto& pairs = m_impl->pairs;
    const auto found = std::find_if(pairs.begin(), pairs.end(), NameSearch{orEmpty(key)});
    return found == pairs.end() ? nullptr : found->second.c_str();
}

int PropertyList::getNumberOfPairs()
{
    return static_cast<int>(m_impl->pairs.size());
}

bool PropertyList::getStringPairAt(int index, const char** key, const char** value)
{
    if (!inRange(m_impl->pairs, index))
        return false;
    const auto& pair = m_impl->pairs[index];
    *key = pair.first.c_str();
    *value = pair.second.c_str();
    return true;
}

PropertyList* PropertyList::addChildList(const char* name)
{
    m_impl->children.emplace_back(orEmpty(name), std::make_unique<PropertyList>());
    return m_impl->children.back().second.get();
}

PropertyList* PropertyList::getChildList(const char* name)
{
    const auto& children = m_impl->children;
    const auto found = std::find_if(children.begin(), children.end(), NameSearch{orEmpty(name)});
    return found == children.end() ? nullptr : found->second.get();
}

int PropertyList::getNumberOfChildList()
{
    return static_cast<int>(m_impl->children.size());
}

bool PropertyList::getChildListAt(int index, const char** name, PropertyList** list)
{
    if (!inRange(m_impl->children, index))
        return false;
    const auto& child = m_impl->children[index];
    *name = child.first.c_str();
    *list = child.second.get();
    return true;
}

void PropertyList::removeAll()
{
    m_impl->pairs.clear();
    m_impl->children.clear();
}

} // namespace ZEL
