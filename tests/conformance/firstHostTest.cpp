// The first host of the guide keeps the rules, so that a host that begins as a copy of it does.

#include "zelConformance.h"

// NOLINTBEGIN(bugprone-suspicious-include): a program of one file; its main is not run here.
#define main firstHostMain
#include "../../examples/first/firstHost.cpp"
#undef main
// NOLINTEND(bugprone-suspicious-include)

namespace {

class FirstHost : public ConformanceHost {
public:
    FirstHost() { m_runtime.createPortDataType("image"); }

    std::unique_ptr<Container> makeDocument() override
    {
        return std::make_unique<Document>(m_runtime);
    }
    AddRefWrapper<Node> makeNode(Container& document, const char* name) override
    {
        return HostNode::createNew(&document, name);
    }

private:
    Runtime m_runtime;
};

const bool kFirstHost =
    registerConformanceTests("FirstHost", [] { return std::make_unique<FirstHost>(); });

} // namespace
