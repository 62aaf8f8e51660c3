#pragma once

#include "../zelModule.h"
#include "zel.h"

#include <typeinfo>

// What the host and the module of this test share. Both classes are inline: each side of the border
// has its own virtual table and type information of them. GNU's standard library compares types by
// their names. LLVM's compares by the place of the name: it takes the two for one type only where
// the host shows its own to the module, and this one does not.
#if defined(_LIBCPP_VERSION)
constexpr bool kInlineClassIsOne = false;
#else
constexpr bool kInlineClassIsOne = true;
#endif

/// Exported, as a header of a plugin's public classes has it.
class ZEL_TEST_EXPORT ToneNode : public ZEL::Node {
public:
    using Node::Node;
    virtual int tone() const { return 7; }
};

/// Hidden with the rest, as most headers have it.
class PlainNode : public ZEL::Node {
public:
    using Node::Node;
    virtual int plain() const { return 8; }
};

/// What the module answers: functions, and the types as it sees them.
struct Module {
    ZEL::AddRefWrapper<ZEL::Node> (*createTone)();
    ZEL::AddRefWrapper<ZEL::Node> (*createPlain)();
    /// A node of a class that only the module knows, with another base in front.
    ZEL::AddRefWrapper<ZEL::Node> (*createOwn)();
    /// A compound of a class that only the module knows.
    ZEL::AddRefWrapper<ZEL::Compound> (*createCompound)(const ZEL::AddRefWrapper<ZEL::Node>& owner);
    /// "Tone", "Plain", "Own" or "Node": the nearest class that dynamic_cast finds in the module.
    const char* (*classOf)(ZEL::Node* node);
    /// Whether that listener is a Compound, seen from the module.
    bool (*isCompound)(ZEL::PortNotification* listener);
    const std::type_info* node;
    const std::type_info* compound;
    const std::type_info* port;
    const std::type_info* tone;
};

/// The name of the runtime that the module registers when it is loaded.
constexpr const char kModuleRuntime[] = "Border";
