#include "zelRuntime.h"

#include "zelNodeLibrary.h"
#include "zelTestNetwork.h"

#include <vector>

namespace ZEL {
namespace {

TEST(Runtime, CreatesEachDataTypeOnceInOrder)
{
    Runtime runtime;
    const AddRefWrapper<PortDataType> number = runtime.createPortDataType("Float");
    const AddRefWrapper<PortDataType> color = runtime.createPortDataType("Color");
    EXPECT_EQ(number, runtime.createPortDataType("Float"));
    EXPECT_EQ(number, runtime.getPortDataType(0));
    EXPECT_EQ(color, runtime.getPortDataType(1));
    EXPECT_FALSE(runtime.getPortDataType(-1) || runtime.getPortDataType(2));
    for (const char* miss : {"color", "Col", "Color ", ""})
        EXPECT_FALSE(runtime.getPortDataType(miss)) << miss;
    EXPECT_EQ(color, runtime.getPortDataType("Color"));
    color->setName("Float");
    EXPECT_EQ(number, runtime.getPortDataType("Float"));
}

/// Notes, when it dies, how many hold the data type.
struct WatchingLibrary : NodeLibrary {
    ~WatchingLibrary() override { holders = type->getRefCount(); }
    AddRefWrapper<PortDataType> type;
    inline static int holders = 0;
};

TEST(Runtime, HoldsOneNodeLibraryAndReleasesItAfterTheDataTypes)
{
    auto* const watching = new WatchingLibrary;
    AddRefWrapper<NodeLibrary> library(watching);
    AddRefWrapper<NodeLibrary> none;
    {
        Runtime runtime;
        EXPECT_FALSE(runtime.findLibrary(""));
        for (int i = 0; i < 2; ++i)
            runtime.setNodeLibrary(library);
        EXPECT_EQ(2, library->getRefCount());
        EXPECT_EQ(library, runtime.findLibrary(""));
        runtime.setNodeLibrary(none);
        EXPECT_EQ(1, library->getRefCount());
        EXPECT_FALSE(runtime.getNodeLibrary());
        runtime.setNodeLibrary(library);
        watching->type = runtime.createPortDataType("Float");
        library = nullptr;
    }
    EXPECT_EQ(1, WatchingLibrary::holders);
}

/// A runtime with a library, a data type and a number of data types of its own.
struct OwnRuntime : Runtime {
    using Runtime::getPortDataType;
    AddRefWrapper<NodeLibrary> getNodeLibrary() override { return NodeLibrary::createNew("Own"); }
    int getNumberOfPortDataTypes() override { return numberOfTypes; }
    AddRefWrapper<PortDataType> getPortDataType(const char* /*name*/) override { return type; }

    AddRefWrapper<PortDataType> type;
    int numberOfTypes = 0;
};

TEST(Runtime, AsksTheOverridesOfADerivedRuntime)
{
    OwnRuntime runtime;
    EXPECT_TRUE(runtime.findLibrary("Own"));
    // What the override does not know is created, what it knows is not.
    const AddRefWrapper<PortDataType> made = runtime.createPortDataType("Float");
    EXPECT_NE(made, runtime.createPortDataType("Float"));
    runtime.type = PortDataType::createNew("Other");
    EXPECT_EQ(runtime.type, runtime.createPortDataType("Float"));
    EXPECT_EQ(2, runtime.Runtime::getNumberOfPortDataTypes());
    // The override's number bounds the index; what it counts beyond the own types is empty.
    EXPECT_FALSE(runtime.getPortDataType(0));
    runtime.numberOfTypes = 3;
    EXPECT_EQ(made, runtime.getPortDataType(0));
    EXPECT_FALSE(runtime.getPortDataType(2));
}

struct RebuiltContainer : TestNetwork {
    void rebuildCompounds() override
    {
        log += name;
        for (RebuiltContainer* const other : std::exchange(registered, {}))
            runtime->registerContainer(other);
    }
    std::vector<RebuiltContainer*> registered; ///< In the next rebuild.
    char name = '-';
    inline static std::string log;
};

TEST(Runtime, RebuildsItsContainersInTheOrderOfTheirAddresses)
{
    Runtime runtime;
    runtime.forceRebuildCompounds();
    RebuiltContainer containers[3];
    for (const int i : {2, 0, 1, 0}) {
        containers[i].name = "abc"[i];
        runtime.registerContainer(&containers[i]);
    }
    runtime.forceRebuildCompounds();
    EXPECT_EQ("abc", RebuiltContainer::log);
    for (int i = 0; i < 2; ++i)
        runtime.unregisterContainer(&containers[0]);
    runtime.forceRebuildCompounds();
    EXPECT_EQ("abcbc", RebuiltContainer::log);
    // Registered in a rebuild: reached in the same pass when the address is higher.
    runtime.unregisterContainer(&containers[2]);
    containers[1].runtime = &runtime;
    containers[1].registered = {&containers[0], &containers[2]};
    runtime.forceRebuildCompounds();
    EXPECT_EQ("abcbcbc", RebuiltContainer::log);
    runtime.forceRebuildCompounds();
    EXPECT_EQ("abcbcbcabc", RebuiltContainer::log);
}

} // namespace
} // namespace ZEL
