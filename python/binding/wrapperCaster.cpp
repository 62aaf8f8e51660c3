#include "binding/wrapperCaster.h"

namespace zelpython {

namespace py = pybind11;

py::object presentObject(void* pointer, const py::detail::type_info* type)
{
    const auto& instances = py::detail::get_internals().registered_instances;
    const auto range = instances.equal_range(pointer);
    for (auto place = range.first; place != range.second; ++place) {
        auto* const object = reinterpret_cast<PyObject*>(place->second);
        // The class, or one derived from it. None has two bases of the library.
        if (PyType_IsSubtype(Py_TYPE(object), type->type) == 0)
            continue;
        return Py_REFCNT(object) > 0 ? py::reinterpret_borrow<py::object>(object) : py::none();
    }
    return {};
}

} // namespace zelpython
