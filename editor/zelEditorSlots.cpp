#include "zelEditorSlots.h"

#include <algorithm>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ZEL {

/// What a notifier with two editors or more needs.
struct EditorSlots::Several {
    using Slot = std::pair<const HostEditor*, std::uint32_t>;

    std::vector<Slot>::iterator findFew(const HostEditor* editor)
    {
        return std::find_if(few.begin(), few.end(),
                            [editor](const Slot& slot) { return slot.first == editor; });
    }

    std::vector<Slot> few;                                     ///< In no order.
    std::unordered_map<const HostEditor*, std::uint32_t> many; ///< Those that few has no room for.
};

namespace {

/// Up to so many editors are searched one by one.
constexpr std::size_t kFew = 16;

std::uintptr_t onlySlot(std::uint32_t slot)
{
    return (static_cast<std::uintptr_t>(slot) << 1) | 1;
}

} // namespace

EditorSlots::~EditorSlots()
{
    delete several();
}

EditorSlots::Several* EditorSlots::several() const
{
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the word tells by its lowest bit.
    return isOnly() ? nullptr : reinterpret_cast<Several*>(m_data);
}

void EditorSlots::add(const HostEditor* editor, std::uint32_t slot, const HostEditor* only)
{
    if (m_data == 0) {
        m_data = onlySlot(slot);
        return;
    }
    Several* all = several();
    if (!all) {
        all = new Several;
        all->few.emplace_back(only, static_cast<std::uint32_t>(m_data >> 1));
        m_data = reinterpret_cast<std::uintptr_t>(all);
    }
    if (all->few.size() < kFew)
        all->few.emplace_back(editor, slot);
    else
        all->many.emplace(editor, slot);
}

void EditorSlots::change(const HostEditor* editor, std::uint32_t slot)
{
    Several* const all = several();
    if (!all) {
        m_data = onlySlot(slot);
        return;
    }
    const auto place = all->findFew(editor);
    (place != all->few.end() ? place->second : all->many[editor]) = slot;
}

std::uint32_t EditorSlots::take(const HostEditor* editor)
{
    Several* const all = several();
    if (!all)
        return static_cast<std::uint32_t>(std::exchange(m_data, 0) >> 1);
    const auto place = all->findFew(editor);
    if (place == all->few.end()) {
        const auto found = all->many.find(editor);
        const std::uint32_t slot = found->second;
        all->many.erase(found);
        return slot;
    }
    const std::uint32_t slot = place->second;
    *place = all->few.back();
    all->few.pop_back();
    return slot;
}

} // namespace ZEL
