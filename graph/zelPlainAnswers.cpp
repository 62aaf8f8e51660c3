// The one place that finds out which of its questions a class answers as the library does.

#include "zelPlainAnswers.h"

#include "core/zelNameIndex.h"
#include "zelCompound.h"
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

bool hasPlainCompound(const Node& /*node*/)
{
    return false;
}

bool hasPlainNodes(const Compound& /*compound*/)
{
    return false;
}

bool agreesLikeNode(const Node& /*node*/)
{
    return false;
}

} // namespace ZEL

#else

#include <cstddef>
#include <cstring>

namespace ZEL {

namespace {

// Slots of the published order, which begins with the two of the destructor in Namable and in
// PortNotification, and with three of ReferenceCounted in the others.
constexpr std::size_t kGetName = 2;
constexpr std::size_t kOnPortAddConnection = 2;
constexpr std::size_t kOnPortRemoveConnection = 3;
constexpr std::size_t kGetAsCompound = 4;
constexpr std::size_t kNodes = 3;

/// What the object's virtual table holds in a slot.
void* slotOf(const void* object, std::size_t slot)
{
    void* const* table = nullptr;
    std::memcpy(&table, object, sizeof(table));
    return table[slot];
}

/// Null until the library is loaded: no name is taken for plain before.
void* const kOwnGetName = slotOf(&static_cast<const Namable&>(Namable()), kGetName);

} // namespace

bool hasPlainName(const Namable& object)
{
    return slotOf(&object, kGetName) == kOwnGetName;
}

bool hasPlainCompound(const Node& node)
{
    static void* const own = slotOf(Node::createNew(nullptr, nullptr).get(), kGetAsCompound);
    return slotOf(&node, kGetAsCompound) == own;
}

bool hasPlainNodes(const Compound& compound)
{
    static void* const own = slotOf(Compound::createNew(nullptr, nullptr).get(), kNodes);
    return slotOf(&compound, kNodes) == own;
}

bool agreesLikeNode(const Node& node)
{
    const auto answer = [](const PortNotification& asked, std::size_t slot) {
        return slotOf(&asked, slot);
    };
    static void* const ownOnAdd = answer(Node(nullptr), kOnPortAddConnection);
    static void* const ownOnRemove = answer(Node(nullptr), kOnPortRemoveConnection);
    return answer(node, kOnPortAddConnection) == ownOnAdd &&
           answer(node, kOnPortRemoveConnection) == ownOnRemove;
}

} // namespace ZEL

#endif
