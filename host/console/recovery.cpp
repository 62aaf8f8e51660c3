#include "console/recovery.h"

#include "base/encoding.h"
#include "console/recoveryFile.h"
#include "document/document.h"
#include "format/xml.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <random>
#include <sys/file.h>
#include <unistd.h>

namespace shading {

namespace {

/// A new, locked file in the folder. Changes the path to its name; below 0: errno.
int openNew(std::string& path)
{
    std::random_device random;
    const std::string stem = path;
    int file = -1;
    for (int i = 0; file < 0 && i < 100; ++i) {
        path = stem + std::to_string(random()) + kRecoveryEnding;
        file = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (file < 0 && errno != EEXIST)
            break;
    }
    // Nobody looks for a moment between the two: an empty file is no orphan.
    if (file >= 0)
        flock(file, LOCK_EX | LOCK_NB);
    return file;
}

/// Of the file, the letters and digits: something to know it by.
std::string stemOf(const std::string& path)
{
    std::string stem;
    for (const char c : std::filesystem::path(path).stem().string()) {
        const bool isPlain =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
        if (isPlain && stem.size() < 40)
            stem += c;
    }
    return stem + "-";
}

} // namespace

Recovery::Recovery(Session& session, std::string folder)
    : m_session(session),
      m_folder(std::move(folder))
{
    m_observer =
        m_session.edits().history().observe([this](const Change& change) { note(change); });
    update();
}

Recovery::~Recovery()
{
    m_observer.reset();
    end();
}

std::string Recovery::defaultFolder()
{
    const char* const state = std::getenv("XDG_STATE_HOME");
    const char* const home = std::getenv("HOME");
    if (state && *state == '/')
        return std::string(state) + "/zeledit/recovery";
    return home && *home ? std::string(home) + "/.local/state/zeledit/recovery" : "";
}

void Recovery::update()
{
    if (m_session.isSaved())
        end();
    else if (m_file < 0 && m_problem.empty())
        begin();
}

void Recovery::note(const Change& change)
{
    if (change.kind == Change::Kind::Outside) {
        // The edits from now on would be done on something else.
        if (m_file < 0)
            update();
        if (m_file >= 0)
            append({"Change past the history", {}});
        return fail("the document was changed past its history");
    }
    if (!m_problem.empty())
        return;
    if (m_session.isSaved())
        return end();
    if (m_file < 0)
        return begin();
    const bool isTaken = change.kind == Change::Kind::Undone || change.kind == Change::Kind::GoneOn;
    const bool isAdded = change.kind != Change::Kind::Undone;
    const std::size_t count = m_ends.size() - (isTaken ? 1 : 0) + (isAdded ? 1 : 0);
    // Who was told before may have edited, or asked for an update.
    if (count != static_cast<std::size_t>(m_session.edits().history().undoCount()))
        return appendAll();
    if (isTaken)
        dropLast();
    if (isAdded)
        append(change.name);
}

/// Writes the document as it was opened, and all edits that are done.
void Recovery::begin()
{
    if (m_folder.empty())
        return fail("there is no folder for it");
    std::error_code error;
    const std::filesystem::path folder(m_folder);
    std::filesystem::create_directories(folder.parent_path(), error);
    if (std::filesystem::create_directory(folder, error))
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    m_path = m_folder + "/" + stemOf(m_session.path());
    m_file = openNew(m_path);
    if (m_file < 0)
        return fail(std::strerror(errno));
    write(header());
    m_start = lseek(m_file, 0, SEEK_END);
    keepBase();
    appendAll();
}

/// In the place of those that are there.
void Recovery::appendAll()
{
    m_ends.clear();
    cutAt(m_start);
    History& history = m_session.edits().history();
    const std::vector<EditName> names = history.names();
    for (int i = 0; i < history.undoCount(); ++i)
        append(names[static_cast<std::size_t>(i)]);
}

/// In a thread: nobody waits for it. Without it the document's file must be as it was.
void Recovery::keepBase()
{
    const XmlSource& xml = m_session.document().xml();
    m_base = std::async(std::launch::async, [&xml, path = m_path + kBaseEnding] {
        std::string bytes;
        const std::string part = path + ".part";
        std::ofstream file(part, std::ios::binary);
        if (convertFromUtf8(xml.text(), xml.encoding(), bytes) && file << bytes << std::flush)
            std::rename(part.c_str(), path.c_str());
        else
            unlink(part.c_str());
    });
}

/// There is nothing to keep.
void Recovery::end()
{
    if (m_base.valid())
        m_base.get();
    if (m_file < 0)
        return;
    unlink(m_path.c_str());
    unlink((m_path + kBaseEnding).c_str());
    close(m_file);
    m_file = -1;
    m_path.clear();
}

void Recovery::append(const EditName& name)
{
    write(textOf(name));
    if (m_file >= 0)
        m_ends.push_back(lseek(m_file, 0, SEEK_END));
}

void Recovery::dropLast()
{
    if (m_file < 0 || m_ends.empty())
        return;
    m_ends.pop_back();
    cutAt(m_ends.empty() ? m_start : m_ends.back());
}

void Recovery::cutAt(off_t end)
{
    if (ftruncate(m_file, end) != 0 || lseek(m_file, end, SEEK_SET) != end)
        fail(std::strerror(errno));
}

std::string Recovery::header() const
{
    RecoveryHeader header;
    header.document = std::filesystem::absolute(m_session.path()).string();
    header.isNew = m_session.isNew();
    header.stamp = m_session.fileStamp();
    return textOf(header);
}

/// All of it, or nothing is kept any more.
void Recovery::write(const std::string& text)
{
    std::size_t done = 0;
    while (m_file >= 0 && done < text.size()) {
        const ssize_t count = ::write(m_file, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR)
            return fail(std::strerror(errno));
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

/// What was kept so far stays until the document is closed.
void Recovery::fail(const std::string& reason)
{
    m_problem = reason;
}

} // namespace shading
