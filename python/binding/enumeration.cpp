#include "binding/enumeration.h"

namespace zelpython {

namespace py = pybind11;

PyObject* toMember(const std::type_info& enumeration, int value)
{
    // The map of an IntEnum from values to members.
    const py::handle members(shared().enumerations[enumeration.name()].get());
    const py::int_ number(value);
    PyObject* const member = PyDict_GetItemWithError(members.ptr(), number.ptr());
    return py::reinterpret_borrow<py::object>(member ? member : number.ptr()).release().ptr();
}

void createEnumeration(const std::type_info& enumeration,
                       const py::object& scope,
                       const char* name,
                       std::initializer_list<std::pair<const char*, int>> members)
{
    py::list pairs;
    for (const auto& [key, value] : members)
        pairs.append(py::make_tuple(key, value));
    const py::object made =
        py::module_::import("enum").attr("IntEnum")(name, pairs, py::arg("module") = "zel");
    scope.attr(name) = made;
    for (const auto& [key, value] : members)
        scope.attr(key) = made.attr(key);
    shared().enumerations[enumeration.name()] =
        PyRef::borrow(py::object(made.attr("_value2member_map_")).ptr());
}

} // namespace zelpython
