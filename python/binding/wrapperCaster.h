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

namespace pybind11::detail {

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
