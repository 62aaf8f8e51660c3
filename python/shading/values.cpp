#include "shading/values.h"

#include "binding/text.h"
#include "format/value.h"

#include <charconv>
#include <cmath>
#include <memory>
#include <string_view>

namespace zelshading {

namespace py = pybind11;
using namespace std::literals;

namespace {

std::string withoutBlanks(const std::string& text)
{
    const std::string blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string::npos
               ? ""
               : text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

/// Of a text that the type knows.
py::object partValue(std::string_view type, const std::string& text)
{
    const char* const end = text.data() + text.size();
    if (type == "float"sv) {
        double number = 0;
        std::from_chars(text.data(), end, number);
        return py::float_(number);
    }
    if (type == "integer"sv) {
        int number = 0;
        std::from_chars(text.data(), end, number);
        return py::int_(number);
    }
    if (type == "boolean"sv)
        return py::bool_(text == "true");
    return zelpython::toPython(text);
}

[[noreturn]] void refuseType(const std::string& type, py::handle value)
{
    throw py::type_error("a value of type " + (type.empty() ? "none" : type) + " is not made of " +
                         Py_TYPE(value.ptr())->tp_name);
}

std::string floatText(double number)
{
    if (!std::isfinite(number))
        throw py::value_error("a document has no infinite numbers, and none that are none");
    const std::unique_ptr<char, void (*)(void*)> text(
        PyOS_double_to_string(number, 'r', 0, 0, nullptr), PyMem_Free);
    if (!text)
        throw py::error_already_set();
    return text.get();
}

/// A number of Python or of a package that has its own.
bool isNumber(py::handle value, bool mayBeFraction)
{
    if (PyBool_Check(value.ptr()) || PyComplex_Check(value.ptr()))
        return false;
    const PyNumberMethods* const methods = Py_TYPE(value.ptr())->tp_as_number;
    return methods && (methods->nb_index || (mayBeFraction && methods->nb_float));
}

std::string textOf(py::handle value)
{
    zelpython::Text text;
    zelpython::toText(value, text);
    return text.string();
}

std::string partText(const std::string& type, py::handle value)
{
    if (PyUnicode_Check(value.ptr()))
        return textOf(value);
    if (type == "boolean" && PyBool_Check(value.ptr()))
        return value.ptr() == Py_True ? "true" : "false";
    if (type == "float" && isNumber(value, true)) {
        const double number = PyFloat_AsDouble(value.ptr());
        if (number == -1 && PyErr_Occurred())
            throw py::error_already_set();
        return floatText(number);
    }
    if (type == "integer" && isNumber(value, false)) {
        const auto number = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
        if (!number)
            throw py::error_already_set();
        return textOf(py::str(number));
    }
    refuseType(type, value);
}

bool isList(py::handle value)
{
    return PyObject_HasAttrString(value.ptr(), "__iter__") && !PyUnicode_Check(value.ptr()) &&
           !PyBytes_Check(value.ptr()) && !PyDict_Check(value.ptr());
}

/// A row of a matrix may stand by itself.
void addParts(const shading::ListType& list, py::handle value, bool mayBeRows, std::string& text)
{
    if (!isList(value))
        refuseType(list.name, value);
    for (const py::handle part : value) {
        if (mayBeRows && isList(part)) {
            addParts(list, part, false, text);
            continue;
        }
        const std::string own = partText(list.part, part);
        if (own.find(',') != std::string::npos)
            throw py::value_error("what stands in a list has no comma: \"" + own + "\"");
        text += (text.empty() ? "" : ", ") + own;
    }
}

} // namespace

py::object toPythonValue(const std::string& type, const std::string& text)
{
    const shading::ListType* const list = shading::listTypeOf(type);
    const bool isAnyCount = list && list->count < 0;
    if (text.empty() && isAnyCount)
        return py::tuple();
    const bool isText = !list && partValue(type, text).get_type().is(py::type::of(py::str()));
    if (isText || !shading::valueProblem(type, text).empty())
        return zelpython::toPython(text);
    if (text.empty())
        return py::none();
    if (!list)
        return partValue(type, withoutBlanks(text));
    const std::vector<std::string> parts = shading::partsOf(text);
    py::tuple values(parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i)
        values[i] = partValue(list->part, parts[i]);
    return std::move(values);
}

std::string valueText(const std::string& type, py::handle value)
{
    if (value.is_none())
        return "";
    const shading::ListType* const list = shading::listTypeOf(type);
    if (!list || PyUnicode_Check(value.ptr()))
        return partText(type, value);
    std::string text;
    addParts(*list, value, list->count == 9 || list->count == 16, text);
    return text;
}

} // namespace zelshading
