#include "binding/interpreter.h"

namespace zelpython {

bool isInterpreterAlive()
{
    return isInterpreterThere() && _Py_IsFinalizing() == 0;
}

bool isInterpreterThere()
{
    // Py_IsInitialized says no as soon as the end begins.
    return _PyThreadState_UncheckedGet() != nullptr;
}

PyRef::~PyRef()
{
    if (m_object && isInterpreterThere())
        Py_DECREF(m_object);
}

} // namespace zelpython
