#pragma once

#include <cstdint>

namespace ZEL {

class HostEditor;

/// Where one notifier stands in the list of each of its editors. The state is one word: the slot of
/// the only editor lies in it.
class EditorSlots {
public:
    EditorSlots() = default;
    EditorSlots(const EditorSlots&) = delete;
    EditorSlots& operator=(const EditorSlots&) = delete;
    ~EditorSlots();

    /// Adds the slot in the list of an editor that has none yet. The one that was added as the only
    /// one, if there still is one, is named.
    void add(const HostEditor* editor, std::uint32_t slot, const HostEditor* only);
    /// Gives the slot another number; the editor has one.
    void change(const HostEditor* editor, std::uint32_t slot);
    /// Forgets the slot of an editor that has one, and returns it.
    std::uint32_t take(const HostEditor* editor);

private:
    struct Several;

    bool isOnly() const { return (m_data & 1) != 0; }
    Several* several() const;

    std::uintptr_t m_data = 0; ///< 0: none; odd: the slot of the only editor; else what is owned.
};

} // namespace ZEL
