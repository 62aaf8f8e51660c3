#pragma once

#include "zelExport.h"

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

#if defined(ZEL_NAMES_BY_TYPE)
#include <typeinfo>
#endif

namespace ZEL {

#if defined(ZEL_NAMES_BY_TYPE)

class Namable;

/// Notes what a class answers to getName, while the module of this code is loaded; for
/// AddRefWrapper.
class ZEL_API NameClassNote {
public:
    NameClassNote(const std::type_info& type, bool hasPlainName);
    NameClassNote(const NameClassNote&) = delete;
    NameClassNote& operator=(const NameClassNote&) = delete;
    ~NameClassNote();

private:
    const std::type_info& m_type;
    bool m_hasPlainName;
};

/// Whether a class that has a getName takes it over from Namable as it is.
template <class T, class = void>
struct HasPlainName : std::false_type {
};
template <class T>
struct HasPlainName<T, std::void_t<decltype(&T::getName)>>
    : std::is_same<decltype(&T::getName), const char* (Namable::*)() const> {
};

template <class T>
inline const NameClassNote kNameClassNote{typeid(T), HasPlainName<T>::value};

#endif

/// The pointer in which every interface of the library passes counted objects. A wrapper that is
/// not empty owns exactly one reference of its object. T has a ReferenceCounted base, first or not.
template <class T>
class AddRefWrapper {
public:
    using element_type = T;

    AddRefWrapper() = default;
    /// Takes a reference of its own, unless the pointer is null.
    AddRefWrapper(T* object) : m_object(object)
    {
#if defined(ZEL_NAMES_BY_TYPE)
        (void)&kNameClassNote<T>;
#endif
        if (m_object)
            m_object->addRef();
    }
#if defined(ZEL_NAMES_BY_TYPE)
    template <class U,
              class = std::enable_if_t<std::is_convertible_v<U*, T*> && !std::is_same_v<U, T>>>
    AddRefWrapper(U* object) : AddRefWrapper(static_cast<T*>(object))
    {
        (void)&kNameClassNote<U>;
    }
#endif
    AddRefWrapper(const AddRefWrapper& other) : AddRefWrapper(other.m_object) {}
    /// Takes over the reference of the other wrapper, which is left empty; no count changes.
    AddRefWrapper(AddRefWrapper&& other) noexcept : m_object(other.detach()) {}
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    AddRefWrapper(const AddRefWrapper<U>& other) : AddRefWrapper(static_cast<T*>(other.get()))
    {
    }
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    AddRefWrapper(AddRefWrapper<U>&& other) noexcept : m_object(other.detach())
    {
    }
    ~AddRefWrapper()
    {
        if (m_object)
            m_object->release();
    }

    /// Takes the new reference, then drops the old one; nothing happens when both are one object.
    /// The wrapper holds the new object before the old one can die: an object may hold this very
    /// wrapper.
    AddRefWrapper& operator=(T* object)
    {
        if (object != m_object)
            AddRefWrapper(object).swap(*this);
        return *this;
    }
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the pointer's assignment tests for it.
    AddRefWrapper& operator=(const AddRefWrapper& other)
    {
        return *this = other.m_object;
    }
    AddRefWrapper& operator=(AddRefWrapper&& other) noexcept
    {
        AddRefWrapper(std::move(other)).swap(*this);
        return *this;
    }

    /// The object, or null when empty. Not owned by the caller; valid while a reference is held.
    T* get() const
    {
        return m_object;
    }
    T* operator->() const
    {
        return m_object;
    }
    T& operator*() const
    {
        return *m_object;
    }
    explicit operator bool() const
    {
        return m_object != nullptr;
    }

    /// As assigning the pointer.
    void reset(T* object = nullptr)
    {
        *this = object;
    }
    /// Gives up the object without dropping the reference, which the caller owns from now on and
    /// releases. Null when empty.
    T* detach() noexcept
    {
        return std::exchange(m_object, nullptr);
    }
    void swap(AddRefWrapper& other) noexcept
    {
        std::swap(m_object, other.m_object);
    }

private:
    T* m_object = nullptr; ///< Owns one reference. Null: no object.
};

template <class T>
void swap(AddRefWrapper<T>& a, AddRefWrapper<T>& b) noexcept
{
    a.swap(b);
}

/// Wrappers and pointers are equal when they name the same object.
template <class T, class U>
bool operator==(const AddRefWrapper<T>& a, const AddRefWrapper<U>& b)
{
    return a.get() == b.get();
}
template <class T, class U>
bool operator!=(const AddRefWrapper<T>& a, const AddRefWrapper<U>& b)
{
    return a.get() != b.get();
}
template <class T, class U>
bool operator==(const AddRefWrapper<T>& a, U* b)
{
    return a.get() == b;
}
template <class T, class U>
bool operator!=(const AddRefWrapper<T>& a, U* b)
{
    return a.get() != b;
}
template <class T, class U>
bool operator==(U* a, const AddRefWrapper<T>& b)
{
    return a == b.get();
}
template <class T, class U>
bool operator!=(U* a, const AddRefWrapper<T>& b)
{
    return a != b.get();
}
template <class T>
bool operator==(const AddRefWrapper<T>& a, std::nullptr_t)
{
    return !a;
}
template <class T>
bool operator!=(const AddRefWrapper<T>& a, std::nullptr_t)
{
    return static_cast<bool>(a);
}
template <class T>
bool operator==(std::nullptr_t, const AddRefWrapper<T>& b)
{
    return !b;
}
template <class T>
bool operator!=(std::nullptr_t, const AddRefWrapper<T>& b)
{
    return static_cast<bool>(b);
}

/// Wrappers are ordered by the addresses of their objects, as std::less orders them: keys of a map
/// that lives no longer than the program. Names and lists have orders of their own.
template <class T, class U>
bool operator<(const AddRefWrapper<T>& a, const AddRefWrapper<U>& b)
{
    return std::less<std::common_type_t<T*, U*>>()(a.get(), b.get());
}
template <class T, class U>
bool operator>(const AddRefWrapper<T>& a, const AddRefWrapper<U>& b)
{
    return b < a;
}
template <class T, class U>
bool operator<=(const AddRefWrapper<T>& a, const AddRefWrapper<U>& b)
{
    return !(b < a);
}
template <class T, class U>
bool operator>=(const AddRefWrapper<T>& a, const AddRefWrapper<U>& b)
{
    return !(a < b);
}

/// The same object under another of its classes, held by a wrapper of its own. The dynamic cast is
/// empty when the object is no T. The names are those for std::shared_ptr.
// NOLINTBEGIN(readability-identifier-naming)
template <class T, class U>
AddRefWrapper<T> static_pointer_cast(const AddRefWrapper<U>& object)
{
    return static_cast<T*>(object.get());
}
template <class T, class U>
AddRefWrapper<T> dynamic_pointer_cast(const AddRefWrapper<U>& object)
{
    return dynamic_cast<T*>(object.get());
}
// NOLINTEND(readability-identifier-naming)

} // namespace ZEL

/// The hash of the object's address: equal for wrappers that are equal.
template <class T>
struct std::hash<ZEL::AddRefWrapper<T>> {
    std::size_t operator()(const ZEL::AddRefWrapper<T>& object) const noexcept
    {
        return std::hash<T*>()(object.get());
    }
};
