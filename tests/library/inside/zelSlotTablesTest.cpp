// The tables of a long sequence against the containers of the standard library.

#include "../zelListModel.h"
#include "core/zelSlotCounts.h"
#include "core/zelSlotTable.h"

#include <map>
#include <memory>
#include <set>
#include <vector>

namespace ZEL {
namespace {

/// Objects with keys in slots, and the table of them. Many keys have one hash.
struct TableModel {
    static auto hasKey(int key)
    {
        return [key](const void* object) { return *static_cast<const int*>(object) == key; };
    }
    static std::uint32_t hash(int key) { return static_cast<std::uint32_t>(key % 7) * 0x01000001; }

    bool isFree(std::uint32_t slot) const { return slot >= objects.size() || !objects[slot]; }
    void insert(int key, std::uint32_t slot)
    {
        if (slot >= objects.size())
            objects.resize(slot + 1);
        keys.push_back(std::make_unique<int>(key));
        objects[slot] = keys.back().get();
        table.insert(hash(key), slot, objects[slot], hasKey(key));
        slots[key].insert(slot);
    }
    void erase(std::uint32_t slot)
    {
        const int key = *static_cast<int*>(objects[slot]);
        objects[slot] = nullptr;
        ASSERT_TRUE(table.erase(hash(key), slot, objects.data()));
        ASSERT_FALSE(table.erase(hash(key), slot, objects.data()));
        slots[key].erase(slot);
    }
    void check(int key)
    {
        const std::set<std::uint32_t>& expected = slots[key];
        const SlotTable::First first = table.find(hash(key), hasKey(key));
        ASSERT_EQ(expected.empty() ? SlotTable::kNoSlot : *expected.begin(), first.slot);
        ASSERT_EQ(expected.empty() ? nullptr : objects[*expected.begin()], first.object);
        ASSERT_EQ(first.object, table.findObject(hash(key), hasKey(key)));
        ASSERT_EQ(expected.size(), first.count);
        std::vector<std::uint32_t> all;
        table.collect(hash(key), hasKey(key), all);
        ASSERT_EQ(std::vector<std::uint32_t>(expected.begin(), expected.end()), all);
    }
    /// Slots become twice as large and three more.
    void renumber()
    {
        const auto renumbered = [](std::uint32_t slot) { return slot * 2 + 3; };
        table.renumber(renumbered);
        std::vector<void*> moved(renumbered(static_cast<std::uint32_t>(objects.size())));
        for (std::uint32_t slot = 0; slot < objects.size(); ++slot)
            moved[renumbered(slot)] = objects[slot];
        objects.swap(moved);
        for (auto& [key, old] : slots) {
            std::set<std::uint32_t> all;
            for (const std::uint32_t slot : old)
                all.insert(renumbered(slot));
            old.swap(all);
        }
    }

    SlotTable table;
    std::vector<std::unique_ptr<int>> keys; ///< What the objects are.
    std::vector<void*> objects;             ///< In each slot; null: a hole.
    std::map<int, std::set<std::uint32_t>> slots;
};

TEST(SlotTable, FindsTheSlotsOfEveryKeyInOrder)
{
    Random random(3);
    for (int round = 0; round < 3; ++round) {
        TableModel model;
        for (int step = 0; step < stepCount(4000) && !HasFatalFailure(); ++step) {
            const int key = random.below(round == 0 ? 400 : 12);
            const auto slot = static_cast<std::uint32_t>(random.below(900));
            if (model.isFree(slot))
                model.insert(key, slot);
            else
                model.erase(slot);
            if (step % 2000 == 1999)
                model.renumber();
            model.check(key);
            model.check(random.below(400));
        }
        model.table.clear();
        EXPECT_EQ(SlotTable::kNoSlot, model.table.first(0, [](const void*) { return true; }));
    }
}

TEST(SlotCounts, FindSlotsAndIndexesAmongHoles)
{
    Random random(5);
    for (const int size : {1, 63, 64, 65, 128, 500, 1000, 4097}) {
        SCOPED_TRACE(size);
        int object = 0;
        std::vector<void*> slots(static_cast<std::size_t>(size), &object);
        const auto used = [&] { return static_cast<std::uint32_t>(slots.size()); };
        for (void*& slot : slots)
            slot = random.oneIn(3) ? nullptr : &object;
        SlotCounts counts;
        counts.onErased(0); // Nothing is counted yet.
        ASSERT_TRUE(counts.isEmpty());
        counts.count(slots.data(), used());
        for (int step = 0; step < 300; ++step) {
            const auto place = static_cast<std::uint32_t>(random.below(static_cast<int>(used())));
            if (random.oneIn(2)) {
                slots.push_back(&object);
                counts.onAppended(used() - 1);
            } else if (slots[place]) {
                slots[place] = nullptr;
                counts.onErased(place);
            }
            std::uint32_t index = 0;
            for (std::uint32_t slot = 0; slot < used() && step % 20 == 0; ++slot) {
                ASSERT_EQ(index, counts.indexOf(slots.data(), slot)) << slot;
                if (!slots[slot])
                    continue;
                ASSERT_EQ(slot, counts.slotAt(slots.data(), index));
                ++index;
            }
        }
        counts.clear();
        EXPECT_TRUE(counts.isEmpty());
    }
}

} // namespace
} // namespace ZEL
