#pragma once

#include "binding/interpreter.h"

#include <pybind11/pybind11.h>
#include <string>
#include <string_view>

namespace zelpython {

/// A text from Python, for as long as the call lasts: bytes that are no UTF-8 come back as they
/// went out. One with a NUL in it is a ValueError, for the library would see its beginning only.
struct Text {
    std::string_view view; ///< Ends with a NUL.
    PyRef owner; ///< Of bytes made for this text; usually they lie in Python's own object.

    operator const char*() const { return view.data(); }
    std::string string() const { return std::string(view); }
};

/// The same, where None is no text and gives a null pointer.
struct OptionalText {
    Text text;

    operator const char*() const { return text.view.data(); }
};

/// A new str, also of bytes that are no UTF-8.
pybind11::str toPython(std::string_view text);

/// False when the object is no str. Raises ValueError and UnicodeEncodeError.
bool toText(pybind11::handle object, Text& text);

} // namespace zelpython

namespace pybind11::detail {

template <>
struct type_caster<zelpython::Text> {
    PYBIND11_TYPE_CASTER(zelpython::Text, const_name("str"));
    bool load(handle source, bool /*convert*/) { return zelpython::toText(source, value); }
};

template <>
struct type_caster<zelpython::OptionalText> {
    PYBIND11_TYPE_CASTER(zelpython::OptionalText, const_name("Optional[str]"));
    bool load(handle source, bool /*convert*/)
    {
        return source.is_none() || zelpython::toText(source, value.text);
    }
};

} // namespace pybind11::detail
