#include "zelNodeLibrary.h"

#include <gtest/gtest.h>

namespace ZEL {
namespace {

AddRefWrapper<NodeLibrary> addLibrary(const AddRefWrapper<NodeLibrary>& parent, const char* name)
{
    AddRefWrapper<NodeLibrary> library = NodeLibrary::createNew(name);
    parent->addSubLibrary(library);
    return library;
}

TEST(NodeLibrary, TakesDoublesAndEmptyWrappersAndGivesNothingOutOfRange)
{
    const AddRefWrapper<NodeLibrary> library = NodeLibrary::createNew(nullptr);
    const AddRefWrapper<NodeDefinition> node = NodeDefinition::createNew("A");
    library->addNode("A");
    library->addNode("A");
    library->addNode(node);
    library->addNode(AddRefWrapper<NodeDefinition>());
    EXPECT_EQ(4, library->getNumberOfNodes());
    EXPECT_STREQ("A", library->getNodeAt(1)->getName());
    EXPECT_NE(library->getNodeAt(0), library->getNodeAt(1));
    EXPECT_EQ(node, library->getNodeAt(2));
    EXPECT_EQ(2, node->getRefCount());
    EXPECT_FALSE(library->getNodeAt(-1) || library->getNodeAt(4));

    const AddRefWrapper<NodeLibrary> child = NodeLibrary::createNew("Child");
    for (const AddRefWrapper<NodeLibrary>& entry : {library->getSubLibraryAt(0), child, child})
        library->addSubLibrary(entry);
    for (const int index : {-1, 3, 1, 2}) // The third call removes, and then there are two.
        library->removeSubLibraryAt(index);
    EXPECT_EQ(2, child->getRefCount());
    EXPECT_EQ(2, library->getNumberOfSubLibraries());
    EXPECT_EQ(child, library->getSubLibraryAt(1));
    EXPECT_FALSE(library->getSubLibraryAt(-1) || library->getSubLibraryAt(2));
}

TEST(NodeLibrary, FindLibraryLooksAtItselfThenAtItsChildrenThenDownwards)
{
    const AddRefWrapper<NodeLibrary> root = NodeLibrary::createNew("Root");
    const auto a = addLibrary(root, "A");
    const auto aX = addLibrary(a, "X");
    const auto aXDeep = addLibrary(aX, "Deep");
    addLibrary(root, "Root");
    const auto b = addLibrary(root, "B");
    addLibrary(b, "Deep");
    const auto x = addLibrary(root, "X");
    addLibrary(root, "X");
    const auto slash = addLibrary(b, "A/C");
    EXPECT_EQ(root, root->findLibrary("Root"));
    EXPECT_EQ(x, root->findLibrary("X")) << "a child before a grandchild, the first of two";
    EXPECT_EQ(aXDeep, root->findLibrary("Deep")) << "the first child down to its end";
    EXPECT_EQ(slash, root->findLibrary("A/C")) << "one name, not a path";
    for (const char* miss : {"A/X", "A.X", "deep", "Dee", ""})
        EXPECT_FALSE(root->findLibrary(miss)) << miss;
}

TEST(NodeLibrary, SortOrdersTheOwnDefinitionsByBytes)
{
    const AddRefWrapper<NodeLibrary> library = NodeLibrary::createNew("L");
    const AddRefWrapper<NodeLibrary> child = addLibrary(library, "C");
    const char* const added[] = {"b", "\xc3\xa4", "ab", "B", "a"};
    for (const char* name : added) {
        library->addNode(name);
        child->addNode(name);
    }
    library->sort();
    const char* const sorted[] = {"B", "a", "ab", "b", "\xc3\xa4"};
    for (int i = 0; i < 5; ++i) {
        EXPECT_STREQ(sorted[i], library->getNodeAt(i)->getName());
        EXPECT_STREQ(added[i], child->getNodeAt(i)->getName());
    }
    EXPECT_FALSE(sortFunc(library->getNodeAt(0), library->getNodeAt(0)));
}

std::string g_lastWords;

template <class Base>
struct Mortal : Base {
    explicit Mortal(const char* name) { this->setName(name); }
    ~Mortal() override { g_lastWords += this->getName(); }
};

TEST(NodeLibrary, ReleasesSubLibrariesThenDefinitionsEachInOrder)
{
    AddRefWrapper<NodeLibrary> library = NodeLibrary::createNew("L");
    for (const char* name : {"a", "b", "c"}) {
        library->addNode(AddRefWrapper<NodeDefinition>(new Mortal<NodeDefinition>(name)));
        library->addSubLibrary(new Mortal<NodeLibrary>(name));
    }
    library->getNodeAt(1)->setName("1");
    library = nullptr;
    EXPECT_EQ("abca1c", g_lastWords);
}

} // namespace
} // namespace ZEL
