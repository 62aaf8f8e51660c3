#pragma once

#include "zel.h"

#include <cstdio>

// A host's classes. They override everything that a host can, and print each call.

using ZEL::AddRefWrapper;

using PortArg = const AddRefWrapper<ZEL::Port>&;
using NodeArg = const AddRefWrapper<ZEL::Node>&;
using TypeArg = const AddRefWrapper<ZEL::PortDataType>&;

/// The questions of a listener, answered by the library after printing them.
template <class Base>
class Printing : public Base {
public:
    using Base::Base;
    using Base::operator=;

    bool onPortAddConnection(PortArg port, PortArg other) override
    {
        say("connect", port, other->getName());
        return Base::onPortAddConnection(port, other);
    }
    bool onPortRemoveConnection(PortArg port, PortArg other) override
    {
        say("disconnect", port, other->getName());
        return Base::onPortRemoveConnection(port, other);
    }
    bool onPortSetDataType(PortArg port, TypeArg type) override
    {
        say("type", port, type ? type->getName() : "none");
        return Base::onPortSetDataType(port, type);
    }
    bool onPortListPortAdded(const ZEL::PortList& list, PortArg port) override
    {
        say("add", port, "");
        return Base::onPortListPortAdded(list, port);
    }
    bool onPortListPortRemoved(const ZEL::PortList& list, PortArg port) override
    {
        say("remove", port, "");
        return Base::onPortListPortRemoved(list, port);
    }
    bool onPortListPortMove(const ZEL::PortList& list, int from, int to) override
    {
        std::printf("%s: move %d %d\n", this->getName(), from, to);
        return Base::onPortListPortMove(list, from, to);
    }
    void onPortListPortMoved(const ZEL::PortList& list, int from, int to) override
    {
        std::printf("%s: moved %d %d\n", this->getName(), from, to);
        Base::onPortListPortMoved(list, from, to);
    }
    bool onPortSetDefaultValue(PortArg port, const char* value) override
    {
        say("value", port, value);
        return Base::onPortSetDefaultValue(port, value);
    }
    bool onPortSetName(PortArg port, const char* name) override
    {
        say("rename", port, name);
        return Base::onPortSetName(port, name);
    }

private:
    void say(const char* what, PortArg port, const char* more)
    {
        std::printf("%s: %s %s %s\n", this->getName(), what, port->getName(), more);
    }
};

class HostNode : public Printing<ZEL::Node> {
public:
    using Printing::Printing;
    ~HostNode() override { std::printf("%s goes\n", getName()); }
    const char* getNodeTypeName() const override { return "host"; }
    ZEL::Namable getFullPathName() override
    {
        ZEL::Namable path(m_marked ? "/" : "");
        path.appendString(Node::getFullPathName().getName());
        return path;
    }
    void onThisNodeDeleted() override
    {
        std::printf("%s: taken out\n", getName());
        Node::onThisNodeDeleted();
    }
    /// From now on "/" begins the path.
    void mark() { m_marked = true; }

private:
    bool m_marked = false;
};

class HostCompound : public Printing<ZEL::Compound> {
public:
    using Printing::Printing;
    bool onNodeAdd(NodeArg node) override
    {
        std::printf("%s: new node %s\n", getName(), node->getName());
        return Compound::onNodeAdd(node);
    }
    bool onNodeRemove(NodeArg node) override
    {
        std::printf("%s: node leaves %s\n", getName(), node->getName());
        return Compound::onNodeRemove(node);
    }
    AddRefWrapper<ZEL::Node> createNodeFromPreset(const char* preset) override;
    AddRefWrapper<Compound> createNewCompound(const char* name) override;
    bool saveAs(const char* name) override { return name[0] != '\0'; }
    int createLinkedPort(const char* name, const char* target, TypeArg type) override
    {
        return target[0] == '\0' ? -1 : createCompoundPort(ZEL::PortInput, name, type);
    }
    const char* getSpecializedCompoundTypeName() override { return "HostCompound"; }
};

class Document : public ZEL::Container {
public:
    explicit Document(ZEL::Runtime* runtime);
    AddRefWrapper<ZEL::Node> getRootNode() override { return m_root; }
    void rebuildCompounds() override { std::puts("rebuild"); }
    void hostOperation() override { std::puts("host operation"); }
    ZEL::Runtime* getRuntime() override { return m_runtime; }

private:
    AddRefWrapper<ZEL::Node> m_root;
    ZEL::Runtime* m_runtime; ///< Not owned.
};

class Editor : public ZEL::HostEditor {
public:
    void zel_onConnectionChange(ZEL::ECnxChangeType type, PortArg a, PortArg b) override
    {
        std::printf("editor: connection %d %s %s\n", type, a->getName(), b->getName());
    }
    void zel_onCompoundConnectionChange(ZEL::ECnxChangeType type, PortArg a, PortArg b) override
    {
        std::printf("editor: inner connection %d %s %s\n", type, a->getName(), b->getName());
    }
    void zel_onCompoundPortChange(ZEL::ECompoundPortChangeType type, PortArg port) override
    {
        std::printf("editor: port %d %s\n", type, port->getName());
    }
    void zel_onNodeChange(ZEL::ENodeChangeType type,
                          const AddRefWrapper<ZEL::Compound>& compound,
                          NodeArg node) override
    {
        std::printf("editor: node %d %s %s\n", type, compound->getName(), node->getName());
    }
};
