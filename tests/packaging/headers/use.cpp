// A user's own code, to be compiled with every warning: derives from what a host derives from, and
// brings the templates of the headers to life.

#include "zel.h"

using ZEL::AddRefWrapper;

namespace {

class UserNode : public ZEL::Node {
public:
    using Node::Node;
};

class UserCompound : public ZEL::Compound {
public:
    using Compound::Compound;
    const char* getSpecializedCompoundTypeName() override { return "User"; }
};

class UserEditor : public ZEL::HostEditor {
public:
    void zel_onNodeChange(ZEL::ENodeChangeType change,
                          const AddRefWrapper<ZEL::Compound>& compound,
                          const AddRefWrapper<ZEL::Node>& node) override
    {
        m_last = change == ZEL::eNodeAdded && compound ? node : nullptr;
    }

private:
    AddRefWrapper<ZEL::Node> m_last;
};

class UserRuntime : public ZEL::Runtime {};

class UserType : public ZEL::PortDataType {
public:
    UserType() : PortDataType("user") {}
};

} // namespace

int main()
{
    AddRefWrapper<UserNode> node = new UserNode(nullptr);
    AddRefWrapper<ZEL::Node> base = node;
    AddRefWrapper<ZEL::Node> moved = std::move(base);
    base = moved;
    *base = *moved;
    base.swap(moved);
    AddRefWrapper<ZEL::Compound> network = new UserCompound(node);
    *network = *network->getAsNode()->getAsCompound();
    UserEditor editor;
    node->registerEditor(&editor);
    UserRuntime runtime;
    AddRefWrapper<ZEL::PortDataType> type = new UserType;
    node->inputs().addPort("In", type);
    int found = 0;
    for (ZEL::Port* port : node->inputs())
        found += port->getDataType() == type && type == port->getDataType().get();
    for (ZEL::Node* inner : network->nodes())
        found += inner != node && nullptr != base && base != nullptr && node == base;
    const auto places = node->inputs().end() - node->inputs().begin();
    const ZEL::StatusStr status("%s and %s", "one", "two");
    return found == places && !status && runtime.getNumberOfPortDataTypes() == 0 ? 0 : 1;
}
