#pragma once

#include "binding/entry.h"
#include "binding/enumeration.h"
#include "binding/text.h"
#include "binding/wrapperCaster.h"
#include "zel/collector.h"

#include <pybind11/pybind11.h>

#include <string>

namespace zelpython {

namespace py = pybind11;

/// The text of a class for repr: its name, and the object's own.
std::string describe(const char* typeName, const char* ownName);

/// What every class of the library has. Copies, pickles and objects that were never initialised are
/// a TypeError; an unknown argument of the kind "no such overload" is one anyway.
template <class T, class Class>
void protect(Class& bound)
{
    py::detail::get_type_info(typeid(T), true)->operator_new = [](std::size_t) -> void* {
        throw py::type_error("the object is not there: __init__ was not called, or C++ destroyed it");
    };
    bound.def("__reduce_ex__", [](const py::object& self, int) {
        throw py::type_error("cannot copy or pickle a "
                             + std::string(Py_TYPE(self.ptr())->tp_name));
    });
}

/// The operations of Namable, for a class that has them.
template <class T, class Class>
void defineNames(Class& bound)
{
    bound.def("getName", guarded([](const T& self) { return toPython(self.getName()); }));
    bound.def("sameName",
              guarded([](const T& self, const T& other) {
                  return std::string_view(self.getName()) == other.getName();
              }),
              py::arg("other"));
    bound.def("__repr__", [](const py::object& self) {
        return py::str("<{}.{} {!r}>")
            .format(py::type::of(self).attr("__module__"),
                    py::type::of(self).attr("__qualname__"), self.attr("getName")());
    });
}

/// The virtual operations of Namable. Py is the class with a Python half; called on such an object
/// the base answers, since it is the override that calls.
template <class T, class Py, class Safe, class Class>
void defineNaming(Class& bound)
{
    bound.def("setName",
              guarded([](T& self, const OptionalText& name) {
                  if (auto* const half = dynamic_cast<Py*>(&self))
                      half->Safe::setName(name);
                  else
                      self.setName(name);
              }),
              py::arg("name").none(true));
    bound.def("appendString",
              guarded([](T& self, const OptionalText& text) {
                  if (auto* const half = dynamic_cast<Py*>(&self))
                      half->Safe::appendString(text);
                  else
                      self.appendString(text);
              }),
              py::arg("text").none(true));
}

/// The count of holders, for a class that has one.
template <class T, class Class>
void defineCount(Class& bound)
{
    bound.def("getRefCount", guarded([](const T& self) { return self.getRefCount(); }));
}

/// Finishes an object that is being made by its __init__: from here on it has its Python half.
template <class T>
void initialise(py::detail::value_and_holder& place, T* object)
{
    place.value_ptr() = object;
    place.type->init_instance(place.inst, nullptr);
}

inline PyObject* selfOf(py::detail::value_and_holder& place)
{
    return reinterpret_cast<PyObject*>(place.inst);
}

/// True when the class of the object is written in Python.
inline bool isDerived(py::detail::value_and_holder& place)
{
    return Py_TYPE(selfOf(place)) != place.type->type;
}

// The classes, in the order in which they are made.
void bindPorts(py::module_& module);
void bindNodes(py::module_& module);
void bindCompound(py::module_& module);
void bindContainer(py::module_& module);
void bindLibrary(py::module_& module);
void bindRuntime(py::module_& module);
void bindPlugins(py::module_& module);
void bindCommands(py::module_& module);
void bindEditor(py::module_& module);
void bindPropertyList(py::module_& module);
void bindDebug(py::module_& module);

} // namespace zelpython
