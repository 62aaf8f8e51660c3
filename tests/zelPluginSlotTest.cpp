// What plugins are compiled against: nothing may be inserted, removed, exchanged or appended.

#include "zelNodeLibrary.h"
#include "zelPlugin.h"
#include "zelPort.h"
#include "zelRuntime.h"

#include <gtest/gtest.h>

#include <cstring>

namespace ZEL {
namespace {

/// Adds one virtual operation behind those of Base.
template <class Base>
struct Probe : Base {
    virtual void probe() {}
};

/// The operations fill the slots behind the two of the destructor; then the table ends. A pointer
/// to a virtual member begins with 1 + 8 * slot (x86-64).
template <class Class, class... Members>
void expectTable(const char* name, Members... members)
{
    std::size_t expected = 2;
    const auto expectNext = [&](auto member) {
        std::size_t word = 0;
        std::memcpy(&word, &member, sizeof(word));
        EXPECT_EQ(1 + 8 * expected++, word) << name;
    };
    (expectNext(members), ...);
    expectNext(&Probe<Class>::probe);
}

TEST(PluginSlots, StandInPublishedOrderAndNothingFollows)
{
    using ByIndex = AddRefWrapper<PortDataType> (Runtime::*)(int);
    using ByName = AddRefWrapper<PortDataType> (Runtime::*)(const char*);
    expectTable<PluginInfo>("PluginInfo", &PluginInfo::setUserName, &PluginInfo::getUserName);
    expectTable<PluginRegistrar>("PluginRegistrar", &PluginRegistrar::registerRuntime);
    expectTable<Host>("Host", &Host::registerRuntime);
    expectTable<Runtime>("Runtime", &Runtime::getName, &Runtime::setName, &Runtime::appendString,
                         &Runtime::setNodeLibrary, &Runtime::getNodeLibrary, &Runtime::findLibrary,
                         &Runtime::getNumberOfPortDataTypes, ByIndex(&Runtime::getPortDataType),
                         ByName(&Runtime::getPortDataType), &Runtime::createPortDataType);
    expectTable<NodeDefinition>("NodeDefinition", &NodeDefinition::getName,
                                &NodeDefinition::setName, &NodeDefinition::appendString);
    expectTable<NodeLibrary>("NodeLibrary", &NodeLibrary::getName, &NodeLibrary::setName,
                             &NodeLibrary::appendString);
    const AddRefWrapper<NodeLibrary> library = NodeLibrary::createNew("L");
    EXPECT_EQ(static_cast<void*>(library.get()), static_cast<Namable*>(library.get()));
}

} // namespace
} // namespace ZEL
