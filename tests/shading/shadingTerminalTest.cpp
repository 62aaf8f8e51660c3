#include "shadingTestDocument.h"

#include <gtest/gtest.h>

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
        execl(ZELSH, ZELSH, "--plugin", "/no", document.c_str(), nullptr);
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
    int exitStatus() const
    {
        int status = 0;
        waitpid(m_process, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    int m_terminal = -1;
    pid_t m_process = -1;
    std::string m_screen; ///< What was not looked at yet.
};

TEST(Terminal, CompletesCommandsAndPathsWithTheTabulator)
{
    const TestFile file("<materialx><nodegraph name='graph'><n name='two words' type='t'/>"
                        "</nodegraph></materialx>");
    Terminal terminal(file.path());
    if (!terminal.isOpen())
        GTEST_SKIP() << "this system gives no pseudo terminal";
    ASSERT_TRUE(terminal.shows("zelsh> "));
    terminal.type("por\ts Top.g\t.\t\n");
    EXPECT_TRUE(terminal.shows("output out t \"\"\r\n")) << "ports \"Top.graph.two words\"";
    ASSERT_TRUE(terminal.shows("zelsh> "));
    terminal.type("co\t\t");
    EXPECT_TRUE(terminal.shows("collapse     connect      connections"));
    terminal.type("\x15quit\n"); // Control-U clears the line.
    while (terminal.shows("\n")) {
    }
    EXPECT_EQ(0, terminal.exitStatus());
}

} // namespace
