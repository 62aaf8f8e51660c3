#include "shading/problems.h"

#include "binding/error.h"

#include <cstring>
#include <pybind11/pybind11.h>

namespace zelshading {

namespace py = pybind11;

void raiseOSError(int number, const std::string& path)
{
    const auto name = py::reinterpret_steal<py::object>(
        PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<Py_ssize_t>(path.size())));
    const py::tuple arguments = py::make_tuple(number, std::strerror(number), name);
    PyErr_SetObject(PyExc_OSError, arguments.ptr());
    throw py::error_already_set();
}

void raiseMessages(const std::vector<shading::Message>& messages, const std::string& path)
{
    std::string reason;
    for (const shading::Message& message : messages) {
        if (!message.isError)
            continue;
        if (message.systemError != 0)
            raiseOSError(message.systemError, message.file);
        const std::string where = "line " + std::to_string(message.line) + ", column " +
                                  std::to_string(message.column) + ": ";
        reason += (reason.empty() ? "" : "\n" + message.file + ": ") + where + message.text;
    }
    zelpython::raiseError(reason, path);
}

void raiseProblems(const std::vector<shading::SaveProblem>& problems)
{
    std::string reason;
    for (const shading::SaveProblem& problem : problems) {
        if (problem.systemError != 0)
            raiseOSError(problem.systemError, problem.path);
        reason += reason.empty() ? problem.reason : "\n" + problem.path + ": " + problem.reason;
    }
    zelpython::raiseError(reason, problems.empty() ? "" : problems.front().path);
}

} // namespace zelshading
