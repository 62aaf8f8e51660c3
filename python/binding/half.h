#pragma once

#include "binding/interpreter.h"

namespace zelpython {

/// The half in C++ of an object that was made in Python, whose class may be written there. The
/// object asks its Python half for the overrides.
class Half {
public:
    Half() = default;
    Half(const Half&) = delete;
    Half& operator=(const Half&) = delete;
    virtual ~Half() = default;

    /// The Python half, borrowed. Null before it is known, from when it begins to die, and when the
    /// interpreter ends: then the base class answers.
    PyObject* self() const { return isInterpreterAlive() && isHalfThere() ? m_self : nullptr; }
    /// The same, also while the interpreter ends: for the collector, which asks nobody.
    PyObject* selfForCollector() const { return m_self; }
    /// Tells the C++ half its Python half, which is just being made, or null when that dies.
    void attach(PyObject* self) { m_self = self; }

protected:
    // What Python has begun to free must not be given to anybody: it would be freed twice.
    bool isHalfThere() const { return m_self && Py_REFCNT(m_self) > 0; }

    PyObject* m_self = nullptr; ///< Borrowed; see CountedHalf.
};

/// The half of a counted object. Who is counted changes hands:
///
/// When Python owns, the Python half holds one reference of the C++ half, which only borrows the
/// Python half. When C++ owns, the C++ half holds one reference of its Python half, and the count
/// of the C++ half is what C++ holds: identity, attributes and overrides stay as long as C++ holds
/// the object.
///
/// Python gives the object away whenever it passes it to the library (toCpp), and gets it back when
/// the library lets go of the last reference (toPython, from deleteThis).
class CountedHalf : public Half {
public:
    bool isOwnedByCpp() const { return m_isOwnedByCpp; }

    /// The Python half takes the object over, with a reference of its own, unless C++ holds one
    /// already: then C++ owns.
    void onHeld();
    /// The Python half dies. Drops its reference.
    void onDropped();

    /// C++ owns from now on. The caller holds a reference of the C++ half.
    void toCpp();
    /// For deleteThis. True when Python has the object again: nothing more is touched, it may be
    /// gone. False when it is to be destroyed.
    bool toPython();
    /// Runs the finalizer of a Python half that nobody else holds, when what lies around the object
    /// is about to go: whoever takes hold of it in there finds it whole.
    void finalizeUnheld();

    /// True when nobody but the one wrapper of the caller holds the object.
    bool isForsaken() const;

    /// For the finalizer of the Python half: when C++ kept the object by a pointer that it got from
    /// inside, C++ owns from now on, and the Python half lives. False when it may die.
    bool catchInNet();

protected:
    // The count of the C++ half.
    virtual int references() const = 0;
    virtual void addReference() = 0;
    virtual void dropReference() = 0;
    /// C++ let go of the object: no list holds it any more, and it may live longer than what did.
    virtual void onLetGo() {}

private:
    bool m_isOwnedByCpp = false; ///< Then the Python half is owned.
    bool m_wasFinalized = false; ///< The finalizer ran and the object lived on.
};

/// A counted class of the library with a Python half.
template <class Base>
class Halved : public Base, public CountedHalf {
public:
    using Base::Base;

    /// Puts the end off as long as Python holds the object.
    void deleteThis() override
    {
        if (!toPython())
            Base::deleteThis();
    }

protected:
    int references() const override { return this->getRefCount(); }
    void addReference() override { this->addRef(); }
    void dropReference() override { this->release(); }
};

} // namespace zelpython
