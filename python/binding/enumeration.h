#pragma once

#include "binding/shared.h"
#include "zel.h"

#include <initializer_list>
#include <pybind11/pybind11.h>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace zelpython {

/// A member of the IntEnum that stands for the enumeration; a plain int for a value of the host's
/// own. A new reference.
PyObject* toMember(const std::type_info& enumeration, int value);
/// Makes the IntEnum, and puts it and its members into the scope.
void createEnumeration(const std::type_info& enumeration,
                       const pybind11::object& scope,
                       const char* name,
                       std::initializer_list<std::pair<const char*, int>> members);

template <class E>
inline constexpr bool kIsEnumeration =
    std::is_same_v<E, ZEL::PortIOType> || std::is_same_v<E, ZEL::ECnxChangeType> ||
    std::is_same_v<E, ZEL::ENodeChangeType> || std::is_same_v<E, ZEL::ECompoundPortChangeType> ||
    std::is_same_v<E, ZEL::Container::ESearchMode>;

/// What signatures call it.
template <class E>
constexpr auto enumerationName()
{
    using pybind11::detail::const_name;
    if constexpr (std::is_same_v<E, ZEL::PortIOType>)
        return const_name("zel.PortIOType");
    else if constexpr (std::is_same_v<E, ZEL::ECnxChangeType>)
        return const_name("zel.ECnxChangeType");
    else if constexpr (std::is_same_v<E, ZEL::ENodeChangeType>)
        return const_name("zel.ENodeChangeType");
    else if constexpr (std::is_same_v<E, ZEL::ECompoundPortChangeType>)
        return const_name("zel.ECompoundPortChangeType");
    else
        return const_name("zel.Container.ESearchMode");
}

template <class E, class = std::enable_if_t<kIsEnumeration<E>>>
pybind11::object toArgument(E value)
{
    return pybind11::reinterpret_steal<pybind11::object>(toMember(typeid(E), value));
}

} // namespace zelpython

namespace pybind11::detail {

template <class E>
struct type_caster<E, std::enable_if_t<zelpython::kIsEnumeration<E>>> {
    PYBIND11_TYPE_CASTER(E, zelpython::enumerationName<E>());

    bool load(handle source, bool /*convert*/)
    {
        make_caster<std::int32_t> number;
        if (!PyLong_Check(source.ptr()) || PyBool_Check(source.ptr()) ||
            !number.load(source, false))
            return false;
        value = static_cast<E>(cast_op<std::int32_t>(number));
        return true;
    }

    static handle cast(E source, return_value_policy, handle)
    {
        return zelpython::toMember(typeid(E), source);
    }
};

} // namespace pybind11::detail
