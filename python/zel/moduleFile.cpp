#include "zel/moduleFile.h"

#include "binding/error.h"
#include "binding/text.h"

#if defined(_WIN32)
#include <memory>
#include <windows.h>
#else
#include <dlfcn.h>
#include <string>
#endif

namespace zelpython {

namespace py = pybind11;

namespace {

[[noreturn]] void raiseNoPath()
{
    PyErr_SetString(PyExc_OSError, "a module needs a path");
    throw py::error_already_set();
}

} // namespace

#if defined(_WIN32)

ModuleFile::ModuleFile(const py::object& path)
    : m_path(py::module_::import("os").attr("fsdecode")(path))
{
    if (m_path.contains(py::str(std::string(1, '\0'))))
        throw py::value_error("a path has no NUL in it");
}

void ModuleFile::load() const
{
    if (py::len(m_path) == 0)
        raiseNoPath();
    // A full path, which the flags need: what the module needs is searched for beside it.
    const py::object full = py::module_::import("os").attr("path").attr("abspath")(m_path);
    const std::unique_ptr<wchar_t, void (*)(void*)> wide(
        PyUnicode_AsWideCharString(full.ptr(), nullptr), PyMem_Free);
    if (!wide)
        throw py::error_already_set();
    const DWORD flags = LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS;
    if (LoadLibraryExW(wide.get(), nullptr, flags))
        return;
    PyErr_SetExcFromWindowsErrWithFilenameObject(PyExc_OSError, 0, m_path.ptr());
    throw py::error_already_set();
}

#else

ModuleFile::ModuleFile(const py::object& path)
    : m_path(py::module_::import("os").attr("fsencode")(path))
{
    const std::string text = py::bytes(m_path);
    if (text.find('\0') != std::string::npos)
        throw py::value_error("a path has no NUL in it");
}

void ModuleFile::load() const
{
    const std::string text = py::bytes(m_path);
    if (text.empty())
        raiseNoPath();
    if (dlopen(text.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE))
        return;
    const char* const reason = dlerror();
    PyErr_SetObject(PyExc_OSError, toPython(reason ? reason : text.c_str()).ptr());
    throw py::error_already_set();
}

#endif

} // namespace zelpython
