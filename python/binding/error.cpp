#include "binding/error.h"

#include "binding/shared.h"
#include "binding/text.h"

namespace zelpython {

namespace py = pybind11;

void raiseError(const std::string& reason, const std::string& path)
{
    const py::handle type(shared().errorClass.get());
    py::object error = type(toPython(path.empty() ? reason : path + ": " + reason));
    error.attr("reason") = toPython(reason);
    error.attr("path") = path.empty() ? py::object(py::none()) : py::object(toPython(path));
    PyErr_SetObject(type.ptr(), error.ptr());
    throw py::error_already_set();
}

void createErrorClass()
{
    py::dict attributes;
    attributes["path"] = py::none();
    attributes["reason"] = "";
    shared().errorClass = PyRef::steal(PyErr_NewExceptionWithDoc(
        "zel.Error",
        "An operation that the library or the sample host refused.\n\n"
        "reason: why, as a text for people. path: of the object or file; None when there is none.",
        PyExc_Exception, attributes.ptr()));
    if (!shared().errorClass)
        throw py::error_already_set();
}

} // namespace zelpython
