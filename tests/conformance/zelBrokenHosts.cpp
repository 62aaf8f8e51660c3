// Hosts that each break one rule. The program runs the kit on all of them and prints what it says,
// one line for each failure: SUITE.TEST: WORDS.
#include "zelBrokenCompounds.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

using namespace broken; // The classes of the plain host, and the broken compounds.

// The document.

struct ForgetfulDocument : plain::Document<NodeClass, CompoundClass> {
    NodePtr getRootNode() override
    {
        NodePtr root(new NodeClass(this));
        root->setName("Top");
        return root;
    }
};

struct EmptyDocument : plain::Document<NodeClass, CompoundClass> {
    NodePtr getRootNode() override { return nullptr; }
};

struct TwoRuntimesDocument : plain::Document<NodeClass, CompoundClass> {
    ZEL::Runtime* getRuntime() override { return &m_runtimes[m_turn ^= 1]; }

private:
    ZEL::Runtime m_runtimes[2];
    int m_turn = 0;
};

struct StaysRegistered : plain::Document<NodeClass, CompoundClass> {
    StaysRegistered() { runtime().registerContainer(this); }
    ZEL::Runtime* getRuntime() override { return &runtime(); }

private:
    static ZEL::Runtime& runtime()
    {
        static ZEL::Runtime shared;
        return shared;
    }
};

struct RebuildsTooMuch : plain::Document<NodeClass, CompoundClass> {
    void rebuildCompounds() override
    {
        ZEL::NodeList& nodes = getRootNode()->getAsCompound()->nodes();
        nodes.remove(nodes[0]);
    }
};

struct ImmortalHost : plain::Host<> {
    std::unique_ptr<ZEL::Container> makeDocument() override
    {
        auto document = Host::makeDocument();
        ZEL::Container::registerWithUUID(uuidOf(*document).c_str(), document.get());
        return document;
    }
    std::string uuidOf(ZEL::Container& document) override
    {
        return std::to_string(reinterpret_cast<std::uintptr_t>(&document));
    }
};

struct SavesNothing : CompoundClass {
    using CompoundClass::CompoundClass;
    using ZEL::Compound::operator=;
    bool saveAs(const char* /*name*/) override { return true; }
};
struct SavesNothingHost : plain::Host<NodeClass, SavesNothing> {
    std::string savePath() override { return "no such folder/saved"; }
};

// Paths.

struct NamesOnlyItself : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    ZEL::Namable getFullPathName() override { return getName(); }
};

struct KeepsItsPath : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    ZEL::Namable getFullPathName() override
    {
        if (m_path.empty())
            m_path = NodeClass::getFullPathName().getName();
        return m_path.c_str();
    }

private:
    std::string m_path;
};

struct NoParentPath : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    ZEL::Namable onGetParentFullPathName() override { return getName(); }
};

// Ports.

struct KeepsConnections : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    bool onPortListPortRemoved(const ZEL::PortList& /*list*/, const PortPtr& /*port*/) override
    {
        return true;
    }
};

struct ConnectsItself : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    bool onPortAddConnection(const PortPtr& port, const PortPtr& other) override
    {
        port->connectedTo().add(other);
        return true;
    }
};

struct ChangesAndRefuses : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    bool onPortAddConnection(const PortPtr& /*port*/, const PortPtr& other) override
    {
        if (!other->isConnected())
            return true;
        other->removeAllConnections();
        return false;
    }
};

struct RefusesTooLate : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    bool onPortAddConnection(const PortPtr& port, const PortPtr& other) override
    {
        other->removeAllConnections(); // One source for each input.
        return *port->getDataType() == *other->getDataType();
    }
};

struct NeverDisconnects : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    bool onPortRemoveConnection(const PortPtr& /*port*/, const PortPtr& /*other*/) override
    {
        return false;
    }
};

struct RenamesAsItLikes : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    bool onPortSetName(const PortPtr& port, const char* name) override
    {
        const std::string other = name + std::string("2");
        if (port->getName() != other && name != other)
            port->ZEL::Namable::setName(other.c_str());
        return false;
    }
};

struct FickleValues : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    const char* onPortGetDefaultValue(const PortPtr& /*port*/) override
    {
        return (m_turn = !m_turn) ? "1" : "2";
    }

private:
    bool m_turn = false;
};

// Nodes.

struct AddsNodesItself : CompoundClass {
    using CompoundClass::CompoundClass;
    using ZEL::Compound::operator=;
    bool onNodeAdd(const NodePtr& node) override
    {
        if (m_isAdding)
            return true;
        m_isAdding = true;
        nodes().add(node);
        m_isAdding = false;
        return true;
    }

private:
    bool m_isAdding = false;
};

struct NeverForgotten : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    void onThisNodeDeleted() override {}
};
struct KeepsNodesConnected : CompoundClass {
    using CompoundClass::CompoundClass;
    using ZEL::Compound::operator=;
    bool onNodeRemove(const NodePtr& /*node*/) override { return true; }
};

