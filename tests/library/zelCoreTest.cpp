#include "zelTestNetwork.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <unordered_map>
#include <vector>

namespace ZEL {
namespace {

/// Counts every addRef and release, also those that cancel each other out. Its destructor makes and
/// drops a wrapper of it.
struct Busy : ReferenceCounted, Live {
    ~Busy() override { const AddRefWrapper<Busy> self(this); }
    void addRef() { ++calls, ReferenceCounted::addRef(); }
    std::int32_t release() { return ++calls, ReferenceCounted::release(); }
    int calls = 0;
    AddRefWrapper<Busy> next;
};

using Wrapper = AddRefWrapper<Busy>;

static_assert(!std::is_convertible_v<AddRefWrapper<ReferenceCounted>, Wrapper>);

TEST(ReferenceCounted, EveryReleaseThatLeavesNothingDestroysAndCountsAreNotCopied)
{
    struct Kept : ReferenceCounted {
        void deleteThis() override { ++deletions; }
        int deletions = 0;
    } kept;
    kept.addRef();
    kept.addRef();
    EXPECT_EQ(0, Kept(kept).getRefCount());
    kept = Kept();
    EXPECT_EQ(1, kept.release());
    EXPECT_EQ(0, kept.deletions);
    kept.release();
    kept.release();
    EXPECT_EQ(2, kept.deletions) << "at 0 and below";
    const int before = Live::count;
    static_cast<ReferenceCounted*>(new Busy)->release();
    EXPECT_EQ(before, Live::count) << "never referenced";
}

TEST(AddRefWrapper, TakesAnyNullPointer)
{
    // NOLINTBEGIN(modernize-use-nullptr): the other ones are the test.
    Wrapper wrappers[] = {Wrapper(NULL), Wrapper(0), Wrapper(nullptr), NULL, 0, nullptr};
    for (Wrapper& wrapper : wrappers) {
        EXPECT_TRUE(wrapper == nullptr && wrapper == NULL && !(wrapper != 0));
        wrapper = new Busy;
        wrapper = NULL;
        EXPECT_FALSE(wrapper);
        wrapper = new Busy;
        wrapper = 0;
        EXPECT_FALSE(wrapper);
    }
    // NOLINTEND(modernize-use-nullptr)
}

TEST(AddRefWrapper, IsAKeyInEveryKindOfContainer)
{
    const Wrapper first(new Busy);
    const Wrapper second(new Busy);
    EXPECT_EQ(2U, (std::set<Wrapper>{first, second, first, Wrapper(first)}).size());
    std::unordered_map<Wrapper, int> numbers{{first, 1}, {second, 2}};
    EXPECT_EQ(1, numbers.at(first));
    EXPECT_EQ(0U, numbers.count(nullptr));
    EXPECT_EQ(3, first->getRefCount() + second->getRefCount() - 1) << "each held by its key";
    const AddRefWrapper<ReferenceCounted> base(first);
    EXPECT_TRUE(!(first < base) && !(base < first) && first <= base && first >= base);
    EXPECT_EQ(first<second, second> first);
    EXPECT_EQ(std::less<Busy*>()(first.get(), second.get()), first < second);
    EXPECT_TRUE(Wrapper() <= first && !(first < Wrapper()));
    EXPECT_EQ(std::hash<Busy*>()(first.get()), std::hash<Wrapper>()(first));
}

TEST(AddRefWrapper, GivesUpExchangesAndCastsItsObject)
{
    const int before = Live::count;
    {
        Wrapper first(new Busy);
        Wrapper second(new Busy);
        Busy* const object = first.get();
        swap(first, second);
        EXPECT_EQ(object, second.get());
        AddRefWrapper<ReferenceCounted> base(std::move(second));
        EXPECT_EQ(1, object->getRefCount());
        EXPECT_FALSE(second); // NOLINT(bugprone-use-after-move): empty.
        EXPECT_EQ(object, static_pointer_cast<Busy>(base));
        EXPECT_EQ(object, dynamic_pointer_cast<Busy>(base));
        EXPECT_EQ(nullptr, dynamic_pointer_cast<Busy>(AddRefWrapper<ReferenceCounted>()));
        static_assert(std::is_same_v<decltype(base)::element_type, ReferenceCounted>);
        ReferenceCounted* const given = base.detach();
        EXPECT_TRUE(!base && given == object && object->getRefCount() == 1);
        first.reset(object);
        EXPECT_EQ(2, object->getRefCount());
        given->release();
        first.reset();
        EXPECT_FALSE(first);
    }
    EXPECT_EQ(before, Live::count);
}

TEST(AddRefWrapper, CopiesTakeAReferenceAndMovesTakeItOver)
{
    Wrapper first(new Busy);
    Wrapper second(first);
    Wrapper third;
    third = first.get();
    EXPECT_EQ(3, first->getRefCount());
    first->calls = 0;
    Wrapper moved(std::move(second));
    second = std::move(third);
    EXPECT_TRUE(third == nullptr && moved == first); // NOLINT(bugprone-use-after-move): empty.
    Wrapper& itself = first;
    first = itself;
    first = itself.get();
    first = std::move(itself);
    ASSERT_TRUE(first);
    EXPECT_EQ(0, first->calls);
    moved = nullptr;
    EXPECT_EQ(2, first->getRefCount());
    std::vector<Wrapper> wrappers;
    for (int i = 0; i < 9; ++i)
        wrappers.insert(wrappers.begin(), new Busy);
    wrappers.erase(wrappers.begin() + 1);
    for (const Wrapper& wrapper : wrappers)
        EXPECT_EQ(1, wrapper->calls) << "neither growing nor erasing touches those that stay";
}

TEST(AddRefWrapper, AssignmentSurvivesTheObjectThatDiesByIt)
{
    using Step = void (*)(Wrapper&);
    const Step steps[] = {
        [](Wrapper& head) { head = head->next; },
        [](Wrapper& head) { head = head->next.get(); },
        [](Wrapper& head) { head = std::move(head->next); },
    };
    const int before = Live::count;
    for (const Step step : steps) {
        Wrapper head(new Busy);
        Busy* const second = (head->next = new Busy).get();
        step(head);
        EXPECT_TRUE(head == second && head->getRefCount() == 1);
        EXPECT_EQ(before + 1, Live::count);
    }
    auto* const loop = new Busy;
    loop->next = loop;
    loop->next = nullptr; // The wrapper assigned to lies in the object.
    EXPECT_EQ(before, Live::count);
}

TEST(AddRefWrapper, ConvertsToABaseAndComparesTheObject)
{
    const int before = Live::count;
    AddRefWrapper<Port> port = TestPort::make("P");
    AddRefWrapper<ReferenceCounted> base = port; // Not the first base of Port.
    EXPECT_EQ(2, port->getRefCount());
    EXPECT_TRUE(base == port && base == port.get() && port.get() == base && base != nullptr);
    EXPECT_FALSE(base != port || base != port.get() || port.get() != base || nullptr == base);
    port = nullptr;
    EXPECT_TRUE(base != port && port == nullptr && nullptr == port && !port && nullptr != base);
    base = nullptr;
    EXPECT_EQ(before, Live::count);
}

TEST(Namable, IgnoresNullTakesItsOwnTextAndCopiesWhatTheVirtualNameAnswers)
{
    Namable name("Blur, a name that fits no small buffer");
    name.setName(nullptr);
    name.appendString(nullptr);
    name.setName(name.getName() + 29);
    for (int i = 0; i < 3; ++i)
        name.appendString(name.getName());
    EXPECT_EQ(72U, std::string(name.getName()).size());
    struct Masked : Namable {
        using Namable::operator=;
        const char* getName() const override { return "mask"; }
        void setName(const char* text) override { set = text; }
        std::string set;
    } masked;
    const Namable& answer = masked;
    EXPECT_STREQ("mask", Namable(answer).getName());
    EXPECT_TRUE(Namable("mask") == masked && Namable("Mask") != masked && Namable() != masked);
    masked = Namable("new");
    EXPECT_EQ("new", masked.set) << "by the virtual setName";
    name = answer;
    EXPECT_STREQ("mask", name.getName());
}

TEST(StatusStr, FailsUnlessTheMessageIsNullAndACopyOfThatFails)
{
    const std::string longText(2000, 'x');
    const struct {
        const char* name;
        StatusStr status;
        bool fails;
        std::string message;
    } cases[] = {
        {"nothing", StatusStr(), false, ""},
        {"message", StatusStr("lost"), true, "lost"},
        {"empty message", StatusStr(""), true, ""},
        {"formatted", StatusStr("%s on %s", "In", "Blur"), true, "In on Blur"},
        {"cut", StatusStr("%s%s", longText.c_str(), ""), true, std::string(1023, 'x')},
        {"null format", StatusStr(nullptr, "In", "Blur"), false, ""},
        {"null argument", StatusStr("%s 100%", nullptr, "Blur"), true, "%s 100%"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        StatusStr assigned("before");
        assigned = row.status;
        EXPECT_EQ(row.fails, !row.status);
        EXPECT_EQ(row.fails, !StatusStr(row.status));
        EXPECT_EQ(row.fails, !assigned);
        EXPECT_EQ(row.message, assigned.getErrorString());
    }
    StatusStr status("a message that fits no small buffer");
    status.setErrorString(status.getErrorString() + 2);
    EXPECT_STREQ("message that fits no small buffer", status.getErrorString());
    status.setErrorString(nullptr);
    EXPECT_FALSE(!status);
    const StatusStr copy(status);
    EXPECT_TRUE(!copy) << "the copy of a null message";
}

TEST(StatusStr, ClearsBeforeItCopiesAlsoItself)
{
    StatusStr status("lost");
    const StatusStr& itself = status;
    status = itself;
    EXPECT_FALSE(!status);
    status.setErrorString("lost");
    status.clearError();
    EXPECT_FALSE(!status);
    EXPECT_STREQ("", status.getErrorString());
}

} // namespace
} // namespace ZEL
