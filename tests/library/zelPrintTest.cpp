#include "zelTestNetwork.h"

#include <gtest/gtest.h>

namespace ZEL {
namespace {

TEST(Print, NestedCompoundStandsInPlaceOfItsNodeAndCountsAsOne)
{
    TestNetwork net("in");
    const AddRefWrapper<Compound> sub = net.addCompound("Top", "Sub", "s", "t");
    const AddRefWrapper<Node> a = net.addNode("Top", "A", "a");
    net.connect("Top.in", "Top.Sub.s");
    net.connect("Top.in", "Top.A.a");
    sub->innerInputs()[0]->addConnection(sub->innerOutputs()[0]);
    a->inputs()[0]->setDataType(PortDataType::createNew("Color"));
    EXPECT_EQ(R"(ZEL Compound "Top"

1 Internal Inputs:
#0:  "in" of type "Float"
  connected to s on node Sub
  connected to a on node A

0 Internal Outputs:

1 Inputs:
#0:  "in" of type "Float"

0 Outputs:
2 nodes
ZEL Compound "Sub"

1 Internal Inputs:
#0:  "s" of type "Float"
  connected to t on node Sub

1 Internal Outputs:
#0:  "t" of type "Float"
  connected to s on node Sub

1 Inputs:
#0:  "s" of type "Float"
  connected to in on node Top

1 Outputs:
#0:  "t" of type "Float"
0 nodes

====================================
NODE 1 of compound "Top"
name: Top.A

1 inputs:
#0:  "a" of type "Color"
  connected to in on node Top

0 outputs:
)",
              printed([&] { net.compound()->debugPrint(); }));
}

} // namespace
} // namespace ZEL
