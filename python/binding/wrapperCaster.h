#pragma once

#include "binding/owned.h"

#include <pybind11/pybind11.h>
#include <type_traits>

namespace zelpython {

/// How pybind11 knows the class; asked for once.
template <class T>
const pybind11::detail::type_info* typeOf()
{
    static const pybind11::detail::type_info* const type =
        pybind11::detail::get_type_info(typeid(T), true);
    return type;
}

/// The Python object that stands for the pointer, a new reference; empty when there is none. None
/// when Python has begun to free it.
pybind11::object presentObject(void* pointer, const pybind11::detail::type_info* type);

/// The Python object of one of the library's: the one that is there, or a new one. None for null,
/// and for an object that is being destroyed, whom nobody may hold any more: a finalizer of
/// something in it may still find it.
template <class T>
pybind11::object toObject(T* object)
{
    constexpr int kDying = 1 << 29; // The library counts from far above, as it destroys.
    if constexpr (std::is_base_of_v<ZEL::ReferenceCounted, T>) {
        if (object && object->getRefCount() > kDying)
            return pybind11::none();
    }
    if (pybind11::object present = presentObject(object, typeOf<T>()))
        return present;
    return pybind11::reinterpret_steal<pybind11::object>(
        pybind11::detail::type_caster_generic::cast(object,
                                                    pybind11::return_value_policy::take_ownership,
                                                    {}, typeOf<T>(), nullptr, nullptr));
}

} // namespace zelpython

namespace zelpython {

/// The classes that arguments and self are of most often.
template <class T>
inline constexpr bool kIsLookedUpOnce =
    kLiesInDocument<T> || std::is_same_v<T, ZEL::Container> || std::is_same_v<T, ZEL::Runtime> ||
    std::is_same_v<T, ZEL::PortDataType> || std::is_same_v<T, ZEL::NodeDefinition> ||
    std::is_same_v<T, ZEL::NodeLibrary> || std::is_same_v<T, ZEL::HostEditor>;

} // namespace zelpython

namespace pybind11::detail {

/// As pybind11 casts each class that is bound, which searches two tables by the name of the class
/// for each argument of each call; here the class is looked up once.
template <class T>
struct type_caster<T, std::enable_if_t<zelpython::kIsLookedUpOnce<T>>> : type_caster_generic {
    // NOLINTNEXTLINE(readability-identifier-naming): pybind11's name.
    static constexpr auto name = const_name<T>();
    template <class U>
    using cast_op_type = detail::cast_op_type<U>;

    type_caster() : type_caster_generic(zelpython::typeOf<T>()) {}

    template <class Source>
    static handle cast(Source&& source, return_value_policy policy, handle parent)
    {
        return type_caster_base<T>::cast(std::forward<Source>(source), policy, parent);
    }

    operator T*() { return static_cast<T*>(value); }
    operator T&()
    {
        if (!value)
            throw reference_cast_error();
        return *static_cast<T*>(value);
    }
};

/// A wrapper of the library, from and to Python. None is an empty one. An object with a
/// Python half belongs to C++ from here on, and until C++ lets it go.
template <class T>
struct type_caster<ZEL::AddRefWrapper<T>> {
    PYBIND11_TYPE_CASTER(ZEL::AddRefWrapper<T>, make_caster<T>::name);

    bool load(handle source, bool /*convert*/)
    {
        if (source.is_none())
            return true;
        type_caster_generic object(zelpython::typeOf<T>());
        if (!object.load(source, false))
            return false;
        auto* const pointer = static_cast<T*>(object.value);
        value = pointer;
        if (auto* const half = dynamic_cast<zelpython::CountedHalf*>(pointer))
            half->toCpp();
        return true;
    }

    static handle cast(const ZEL::AddRefWrapper<T>& source, return_value_policy, handle)
    {
        return zelpython::toObject(source.get()).release();
    }
};

} // namespace pybind11::detail
