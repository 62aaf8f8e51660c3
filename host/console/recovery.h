#pragma once

#include "base/file.h"
#include "base/message.h"
#include "session/session.h"

#include <ctime>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace shading {

/// Keeps what is not saved of one document in a file, so that it is not lost when the program dies:
/// the document as it was opened and, as commands, the edits since. The file is there while the
/// document is not as it was saved; each edit is in it when the edit is done. It is locked while
/// the program lives, which tells it from one that was left behind.
///
/// A folder that cannot be written disturbs nobody: then nothing is kept.
class Recovery {
public:
    /// Both must outlive it. The folder is made when it is needed, for the user alone.
    Recovery(Session& session, std::string folder);
    Recovery(const Recovery&) = delete;
    Recovery& operator=(const Recovery&) = delete;
    /// The document is closed properly: nothing is left behind.
    ~Recovery();

    /// To be called after saving, which nothing tells.
    void update();
    /// Why nothing is kept; empty when it is, or need not be.
    const std::string& problem() const { return m_problem; }

    /// Where programs keep such files: below XDG_STATE_HOME, or ~/.local/state. Empty when there is
    /// neither.
    static std::string defaultFolder();

private:
    void note(const Change& change);
    void begin();
    void end();
    void append(const EditName& name);
    void appendAll();
    void dropLast();
    void cutAt(off_t end);
    void keepBase();
    void fail(const std::string& reason);
    std::string header() const;
    void write(const std::string& text);

    Session& m_session;
    std::string m_folder;
    std::shared_ptr<void> m_observer;
    std::string m_path;        ///< Empty: there is no file.
    int m_file = -1;           ///< Below 0: there is none.
    off_t m_start = 0;         ///< Where the edits begin.
    std::vector<off_t> m_ends; ///< Of the edits that are done.
    std::future<void> m_base;  ///< What the document was is being written.
    std::string m_problem;
};

/// A file that a program left behind when it died.
struct Orphan {
    std::string file;     ///< The path of it.
    std::string document; ///< The path of the document's file.
    bool isNew = false;   ///< There was no such file yet.
    /// Of the document's file, as the program that died knew it; empty: it had none.
    std::optional<FileStamp> stamp;
    std::time_t time = 0; ///< Of the last edit.
    int edits = 0;
};

/// Those in the folder, the latest first. What is no such file, or is kept by a program that lives,
/// is left alone.
std::vector<Orphan> findOrphans(const std::string& folder);

/// Removes it. False when another program has it.
bool discard(const Orphan& orphan);

/// Opens the document as it was and does the edits again; the session is not saved, and has the
/// path of the document's file. An edit that cannot be done, after which no others are, is an error
/// among the messages, and there is a session all the same. Empty when the document cannot be
/// opened. The file stays: to be discarded when the session has a Recovery of its own.
std::unique_ptr<Session> recover(const Orphan& orphan,
                                 const Session::EnvironmentPtr& environment,
                                 const OpenOptions& options,
                                 std::vector<Message>& messages);

} // namespace shading
