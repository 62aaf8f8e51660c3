// The one place that looks at how a class answers getName.

#include "core/zelNameIndex.h"
#include "zelNode.h"

#include <cstring>
#include <typeinfo>

namespace ZEL {

#if defined(__linux__) && (defined(__x86_64__) || defined(__aarch64__))

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

#else

bool hasPlainName(const Namable& object)
{
    return typeid(object) == typeid(Node) || typeid(object) == typeid(Port);
}

#endif

} // namespace ZEL
