#pragma once

#include "binding/entry.h"
#include "binding/enumeration.h"
#include "binding/text.h"
#include "binding/wrapperCaster.h"
#include "zel/collector.h"

#include <functional>
#include <pybind11/pybind11.h>
#include <string>

namespace zelpython {

namespace py = pybind11;

/// What the headers say about the operation, for its docstring; "" when they say nothing.
const char* docOf(const char* className, const char* name);

/// Puts off what is to be defined until all classes are there: a signature names only those by
/// their names in Python.
void defineLater(std::function<void()> define);
/// Defines all that was put off.
void defineAll();

/// A class of the library on its way into the module: each of its operations is a call from Python
/// that is marked as one, with what the header says about it.
template <class Class>
class Binding {
public:
    using T = typename Class::type;

    template <class... Extra>
    Binding(py::module_& module, const char* name, const Extra&... extra)
        : m_class(module, name, docOf(name, ""), extra...),
          m_name(name)
    {
        m_class.attr("__module__") = "zel";
        // Of an object that was never initialised pybind11 would allocate the memory, and use it.
        py::detail::get_type_info(typeid(T), true)->operator_new = [](std::size_t) -> void* {
            throw py::type_error(
                "the object is not there: __init__ was not called, or C++ destroyed it");
        };
        // As people know it, in messages.
        auto* const type = reinterpret_cast<PyTypeObject*>(m_class.ptr());
        type->tp_name = py::detail::c_str("zel." + std::string(name));
        // An object of one class must not be read as one of another.
        const py::object sameClass =
            py::module_::import("builtins")
                .attr("property")(py::cpp_function(
                    [](const py::handle& self) { return py::type::handle_of(self); }));
        PyDict_SetItemString(type->tp_dict, "__class__", sameClass.ptr());
        PyType_Modified(type);
        def("__reduce_ex__", [](const py::object& self, int) -> py::object {
            throw py::type_error("cannot copy or pickle a " +
                                 std::string(Py_TYPE(self.ptr())->tp_name));
        });
    }

    template <class Function, class... Extra>
    Binding& def(const char* name, Function function, const Extra&... extra)
    {
        defineLater([type = m_class, doc = docOf(m_name, name), name, function,
                     extra...]() mutable { type.def(name, guarded(function), extra..., doc); });
        return *this;
    }
    template <class Function, class... Extra>
    Binding& defStatic(const char* name, Function function, const Extra&... extra)
    {
        defineLater(
            [type = m_class, doc = docOf(m_name, name), name, function, extra...]() mutable {
                type.def_static(name, guarded(function), extra..., doc);
            });
        return *this;
    }
    /// __init__(self, place, arguments): puts the object into the place; see initialise.
    template <class Function, class... Extra>
    Binding& defInit(Function function, const Extra&... extra)
    {
        return def("__init__", function, py::detail::is_new_style_constructor(), extra...);
    }

    /// The operations of Namable that are not virtual or not overridden.
    Binding& defNames()
    {
        def("getName", [](const T& self) { return toPython(self.getName()); });
        def(
            "sameName",
            [](const T& self, const T& other) {
                return std::string_view(self.getName()) == other.getName();
            },
            py::arg("other").none(false));
        def("__repr__", [](const py::object& self) {
            return py::str("<{}.{} {!r}>")
                .format(py::type::of(self).attr("__module__"),
                        py::type::of(self).attr("__qualname__"), self.attr("getName")());
        });
        return *this;
    }
    /// The virtual ones. Half is the class with a Python half; Safe, its base, answers for it,
    /// since it is an override that calls.
    template <class Half, class Safe>
    Binding& defNaming()
    {
        def(
            "setName",
            [](T& self, const OptionalText& name) {
                if (auto* const half = dynamic_cast<Half*>(&self))
                    half->Safe::setName(name);
                else
                    self.setName(name);
            },
            py::arg("name").none(true));
        def(
            "appendString",
            [](T& self, const OptionalText& text) {
                if (auto* const half = dynamic_cast<Half*>(&self))
                    half->Safe::appendString(text);
                else
                    self.appendString(text);
            },
            py::arg("text").none(true));
        return defNames();
    }
    /// The count of a class that has one.
    Binding& defCount()
    {
        return def("getRefCount", [](const T& self) { return self.getRefCount(); });
    }

    Class& type() { return m_class; }

private:
    Class m_class;
    const char* m_name;
};

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

/// A text that may be none: None.
py::object optionalText(const char* text);
/// Raises ReferenceError: the object that the Python object stood for is gone.
[[noreturn]] void raiseReferenceError(const char* reason);

/// Calls a function of Python from within an operation: what it raises is put away.
void callBack(const py::function& function, const py::object& argument);

/// Calls it for the nodes from the outermost ancestor down to that of the object.
template <class T>
void recurseParentFirst(T& self, py::function callback)
{
    self.recurse_parent_first(
        [](ZEL::Node* node, void* data) {
            callBack(*static_cast<py::function*>(data), toObject(node));
        },
        &callback);
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
