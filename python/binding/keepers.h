#pragma once

#include <memory>

namespace ZEL {
class Compound;
class Container;
class Node;
class NodeList;
class Port;
class PortList;
class Runtime;
} // namespace ZEL

namespace zelpython {

/// From now on whoever wraps an object of that document for Python keeps what the pointer names,
/// which holds the document. A document of C++ must outlive the wrappers of its nodes.
void keep(const ZEL::Container& container, const std::weak_ptr<void>& keeper);
/// The document dies.
void forget(const ZEL::Container& container);
/// Likewise of a runtime, which its wrapper keeps.
void keep(const ZEL::Runtime& runtime, const std::weak_ptr<void>& keeper);
void forget(const ZEL::Runtime& runtime);

using Keeper = std::shared_ptr<void>;

/// What keeps the document that the object lies in; null when nobody said so, or it lies in none.
Keeper keeperOf(const ZEL::Container& container);
Keeper keeperOf(const ZEL::Runtime& runtime);
Keeper keeperOf(ZEL::Node& node);
Keeper keeperOf(ZEL::Compound& compound);
Keeper keeperOf(ZEL::Port& port);
Keeper keeperOf(ZEL::PortList& list);
Keeper keeperOf(ZEL::NodeList& list);

} // namespace zelpython
