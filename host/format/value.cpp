#include "format/value.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace shading {

namespace {

constexpr int kAnyCount = -1;

const ListType kListTypes[] = {
    {"color3", "float", 3},
    {"color4", "float", 4},
    {"vector2", "float", 2},
    {"vector3", "float", 3},
    {"vector4", "float", 4},
    {"matrix33", "float", 9},
    {"matrix44", "float", 16},
    {"integerarray", "integer", kAnyCount},
    {"floatarray", "float", kAnyCount},
    {"stringarray", "string", kAnyCount},
    {"geomnamearray", "geomname", kAnyCount},
};

std::string trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    const std::size_t last = text.find_last_not_of(" \t\r\n");
    return first == std::string::npos ? "" : text.substr(first, last - first + 1);
}

bool isControl(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && c != '\t' && c != '\n' && c != '\r') || byte == 0x7F;
}

template <class Number>
std::string numberProblem(const std::string& text, const char* characters, const char* name)
{
    Number number = {};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc::result_out_of_range)
        return "\"" + text + "\" is out of range";
    const bool isNumber = error == std::errc() && stop == end;
    // "inf" and "nan" are numbers to the language, not to the format.
    return isNumber && text.find_first_not_of(characters) == std::string::npos
               ? ""
               : "\"" + text + "\" is no " + name;
}

std::string partProblem(const std::string& type, const std::string& text)
{
    if (type == "boolean")
        return text == "true" || text == "false" ? "" : "\"" + text + "\" is no boolean";
    if (type == "integer")
        return numberProblem<int>(text, "+-0123456789", "integer");
    if (type == "float")
        return numberProblem<double>(text, "+-.eE0123456789", "float");
    return "";
}

std::string listProblem(const ListType& list, const std::string& value)
{
    const std::vector<std::string> parts = partsOf(value);
    for (const std::string& part : parts) {
        std::string problem = partProblem(list.part, part);
        if (!problem.empty())
            return problem;
    }
    if (list.count == kAnyCount || static_cast<int>(parts.size()) == list.count)
        return "";
    return list.name + (" takes " + std::to_string(list.count)) +
           " numbers with commas between, not " + std::to_string(parts.size());
}

} // namespace

std::string valueProblem(const std::string& type, const std::string& value)
{
    for (const char c : value) {
        if (isControl(c))
            return "a value cannot have control characters";
    }
    if (value.empty())
        return "";
    const ListType* const list = listTypeOf(type);
    return list ? listProblem(*list, value) : partProblem(type, trimmed(value));
}

const ListType* listTypeOf(const std::string& type)
{
    for (const ListType& list : kListTypes) {
        if (type == list.name)
            return &list;
    }
    return nullptr;
}

std::vector<std::string> partsOf(const std::string& value)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start <= value.size()) {
        const std::size_t end = std::min(value.find(',', start), value.size());
        parts.push_back(trimmed(value.substr(start, end - start)));
        start = end + 1;
    }
    return parts;
}

} // namespace shading
