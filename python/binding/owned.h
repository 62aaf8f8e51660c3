#pragma once

#include "binding/half.h"
#include "binding/keepers.h"
#include "binding/shared.h"
#include "zel.h"

#include <type_traits>
#include <typeinfo>
#include <utility>

namespace zelpython {

template <class T>
inline constexpr bool kLiesInDocument
    = std::is_same_v<T, ZEL::Node> || std::is_same_v<T, ZEL::Compound>
      || std::is_same_v<T, ZEL::Port> || std::is_same_v<T, ZEL::PortList>
      || std::is_same_v<T, ZEL::NodeList>;

/// How a Python object holds a counted object of the library: by one reference, and with it the
/// document that the object lies in. An object with a Python half that C++ owns is held the other
/// way round.
template <class T>
class PyOwned {
public:
    explicit PyOwned(T* object)
        : m_object(object), m_half(dynamic_cast<CountedHalf*>(object)), m_live(typeid(T).name())
    {
        if constexpr (kLiesInDocument<T>)
            m_keeper = keeperOf(*object);
        if (m_half)
            m_half->onHeld();
        else
            m_object->addRef();
    }
    PyOwned(PyOwned&& other) noexcept
        : m_keeper(std::move(other.m_keeper)),
          m_object(std::exchange(other.m_object, nullptr)),
          m_half(other.m_half),
          m_live(other.m_live)
    {
    }
    PyOwned& operator=(PyOwned&&) = delete;
    ~PyOwned()
    {
        if (!m_object)
            return;
        if (m_half)
            m_half->onDropped();
        else
            m_object->release();
    }

    T* get() const { return m_object; }

private:
    Keeper m_keeper; ///< Goes last. Null: the object lies in no document of C++.
    T* m_object;     ///< Holds one reference, unless C++ owns it.
    CountedHalf* m_half;    ///< Of the object, or null: not owned.
    LiveCount m_live;
};

/// How a Python object holds one of a class that is not counted: a container, a runtime, an editor.
/// Python owns what was made in Python; what C++ made is only pointed to, and a container of C++ is
/// held through its keeper.
template <class T>
class PyUnique {
public:
    explicit PyUnique(T* object)
        : m_object(object), m_half(dynamic_cast<Half*>(object)), m_live(typeid(T).name())
    {
        if constexpr (std::is_same_v<T, ZEL::Container>)
            m_keeper = keeperOf(*object);
    }
    PyUnique(PyUnique&& other) noexcept
        : m_keeper(std::move(other.m_keeper)),
          m_object(other.m_object),
          m_half(std::exchange(other.m_half, nullptr)),
          m_live(other.m_live)
    {
    }
    PyUnique& operator=(PyUnique&&) = delete;
    ~PyUnique()
    {
        if (!m_half)
            return;
        m_half->attach(nullptr);
        delete m_object;
    }

    T* get() const { return m_object; }

private:
    Keeper m_keeper; ///< Null: nobody keeps the object.
    T* m_object;     ///< Owned when it has a half.
    Half* m_half;    ///< Of the object, or null: not owned.
    LiveCount m_live;
};

} // namespace zelpython
