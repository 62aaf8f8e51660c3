#include "zel/pyRuntime.h"

#include "binding/overrides.h"

namespace zelpython {

namespace {

using LibraryAnswer = ZEL::AddRefWrapper<ZEL::NodeLibrary>;
using TypeAnswer = ZEL::AddRefWrapper<ZEL::PortDataType>;

Override ofRuntime(const char* name)
{
    return Override::of<ZEL::Runtime>(name);
}

} // namespace

void PyRuntime::setName(const char* name)
{
    static const Override override = ofRuntime("setName");
    tell(
        *this, override, [&] { Runtime::setName(name); }, name);
}

void PyRuntime::appendString(const char* text)
{
    static const Override override = ofRuntime("appendString");
    tell(
        *this, override, [&] { Runtime::appendString(text); }, text);
}

void PyRuntime::setNodeLibrary(LibraryAnswer& library)
{
    static const Override override = ofRuntime("setNodeLibrary");
    tell(
        *this, override, [&] { Runtime::setNodeLibrary(library); }, library);
}

LibraryAnswer PyRuntime::getNodeLibrary()
{
    static const Override override = ofRuntime("getNodeLibrary");
    return askObject<ZEL::NodeLibrary>(*this, override, [&] { return Runtime::getNodeLibrary(); });
}

LibraryAnswer PyRuntime::findLibrary(const char* path)
{
    static const Override override = ofRuntime("findLibrary");
    return askObject<ZEL::NodeLibrary>(
        *this, override, [&] { return Runtime::findLibrary(path); }, path);
}

int PyRuntime::getNumberOfPortDataTypes()
{
    static const Override override = ofRuntime("getNumberOfPortDataTypes");
    return askNumber(*this, override, 0, [&] { return Runtime::getNumberOfPortDataTypes(); });
}

// One name in Python: the override is given an int or a str.

TypeAnswer PyRuntime::getPortDataType(int index)
{
    static const Override override = ofRuntime("getPortDataType");
    return askObject<ZEL::PortDataType>(
        *this, override, [&] { return Runtime::getPortDataType(index); }, index);
}

TypeAnswer PyRuntime::getPortDataType(const char* name)
{
    static const Override override = ofRuntime("getPortDataType");
    return askObject<ZEL::PortDataType>(
        *this, override, [&] { return Runtime::getPortDataType(name); }, name);
}

TypeAnswer PyRuntime::createPortDataType(const char* name)
{
    static const Override override = ofRuntime("createPortDataType");
    return askObject<ZEL::PortDataType>(
        *this, override, [&] { return Runtime::createPortDataType(name); }, name);
}

} // namespace zelpython
