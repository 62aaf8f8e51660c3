#include "paths.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <csignal>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// A program on a pseudo terminal.
class Terminal {
public:
    explicit Terminal(const std::string& document)
    {
        m_process = forkpty(&m_terminal, nullptr, nullptr, nullptr);
        if (m_process != 0)
            return;
        setenv("TERM", "dumb", 1);
        setenv("INPUTRC", "/dev/null", 1);
        execl(paths::kZelsh, paths::kZelsh, "--plugin", "/no", document.c_str(), nullptr);
        _exit(127);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() { close(m_terminal); }

    /// False where the system gives no pseudo terminal.
    bool isOpen() const { return m_process > 0; }
    void type(const std::string& keys) const
    {
        EXPECT_EQ(static_cast<ssize_t>(keys.size()), write(m_terminal, keys.data(), keys.size()));
    }
    /// Reads on until that text is on the screen. False when it does not come.
    bool shows(const std::string& text)
    {
        pollfd wait = {m_terminal, POLLIN, 0};
        char buffer[256];
        while (m_screen.find(text) == std::string::npos) {
            ssize_t count = 0;
            if (poll(&wait, 1, 20000) > 0)
                count = read(m_terminal, buffer, sizeof buffer);
            if (count <= 0)
                return false;
            m_screen.append(buffer, static_cast<std::size_t>(count));
        }
        m_screen.erase(0, m_screen.find(text) + text.size());
        return true;
    }
    /// -1 when it had not ended.
    int exitStatus() const
    {
        int status = 0;
        kill(m_process, SIGKILL);
        waitpid(m_process, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    int m_terminal = -1;
    pid_t m_process = -1;
    std::string m_screen; ///< What was not looked at yet.
};

class TerminalSession : public testing::Test {
protected:
    void SetUp() override
    {
        if (!terminal.isOpen())
            GTEST_SKIP() << "this system gives no pseudo terminal";
        ASSERT_TRUE(terminal.shows("zelsh> "));
    }
    /// Types, and waits for the text and then for the next prompt.
    void expect(const std::string& keys, const std::string& text)
    {
        terminal.type(keys);
        EXPECT_TRUE(terminal.shows(text) && terminal.shows("zelsh> ")) << keys << ": " << text;
    }
    int statusAfter(const std::string& keys)
    {
        terminal.type(keys);
        while (terminal.shows("\n")) {
        }
        return terminal.exitStatus();
    }

    const TestFile file{"<materialx><nodegraph name='graph'><n name='two words' type='t'/>"
                        "</nodegraph></materialx>"};
    Terminal terminal{file.path()};
};

TEST_F(TerminalSession, CompletesCommandsAndPathsWithTheTabulator)
{
    terminal.type("por\ts Top.g\t.\t\n");
    EXPECT_TRUE(terminal.shows("output out t \"\"\r\n")) << "ports \"Top.graph.two words\"";
    ASSERT_TRUE(terminal.shows("zelsh> "));
    terminal.type("co\t\t");
    EXPECT_TRUE(terminal.shows("collapse     connect      connections"));
    EXPECT_EQ(0, statusAfter("\x15quit\n")) << "Control-U clears the line";
}

TEST_F(TerminalSession, TheInterruptKeyDropsTheLine)
{
    expect("delete Top.graph\x03", "^C");
    expect("\x12gra\x03", "^C");
    expect("ls\n", "graph nodegraph compound");
    EXPECT_EQ(0, statusAfter("\x04"));
}

TEST_F(TerminalSession, TheInterruptKeyStopsAScriptAndKeepsTheSession)
{
    std::string lines = "rename Top.graph wall\n";
    for (int i = 0; i < 100000; ++i) // More output than the terminal takes unread.
        lines += "ls\n";
    const TestFile script(lines, "s.zelsh");
    terminal.type("source " + script.path() + "\n");
    ASSERT_TRUE(terminal.shows("wall nodegraph"));
    expect("\x03", ": error: source: interrupted: the script stops before this line\r\n");
    expect("ls\n", "wall nodegraph compound");
    const TestFile whole("ls\n", "s.zelsh");
    expect("source " + whole.path() + "\n", "wall nodegraph compound");
    EXPECT_EQ(0, statusAfter("undo\nquit\n"));
}

TEST_F(TerminalSession, EditsThatWereNotSavedAreToldBeforeTheEnd)
{
    const char* const warning = "warning: edits are not saved: `save` writes them";
    expect("rename Top.graph wall\n", "");
    expect("\x04", warning);
    expect("ls\n", "wall");
    expect("quit\n", warning);
    expect("save " + file.path() + "\n", "");
    expect("undo\n", "undo: Rename");
    expect("quit\n", warning);
    expect("rename Top.graph roof\n", "");
    expect("quit\n", warning);
    EXPECT_EQ(0, statusAfter("\x04")) << "the second time at once";
}

TEST_F(TerminalSession, NothingIsToldWhereAllIsSaved)
{
    expect("rename Top.graph wall\n", "");
    expect("save " + file.path() + "\n", "");
    expect("rename Top.wall roof\n", "");
    expect("undo\n", "undo: Rename");
    EXPECT_EQ(0, statusAfter("quit\n"));
}

} // namespace
