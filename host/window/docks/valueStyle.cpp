#include "window/docks/valueStyle.h"

#include "document/names.h"
#include "document/portHints.h"
#include "edits/positions.h"

#include <algorithm>
#include <tuple>

namespace shading {

namespace {

using Kind = ValueStyle::Kind;

const struct {
    const char* type;
    Kind kind;
    int count;
    int columns;
    bool isInteger;
} kTypeStyles[] = {
    {"boolean", Kind::Boolean, 1, 1, false},
    {"integer", Kind::Numbers, 1, 1, true},
    {"float", Kind::Numbers, 1, 1, false},
    {"color3", Kind::Color, 3, 3, false},
    {"color4", Kind::Color, 4, 4, false},
    {"vector2", Kind::Numbers, 2, 2, false},
    {"vector3", Kind::Numbers, 3, 3, false},
    {"vector4", Kind::Numbers, 4, 4, false},
    {"matrix33", Kind::Numbers, 9, 3, false},
    {"matrix44", Kind::Numbers, 16, 4, false},
    {"filename", Kind::FileName, 1, 1, false},
    {"string", Kind::Text, 1, 1, false},
    {"geomname", Kind::Text, 1, 1, false},
    {"integerarray", Kind::Text, 1, 1, false},
    {"floatarray", Kind::Text, 1, 1, false},
    {"stringarray", Kind::Text, 1, 1, false},
    {"geomnamearray", Kind::Text, 1, 1, false},
    // What only nodes make.
    {"material", Kind::None, 1, 1, false},
    {"surfaceshader", Kind::None, 1, 1, false},
    {"displacementshader", Kind::None, 1, 1, false},
    {"volumeshader", Kind::None, 1, 1, false},
    {"lightshader", Kind::None, 1, 1, false},
    {"BSDF", Kind::None, 1, 1, false},
    {"EDF", Kind::None, 1, 1, false},
    {"VDF", Kind::None, 1, 1, false},
};

/// Of a colour or a vector the first one holds for all.
std::optional<double> firstNumber(const std::string& value)
{
    double number = 0;
    const std::string first = value.substr(0, value.find(','));
    return readFloat(first, number) ? std::optional<double>(number) : std::nullopt;
}

void takeHints(const PortHints& hints, ValueStyle& style)
{
    style.label = QString::fromStdString(hints.label);
    style.help = QString::fromStdString(hints.help);
    style.folder = QString::fromStdString(hints.folder);
    style.unit = QString::fromStdString(hints.unit);
    style.least = firstNumber(hints.min);
    style.most = firstNumber(hints.max);
    style.step = firstNumber(hints.step);
    const std::optional<double> low =
        hints.softMin.empty() ? style.least : firstNumber(hints.softMin);
    const std::optional<double> high =
        hints.softMax.empty() ? style.most : firstNumber(hints.softMax);
    if (low && high && *high > *low)
        style.range = *high - *low;
    if (style.kind == Kind::None || hints.values.empty())
        return;
    style.kind = Kind::Choice;
    for (std::size_t i = 0; i < hints.values.size(); ++i)
        style.choices.emplace_back(QString::fromStdString(hints.labels[i]),
                                   QString::fromStdString(hints.values[i]));
}

} // namespace

bool ValueStyle::operator==(const ValueStyle& other) const
{
    const auto all = [](const ValueStyle& s) {
        return std::tie(s.kind, s.count, s.columns, s.isInteger, s.least, s.most, s.range, s.step,
                        s.unit, s.choices, s.label, s.folder, s.help);
    };
    return all(*this) == all(other);
}

ValueStyle styleOf(Document& document, ZEL::Port& port)
{
    ValueStyle style;
    const std::string type = typeNameOf(port);
    const auto* const known = std::find_if(std::begin(kTypeStyles), std::end(kTypeStyles),
                                           [&](const auto& row) { return type == row.type; });
    if (known != std::end(kTypeStyles)) {
        style.kind = known->kind;
        style.count = known->count;
        style.columns = known->columns;
        style.isInteger = known->isInteger;
    }
    takeHints(hintsOf(document, port), style);
    return style;
}

} // namespace shading
