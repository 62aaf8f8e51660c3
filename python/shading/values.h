#pragma once

#include <pybind11/pybind11.h>
#include <string>

namespace zelshading {

// Values of ports: texts in the document, and Python's own in scripts. A float, an integer and a
// boolean are float, int and bool; a list of those, of colours, vectors, matrices and arrays, is a
// flat tuple; any other type is str.

/// None for no value, except where that is an empty str or tuple. A text that the type does not
/// know, as documents may have, is str.
pybind11::object toPythonValue(const std::string& type, const std::string& text);

/// The text of a value. None is no value, and a str is the text itself, whatever the type. Raises
/// TypeError for what is no value of the type, and ValueError for a number or text that no document
/// can hold. Whether the type takes the text, the edit says.
std::string valueText(const std::string& type, pybind11::handle value);

} // namespace zelshading
