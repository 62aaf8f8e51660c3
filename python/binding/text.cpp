#include "binding/text.h"

namespace zelpython {

namespace py = pybind11;

namespace {

std::string_view withoutNul(const char* data, Py_ssize_t size)
{
    const std::string_view view(data, static_cast<std::size_t>(size));
    if (view.find('\0') != std::string_view::npos)
        throw py::value_error("a text of the library has no NUL in it");
    return view;
}

} // namespace

py::str toPython(std::string_view text)
{
    PyObject* const made =
        PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
    if (!made)
        throw py::error_already_set();
    return py::reinterpret_steal<py::str>(made);
}

bool toText(py::handle object, Text& text)
{
    if (!PyUnicode_Check(object.ptr()))
        return false;
    Py_ssize_t size = 0;
    if (const char* const data = PyUnicode_AsUTF8AndSize(object.ptr(), &size)) {
        text.view = withoutNul(data, size);
        return true;
    }
    PyErr_Clear();
    text.owner = PyRef::steal(PyUnicode_AsEncodedString(object.ptr(), "utf-8", "surrogateescape"));
    if (!text.owner)
        throw py::error_already_set();
    text.view = withoutNul(PyBytes_AS_STRING(text.owner.get()), PyBytes_GET_SIZE(text.owner.get()));
    return true;
}

} // namespace zelpython
