#pragma once

#include <Python.h>
#include <utility>

namespace zelpython {

/// False from the moment the interpreter begins to end: no override is asked any more.
bool isInterpreterAlive();
/// False when it has ended: nothing of Python is touched any more, and what is left of the C++
/// objects dies alone. Until then counts go on.
bool isInterpreterThere();

/// Owns one reference of a Python object. At the interpreter's end the reference is left alone.
class PyRef {
public:
    PyRef() = default;
    /// Takes a reference of its own; null is none.
    static PyRef borrow(PyObject* object)
    {
        Py_XINCREF(object);
        return PyRef(object);
    }
    /// Takes over the caller's reference; null is none.
    static PyRef steal(PyObject* object) { return PyRef(object); }
    PyRef(const PyRef& other) : PyRef(borrow(other.m_object)) {}
    PyRef(PyRef&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    PyRef& operator=(PyRef other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~PyRef();

    /// Borrowed; null when empty.
    PyObject* get() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    /// The reference is the caller's from now on.
    PyObject* release() { return std::exchange(m_object, nullptr); }

private:
    explicit PyRef(PyObject* object) : m_object(object) {}

    PyObject* m_object = nullptr; ///< Owned. Null: none.
};

} // namespace zelpython
