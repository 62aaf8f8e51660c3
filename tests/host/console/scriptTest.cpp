#include "console/console.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

/// A document of two nodes, and scripts in a folder of their own; F/ stands for that folder.
class Scripts : public testing::Test {
protected:
    Scripts() : m_folder(m_file.path().substr(0, m_file.path().rfind('/') + 1))
    {
        std::filesystem::create_directory(m_folder + "sub");
        m_shell.add(shading::viewCommands());
        m_shell.add(shading::editCommands());
    }

    void write(const char* name, const std::string& text) const
    {
        std::ofstream(m_folder + name, std::ios::binary) << text;
    }
    std::string run(const std::string& line)
    {
        m_out.str("");
        std::string text = m_shell.run(line) ? "" : "failed\n";
        text += m_out.str();
        std::size_t at = 0;
        while ((at = text.find(m_folder)) != std::string::npos)
            text.replace(at, m_folder.size(), "F/");
        return text;
    }
    std::string source(const char* name) { return run("source '" + m_folder + name + "'"); }

    TestFile m_file{""};
    std::string m_folder;
    TestDocument m_document{"<n name='a' type='t'/><n name='b' type='t'/>"};
    std::ostringstream m_out;
    shading::Session m_session = sessionOn(*m_document.opened);
    shading::Console m_shell{m_session, m_out, m_out};
};

TEST_F(Scripts, StopAtTheFirstErrorWithItsPlace)
{
    write("good", "\xEF\xBB\xBF# Two names.\r\n\r\nrename Top.a \"c\"\r\nls");
    EXPECT_EQ("c n\nb n\n", source("good"));
    write("bad", "rename Top.b d\n\nls Top.no\nls\n");
    EXPECT_EQ("failed\nF/bad:3: error: ls: Top.no: no such node\n", source("bad"));
    EXPECT_EQ("rename Top.a c\nrename Top.b d\n", run("history --commands"));
    EXPECT_EQ("failed\nerror: ls: Top.no: no such node\n", run("ls Top.no"));
    write("cut", "ls \\\r\n");
    EXPECT_EQ("failed\nF/cut:1: error: ls \\: nothing follows the last \\\n", source("cut"));
    write("word", "nonsense");
    EXPECT_EQ("failed\nF/word:1: error: nonsense: no such command; help lists them\n",
              source("word"));
    m_document.opened->findNodeFromPath("Top.c")->setName("d");
    write("check", "check\nls\n");
    EXPECT_EQ("failed\nTop.d: several siblings have this name\n"
              "F/check:1: error: check: failed: the script stops here\n",
              source("check"));
}

TEST_F(Scripts, RunOthersFromTheirOwnFolder)
{
    write("outer", "source sub/middle\nls\n");
    write("sub/middle", "source inner\n");
    write("sub/inner", "ls\n");
    EXPECT_EQ("a n\nb n\na n\nb n\n", source("outer"));
    write("sub/inner", "\nls x\n");
    EXPECT_EQ("failed\nF/sub/inner:2: error: ls: x: no such node\n"
              "F/sub/middle:1: error: source: inner: stopped at line 2\n"
              "F/outer:1: error: source: sub/middle: stopped at line 1\n",
              source("outer"));
    write("sub/inner", "quit\nls\n");
    EXPECT_EQ("", source("outer"));
    EXPECT_TRUE(m_shell.hasQuit());
}

TEST_F(Scripts, ThatRunThemselvesOrAreNoneAreRefused)
{
    write("self", "source sub/../self\n");
    EXPECT_EQ("failed\nF/self:1: error: source: sub/../self: it runs already\n", source("self"));
    for (int i = 0; i < 70; ++i)
        write(("s" + std::to_string(i)).c_str(), "source s" + std::to_string(i + 1) + "\n");
    EXPECT_EQ(0U, source("s0").find("failed\nF/s63:1: error: source: s64: more than 64 scripts "
                                    "inside each other\nF/s62:1: error: source: s63: stopped"));
    write("binary", std::string("ls\nls\0\x7F", 7));
    EXPECT_EQ("failed\nerror: source: F/binary: no text: a control character in line 2\n",
              source("binary"));
    EXPECT_EQ("failed\nerror: source: F/none: cannot be read: No such file or directory\n",
              source("none"));
    EXPECT_EQ("failed\nerror: source: F/sub: cannot be read: Is a directory\n", source("sub"));
}

} // namespace
