#include "binding/overrides.h"

#include <vector>

namespace zelpython {

Override::Override(PyTypeObject* base, const char* name)
    : m_name(PyUnicode_InternFromString(name)),
      m_base(_PyType_Lookup(base, m_name))
{
    Py_XINCREF(m_base);
}

PyObject* Override::find(PyObject* self) const
{
    PyObject* const found = _PyType_Lookup(Py_TYPE(self), m_name);
    return found == m_base ? nullptr : found;
}

PyRef Override::call(PyObject* self,
                     PyObject* function,
                     PyObject* const* args,
                     std::size_t count) const
{
    PyTypeObject* const kind = Py_TYPE(function);
    if (PyType_HasFeature(kind, Py_TPFLAGS_METHOD_DESCRIPTOR)) {
        const PyRef held = PyRef::borrow(function); // The class may lose it meanwhile.
        std::vector<PyObject*> all{self};
        all.insert(all.end(), args, args + count);
        return PyRef::steal(PyObject_Vectorcall(function, all.data(), all.size(), nullptr));
    }
    const descrgetfunc get = kind->tp_descr_get;
    const PyRef bound =
        get ? PyRef::steal(get(function, self, reinterpret_cast<PyObject*>(Py_TYPE(self))))
            : PyRef::borrow(function);
    return bound ? PyRef::steal(PyObject_Vectorcall(bound.get(), args, count, nullptr)) : PyRef();
}

void Override::refuseAnswer(PyObject* self, PyObject* answer, const char* wanted) const
{
    PyErr_Format(PyExc_TypeError, "%s.%U must answer %s, not %s", Py_TYPE(self)->tp_name, m_name,
                 wanted, Py_TYPE(answer)->tp_name);
    putAwayError(self);
}

int Override::numberOf(PyObject* self, PyObject* answer, int none) const
{
    if (!PyLong_Check(answer) || PyBool_Check(answer)) {
        refuseAnswer(self, answer, "an int");
        return none;
    }
    const int number = _PyLong_AsInt(answer);
    if (number != -1 || !PyErr_Occurred())
        return number;
    putAwayError(self);
    return none;
}

} // namespace zelpython
