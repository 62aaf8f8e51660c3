#include "binding/entry.h"

#include "binding/shared.h"

#include <pybind11/pybind11.h>

namespace zelpython {

namespace {

void writeUnraisable(PyRef type, PyRef value, PyRef trace, void* object)
{
    PyErr_Restore(type.release(), value.release(), trace.release());
    PyErr_WriteUnraisable(static_cast<PyObject*>(object));
}

} // namespace

Entry::Entry()
{
    Shared& calls = shared();
    const unsigned long thread = PyThread_get_thread_ident();
    if (calls.callDepth > 0 && calls.callThread != thread)
        throw std::runtime_error(
            "another thread is in the middle of an operation on a network: one thread at a time");
    calls.callThread = thread;
    ++calls.callDepth;
}

Entry::~Entry()
{
    Shared& calls = shared();
    // Another error is on its way out of the outermost call: this one is not lost.
    if (--calls.callDepth == 0 && calls.errorType) {
        const pybind11::error_scope onItsWay;
        writeUnraisable(std::move(calls.errorType), std::move(calls.errorValue),
                        std::move(calls.errorTrace), nullptr);
    }
}

void Entry::finish()
{
    Shared& calls = shared();
    if (calls.callDepth != 1 || !calls.errorType)
        return;
    PyErr_Restore(calls.errorType.release(), calls.errorValue.release(),
                  calls.errorTrace.release());
    throw pybind11::error_already_set();
}

void putAwayError(void* object)
{
    PyObject* type = nullptr;
    PyObject* value = nullptr;
    PyObject* trace = nullptr;
    PyErr_Fetch(&type, &value, &trace);
    Shared& calls = shared();
    if (calls.callDepth == 0 || calls.errorType) {
        writeUnraisable(PyRef::steal(type), PyRef::steal(value), PyRef::steal(trace), object);
        return;
    }
    calls.errorType = PyRef::steal(type);
    calls.errorValue = PyRef::steal(value);
    calls.errorTrace = PyRef::steal(trace);
}

} // namespace zelpython
