#pragma once

#include "zelSlotTable.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ZEL {

class Namable;

/// Finds the entries of one long sequence by name. It serves an entry whose getName is Namable's
/// own: its name changes only inside Namable, which tells the index. Every other entry (its class
/// overrides getName, or another sequence's index has it) is asked at each lookup, if it stands
/// before what the table gives. A name that occurs twice is looked up by a scan of the sequence.
///
/// An entry is taken up at the first lookup after it was appended: by then it is fully constructed.
class NameIndex {
public:
    static constexpr std::uint32_t kNoSlot = SlotTable::kNoSlot;

    /// The word is that of the sequence, and outlives the index.
    explicit NameIndex(std::uintptr_t& home) : m_home(home) {}
    NameIndex(const NameIndex&) = delete;
    NameIndex& operator=(const NameIndex&) = delete;
    /// The entries forget the index.
    ~NameIndex();

    /// False after a reset: the next find would take up every entry.
    bool isInUse() const { return m_slots > 0; }
    /// The first entry of that name, null when there is none.
    Namable* find(std::string_view name);
    /// The entry leaves its slot.
    void erase(Namable* object, std::uint32_t slot);
    /// Slots behind this number are gone.
    void trim(std::uint32_t slots);
    /// Empties the index: slots have changed their numbers.
    void reset();

    /// The name of an object with a plain name.
    static std::string_view nameOf(const Namable& object);
    /// Appends what the object's getName answers.
    static void appendName(const Namable& object, std::string& text);

    // For Namable, round a change of its name.
    /// The slot of the object under its present name, which is taken out; kNoSlot when it has none.
    std::uint32_t beginRename(const Namable& object);
    void endRename(const Namable& object, std::uint32_t slot);

private:
    static constexpr std::uint32_t kManySlots = UINT32_MAX - 1; ///< The name occurs twice: scan.

    void takeUpNewEntries();
    void enter(const Namable& object, std::uint32_t slot);
    Namable* objectAt(std::uint32_t slot) const;

    std::uintptr_t& m_home;
    SlotTable m_table;
    std::vector<std::uint32_t> m_asked; ///< Slots of the entries that are asked, ascending.
    std::uint32_t m_slots = 0;          ///< How many slots were taken up, from slot 0.
};

/// True when the object's getName is Namable's own.
bool hasPlainName(const Namable& object);

} // namespace ZEL
