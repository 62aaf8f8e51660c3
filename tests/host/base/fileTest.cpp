#include "base/file.h"

#include "base/programPath.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <dlfcn.h>
#include <filesystem>
#include <sys/stat.h>

namespace {

int g_masksSet = 0;

} // namespace

/// In the place of the system's: the mask is the whole process's, and other threads make files.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" mode_t umask(mode_t mask) noexcept
{
    ++g_masksSet;
    return reinterpret_cast<mode_t (*)(mode_t)>(dlsym(RTLD_NEXT, "umask"))(mask);
}

namespace {

TEST(FileReplace, LeavesTheMaskOfTheProcessAlone)
{
    const TestFile file("old");
    std::string problem;
    g_masksSet = 0;
    EXPECT_TRUE(shading::replaceFile(file.path(), "new", problem));
    EXPECT_TRUE(shading::replaceFile(file.path() + ".new", "new", problem));
    EXPECT_EQ(0, g_masksSet);
}

TEST(FileStamp, IsThatOfTheFileAtThePath)
{
    const TestFile file("old");
    std::string bytes;
    std::string problem;
    shading::FileStamp stamp;
    ASSERT_TRUE(shading::readFile(file.path(), bytes, problem, &stamp));
    EXPECT_EQ(3U, stamp.size);
    EXPECT_EQ(stamp, shading::stampOf(file.path()));
    shading::FileStamp written;
    ASSERT_TRUE(shading::replaceFile(file.path(), "old", problem, &written));
    EXPECT_NE(stamp, written);
    EXPECT_EQ(written, shading::stampOf(file.path()));
    EXPECT_FALSE(shading::stampOf(file.path() + ".no"));
}

TEST(ProgramPath, IsTheFileOfThisProgram)
{
    EXPECT_TRUE(std::filesystem::is_regular_file(shading::programPath()));
    EXPECT_EQ("hostTests", shading::programPath().stem());
}

TEST(FileNumber, IsThatOfTheSystemsRefusal)
{
    const TestFile file("old");
    const std::string folder = file.path().substr(0, file.path().rfind('/'));
    const struct {
        std::string path;
        int number;
    } refused[] = {{file.path() + ".no/way", ENOENT}, {file.path() + "/in", ENOTDIR}};
    std::string bytes;
    std::string problem;
    for (const auto& one : refused) {
        int number = -1;
        EXPECT_FALSE(shading::readFile(one.path, bytes, problem, nullptr, &number)) << one.path;
        EXPECT_EQ(one.number, number) << problem;
        number = -1;
        EXPECT_FALSE(shading::replaceFile(one.path, "", problem, nullptr, {}, &number)) << one.path;
        EXPECT_EQ(one.number, number) << problem;
    }
    int number = -1;
    EXPECT_FALSE(shading::readFile(folder, bytes, problem, nullptr, &number));
    EXPECT_EQ(EISDIR, number);
    number = -1;
    EXPECT_FALSE(shading::readFile("/dev/null", bytes, problem, nullptr, &number));
    EXPECT_EQ(0, number) << "no refusal of the system: " << problem;
}

} // namespace