struct HoldsTooMuch : CompoundClass {
    using CompoundClass::CompoundClass;
    using ZEL::Compound::operator=;
    bool onNodeAdd(const NodePtr& node) override
    {
        node->addRef();
        return true;
    }
};

struct ReleasesTooMuch : CompoundClass {
    using CompoundClass::CompoundClass;
    using ZEL::Compound::operator=;
    bool onNodeAdd(const NodePtr& node) override
    {
        // Only where the node survives it.
        if (node->getRefCount() > 8)
            node->release();
        return true;
    }
};

struct CallsAllCompounds : NodeClass {
    using NodeClass::NodeClass;
    using ZEL::Node::operator=;
    bool isCompound() override { return true; }
};

struct AssignsNothing : NodeClass {
    using NodeClass::NodeClass;
    ZEL::Node& operator=(const ZEL::Node& /*other*/) override { return *this; }
};

struct NamelessHost : plain::Host<> {
    NodePtr makeNode(ZEL::Container& /*document*/, const char* /*name*/) override
    {
        return new NodeClass(nullptr);
    }
};

/// Prints the failures, and nothing else.
class Words : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& test) override
    {
        m_test = test.test_suite_name() + std::string(".") + test.name();
    }
    void OnTestPartResult(const testing::TestPartResult& result) override
    {
        const std::string message = result.message();
        if (result.failed())
            std::printf("%s: %s\n", m_test.c_str(), message.c_str() + message.find('\n') + 1);
    }

    std::string m_test;
};

template <class Host>
void add(const char* name)
{
    ZEL::registerConformanceTests(name, [] { return std::make_unique<Host>(); });
}

template <class Broken>
using Nodes = plain::Host<Broken, CompoundClass>;
template <class Broken>
using Compounds = plain::Host<NodeClass, Broken>;
template <class Broken>
using Documents = plain::Host<NodeClass, CompoundClass, Broken>;

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    add<Documents<ForgetfulDocument>>("ForgetfulDocument");
    add<Documents<EmptyDocument>>("EmptyDocument");
    add<plain::Host<NodeClass, ZEL::Compound>>("LibrarysCompound");
    add<Documents<TwoRuntimesDocument>>("TwoRuntimesDocument");
    add<Documents<StaysRegistered>>("StaysRegistered");
    add<Documents<RebuildsTooMuch>>("RebuildsTooMuch");
    add<ImmortalHost>("ImmortalHost");
    add<SavesNothingHost>("SavesNothing");
    add<Nodes<NamesOnlyItself>>("NamesOnlyItself");
    add<Nodes<KeepsItsPath>>("KeepsItsPath");
    add<Nodes<NoParentPath>>("NoParentPath");
    add<Compounds<MakesNone>>("MakesNone");
    add<Compounds<MakesForeignOnes>>("MakesForeignOnes");
    add<Compounds<MakesLostOnes>>("MakesLostOnes");
    add<Compounds<HasItsOwnNodes>>("HasItsOwnNodes");
    add<Compounds<HasItsOwnName>>("HasItsOwnName");
    add<Compounds<CountsFromOne>>("CountsFromOne");
    add<Compounds<CreatesInsideOnly>>("CreatesInsideOnly");
    add<Compounds<DeletesInsideOnly>>("DeletesInsideOnly");
    add<Compounds<FollowsNoMove>>("FollowsNoMove");
    add<Nodes<KeepsConnections>>("KeepsConnections");
    add<Compounds<KeepsInnerConnections>>("KeepsInnerConnections");
    add<Nodes<ConnectsItself>>("ConnectsItself");
    add<Nodes<ChangesAndRefuses>>("ChangesAndRefuses");
    add<Nodes<RefusesTooLate>>("RefusesTooLate");
    add<Nodes<NeverDisconnects>>("NeverDisconnects");
    add<Nodes<RenamesAsItLikes>>("RenamesAsItLikes");
    add<Nodes<FickleValues>>("FickleValues");
    add<Compounds<AddsNodesItself>>("AddsNodesItself");
    add<plain::Host<NeverForgotten, KeepsNodesConnected>>("NeverForgotten");
    add<Compounds<HoldsTooMuch>>("HoldsTooMuch");
    add<Compounds<ReleasesTooMuch>>("ReleasesTooMuch");
    add<Nodes<CallsAllCompounds>>("CallsAllCompounds");
    add<Nodes<AssignsNothing>>("AssignsNothing");
    add<NamelessHost>("NamelessHost");
    testing::TestEventListeners& listeners = testing::UnitTest::GetInstance()->listeners();
    delete listeners.Release(listeners.default_result_printer());
    listeners.Append(new Words);
    return RUN_ALL_TESTS() == 0 ? 1 : 0; // A host that passes is not broken.
}
