#pragma once

#include "document/step.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace shading {

class Document;

/// One edit that can be undone.
struct Edit {
    std::string title; ///< The command, as it was given.
    Steps steps;       ///< In the order in which they happened.
    /// The library's command, where it reverses itself exactly: does the edit again (true) or takes
    /// it back. Empty: the steps are run.
    std::function<bool(bool isForward)> command;
};

/// The undo stack of one document. All edits run through it: here a refused edit is rolled back,
/// and here editors are told. It holds the objects that were deleted, so it goes before the
/// document.
class History {
public:
    /// Returns why the edit cannot be done, empty when it is done.
    using Action = std::function<std::string()>;

    /// The document is not owned and must outlive the history.
    explicit History(Document& document);

    /// Runs the action as one edit, tells the editors and forgets what was undone. False when the
    /// action, a rule or a listener refused: the network and the history are as before, and problem
    /// says why. An action that changes nothing leaves no edit. With keepsTypes, connections
    /// between different types are only led another way and not refused.
    bool run(const std::string& title, bool keepsTypes, const Action& action, std::string& problem);
    /// The edit just run; null when it changed nothing.
    Edit* lastEdit();

    /// Takes the last edit back, or does the last undone one again, and tells the editors. False
    /// when there is none or a listener refused: nothing changed. The title is that of the edit.
    bool undo(std::string& title, std::string& problem);
    bool redo(std::string& title, std::string& problem);

    int undoCount();
    int redoCount();
    /// All edits, the oldest first; those from undoCount() on are undone.
    std::vector<std::string> titles();

    /// The document was written into a file as it is now.
    void noteSaved();
    /// True when the document is as it was opened or last saved. A change that did not run through
    /// here counts until the next saving.
    bool isSaved();

private:
    void dropStale();
    std::shared_ptr<Edit> lastDone() const { return m_done == 0 ? nullptr : m_edits[m_done - 1]; }
    bool replay(Edit& edit, bool isForward);
    bool runCommand(Edit& edit, bool isForward);

    Document& m_document;
    std::vector<std::shared_ptr<Edit>> m_edits;
    std::size_t m_done = 0; ///< How many of them are done; the others are undone.
    bool m_hasLastEdit = false;
    std::shared_ptr<Edit> m_savedEdit; ///< The last one done when it was saved; null: none was.
    bool m_isChangedOutside = false;   ///< Since it was saved.
};

} // namespace shading
