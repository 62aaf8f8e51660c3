#pragma once

#include "binding/half.h"
#include "binding/keepers.h"
#include "binding/severPort.h"
#include "binding/shared.h"
#include "zel.h"

#include <memory>
#include <pybind11/pybind11.h>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace zelpython {

template <class T>
inline constexpr bool kLiesInDocument =
    std::is_same_v<T, ZEL::Node> || std::is_same_v<T, ZEL::Compound> ||
    std::is_same_v<T, ZEL::Port> || std::is_same_v<T, ZEL::PortList> ||
    std::is_same_v<T, ZEL::NodeList>;

/// The number of wrappers of the class, for the tests.
template <class T>
long& wrappersOf()
{
    static long& count = shared().live[typeid(T).name()];
    return count;
}

/// What keeps the document that the object lies in, on the heap; null when nothing does. Holders
/// are two pointers large: then pybind11 keeps them in the Python object itself.
using HeldKeeper = std::unique_ptr<Keeper>;

template <class T>
HeldKeeper holdKeeper(T& object)
{
    Keeper keeper = keeperOf(object);
    return keeper ? std::make_unique<Keeper>(std::move(keeper)) : nullptr;
}

/// How a Python object holds a counted object of the library: by one reference, and with it the
/// document that the object lies in. An object with a Python half that C++ owns is held the other
/// way round.
template <class T>
class PyOwned {
public:
    explicit PyOwned(T* object) : m_object(object)
    {
        if constexpr (kLiesInDocument<T>)
            m_keeper = holdKeeper(*object);
        if (auto* const half = dynamic_cast<CountedHalf*>(object))
            half->onHeld();
        else
            object->addRef();
        ++wrappersOf<T>();
    }
    PyOwned(PyOwned&& other) noexcept
        : m_keeper(std::move(other.m_keeper)),
          m_object(std::exchange(other.m_object, nullptr))
    {
    }
    PyOwned& operator=(PyOwned&&) = delete;
    ~PyOwned()
    {
        if (!m_object)
            return;
        --wrappersOf<T>();
        if constexpr (std::is_same_v<T, ZEL::Port> || std::is_same_v<T, ZEL::PortList>)
            beforeRelease(*m_object);
        if (auto* const half = dynamic_cast<CountedHalf*>(m_object))
            half->onDropped();
        else
            m_object->release();
    }

    T* get() const { return m_object; }

private:
    HeldKeeper m_keeper; ///< Goes last. Null: the object lies in no document of C++.
    T* m_object;         ///< Holds one reference, unless C++ owns it.
};

/// How a Python object holds a list. Where the node or compound of the list has a Python half, it
/// holds that, which has the list: so the collector sees who holds what, and the list has its owner
/// as long as somebody looks at it. Elsewhere it holds the list.
template <class T>
class PyView {
public:
    explicit PyView(T* list)
    {
        auto* const half = ownerOf(*list);
        if (half && half->self())
            m_owner = PyRef::borrow(half->self());
        else
            m_list = std::make_unique<PyOwned<T>>(list);
    }

    /// For the collector: the Python half of the owner, borrowed; null when the list is held.
    PyObject* owner() const { return m_owner.get(); }

private:
    static CountedHalf* ownerOf(ZEL::PortList& list)
    {
        return dynamic_cast<CountedHalf*>(list.getParent());
    }
    static CountedHalf* ownerOf(ZEL::NodeList& list)
    {
        return dynamic_cast<CountedHalf*>(list.getParentCompound().get());
    }

    PyRef m_owner;
    std::unique_ptr<PyOwned<T>> m_list; ///< Null while the owner is held.
};

/// How a Python object holds one of a class that is not counted: a container, a runtime, an editor.
/// Python owns what was made in Python; what C++ made is only pointed to, and a container of C++ is
/// held through its keeper.
template <class T>
class PyUnique {
public:
    explicit PyUnique(T* object) : m_object(object)
    {
        if constexpr (std::is_same_v<T, ZEL::Container> || std::is_same_v<T, ZEL::Runtime>)
            m_keeper = holdKeeper(*object);
        ++wrappersOf<T>();
    }
    PyUnique(PyUnique&& other) noexcept
        : m_keeper(std::move(other.m_keeper)),
          m_object(std::exchange(other.m_object, nullptr))
    {
    }
    PyUnique& operator=(PyUnique&&) = delete;
    ~PyUnique()
    {
        if (!m_object)
            return;
        --wrappersOf<T>();
        if (auto* const half = dynamic_cast<Half*>(m_object)) {
            half->attach(nullptr);
            delete m_object;
        }
    }

    T* get() const { return m_object; }

private:
    HeldKeeper m_keeper; ///< Null: nobody keeps the object.
    T* m_object;         ///< Owned when it was made in Python.
};

} // namespace zelpython

namespace pybind11::detail {

template <class T>
struct is_holder_type<T, zelpython::PyOwned<T>> : std::true_type {
};
template <class T>
struct is_holder_type<T, zelpython::PyView<T>> : std::true_type {
};
template <class T>
struct is_holder_type<T, zelpython::PyUnique<T>> : std::true_type {
};

} // namespace pybind11::detail
