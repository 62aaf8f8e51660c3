// The search for a node by a few letters.

#include "window/workspace/nodeCatalogue.h"
#include "windowFixture.h"

using shading::NodeCatalogue;
using Rank = shading::NodeCatalogue::Rank;

namespace shadingTest {

TEST(NodeCatalogueRank, OrdersTheWaysToFit)
{
    const struct {
        const char* word;
        const char* name;
        Rank rank;
    } kCases[] = {
        {"mix", "mix", Rank::Exact},
        {"MIX", "mix", Rank::None}, // Words come in small letters.
        {"mi", "mix", Rank::Prefix},
        {"surface", "standard_surface", Rank::WordStart},
        {"3d", "noise3d", Rank::WordStart},
        {"oise", "noise3d", Rank::Part},
        {"n3d", "noise3d", Rank::Subsequence},
        {"sdsf", "standard_surface", Rank::Subsequence},
        {"fs", "standard_surface", Rank::None},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(NodeCatalogue::rankOf(c.word, c.name), c.rank) << c.word << " in " << c.name;
}

class Catalogue : public Window {
protected:
    Catalogue() : catalogue(open("rusty_painted_gate.mtlx").document()) {}

    /// "TYPE OUTPUT" of the best hits.
    std::vector<std::string> find(const QString& text,
                                  std::size_t count,
                                  const std::optional<NodeCatalogue::Filter>& filter = {},
                                  const std::vector<QString>& recent = {})
    {
        std::vector<std::string> found;
        for (const NodeCatalogue::Hit& hit : catalogue.search(text, filter, recent)) {
            if (found.size() == count)
                break;
            const NodeCatalogue::Entry& entry = catalogue.entry(hit);
            found.push_back((entry.type + ' ' + entry.output).trimmed().toStdString());
        }
        return found;
    }

    NodeCatalogue catalogue;
};

TEST_F(Catalogue, FindsTheExactBeforeTheLonger)
{
    EXPECT_EQ(find("mix", 1), std::vector<std::string>{"mix color3"});
    EXPECT_EQ(find("mix fl", 1), std::vector<std::string>{"mix float"});
    EXPECT_EQ(find("nodegraph", 1), std::vector<std::string>{"nodegraph"});
    EXPECT_EQ(find("zzz", 1), std::vector<std::string>{});
    const auto hits = catalogue.search("m");
    for (std::size_t i = 1; i < hits.size(); ++i)
        EXPECT_LE(hits[i - 1].rank, hits[i].rank);
}

TEST_F(Catalogue, TellsApartWhatMakesTheSame)
{
    std::set<QString> seen;
    for (const NodeCatalogue::Entry& entry : catalogue.entries())
        EXPECT_TRUE(seen.insert(entry.category + entry.type + entry.output + entry.inputs).second)
            << entry.name().toStdString();
}

TEST_F(Catalogue, ListsOneOfEachTypeWhileManyFit)
{
    const auto hits = catalogue.search("");
    std::set<QString> types;
    for (const NodeCatalogue::Hit& hit : hits)
        EXPECT_TRUE(types.insert(catalogue.entry(hit).type).second);
    EXPECT_GT(types.size(), 20U);
    EXPECT_GT(catalogue.search("mix").size(), 3U) << "few types fit: all variants";
}

TEST_F(Catalogue, PutsTheRecentFirstWhileNothingIsTyped)
{
    EXPECT_EQ(find("", 2, {}, {"ND_mix_float", "nodegraph"}),
              (std::vector<std::string>{"mix float", "nodegraph"}));
}

TEST_F(Catalogue, TakesOnlyWhatAWireFits)
{
    const NodeCatalogue::Filter filter = {"surfaceshader", true};
    const auto hits = catalogue.search("", filter);
    ASSERT_FALSE(hits.empty());
    for (const NodeCatalogue::Hit& hit : hits) {
        const NodeCatalogue::Entry& entry = catalogue.entry(hit);
        ASSERT_TRUE(entry.definition);
        bool isThere = false;
        for (const auto& port : entry.definition->record().inputs)
            isThere = isThere || (port.name == hit.port && port.type == "surfaceshader");
        EXPECT_TRUE(isThere) << entry.name().toStdString();
    }
}

} // namespace shadingTest
