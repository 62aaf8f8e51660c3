#pragma once

#include "document/attributes.h"
#include "document/backdrops.h"
#include "document/pointers.h"

#include <memory>
#include <string>
#include <vector>

namespace shading {

class ChangeCollector;
class Definition;

/// One change of a network, the smallest that the library asks about, with all that is needed to
/// take it back exactly: also the places in the lists that it touched. It holds the objects, so
/// that what was deleted comes back as the same object. Steps are taken back in reverse order.
class Step {
public:
    Step() = default;
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
    virtual ~Step();

    /// Does the step again (forward) or takes it back. False when a listener refused: nothing
    /// changed.
    virtual bool run(bool isForward) = 0;
    /// True when the network is as the step leaves it, asked before the next one. A step is written
    /// down when the library asks whether it may be, so a later refusal shows here.
    virtual bool isDone() const = 0;
    /// Tells the editors. A change is told by the node that owns the compound where it shows: a
    /// port of a compound first by its own node, whose editors show the inside, then, as a changed
    /// node, by the one around it.
    virtual void notify(bool isForward) const = 0;
    /// Adds what the step changed.
    virtual void collect(ChangeCollector& changes, bool isForward) const = 0;
};

using Steps = std::vector<std::unique_ptr<Step>>;

// Made before the change. The lists are those that the port or node stands in, or will.

/// Either end may come first.
std::unique_ptr<Step> makeConnectStep(const PortPtr& a, const PortPtr& b);
std::unique_ptr<Step> makeDisconnectStep(const PortPtr& a, const PortPtr& b);
std::unique_ptr<Step> makeAddPortStep(ZEL::PortList& list, const PortPtr& port);
std::unique_ptr<Step> makeRemovePortStep(ZEL::PortList& list, const PortPtr& port);
std::unique_ptr<Step> makeMovePortStep(ZEL::PortList& list, int from, int to);
std::unique_ptr<Step> makeRenamePortStep(const PortPtr& port, const std::string& name);
std::unique_ptr<Step> makeTypeStep(const PortPtr& port, const TypePtr& type);
std::unique_ptr<Step> makeValueStep(const PortPtr& port, const std::string& value);
std::unique_ptr<Step> makeAddNodeStep(ZEL::Compound& compound, const NodePtr& node);
/// Without its place, the node comes back as the last one: an order step before it puts it right.
std::unique_ptr<Step>
makeRemoveNodeStep(ZEL::Compound& compound, const NodePtr& node, bool withPlace);
/// Changes nothing; taken back, it gives the compound's nodes the order that they have now. Holds
/// all of them: worth it before the second removal, for a place is found by walking the list.
std::unique_ptr<Step> makeOrderStep(ZEL::Compound& compound);
std::unique_ptr<Step> makeRenameNodeStep(const NodePtr& node, const std::string& name);
std::unique_ptr<Step> makeDefinitionStep(const HostNodePtr& node,
                                         const ZEL::AddRefWrapper<Definition>& definition);
std::unique_ptr<Step> makeAttributeStep(Attributes& attributes,
                                        const AttributeOwner& owner,
                                        const std::string& name,
                                        const std::optional<AttributeValue>& value);

std::unique_ptr<Step>
makeBackdropStep(Backdrops& backdrops, const BackdropPtr& backdrop, const Backdrop::State& state);

// How steps tell the editors.
/// Those of the compound around the node.
void notifyNode(const NodePtr& node, ZEL::ENodeChangeType change);
/// Those of a compound that something in it changed which no node or port of it has: they hear that
/// the compound's own node changed, in that compound.
void notifyInside(const NodePtr& owner);
/// Of a compound's two ports, which change together, the inner one is told for both: first to the
/// editors of the inside, where it is the port at the edge, then to those of the compound around,
/// where the node looks different.
void notifyPort(const PortPtr& port, ZEL::ECompoundPortChangeType change);

/// Runs the steps behind the first so many, to the last or backward from there, and tells nobody.
/// False when one was refused: those that had run are taken back.
bool runSteps(const Steps& steps, std::size_t first, bool isForward);

} // namespace shading
