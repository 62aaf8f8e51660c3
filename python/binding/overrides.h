#pragma once

#include "binding/entry.h"
#include "binding/enumeration.h"
#include "binding/half.h"
#include "binding/text.h"
#include "binding/wrapperCaster.h"

#include <array>
#include <cstddef>
#include <pybind11/pybind11.h>
#include <string>
#include <type_traits>

namespace zelpython {

/// One operation of a library's class that a Python class may override. Looked up in the class of
/// the object at every call, as Python looks up a method of its own: an attribute of the object is
/// no override, and one that is set on the class later is.
class Override {
public:
    template <class Base>
    static Override of(const char* name)
    {
        return Override(typeOf<Base>()->type, name);
    }

    /// The function in the object's class, borrowed; null when it has none but the library's.
    PyObject* find(PyObject* self) const;
    /// Calls the function with the object and the arguments. Empty after an error.
    PyRef call(PyObject* self, PyObject* function, PyObject* const* args, std::size_t count) const;
    /// Puts away a TypeError that says what the answer should have been.
    void refuseAnswer(PyObject* self, PyObject* answer, const char* wanted) const;
    /// The answer as a number; what is none is put away as an error.
    int numberOf(PyObject* self, PyObject* answer, int none) const;

private:
    Override(PyTypeObject* base, const char* name);

    PyObject* m_name; ///< Owned, for the life of the process.
    PyObject* m_base; ///< The library's own function. Owned likewise.
};

/// What an override is called with, as Python objects; of an enumeration see enumeration.h.
inline pybind11::object toArgument(pybind11::object value)
{
    return value;
}
inline pybind11::object toArgument(int value)
{
    return pybind11::int_(value);
}
inline pybind11::object toArgument(const char* text)
{
    return text ? pybind11::object(toPython(std::string_view(text))) : pybind11::none();
}
template <class T>
pybind11::object toArgument(const ZEL::AddRefWrapper<T>& object)
{
    return toObject(object.get());
}

/// Calls the override when there is one and gives its answer to use(answer), or null when it
/// raised; what was raised is put away. Without an override it returns what instead() does.
template <class Use, class Instead, class... Args>
auto dispatch(
    const Half& half, const Override& override, Use use, Instead instead, const Args&... args)
    -> decltype(instead())
{
    PyObject* const self = half.self();
    PyObject* const function = self ? override.find(self) : nullptr;
    if (!function)
        return instead();
    const PyRef held = PyRef::borrow(self); // The object may be dropped in the call.
    try {
        const std::array<pybind11::object, sizeof...(Args) + 1> objects{toArgument(args)...,
                                                                        pybind11::object()};
        std::array<PyObject*, sizeof...(Args) + 1> plain{};
        for (std::size_t i = 0; i < sizeof...(Args); ++i)
            plain[i] = objects[i].ptr();
        const PyRef answer = override.call(self, function, plain.data(), sizeof...(Args));
        if (answer)
            return use(answer.get());
        putAwayError(self);
    } catch (pybind11::error_already_set& error) {
        error.restore();
        putAwayError(self);
    } catch (const pybind11::builtin_exception& error) {
        error.set_error();
        putAwayError(self);
    } catch (const std::exception& error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
        putAwayError(self);
    }
    return use(nullptr);
}

/// A question: only True and False are answers. False when the override raised.
template <class Instead, class... Args>
bool ask(const Half& half, const Override& override, Instead instead, const Args&... args)
{
    const auto use = [&](PyObject* answer) {
        if (answer && !PyBool_Check(answer))
            override.refuseAnswer(half.self(), answer, "True or False");
        return answer == Py_True;
    };
    return dispatch(half, override, use, instead, args...);
}

/// Something that is told: the answer is not looked at.
template <class Instead, class... Args>
void tell(const Half& half, const Override& override, Instead instead, const Args&... args)
{
    dispatch(
        half, override, [](PyObject* /*answer*/) {}, instead, args...);
}

/// A question for an object; None is an empty wrapper.
template <class T, class Instead, class... Args>
ZEL::AddRefWrapper<T>
askObject(const Half& half, const Override& override, Instead instead, const Args&... args)
{
    const auto use = [&](PyObject* answer) -> ZEL::AddRefWrapper<T> {
        pybind11::detail::make_caster<ZEL::AddRefWrapper<T>> caster;
        if (!answer)
            return nullptr;
        if (!caster.load(answer, false)) {
            override.refuseAnswer(half.self(), answer, typeOf<T>()->type->tp_name);
            return nullptr;
        }
        return pybind11::detail::cast_op<ZEL::AddRefWrapper<T>&>(caster);
    };
    return dispatch(half, override, use, instead, args...);
}

/// A question for a number; the given one when the override raised or answers no int.
template <class Instead, class... Args>
int askNumber(
    const Half& half, const Override& override, int none, Instead instead, const Args&... args)
{
    const auto use = [&](PyObject* answer) {
        return answer ? override.numberOf(half.self(), answer, none) : none;
    };
    return dispatch(half, override, use, instead, args...);
}

/// A question for a text, which is kept where the caller says. Null when the answer is None and
/// mayBeNone, and when the override raised.
template <class Instead, class... Args>
const char* askText(const Half& half,
                    const Override& override,
                    std::string& kept,
                    bool mayBeNone,
                    Instead instead,
                    const Args&... args)
{
    const auto use = [&](PyObject* answer) -> const char* {
        Text text;
        if (!answer || (mayBeNone && answer == Py_None))
            return nullptr;
        if (!toText(answer, text)) {
            override.refuseAnswer(half.self(), answer, mayBeNone ? "a str or None" : "a str");
            return nullptr;
        }
        kept = text.string();
        return kept.c_str();
    };
    return dispatch(half, override, use, instead, args...);
}

} // namespace zelpython
