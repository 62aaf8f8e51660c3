#pragma once

#include "binding/owned.h"
#include "zel.h"

#include <pybind11/pybind11.h>
#include <type_traits>

namespace zelpython {

// What Python's collector of cycles is told. An edge is given only where the library provably holds
// the one reference of what it leads to; what cannot be proven is not given: it may leak, and never
// crashes. Nothing needs to be cleared by the library: each cycle goes through an attribute of a
// Python object, which Python clears.

// The edges of one object.
int visitEdges(ZEL::Node& node, visitproc visit, void* arg);
int visitEdges(ZEL::Compound& compound, visitproc visit, void* arg);
int visitEdges(ZEL::Container& container, visitproc visit, void* arg);
int visitEdges(ZEL::NodeDefinition& definition, visitproc visit, void* arg);
int visitEdges(ZEL::NodeLibrary& library, visitproc visit, void* arg);
int visitEdges(ZEL::Runtime& runtime, visitproc visit, void* arg);
int visitEdges(ZEL::HostEditor& editor, visitproc visit, void* arg);

namespace detail {

/// The object of C++; null as long as it is half built.
template <class T>
T* wholeObject(PyObject* self)
{
    const auto* const instance = reinterpret_cast<pybind11::detail::instance*>(self);
    return instance->simple_layout && instance->simple_holder_constructed
               ? static_cast<T*>(instance->simple_value_holder[0])
               : nullptr;
}

template <class T>
int traverse(PyObject* self, visitproc visit, void* arg)
{
    Py_VISIT(Py_TYPE(self));
    T* const object = wholeObject<T>(self);
    return object ? visitEdges(*object, visit, arg) : 0;
}

/// A wrapper of a list holds the Python half of the list's owner.
template <class List>
int traverseView(PyObject* self, visitproc visit, void* arg)
{
    Py_VISIT(Py_TYPE(self));
    if (wholeObject<List>(self)) {
        const auto* const instance = reinterpret_cast<pybind11::detail::instance*>(self);
        const void* const holder = &instance->simple_value_holder[1];
        Py_VISIT(static_cast<const PyView<List>*>(holder)->owner());
    }
    return 0;
}

/// Frees the object after the collector has lost sight of it; pybind11 does not see to that.
void deallocate(PyObject* self);
/// What Python would have called at the end of the object: its class' own __del__.
void callDel(PyObject* self);

/// The finalizer: the net, then that of a class written in Python.
template <class T>
void finalize(PyObject* self)
{
    const pybind11::error_scope kept;
    auto* const half = dynamic_cast<CountedHalf*>(wholeObject<T>(self));
    if (!half || !half->catchInNet())
        callDel(self);
}

/// Sets __init_subclass__ of the class: one base of the library only.
void guardSubclasses(pybind11::object type);

/// A new object, without its C++ half. A class with two bases of the library is refused here, too,
/// where it slipped through an __init_subclass__ of its own.
PyObject* makeNew(PyTypeObject* type, PyObject* args, PyObject* kwargs);

/// The same for a counted class, which gets the finalizer here: before the class is ready it would
/// become its __del__; and a __del__ in a class, or put there later, takes its place.
template <class T>
PyObject* makeNewCounted(PyTypeObject* type, PyObject* args, PyObject* kwargs)
{
    type->tp_finalize = finalize<T>;
    return makeNew(type, args, kwargs);
}

} // namespace detail

/// The classes whose objects may be a CountedHalf.
template <class T>
inline constexpr bool kHasHalf =
    std::is_same_v<T, ZEL::Node> || std::is_same_v<T, ZEL::Compound> ||
    std::is_same_v<T, ZEL::NodeDefinition> || std::is_same_v<T, ZEL::NodeLibrary>;

/// For the making of a class: its objects take part in collections.
template <class T>
pybind11::custom_type_setup collected()
{
    return pybind11::custom_type_setup([](PyHeapTypeObject* heap) {
        PyTypeObject& type = heap->ht_type;
        type.tp_flags |= Py_TPFLAGS_HAVE_GC;
        if constexpr (std::is_same_v<T, ZEL::PortList> || std::is_same_v<T, ZEL::NodeList>)
            type.tp_traverse = detail::traverseView<T>;
        else
            type.tp_traverse = detail::traverse<T>;
        type.tp_dealloc = detail::deallocate;
        type.tp_new = detail::makeNew;
        if constexpr (kHasHalf<T>)
            type.tp_new = detail::makeNewCounted<T>;
    });
}

/// For a class that may be derived from in Python.
template <class T>
void guardSubclasses(pybind11::object type)
{
    detail::guardSubclasses(std::move(type));
}

} // namespace zelpython
