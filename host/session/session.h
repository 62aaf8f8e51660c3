#pragma once

#include "document/document.h"
#include "edits/edits.h"
#include "edits/pasteOptions.h"
#include "reading/openDocument.h"
#include "saving/save.h"
#include "session/environment.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace shading {

/// One document at work: what a shell, a window and Python share. It holds what the document was
/// opened with, the document, its edits with the one history, and the path of its file.
class Session {
public:
    using EnvironmentPtr = std::shared_ptr<Environment>;

    /// Opens the document in that file with the environment's runtime, which takes the place of the
    /// one in the options. Adds what is wrong with it to messages; empty when there is an error.
    static std::unique_ptr<Session> open(const EnvironmentPtr& environment,
                                         const std::string& path,
                                         const OpenOptions& options,
                                         std::vector<Message>& messages);
    /// A new, empty document, to be saved into that file. Empty, with an error, when the file is
    /// there.
    static std::unique_ptr<Session> createNew(const EnvironmentPtr& environment,
                                              const std::string& path,
                                              std::vector<Message>& messages);
    /// Opens that copy as if it were the file at the path, as it was when it had the stamp; without
    /// one there was no such file. The session is not saved.
    static std::unique_ptr<Session> openCopy(const EnvironmentPtr& environment,
                                             const std::string& copy,
                                             const std::string& path,
                                             const std::optional<FileStamp>& stamp,
                                             const OpenOptions& options,
                                             std::vector<Message>& messages);
    /// For a document that is open. What it was opened with must outlive it, or be the environment.
    /// Throws std::logic_error when the document has a session already.
    Session(std::shared_ptr<Document> document,
            std::string path,
            EnvironmentPtr environment = nullptr);

    Document& document() { return *m_document; }
    /// All changes of the document go through them.
    Edits& edits() { return m_edits; }
    /// The file that the document was opened from, was last saved into, or will be.
    const std::string& path() const { return m_path; }

    /// Saves into the file, which is the session's from then on. False when it is not saved, with
    /// what is wrong: the file is as it was. A new document does not replace a file that came up
    /// since it was begun, nor, unless it is told to, one that somebody changed since it was read
    /// or saved. Not while an edit is open.
    ///
    /// Who is told how far it is may cancel it. Meanwhile, as in maySave and copy, edits are
    /// refused, and nothing else is saved.
    bool save(const std::string& path,
              std::vector<SaveProblem>& problems,
              ChangedFile changed = ChangedFile::Keep,
              const Progress::Tell& tell = {});
    /// Says what save would, and writes nothing.
    bool maySave(const std::string& path,
                 std::vector<SaveProblem>& problems,
                 ChangedFile changed = ChangedFile::Keep,
                 const Progress::Tell& tell = {});
    /// Keeps the nodes, all of one compound, as a text of the format. False with the reason.
    bool copy(const std::vector<NodePtr>& nodes,
              std::vector<SaveProblem>& problems,
              const Progress::Tell& tell = {});
    /// What was copied last; empty: nothing.
    const std::string& copied() const { return m_copied; }
    /// Makes them once more beside themselves, as one edit. What was copied stays.
    bool duplicate(const std::vector<NodePtr>& nodes,
                   const PasteOptions& options,
                   std::vector<NodePtr>& made,
                   std::vector<SaveProblem>& problems,
                   const Progress::Tell& tell = {});
    /// True when leaving loses nothing: the document is as it was opened, made or last saved.
    bool isSaved() { return m_edits.history().isSaved(); }

    /// What became of the session's file since the document was read from it or saved into it.
    enum class FileState {
        Same, ///< Also a new document that has no file yet.
        Changed,
        Gone,
    };
    FileState fileState();
    /// Of the file as it was then; empty when there was none.
    std::optional<FileStamp> fileStamp();
    /// There was no such file, and none was saved.
    bool isNew() const { return m_isNew; }

    /// Destroys a session and its document piece by piece, and tells meanwhile: that lasts for a
    /// large one. Cancelling does not stop it. Must not be null.
    static void close(std::unique_ptr<Session> session, const Progress::Tell& tell);

private:
    bool copyText(const std::vector<NodePtr>& nodes,
                  std::string& text,
                  std::vector<SaveProblem>& problems,
                  const Progress::Tell& tell);
    /// The document may be written there, whatever it says.
    bool isFree(const std::string& path, std::vector<SaveProblem>& problems);

    // Destroyed in reverse order: the history before the document, and that before its runtime and
    // the code behind it.
    EnvironmentPtr m_environment; ///< Null: the document's runtime is somebody else's.
    std::shared_ptr<Document> m_document;
    Edits m_edits;
    std::string m_path;
    std::string m_copied;
    bool m_isNew = false; ///< There was no such file, and none was saved.
};

} // namespace shading
