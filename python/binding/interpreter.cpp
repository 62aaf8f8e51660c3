#include "binding/interpreter.h"

namespace zelpython {

bool isInterpreterAlive()
{
    return Py_IsInitialized() != 0 && _Py_IsFinalizing() == 0;
}

PyRef::~PyRef()
{
    // While the interpreter ends it still counts; when it has ended there is nothing to give back
    // to.
    if (m_object && Py_IsInitialized() != 0)
        Py_DECREF(m_object);
}

} // namespace zelpython
