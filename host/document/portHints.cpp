#include "document/portHints.h"

#include "document/attributes.h"
#include "document/definedNode.h"
#include "document/document.h"
#include "document/names.h"
#include "format/value.h"

#include <algorithm>

namespace shading {

namespace {

void takeOver(std::string& hint, const std::string& own)
{
    if (!own.empty())
        hint = own;
}

/// The own hints in the place of those.
void takeOver(PortHints& hints, const PortHints& own)
{
    for (const auto part :
         {&PortHints::label, &PortHints::help, &PortHints::folder, &PortHints::min, &PortHints::max,
          &PortHints::softMin, &PortHints::softMax, &PortHints::step, &PortHints::unit,
          &PortHints::unitType})
        takeOver(hints.*part, own.*part);
    hints.isAdvanced = hints.isAdvanced || own.isAdvanced;
    if (own.labels.empty())
        return;
    hints.labels = own.labels;
    hints.values = own.values;
}

/// A definition of one type that another one took, or a slip, is no help.
void dropWrong(PortHints& hints, const std::string& type)
{
    const auto isWrong = [&](const std::string& value) {
        return !valueProblem(type, value).empty();
    };
    for (const auto part : {&PortHints::min, &PortHints::max, &PortHints::softMin,
                            &PortHints::softMax, &PortHints::step}) {
        if (isWrong(hints.*part))
            (hints.*part).clear();
    }
    if (std::any_of(hints.values.begin(), hints.values.end(), isWrong)) {
        hints.labels.clear();
        hints.values.clear();
    }
}

} // namespace

PortHints hintsOf(Document& document, ZEL::Port& port)
{
    const CompoundPtr inside = port.getParentCompound();
    const PortPtr shown = inside ? inside->getReversePort(&port) : PortPtr(&port);
    PortHints hints;
    if (!shown)
        return hints;
    if (const PortDescription* const description = descriptionOf(*shown))
        hints = description->hints;
    takeOver(hints, readHints([&](const char* attribute) {
                 return document.attributes().get({nullptr, shown}, attribute);
             }));
    dropWrong(hints, typeNameOf(*shown));
    return hints;
}

} // namespace shading
