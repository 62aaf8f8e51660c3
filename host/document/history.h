#pragma once

#include "document/change.h"
#include "document/step.h"

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace shading {

class Document;
class Progress;

/// The undo stack of one document. All edits run through it: here a refused edit is rolled back,
/// and here editors and observers are told. It holds the objects that were deleted, so it goes
/// before the document.
///
/// What is told comes after the whole edit: first the editors, of each step in order, then the
/// observers. An edit made by one that is told is told when the first is told to the end. Who is
/// told must not destroy the history.
class History {
public:
    /// Returns why the edit cannot be done, empty when it is done.
    using Action = std::function<std::string()>;
    using Observer = std::function<void(const Change& change)>;
    class Group;
    class Repeating;

    /// The document is not owned and must outlive the history. Throws std::logic_error when the
    /// document has one: the steps of two would not fit each other.
    explicit History(Document& document);
    History(const History&) = delete;
    History& operator=(const History&) = delete;
    ~History();

    /// Runs the action as one edit, or as a part of the group or edit that is open, and forgets
    /// what was undone. False when the action, a rule or a listener refused: the network and the
    /// history are as before, also where an edit around goes on, and problem says why. So are they
    /// when the action throws. An action that changes nothing leaves no edit. With keepsTypes,
    /// connections between different types are only led another way and not refused.
    bool run(const EditName& name, bool keepsTypes, const Action& action, std::string& problem);
    /// True while an edit or a group is open.
    bool isOpen() const { return !m_groups.empty(); }

    /// Takes the last edit back, or does the last undone one again, and tells. False when there is
    /// none, one is open, or a listener refused: nothing changed. The title is that of the edit.
    bool undo(std::string& title, std::string& problem);
    bool redo(std::string& title, std::string& problem);

    int undoCount();
    int redoCount();
    /// All edits, the oldest first; those from undoCount() on are undone.
    std::vector<EditName> names();

    /// The observer is told of each change until the handle goes. A change past the history is told
    /// when the history is asked the next time.
    [[nodiscard]] std::shared_ptr<void> observe(Observer observer);

    /// While one lives nothing is edited, undone or redone: that is refused for the reason. One at
    /// a time, while no edit is open. The history must outlive it.
    class Hold {
    public:
        Hold(History& history, std::string reason);
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
        ~Hold() { m_history.m_heldFor.clear(); }

    private:
        History& m_history;
    };

    bool isHeld() const { return !m_heldFor.empty(); }

    /// Forgets all edits one by one, which lasts where they hold much; tells nobody.
    void release(Progress& progress);

    /// The document was written into a file as it is now.
    void noteSaved();
    /// The document is not as its file is until it is saved, whatever is undone.
    void noteUnsaved() { m_isChangedOutside = true; }
    /// True when the document is as it was opened or last saved. A change that did not run through
    /// here counts until the next saving.
    bool isSaved();

private:
    struct Edit {
        EditName name;
        Steps steps; ///< In the order in which they happened.
    };
    using EditPtr = std::shared_ptr<Edit>;

    /// What joins edits to the last one.
    struct Repeat {
        std::string key; ///< Empty: nothing does.
        std::chrono::steady_clock::time_point until;
    };

    struct Untold {
        EditPtr edit; ///< Null: a change past the history.
        Change::Kind kind;
        std::size_t firstStep; ///< Those before it were told when the edit was shorter.
        std::size_t endStep;
    };

    void dropStale();
    EditPtr lastDone() const { return m_done == 0 ? nullptr : m_edits[m_done - 1]; }
    bool replay(bool isForward, std::string& title, std::string& problem);
    void close(EditName name);
    bool isRepeated() const;
    void tell(const EditPtr& edit, Change::Kind kind, std::size_t firstStep = 0);
    void tellOne(const Untold& untold);

    Document& m_document;
    std::vector<EditPtr> m_edits;
    std::size_t m_done = 0;           ///< How many of them are done; the others are undone.
    EditPtr m_savedEdit;              ///< The last one done when it was saved; null: none was.
    bool m_isChangedOutside = false;  ///< Since it was saved.
    std::vector<Group*> m_groups;     ///< Those that are open; each lies in the one before.
    Repeating* m_repeating = nullptr; ///< The innermost one.
    Repeat m_repeat;                  ///< Of the last edit, while it may go on.
    std::deque<Untold> m_untold;
    bool m_isTelling = false;
    std::string m_heldFor; ///< Empty: edits may run.
    std::vector<std::weak_ptr<Observer>> m_observers;
};

/// Edits that are one in the history, for as long as this object lives: `finish` ends them. One
/// that goes without, by an exception too, takes back all that was done in it. Groups may lie in
/// groups: then the inner one becomes a part of the outer, whether it stays or not.
class History::Group {
public:
    /// Without lines, those of the edits inside are its own, and without those its title as a
    /// comment. Throws std::logic_error while an edit
    /// is being taken back or done again.
    Group(History& history, EditName name, bool keepsTypes = false);
    Group(const Group&) = delete;
    Group& operator=(const Group&) = delete;
    ~Group();

    /// Ends the group; the outermost one tells, when something changed. False when it is not good,
    /// or when a rule or a listener refused: what was done is taken back, and problem is the reason
    /// given, if any. Called once, while no group inside is open.
    bool finish(bool isGood, std::string& problem);

private:
    friend class History;

    History* m_history; ///< Null: it is finished.
    EditName m_name;
    std::vector<std::string> m_innerLines;
};

/// While it lives, an edit that ends goes on with the last one, and is undone with it, when that
/// was made under the same key, less than the time before, and nothing came between: no other edit,
/// no undo, no saving. So nudges of a node, or the values that a slider passes, are one edit. Its
/// title and lines are those of the last part, which must do by itself all that the parts do
/// together: a key says of what the last one counts, `move Top.a`. Must go before the history does.
class History::Repeating {
public:
    explicit Repeating(History& history,
                       std::string key,
                       std::chrono::milliseconds within = std::chrono::seconds(1));
    Repeating(const Repeating&) = delete;
    Repeating& operator=(const Repeating&) = delete;
    ~Repeating();

private:
    friend class History;

    History& m_history;
    Repeating* m_outer; ///< Null: none was there.
    std::string m_key;
    std::chrono::milliseconds m_within;
};

} // namespace shading
