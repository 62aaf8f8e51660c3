#pragma once

#include "zelLastSeen.h"

namespace zelFuzz {

class SideListener;
class Universe;

/// A node, compound or plain listener of the universe. Every question goes to the universe, which
/// answers as the input says and may make any step meanwhile; then the rules of a caller are
/// looked at. An object may die in its own question: nothing of it is touched after. In its
/// destructor it asks who it is and where it stands, see LastSeen.
template <class Base>
class Hosted : public Base {
public:
    template <class... Args>
    explicit Hosted(Universe& universe, Args&&... args)
        : Base(std::forward<Args>(args)...),
          m_universe(universe)
    {
        ++live;
    }
    Hosted(const Hosted&) = delete;
    Hosted& operator=(const Hosted&) = delete;
    using Base::operator=;
    ~Hosted() override;

    bool onPortAddConnection(const PortPtr& port, const PortPtr& other) override;
    bool onPortRemoveConnection(const PortPtr& port, const PortPtr& other) override;
    bool onPortSetDataType(const PortPtr& port, const TypePtr& type) override;
    bool onPortListPortAdded(const ZEL::PortList& list, const PortPtr& port) override;
    bool onPortListPortRemoved(const ZEL::PortList& list, const PortPtr& port) override;
    bool onPortListPortMove(const ZEL::PortList& list, int from, int to) override;
    void onPortListPortMoved(const ZEL::PortList& list, int from, int to) override;
    const char* onPortGetDefaultValue(const PortPtr& port) override;
    bool onPortSetDefaultValue(const PortPtr& port, const char* value) override;
    bool onPortSetName(const PortPtr& port, const char* name) override;
    ZEL::Namable onGetParentFullPathName() override;

    LastSeen seen;                ///< Of a node or compound.
    SideListener* side = nullptr; ///< Of a class with a second base: that one. Not owned.
    inline static int live = 0;   ///< How many there are.

protected:
    /// A compound whose ports somebody changes by other means than compound ports.
    void touchMirror(bool isMove = false);

    Universe& m_universe;
};

using Listener = Hosted<ZEL::PortNotification>;
using FuzzNode = Hosted<ZEL::Node>;

/// One of very many: without ports, and not counted where room for a node is looked for.
class CrowdNode final : public FuzzNode {
public:
    explicit CrowdNode(Universe& universe);
    ~CrowdNode() override { --live; }

    inline static int live = 0; ///< How many there are.
};

/// As CrowdNode; its class has a getName of its own.
class TitledNode final : public FuzzNode {
public:
    explicit TitledNode(Universe& universe);
    ~TitledNode() override { --live; }
    const char* getName() const override { return FuzzNode::getName(); }

    inline static int live = 0; ///< How many there are.
};

class FuzzCompound : public Hosted<ZEL::Compound> {
public:
    FuzzCompound(Universe& universe, const NodePtr& owner);
    ~FuzzCompound() override;

    bool onNodeAdd(const NodePtr& node) override;
    bool onNodeRemove(const NodePtr& node) override;
    CompoundPtr createNewCompound(const char* name) override;
    int createCompoundPort(ZEL::PortIOType ioType, const char* name, const TypePtr& type) override;
    int deleteCompoundPort(PortPtr innerPort) override;

    /// The inner ports are in step with the node's: only compound ports were made and deleted, each
    /// by a name of its own, and nobody refused or came between.
    bool isMirrored = true;

private:
    void setMirrored(bool value);
};

class FuzzEditor final : public ZEL::HostEditor {
public:
    explicit FuzzEditor(Universe& universe) : m_universe(universe) { ++live; }
    FuzzEditor(const FuzzEditor&) = delete;
    FuzzEditor& operator=(const FuzzEditor&) = delete;
    ~FuzzEditor() override;

    void zel_onConnectionChange(ZEL::ECnxChangeType type,
                                const PortPtr& first,
                                const PortPtr& second) override;
    void zel_onCompoundConnectionChange(ZEL::ECnxChangeType type,
                                        const PortPtr& first,
                                        const PortPtr& second) override;
    void zel_onCompoundPortChange(ZEL::ECompoundPortChangeType type, const PortPtr& port) override;
    void zel_onNodeChange(ZEL::ENodeChangeType type,
                          const CompoundPtr& compound,
                          const NodePtr& node) override;

    inline static int live = 0; ///< How many there are.

private:
    Universe& m_universe;
};

} // namespace zelFuzz
