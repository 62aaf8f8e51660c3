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
/// before what the table gives. Any number of entries may share a name.
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

    /// The first entry of that name, of those that are not asked; null when there is none. Runs no
    /// code of the host.
    Namable* find(std::string_view name);
    /// The slot of what find has given; kNoSlot when that is null.
    std::uint32_t firstSlot(std::string_view name) const;
    /// The first slot of an entry that is the first of its name; kNoSlot when the index cannot
    /// tell.
    std::uint32_t firstSlotOf(const Namable& object) const;
    /// Whether any entry is to be asked.
    bool asks() const { return !m_asked.empty(); }
    /// Appends the slots before that one whose entries are to be asked; kNoSlot: all of them.
    void collectAsked(std::uint32_t before, std::vector<std::uint32_t>& slots) const;

    // What happens to the sequence.
    /// The object left the slot, which is a hole already.
    void onErased(Namable* object, std::uint32_t slot);
    /// An entry was inserted there; those behind it moved up.
    void onInserted(std::uint32_t slot);
    /// Slots behind this number are gone.
    void trim(std::uint32_t slots);
    /// Each entry has so many before it now.
    void onHolesClosed(const std::vector<std::uint32_t>& entriesBefore);

    /// Gives an entry another name, and the string its old one.
    void rename(Namable& object, std::string& name);

    /// The name of an object with a plain name.
    static const std::string& nameOf(const Namable& object);
    /// Appends what the object's getName answers.
    static void appendName(const Namable& object, std::string& text);

private:
    static auto isNamed(std::string_view name);
    std::vector<std::uint32_t> slotsOf(const Namable& object) const;
    bool isEntered(const Namable& object) const;
    void takeUpNewEntries();
    void takeUp(std::uint32_t slot);
    void enter(Namable& object, std::uint32_t slot);
    bool erase(std::uint32_t hash, std::uint32_t slot);
    void leaveToAsking(Namable& object);
    void ask(std::uint32_t slot);
    Namable* objectAt(std::uint32_t slot) const;

    // What a lookup reads lies together.
    std::uintptr_t& m_home;
    std::uint32_t m_slots = 0;          ///< How many slots were taken up, from slot 0.
    std::vector<std::uint32_t> m_asked; ///< Slots of the entries that are asked, ascending.
    SlotTable m_table;
};

/// True when the object's getName is Namable's own.
bool hasPlainName(const Namable& object);
/// True when the object's getName answers that name. Calls it only if the class has its own.
bool hasName(const Namable& object, std::string_view name);

} // namespace ZEL
