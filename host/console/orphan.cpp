// What programs that died left behind.

#include "console/console.h"
#include "console/recovery.h"
#include "console/recoveryFile.h"
#include "document/names.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <sstream>
#include <sys/file.h>
#include <unistd.h>

namespace shading {

namespace {

/// A file of a program that is dead: nobody else takes it while this lives.
class Lock {
public:
    explicit Lock(const std::string& path) : m_file(open(path.c_str(), O_RDWR | O_CLOEXEC))
    {
        m_isHeld = m_file >= 0 && flock(m_file, LOCK_EX | LOCK_NB) == 0;
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock()
    {
        if (m_file >= 0)
            close(m_file);
    }
    bool isHeld() const { return m_isHeld; }

private:
    int m_file;
    bool m_isHeld;
};

bool read(const std::string& path, RecoveryText& text)
{
    std::string bytes;
    std::string ignored;
    return readFile(path, bytes, ignored) && readRecovery(bytes, text);
}

/// Empty when it is none.
std::optional<Orphan> orphanAt(const std::string& path)
{
    RecoveryText text;
    if (!Lock(path).isHeld() || !read(path, text))
        return std::nullopt;
    Orphan orphan;
    orphan.file = path;
    orphan.document = text.header.document;
    orphan.isNew = text.header.isNew;
    orphan.stamp = text.header.stamp;
    orphan.edits = static_cast<int>(text.edits.size());
    if (const std::optional<FileStamp> stamp = stampOf(path))
        orphan.time = static_cast<std::time_t>(stamp->seconds);
    return orphan;
}

void report(const Orphan& orphan, const std::string& text, std::vector<Message>& messages)
{
    Message message;
    message.file = orphan.document;
    message.isError = true;
    message.text = text;
    messages.push_back(message);
}

bool isComment(const std::string& line)
{
    const std::size_t begin = line.find_first_not_of(" \t");
    return begin == std::string::npos || line[begin] == '#';
}

/// Does the edit as one. False, with the problem, when a line of it fails.
bool redo(Session& session, const EditName& edit, std::string& problem)
{
    if (std::all_of(edit.lines.begin(), edit.lines.end(), isComment)) {
        problem = "no command does it";
        return false;
    }
    std::ostringstream out;
    std::ostringstream err;
    Console console(session, out, err);
    console.add(editCommands());
    console.add(libraryCommands());
    History::Group group(session.edits().history(), edit);
    const bool isDone = std::all_of(edit.lines.begin(), edit.lines.end(),
                                    [&](const std::string& line) { return console.run(line); });
    if (group.finish(isDone, problem) || isDone)
        return isDone && problem.empty();
    problem = err.str();
    problem.erase(problem.find_last_not_of('\n') + 1);
    return false;
}

} // namespace

std::vector<Orphan> findOrphans(const std::string& folder)
{
    std::vector<Orphan> orphans;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().extension() != kRecoveryEnding)
            continue;
        if (std::optional<Orphan> orphan = orphanAt(entry->path().string()))
            orphans.push_back(std::move(*orphan));
    }
    std::sort(orphans.begin(), orphans.end(), [](const Orphan& a, const Orphan& b) {
        return a.time != b.time ? a.time > b.time : a.file < b.file;
    });
    return orphans;
}

bool discard(const Orphan& orphan)
{
    const Lock lock(orphan.file);
    if (!lock.isHeld())
        return false;
    unlink((orphan.file + kBaseEnding).c_str());
    return unlink(orphan.file.c_str()) == 0;
}

std::unique_ptr<Session> recover(const Orphan& orphan,
                                 const Session::EnvironmentPtr& environment,
                                 const OpenOptions& options,
                                 std::vector<Message>& messages)
{
    const Lock lock(orphan.file);
    RecoveryText text;
    if (!lock.isHeld() || !read(orphan.file, text)) {
        report(orphan, "what was kept of it is gone, or another program has it", messages);
        return nullptr;
    }
    std::string base = orphan.file + kBaseEnding;
    if (!stampOf(base))
        base = orphan.document;
    if (base == orphan.document && stampOf(base) != text.header.stamp) {
        report(orphan, "the edits cannot be done again: the file was changed since", messages);
        return nullptr;
    }
    std::unique_ptr<Session> session =
        Session::openCopy(environment, base, orphan.document, text.header.stamp, options, messages);
    std::size_t done = 0;
    std::string problem;
    while (session && done < text.edits.size() && redo(*session, text.edits[done], problem))
        ++done;
    if (session && done < text.edits.size())
        report(orphan,
               "not all is recovered: edit " + std::to_string(done + 1) + " of " +
                   std::to_string(text.edits.size()) + ", \"" + text.edits[done].title +
                   "\", could not be done again: " + problem,
               messages);
    return session;
}

} // namespace shading
