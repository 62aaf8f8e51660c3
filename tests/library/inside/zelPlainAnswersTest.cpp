// Whether the library sees for itself what a class overrides, or goes by what wrappers have noted:
// which of the two, depends on how it is built. No wrapper is made of the classes here.

#include "graph/zelPlainAnswers.h"

#include "core/zelNameIndex.h"
#include "zelCompound.h"
#include "zelNode.h"

#include <gtest/gtest.h>

namespace ZEL {
namespace {

struct UnseenPort : Port {
    UnseenPort() : Port("port", PortInput) {}
    using Port::operator=;
};
struct UnseenNode : Node {
    UnseenNode() : Node(nullptr) {}
    using Node::operator=;
};
struct UnseenCompound : Compound {
    UnseenCompound() : Compound(AddRefWrapper<Node>()) {}
    using Compound::operator=;
};
/// Overrides what has the slots on both sides of those that are looked at.
struct NeighboursNode : UnseenNode {
    using UnseenNode::operator=;
    void setName(const char* name) override { Node::setName(name); }
    bool isCompound() override { return false; }
    Namable getFullPathName() override { return Node::getFullPathName(); }
    bool onPortSetDataType(const AddRefWrapper<Port>& /*port*/,
                           const AddRefWrapper<PortDataType>& /*type*/) override
    {
        return false;
    }
};

#if defined(ZEL_NAMES_BY_TYPE)

TEST(PlainAnswers, AreNotReadFromAnObject)
{
    EXPECT_FALSE(hasPlainName(UnseenPort()));
    EXPECT_FALSE(hasPlainName(UnseenNode()));
    EXPECT_FALSE(hasPlainCompound(UnseenNode()));
    EXPECT_FALSE(hasPlainNodes(UnseenCompound()));
    EXPECT_FALSE(agreesLikeNode(UnseenNode()));
    EXPECT_FALSE(agreesLikeNode(NeighboursNode()));
}

#else

struct NamedNode : UnseenNode {
    using UnseenNode::operator=;
    const char* getName() const override { return "own"; }
};
struct NamedPort : UnseenPort {
    using UnseenPort::operator=;
    const char* getName() const override { return "own"; }
};
struct CompoundNode : UnseenNode {
    using UnseenNode::operator=;
    AddRefWrapper<Compound> getAsCompound() override { return nullptr; }
};
struct NodesCompound : UnseenCompound {
    using UnseenCompound::operator=;
    NodeList& nodes() override { return Compound::nodes(); }
};
struct NeighboursCompound : UnseenCompound {
    using UnseenCompound::operator=;
    PortList& innerInputs() override { return Compound::innerInputs(); }
    PortList& innerOutputs() override { return Compound::innerOutputs(); }
};
struct AskedNode : UnseenNode {
    using UnseenNode::operator=;
    bool onPortAddConnection(const AddRefWrapper<Port>& /*port*/,
                             const AddRefWrapper<Port>& /*other*/) override
    {
        return true;
    }
};
struct AskedToPartNode : UnseenNode {
    using UnseenNode::operator=;
    bool onPortRemoveConnection(const AddRefWrapper<Port>& /*port*/,
                                const AddRefWrapper<Port>& /*other*/) override
    {
        return true;
    }
};
/// Two nodes; the second overrides.
struct TwoNodes : NeighboursNode, NamedNode {
    TwoNodes& operator=(const TwoNodes&) = delete;
};

TEST(PlainAnswers, AreReadFromAnObject)
{
    EXPECT_TRUE(hasPlainName(UnseenPort()));
    EXPECT_TRUE(hasPlainName(UnseenNode()));
    EXPECT_TRUE(hasPlainName(NeighboursNode()));
    EXPECT_FALSE(hasPlainName(NamedPort()));
    EXPECT_FALSE(hasPlainName(NamedNode()));
    EXPECT_FALSE(hasPlainName(UnseenCompound())) << "the name is its owner's";

    EXPECT_TRUE(hasPlainCompound(UnseenNode()));
    EXPECT_TRUE(hasPlainCompound(NeighboursNode()));
    EXPECT_FALSE(hasPlainCompound(CompoundNode()));
    EXPECT_TRUE(hasPlainNodes(UnseenCompound()));
    EXPECT_TRUE(hasPlainNodes(NeighboursCompound()));
    EXPECT_FALSE(hasPlainNodes(NodesCompound()));

    EXPECT_TRUE(agreesLikeNode(UnseenNode()));
    EXPECT_TRUE(agreesLikeNode(NeighboursNode()));
    EXPECT_FALSE(agreesLikeNode(AskedNode()));
    EXPECT_FALSE(agreesLikeNode(AskedToPartNode()));
}

TEST(PlainAnswers, AreThoseOfEachOfTwoNodesInAnObject)
{
    const TwoNodes both;
    EXPECT_TRUE(hasPlainName(static_cast<const NeighboursNode&>(both)));
    EXPECT_FALSE(hasPlainName(static_cast<const NamedNode&>(both)));
    EXPECT_TRUE(agreesLikeNode(static_cast<const NamedNode&>(both)));
}

#endif

} // namespace
} // namespace ZEL
