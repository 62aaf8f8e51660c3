// The order of virtual operations is what hosts and plugins are compiled against: nothing may be
// inserted, removed, exchanged or appended.

#include "zel.h"

#include <gtest/gtest.h>

#include <cstring>

namespace ZEL {
namespace {

/// Adds one virtual operation behind those of Base.
template <class Base>
struct Probe : Base {
    using Base::operator=; // Virtual in Node and Compound.
    virtual void probe() {}
};

/// No slot: the member is not virtual.
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// A pointer to a virtual member holds the place of its slot in the table, in bytes, and behind
/// that what is added to the object's address. A bit tells it from the address of a function: the
/// lowest of the first word; on ARM, where that may be one of a function's address, of the second.
template <class Member>
std::size_t slot(Member member)
{
    std::size_t words[2] = {};
    static_assert(sizeof(member) == sizeof(words));
    std::memcpy(words, &member, sizeof(words));
#if defined(__arm__) || defined(__aarch64__)
    const std::size_t place = words[0];
    const bool isVirtual = words[1] % 2 == 1;
#else
    const std::size_t place = words[0] - 1;
    const bool isVirtual = words[0] % 2 == 1;
#endif
    return isVirtual ? place / sizeof(void*) : kNone;
}

/// The operations fill the slots from the first on; then the table ends. Two slots are the
/// destructor's, to which there is no pointer.
template <class Class, class... Members>
void expectSlots(std::size_t first, Members... members)
{
    const auto expectNext = [&](auto member) {
        EXPECT_EQ(first++, slot(member)) << typeid(Class).name();
    };
    (expectNext(members), ...);
    expectNext(&Probe<Class>::probe);
}

TEST(Slots, StandInPublishedOrderAndNothingFollows)
{
    EXPECT_EQ(kNone, slot(&ReferenceCounted::addRef)) << "not virtual";
    EXPECT_EQ(0U, slot(&ReferenceCounted::deleteThis));
    expectSlots<ReferenceCounted>(3);
    expectSlots<PortList>(3);
    expectSlots<NodeList>(3);
    expectSlots<HostEditorNotifier>(2);
    expectSlots<Namable>(2, &Namable::getName, &Namable::setName, &Namable::appendString);
    expectSlots<Port>(2, &Port::getName, &Port::setName, &Port::appendString);
    expectSlots<PortDataType>(3, &PortDataType::operator==);
    expectSlots<HostEditor>(2, &HostEditor::zel_onConnectionChange,
                            &HostEditor::zel_onCompoundConnectionChange,
                            &HostEditor::zel_onCompoundPortChange, &HostEditor::zel_onNodeChange);
    expectSlots<Container>(2, &Container::getRootNode, &Container::rebuildCompounds,
                           &Container::hostOperation, &Container::getRuntime);
    using AskedSlots = PortNotification;
    expectSlots<AskedSlots>(2, &AskedSlots::onPortAddConnection,
                            &AskedSlots::onPortRemoveConnection, &AskedSlots::onPortSetDataType,
                            &AskedSlots::onPortListPortAdded, &AskedSlots::onPortListPortRemoved,
                            &AskedSlots::onPortListPortMove, &AskedSlots::onPortListPortMoved,
                            &AskedSlots::onPortGetDefaultValue, &AskedSlots::onPortSetDefaultValue,
                            &AskedSlots::onPortSetName, &AskedSlots::onGetParentFullPathName);
    expectSlots<Node>(
        3, &Node::isCompound, &Node::getAsCompound, &Node::getFullPathName, &Node::getNodeTypeName,
        &Node::setNodeTypeName, &Node::operator=, &Node::onThisNodeDeleted,
        &Node::onPortAddConnection, &Node::onPortRemoveConnection, &Node::onPortSetDataType,
        &Node::onPortListPortAdded, &Node::onPortListPortRemoved, &Node::onPortListPortMove,
        &Node::onPortListPortMoved, &Node::onPortGetDefaultValue, &Node::onPortSetDefaultValue,
        &Node::onPortSetName, &Node::onGetParentFullPathName);
    expectSlots<Compound>(
        3, &Compound::nodes, &Compound::innerInputs, &Compound::innerOutputs, &Compound::operator=,
        &Compound::onPortAddConnection, &Compound::onPortRemoveConnection,
        &Compound::onPortSetDataType, &Compound::onPortListPortAdded,
        &Compound::onPortListPortRemoved, &Compound::onPortListPortMove,
        &Compound::onPortListPortMoved, &Compound::onPortGetDefaultValue,
        &Compound::onPortSetDefaultValue, &Compound::onPortSetName,
        &Compound::onGetParentFullPathName, &Compound::onNodeAdd, &Compound::onNodeRemove,
        &Compound::createNodeFromPreset, &Compound::createNewCompound, &Compound::saveAs,
        &Compound::createCompoundPort, &Compound::deleteCompoundPort, &Compound::createLinkedPort,
        &Compound::getSpecializedCompoundTypeName, &Compound::getName, &Compound::setName);
}

/// How far the base lies behind the start of the object.
template <class Base, class Derived>
std::ptrdiff_t offset(const AddRefWrapper<Derived>& object)
{
    return reinterpret_cast<char*>(static_cast<Base*>(object.get())) -
           reinterpret_cast<char*>(object.get());
}

TEST(Slots, BasesStandInPublishedOrder)
{
    const AddRefWrapper<Node> node = Node::createNew(nullptr, "N");
    const AddRefWrapper<Compound> compound = Compound::createNew(node, nullptr);
    EXPECT_TRUE(offset<ReferenceCounted>(node) == 0 && offset<Namable>(node) > 0);
    EXPECT_LT(offset<Namable>(node), offset<PortNotification>(node));
    EXPECT_LT(offset<PortNotification>(node), offset<HostEditorNotifier>(node));
    EXPECT_EQ(0, offset<ReferenceCounted>(compound));
    EXPECT_LT(offset<Namable>(compound), offset<PortNotification>(compound));
    EXPECT_EQ(0, offset<Namable>(Port::createNew("P", PortInput)));
    EXPECT_EQ(0, offset<ReferenceCounted>(PortDataType::createNew("T")));
}

TEST(Slots, OfPluginsStandInPublishedOrderAndNothingFollows)
{
    using ByIndex = AddRefWrapper<PortDataType> (Runtime::*)(int);
    using ByName = AddRefWrapper<PortDataType> (Runtime::*)(const char*);
    expectSlots<PluginInfo>(2, &PluginInfo::setUserName, &PluginInfo::getUserName);
    expectSlots<PluginRegistrar>(2, &PluginRegistrar::registerRuntime);
    expectSlots<Host>(2, &Host::registerRuntime);
    expectSlots<Runtime>(2, &Runtime::getName, &Runtime::setName, &Runtime::appendString,
                         &Runtime::setNodeLibrary, &Runtime::getNodeLibrary, &Runtime::findLibrary,
                         &Runtime::getNumberOfPortDataTypes, ByIndex(&Runtime::getPortDataType),
                         ByName(&Runtime::getPortDataType), &Runtime::createPortDataType);
    expectSlots<NodeDefinition>(2, &NodeDefinition::getName, &NodeDefinition::setName,
                                &NodeDefinition::appendString);
    expectSlots<NodeLibrary>(2, &NodeLibrary::getName, &NodeLibrary::setName,
                             &NodeLibrary::appendString);
    const AddRefWrapper<NodeLibrary> library = NodeLibrary::createNew("L");
    EXPECT_EQ(static_cast<void*>(library.get()), static_cast<Namable*>(library.get()));
}

} // namespace
} // namespace ZEL
