#include "zel.h"

#include <gtest/gtest.h>

namespace ZEL {
namespace {

/// The pairs, then the child lists in braces.
std::string dump(PropertyList& list)
{
    std::string result;
    const char* key = nullptr;
    const char* value = nullptr;
    PropertyList* child = nullptr;
    for (int i = 0; list.getStringPairAt(i, &key, &value); ++i)
        result += std::string(key) + "=" + value + " ";
    for (int i = 0; list.getChildListAt(i, &key, &child); ++i)
        result += std::string(key) + "{" + dump(*child) + "} ";
    return result;
}

TEST(PropertyList, FirstOfEqualKeysWinsAndAllStay)
{
    PropertyList list;
    list.addChildList("key")->addStringPair("in", "1");
    list.addChildList("key")->addStringPair("in", "2");
    EXPECT_EQ(nullptr, list.getStringPairValue("key"));
    for (const char* key : {"Key", "key", "key"})
        list.addStringPair(key, std::to_string(list.getNumberOfPairs()).c_str());
    EXPECT_STREQ("1", list.getStringPairValue("key"));
    EXPECT_STREQ("1", list.getChildList("key")->getStringPairValue("in"));
    EXPECT_EQ(nullptr, list.getChildList("Key"));
    EXPECT_EQ("Key=0 key=1 key=2 key{in=1 } key{in=2 } ", dump(list));
    EXPECT_TRUE(list.getNumberOfPairs() == 3 && list.getNumberOfChildList() == 2);
    for (const int index : {-1, 3}) {
        const char* key = "untouched";
        const char* value = key;
        PropertyList* child = &list;
        EXPECT_FALSE(list.getStringPairAt(index, &key, &value));
        EXPECT_FALSE(list.getChildListAt(index, &key, &child));
        EXPECT_TRUE(std::string(key) == "untouched" && value == key && child == &list);
    }
    list.removeAll();
    EXPECT_TRUE(list.getNumberOfPairs() == 0 && list.getNumberOfChildList() == 0);
}

TEST(PropertyList, CopiesAreDeep)
{
    PropertyList source;
    source.addStringPair("a", "1");
    source.addChildList("child")->addChildList("grandchild")->addStringPair("b", "2");
    PropertyList copy(source);
    PropertyList assigned;
    assigned.addStringPair("old", "gone");
    assigned = source;
    copy.getChildList("child")->getChildList("grandchild")->addStringPair("c", "3");
    assigned.getChildList("child")->removeAll();
    EXPECT_EQ("a=1 child{grandchild{b=2 } } ", dump(source));
    EXPECT_EQ("a=1 child{grandchild{b=2 c=3 } } ", dump(copy));
    EXPECT_EQ("a=1 child{} ", dump(assigned));
}

TEST(PropertyList, MayBeGivenWhatItHolds)
{
    PropertyList list;
    list.addStringPair("a key that fits no small buffer", "1");
    for (int i = 0; i < 5; ++i) { // The sequences grow meanwhile.
        const char* key = nullptr;
        const char* value = nullptr;
        ASSERT_TRUE(list.getStringPairAt(0, &key, &value));
        list.addStringPair(value, key);
        list.addChildList(list.getStringPairValue("1"))->addStringPair("deep", "2");
    }
    EXPECT_STREQ("a key that fits no small buffer", list.getStringPairValue("1"));
    const PropertyList& child = *list.getChildList("a key that fits no small buffer");
    list = child;
    const PropertyList& itself = list;
    list = itself;
    EXPECT_EQ("deep=2 ", dump(list));
}

} // namespace
} // namespace ZEL
