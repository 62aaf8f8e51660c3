#include "base/file.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

namespace shading {

namespace {

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, std::max<std::size_t>(slash, 1));
}

/// The file behind all symbolic links; the path itself when it names nothing yet. Empty: errno.
std::string targetOf(const std::string& path)
{
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0)
        return errno == ENOENT ? path : "";
    const std::unique_ptr<char, void (*)(void*)> target(realpath(path.c_str(), nullptr), std::free);
    return target ? target.get() : "";
}

constexpr int kAttempts = 100;
constexpr std::size_t kWritten = 1 << 20; ///< At once, in bytes.

bool isStopped(const std::function<bool()>& goesOn)
{
    const bool isStopped = goesOn && !goesOn();
    if (isStopped)
        errno = ECANCELED;
    return isStopped;
}

/// A new file of that mode, less what the process takes away from all. Changes the path to its
/// name; below 0: errno.
int openNew(std::string& path, mode_t mode)
{
    std::random_device random;
    const std::string stem = path;
    int file = -1;
    for (int i = 0; file < 0 && i < kAttempts; ++i) {
        path = stem + std::to_string(random());
        file = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (file < 0 && errno != EEXIST)
            break;
    }
    return file;
}

/// A file beside the one that it is to replace; it goes unless it was put in its place.
class NewFile {
public:
    /// Nobody else reads what is to replace a file before it has the mode of that.
    NewFile(const std::string& folder, const struct stat* replaced)
        : m_path(folder + "/.zelsh-"),
          m_file(openNew(m_path, replaced ? 0600 : 0666)),
          m_isThere(m_file >= 0)
    {
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile()
    {
        if (m_file >= 0)
            close(m_file);
        if (m_isThere)
            unlink(m_path.c_str());
    }

    // Each is false when it failed; errno says why.
    bool isOpen() const { return m_file >= 0; }
    bool takeOver(const struct stat* replaced)
    {
        if (!replaced)
            return true;
        // Another owner's file becomes the user's, if nobody else may give it away.
        if (fchown(m_file, replaced->st_uid, replaced->st_gid) != 0)
            errno = 0;
        return fchmod(m_file, replaced->st_mode & 07777U) == 0;
    }
    bool write(const std::string& bytes, const std::function<bool()>& goesOn)
    {
        std::size_t done = 0;
        while (done < bytes.size()) {
            if (isStopped(goesOn))
                return false;
            const ssize_t count =
                ::write(m_file, bytes.data() + done, std::min(bytes.size() - done, kWritten));
            if (count < 0 && errno != EINTR)
                return false;
            done += count > 0 ? static_cast<std::size_t>(count) : 0;
        }
        return fsync(m_file) == 0 && !isStopped(goesOn);
    }
    FileStamp stamp() const { return stampOf(m_file); }
    bool putInPlaceOf(const std::string& target)
    {
        m_isThere = rename(m_path.c_str(), target.c_str()) != 0;
        return !m_isThere;
    }

private:
    std::string m_path;
    int m_file; ///< Below 0: it could not be made.
    bool m_isThere;
};

/// The new name is on the disk only when the folder is. Not all file systems can do that.
void syncFolder(const std::string& folder)
{
    const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return;
    fsync(file);
    close(file);
}

} // namespace

bool replaceFile(const std::string& path,
                 const std::string& bytes,
                 std::string& problem,
                 FileStamp* stamp,
                 const std::function<bool()>& goesOn,
                 int* number)
{
    const auto fail = [&](int error) {
        problem = error == 0 ? "not a regular file" : std::strerror(error);
        if (number)
            *number = error;
        return false;
    };
    const std::string target = targetOf(path);
    struct stat status = {};
    const bool isThere = !target.empty() && stat(target.c_str(), &status) == 0;
    if (isThere && !S_ISREG(status.st_mode))
        return fail(S_ISDIR(status.st_mode) ? EISDIR : 0);
    bool isDone = !target.empty() && (isThere || errno == ENOENT);
    // A rename asks the folder only; a file that is protected from writing stays.
    if (isThere)
        isDone = faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0;
    if (!isDone)
        return fail(errno);
    {
        const struct stat* const replaced = isThere ? &status : nullptr;
        NewFile file(folderOf(target), replaced);
        isDone = file.isOpen() && file.takeOver(replaced) && file.write(bytes, goesOn) &&
                 file.putInPlaceOf(target);
        if (!isDone)
            fail(errno);
        if (stamp)
            *stamp = isDone ? file.stamp() : FileStamp();
    }
    if (isDone)
        syncFolder(folderOf(target));
    return isDone;
}

} // namespace shading
