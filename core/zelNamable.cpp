#include "zelCore.h"

#include <cstring>

namespace ZEL {

Namable::Namable() = default;

Namable::Namable(const char* name) : m_name(name) {}

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
    m_name.swap(copy);
}

void Namable::appendString(const char* text)
{
    if (!text)
        return;
    // Copied before the old text is freed: text may point into it.
    m_name += std::string(text);
}

bool Namable::operator==(const Namable& other) const
{
    return std::strcmp(getName(), other.getName()) == 0;
}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): setName takes the object's own name.
Namable& Namable::operator=(const Namable& other)
{
    setName(other.getName());
    return *this;
}

} // namespace ZEL
