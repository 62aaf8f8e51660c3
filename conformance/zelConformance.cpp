#include "zelConformance.h"

#include "zelConformanceScene.h"

#include <gtest/gtest.h>

namespace ZEL {

namespace {

class RuleTest : public testing::Test {
public:
    RuleTest(const Conformance::Rule& rule, ConformanceFactory factory)
        : m_rule(rule),
          m_factory(std::move(factory))
    {
    }

    void TestBody() override
    {
        const std::unique_ptr<ConformanceHost> host = m_factory();
        ASSERT_TRUE(host) << "the factory made no host";
        Conformance::Scene scene(*host);
        ASSERT_TRUE(scene.document) << "makeDocument made no document";
        if (m_rule.needsNetwork && !scene.top)
            GTEST_SKIP() << "the document has no network: see the tests of the root node";
        host->edit(*scene.document, [&] { m_rule.check(scene); });
        if (scene.isWithoutCompounds && !HasFailure())
            GTEST_SKIP() << "createNewCompound made nothing: what needs a compound was not tried";
    }

private:
    const Conformance::Rule& m_rule;
    ConformanceFactory m_factory;
};

} // namespace

ConformanceHost::~ConformanceHost() = default;

AddRefWrapper<Port> ConformanceHost::addPort(Node& node,
                                             PortIOType ioType,
                                             const char* name,
                                             const AddRefWrapper<PortDataType>& type)
{
    return (ioType == PortInput ? node.inputs() : node.outputs()).addPort(name, type);
}

AddRefWrapper<PortDataType> ConformanceHost::makeDataType(Container& document, const char* name)
{
    Runtime* const runtime = document.getRuntime();
    return runtime ? runtime->createPortDataType(name) : PortDataType::createNew(name);
}

const char* ConformanceHost::dataTypeName(int number)
{
    return number == 0 ? "float" : "color3";
}

std::string ConformanceHost::nameOf(const char* word)
{
    return word;
}

std::string ConformanceHost::uuidOf(Container& /*document*/)
{
    return "";
}

std::string ConformanceHost::savePath()
{
    return "";
}

void ConformanceHost::edit(Container& /*document*/, const std::function<void()>& change)
{
    change();
}

bool registerConformanceTests(const char* suite, const ConformanceFactory& factory)
{
    using namespace Conformance;
    for (const std::vector<Rule>* const rules :
         {&documentRules(), &compoundRules(), &portRules(), &nodeRules(), &commandRules()}) {
        for (const Rule& rule : *rules)
            testing::RegisterTest(suite, rule.name, nullptr, nullptr, __FILE__, __LINE__,
                                  [&rule, factory] { return new RuleTest(rule, factory); });
    }
    return true;
}

} // namespace ZEL
