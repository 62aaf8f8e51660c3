#include "zel/classes.h"

#include <utility>
#include <vector>

namespace zelpython {

namespace {

std::vector<std::function<void()>> g_definitions; ///< Of the module that is being made.

} // namespace

void defineLater(std::function<void()> define)
{
    g_definitions.push_back(std::move(define));
}

void defineAll()
{
    for (const auto& define : std::exchange(g_definitions, {}))
        define();
}

py::object optionalText(const char* text)
{
    return text ? py::object(toPython(text)) : py::none();
}

void raiseReferenceError(const char* reason)
{
    PyErr_SetString(PyExc_ReferenceError, reason);
    throw py::error_already_set();
}

void callBack(const py::function& function, const py::object& argument)
{
    try {
        function(argument);
    } catch (py::error_already_set& error) {
        error.restore();
        putAwayError(function.ptr());
    }
}

} // namespace zelpython
