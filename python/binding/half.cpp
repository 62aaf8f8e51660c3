#include "binding/half.h"

#include "binding/shared.h"

#include <cstdint>

namespace zelpython {

namespace {

/// What the collector keeps before each object that it knows.
struct CollectorHead {
    std::uintptr_t next;
    std::uintptr_t previous; ///< Its lowest bit: the finalizer has run.
};

/// Python runs the finalizer of an object once. One that was caught in the net is finalized again
/// when its time has come.
void forgetFinalized(PyObject* object)
{
    if (PyObject_IS_GC(object))
        (reinterpret_cast<CollectorHead*>(object) - 1)->previous &= ~std::uintptr_t{1};
}

} // namespace

void CountedHalf::onHeld()
{
    const bool isInCpp = references() > 0;
    addReference();
    if (isInCpp)
        toCpp();
}

void CountedHalf::onDropped()
{
    m_self = nullptr;
    if (references() > 1)
        ++shared().sliced;
    dropReference();
}

void CountedHalf::toCpp()
{
    if (m_isOwnedByCpp || !m_self)
        return;
    m_isOwnedByCpp = true;
    Py_INCREF(m_self);
    dropReference();
}

void CountedHalf::finalizeUnheld()
{
    if (m_self && isInterpreterThere() && Py_REFCNT(m_self) == 1)
        PyObject_CallFinalizer(m_self);
}

bool CountedHalf::isForsaken() const
{
    return references() == 1 && (!m_self || (m_isOwnedByCpp && Py_REFCNT(m_self) == 1));
}

bool CountedHalf::toPython()
{
    if (!m_isOwnedByCpp || !isInterpreterThere())
        return false;
    addReference();
    m_isOwnedByCpp = false;
    PyObject* const self = m_self;
    if (m_wasFinalized) {
        m_wasFinalized = false;
        forgetFinalized(self);
    }
    finalizeUnheld();
    // It may be in a list again.
    if (!m_isOwnedByCpp)
        onLetGo();
    Py_DECREF(self);
    return true;
}

bool CountedHalf::catchInNet()
{
    if (m_isOwnedByCpp || !m_self || references() <= 1)
        return false;
    m_wasFinalized = true;
    toCpp();
    return true;
}

} // namespace zelpython
