#pragma once

#include "zel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace ZEL {

/// Draws the same numbers from the same seed on every machine.
class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    int below(int end) { return static_cast<int>(m_engine() % static_cast<unsigned>(end)); }
    bool oneIn(int count) { return below(count) == 0; }
    template <class Entries>
    auto& from(Entries& entries)
    {
        return entries[static_cast<std::size_t>(below(static_cast<int>(std::size(entries))))];
    }

private:
    std::mt19937 m_engine;
};

/// So many random steps; ZEL_STEPS_FACTOR in the environment makes it that many times as many.
inline int stepCount(int usual)
{
    const char* const factor = std::getenv("ZEL_STEPS_FACTOR");
    return usual * (factor ? std::max(1, std::atoi(factor)) : 1);
}

/// Some names are seldom, some come in pairs, some are shared by many.
inline std::string drawName(Random& random)
{
    const int number = random.below(600);
    if (number < 60)
        return "crowd" + std::to_string(number % 3);
    return "name" + std::to_string(number);
}

inline void renameSomehow(Random& random, Namable& object)
{
    const std::string name = drawName(random);
    switch (random.below(4)) {
    case 0:
        object.appendString("x");
        break;
    case 1:
        object = Namable(name.c_str());
        break;
    default:
        object.setName(name.c_str());
    }
}

/// Answers a name of its own while isOdd.
template <class Base>
class OddlyNamed : public Base {
public:
    template <class... Args>
    explicit OddlyNamed(Args&&... args) : Base(std::forward<Args>(args)...)
    {
    }
    using Base::operator=;
    const char* getName() const override { return isOdd ? "odd" : Base::getName(); }

    bool isOdd = false;
};

/// How much of a list is read by index. That closes the holes of a long list sooner or later, so
/// there are long stretches without it.
enum class Look {
    Blind, ///< Nothing, and no index is asked for: only names are looked up.
    Some,  ///< Some entries at random.
    Whole, ///< Every entry.
};

/// How to look at a list after a step: one way for 400 steps, then another.
inline Look lookAfter(Random& random, int step)
{
    const Look looks[] = {Look::Whole, Look::Blind, Look::Some, Look::Blind};
    return random.oneIn(300) ? Look::Whole : looks[step / 400 % 4];
}

/// Compares a list with the entries that should stand in it: entries by their index, the first
/// place of each object that is looked for, and the first entry of each name.
template <class List, class Pointer, class FindPlace>
void compareLists(Random& random,
                  List& list,
                  const std::vector<Pointer>& entries,
                  const std::vector<Pointer>& known,
                  Look look,
                  FindPlace findPlace)
{
    const int count = static_cast<int>(entries.size());
    ASSERT_EQ(count, list.size());
    if (look == Look::Whole) {
        for (int i = 0; i < count; ++i)
            ASSERT_EQ(entries[static_cast<std::size_t>(i)], list[i]) << i;
        int place = 0;
        for (const auto* entry : list)
            ASSERT_EQ(entries[static_cast<std::size_t>(place++)].get(), entry) << place;
    }
    for (int i = 0; look == Look::Some && i < 3 && count > 0; ++i) {
        const int place = random.below(count);
        ASSERT_EQ(entries[static_cast<std::size_t>(place)], list[place]) << place;
    }
    ASSERT_EQ(nullptr, list[-1]);
    ASSERT_EQ(nullptr, list[count]);
    for (int i = 0; look != Look::Blind && i < 3 && !known.empty(); ++i) {
        const Pointer& object = random.from(known);
        const auto place = std::find(entries.begin(), entries.end(), object);
        findPlace(object, place == entries.end() ? -1 : static_cast<int>(place - entries.begin()));
    }
    for (int i = 0; i < 4; ++i) {
        const std::string name = random.oneIn(8) || entries.empty() ? drawName(random)
                                 : random.oneIn(8)                  ? std::string("odd")
                                                   : std::string(random.from(entries)->getName());
        const auto place = std::find_if(entries.begin(), entries.end(), [&](const Pointer& entry) {
            return name == entry->getName();
        });
        ASSERT_EQ(place == entries.end() ? Pointer() : *place, list[name.c_str()]) << name;
    }
}

} // namespace ZEL
