// Which classes are taken for plainly named where objects do not show it.

#include "core/zelNameIndex.h"
#include "zelCompound.h"
#include "zelNode.h"

#include <gtest/gtest.h>

#include <memory>

namespace ZEL {
namespace {

struct PlainNode : Node {
    PlainNode() : Node(nullptr) {}
    using Node::operator=;
};
struct PlainPort : Port {
    PlainPort() : Port("port", PortInput) {}
    using Port::operator=;
};
struct NamedNode : PlainNode {
    using PlainNode::operator=;
    const char* getName() const override { return "own"; }
};
struct BelowNamedNode : NamedNode {
    using NamedNode::operator=;
};
/// Its getName is not to be seen from outside.
class SecretNode : public PlainNode {
public:
    using PlainNode::operator=;

private:
    const char* getName() const override { return "secret"; }
};
struct UnknownNode : PlainNode {
    using PlainNode::operator=;
};

TEST(NamesByType, ServeEveryClassThatAWrapperHasSeen)
{
    EXPECT_TRUE(hasPlainName(*Node::createNew(nullptr, "node")));
    EXPECT_TRUE(hasPlainName(*Port::createNew("port", PortInput)));
    EXPECT_TRUE(hasPlainName(*AddRefWrapper<Node>(new PlainNode)));
    EXPECT_TRUE(hasPlainName(*AddRefWrapper<PlainNode>(new PlainNode)));
    EXPECT_TRUE(hasPlainName(*AddRefWrapper<Port>(new PlainPort)));
    EXPECT_FALSE(hasPlainName(*AddRefWrapper<Node>(new NamedNode)));
    EXPECT_FALSE(hasPlainName(*AddRefWrapper<Node>(new BelowNamedNode)));
    EXPECT_FALSE(hasPlainName(*AddRefWrapper<Node>(new SecretNode)));
    const AddRefWrapper<Node> owner = Node::createNew(nullptr, "owner");
    EXPECT_FALSE(hasPlainName(*Compound::createNew(owner, nullptr)));
}

TEST(NamesByType, TakeAnUnknownClassForOneThatOverrides)
{
    const std::unique_ptr<Node> unknown = std::make_unique<UnknownNode>();
    EXPECT_FALSE(hasPlainName(*unknown));
    {
        const NameClassNote note(typeid(UnknownNode), true); // A module that has a wrapper of it.
        EXPECT_TRUE(hasPlainName(*unknown));
        {
            const NameClassNote other(typeid(UnknownNode), false); // Another class of that name.
            const NameClassNote again(typeid(UnknownNode), true);
            EXPECT_FALSE(hasPlainName(*unknown));
        }
        EXPECT_TRUE(hasPlainName(*unknown));
    }
    EXPECT_FALSE(hasPlainName(*unknown)) << "the module is gone";
}

} // namespace
} // namespace ZEL
