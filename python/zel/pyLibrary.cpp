#include "zel/pyLibrary.h"

#include "binding/overrides.h"

namespace zelpython {

void PyDefinition::setName(const char* name)
{
    static const Override override = Override::of<ZEL::NodeDefinition>("setName");
    tell(
        *this, override, [&] { CountedDefinition::setName(name); }, name);
}

void PyDefinition::appendString(const char* text)
{
    static const Override override = Override::of<ZEL::NodeDefinition>("appendString");
    tell(
        *this, override, [&] { CountedDefinition::appendString(text); }, text);
}

} // namespace zelpython
