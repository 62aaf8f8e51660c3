// The one place that finds out how a class answers getName.

#include "core/zelNameIndex.h"
#include "zelNode.h"

#if defined(ZEL_NAMES_BY_TYPE)

#include <typeinfo>
#include <unordered_map>

namespace ZEL {

namespace {

/// How many modules have noted a class of that name, by what it answers. Classes of one name that
/// are hidden in their modules may differ: then all of them count as overriding.
struct Notes {
    int plain = 0;
    int overriding = 0;
};

/// By the name of the class: its type information goes with the module that has it.
std::unordered_map<std::string, Notes>& notes()
{
    static auto* const all = new std::unordered_map<std::string, Notes>; // Outlives every module.
    return *all;
}

const NameClassNote kNode(typeid(Node), true);
const NameClassNote kPort(typeid(Port), true);

} // namespace

NameClassNote::NameClassNote(const std::type_info& type, bool hasPlainName)
    : m_type(type),
      m_hasPlainName(hasPlainName)
{
    Notes& of = notes()[type.name()];
    ++(hasPlainName ? of.plain : of.overriding);
}

NameClassNote::~NameClassNote()
{
    const auto of = notes().find(m_type.name());
    if (--(m_hasPlainName ? of->second.plain : of->second.overriding) == 0 &&
        of->second.plain + of->second.overriding == 0)
        notes().erase(of);
}

bool hasPlainName(const Namable& object)
{
    const auto of = notes().find(typeid(object).name());
    return of != notes().end() && of->second.plain > 0 && of->second.overriding == 0;
}

} // namespace ZEL

#else

#include <cstring>

namespace ZEL {

namespace {

/// What the object's virtual table holds for getName: the third slot, behind the two of the
/// destructor.
void* getNameSlot(const Namable& object)
{
    void* const* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(&object), sizeof(table));
    return table[2];
}

/// Null until the library is loaded: no name is taken for plain before.
void* const kOwnGetName = getNameSlot(Namable());

} // namespace

bool hasPlainName(const Namable& object)
{
    return getNameSlot(object) == kOwnGetName;
}

} // namespace ZEL

#endif
