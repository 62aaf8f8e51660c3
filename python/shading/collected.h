#pragma once

#include <pybind11/pybind11.h>

namespace zelshading {

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

/// pybind11 does not take an object out of the collector's sight before it frees it.
inline void deallocate(PyObject* self)
{
    PyObject_GC_UnTrack(self);
    pybind11::detail::pybind11_object_dealloc(self);
}

inline PyObject* refuseNew(PyTypeObject* type, PyObject* /*args*/, PyObject* /*kwargs*/)
{
    PyErr_Format(PyExc_TypeError, "%s: it is not made by its class", type->tp_name);
    return nullptr;
}

} // namespace detail

/// For the making of a class whose objects Python makes none of itself.
inline pybind11::custom_type_setup given()
{
    return pybind11::custom_type_setup(
        [](PyHeapTypeObject* heap) { heap->ht_type.tp_new = detail::refuseNew; });
}

/// Likewise, and its objects take part in the collection of cycles.
template <class T>
pybind11::custom_type_setup givenAndCollected()
{
    return pybind11::custom_type_setup([](PyHeapTypeObject* heap) {
        PyTypeObject& type = heap->ht_type;
        type.tp_new = detail::refuseNew;
        type.tp_flags |= Py_TPFLAGS_HAVE_GC;
        type.tp_dealloc = detail::deallocate;
        type.tp_traverse = [](PyObject* self, visitproc visit, void* arg) {
            Py_VISIT(Py_TYPE(self));
            const T* const object = detail::wholeObject<T>(self);
            return object ? object->traverse(visit, arg) : 0;
        };
        type.tp_clear = [](PyObject* self) {
            if (T* const object = detail::wholeObject<T>(self))
                object->clear();
            return 0;
        };
    });
}

} // namespace zelshading
