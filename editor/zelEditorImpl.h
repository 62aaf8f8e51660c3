#pragma once

#include "core/zelSequence.h"
#include "zelEditor.h"
#include "zelEditorSlots.h"
#include "zelNotifierList.h"

namespace ZEL {

/// The editor's side of its registrations.
struct HostEditorImpl {
    explicit HostEditorImpl(HostEditor* editor);
    ~HostEditorImpl();

    /// Adds the notifier at the end and returns its slot; tells those that have moved up.
    std::uint32_t addMe(HostEditorNotifier* notifier);
    /// Forgets the notifier in that slot; does nothing once the editor is being destroyed.
    void removeMe(std::uint32_t slot);

    NotifierList notifiers;
    HostEditor* owner;           ///< Not owned: the editor that owns this record.
    bool beingDestroyed = false; ///< Keeps notifiers unchanged while the destructor walks it.
};

/// The notifier's side of its registrations.
struct HostEditorNotifierImpl {
    HostEditorNotifierImpl() = default;
    HostEditorNotifierImpl(const HostEditorNotifierImpl&) = delete;
    HostEditorNotifierImpl& operator=(const HostEditorNotifierImpl&) = delete;
    /// Ends every pass that is under way.
    ~HostEditorNotifierImpl();

    void registerEditor(HostEditor* editor, HostEditorNotifier* notifier);
    void unregisterEditor(HostEditor* editor);
    /// Makes every editor forget the notifier, which is dying.
    void unregisterNotifier();

    /// One walk over the editors. It lies on the stack of the notification and outlives the
    /// notifier when a callback destroys that.
    struct Pass {
        explicit Pass(HostEditorNotifierImpl& impl);
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;
        ~Pass();

        HostEditorNotifierImpl* notifier; ///< Null: it died, the pass is over.
        Pass* outer;                      ///< The pass in whose callback this one began, or null.
    };

    /// Calls callback(editor) for each editor in order.
    template <class Callback>
    void forEachEditor(Callback callback)
    {
        const Pass pass(*this);
        // Contract: the length is read on every turn; a callback may register or remove editors.
        for (int i = 0; pass.notifier && i < pass.notifier->editors().size(); ++i)
            callback(*pass.notifier->editorAt(i));
    }

    Sequence editors() { return Sequence(editorData); }
    HostEditor* editorAt(int index) { return static_cast<HostEditor*>(editors().at(index)); }

    /// HostEditors, not owned, in order of registration, no doubles.
    std::uintptr_t editorData = 0;
    Pass* innermostPass = nullptr; ///< Not owned. Null: no notification is under way.
    EditorSlots slots;             ///< Where the notifier stands in the lists of those editors.
};

} // namespace ZEL
