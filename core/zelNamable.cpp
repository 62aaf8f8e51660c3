#include "zelCore.h"
#include "zelNameIndex.h"
#include "zelText.h"

#include <cstring>

namespace ZEL {

Namable::Namable() = default;

Namable::Namable(const char* name) : m_name(orEmpty(name)) {}

Namable::Namable(std::string&& name) : m_name(std::move(name)) {}

Namable::Namable(const Namable& other) : m_name(other.getName()) {}

Namable::~Namable() = default;

const char* Namable::getName() const
{
    return m_name.c_str();
}

void Namable::setName(const char* name)
{
    if (!name)
        return;
    // Copied before the old text is freed: name may point into it.
    std::string copy(name);
    replaceName(copy);
}

void Namable::appendString(const char* text)
{
    if (!text)
        return;
    std::string longer(m_name);
    longer += text;
    replaceName(longer);
}

bool Namable::operator==(const Namable& other) const
{
    return std::strcmp(getName(), other.getName()) == 0;
}

/// The one place where a name changes: the index that knows the name is told.
void Namable::replaceName(std::string& name)
{
    if (m_index)
        m_index->rename(*this, name);
    else
        m_name.swap(name);
}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): setName takes the object's own name.
Namable& Namable::operator=(const Namable& other)
{
    setName(other.getName());
    return *this;
}

} // namespace ZEL
