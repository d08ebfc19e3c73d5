// SPDX-License-Identifier: GPL-3.0-or-later
// The password prompt at a terminal: never echoed, and the terminal is always restored.
#include <pty.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>

#include <chrono>
#include <thread>

#include "mail_program.h"

namespace {

using testing::HasSubstr;
using testing::Not;

// The program on a terminal of its own, with `password` as its command.
class Terminal {
 public:
    Terminal() {
        int slave = -1;
        if (openpty(&m_master, &slave, nullptr, nullptr, nullptr) != 0) {
            return;
        }
        m_slave = slave;
        m_child = fork();
        if (m_child == 0) {
            close(m_master);
            login_tty(slave);
            execl(OXC_MAIL_PROGRAM, OXC_MAIL_PROGRAM, "password", nullptr);
            _exit(127);
        }
    }
    ~Terminal() {
        if (m_child > 0 && !m_isEnded) {
            kill(m_child, SIGKILL);
            waitpid(m_child, nullptr, 0);
        }
        close(m_master);
        close(m_slave);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    bool HasEcho() const {
        termios state{};
        tcgetattr(m_slave, &state);
        return (state.c_lflag & ECHO) != 0;
    }
    // Waits until the program has written `text` (again).
    void Expect(const std::string& text) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (m_shown.find(text, m_seen) == std::string::npos && std::chrono::steady_clock::now() < end) {
            Drain();
        }
        const std::size_t found = m_shown.find(text, m_seen);
        ASSERT_NE(found, std::string::npos) << m_shown;
        m_seen = found + text.size();
    }
    void Type(const std::string& keys) const {
        ASSERT_EQ(write(m_master, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }
    // Returns the status of waitpid, once the program has ended.
    int Wait() {
        int status = 0;
        while (waitpid(m_child, &status, WNOHANG) == 0) {
            Drain();
        }
        m_isEnded = true;
        Drain();
        return status;
    }
    void Send(int signal) const { kill(m_child, signal); }
    const std::string& Shown() const { return m_shown; }

 private:
    void Drain() {
        fd_set files;
        FD_ZERO(&files);
        FD_SET(m_master, &files);
        timeval moment{0, 20000};
        char buffer[1024];
        if (select(m_master + 1, &files, nullptr, nullptr, &moment) > 0) {
            const ssize_t count = read(m_master, buffer, sizeof buffer);
            m_shown.append(buffer, count > 0 ? static_cast<std::size_t>(count) : 0);
        }
    }

    int m_master = -1, m_slave = -1;
    pid_t m_child = -1;
    bool m_isEnded = false;
    std::string m_shown;
    std::size_t m_seen = 0;
};

class PasswordPrompt : public MailProgram {
 public:
    void SetUp() override {
        MailProgram::SetUp();
        ASSERT_EQ(Run("set Transport=outbox From=r@example.com").code, 0);
    }
};

}  // namespace

TEST_F(PasswordPrompt, TypedPasswordIsStoredAndNotShown) {
    Terminal terminal;
    terminal.Expect("Password: ");
    EXPECT_FALSE(terminal.HasEcho());
    terminal.Type("s3cret\n");
    const int status = terminal.Wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_TRUE(terminal.HasEcho());
    EXPECT_THAT(terminal.Shown(), HasSubstr("The password is stored."));
    EXPECT_THAT(terminal.Shown(), Not(HasSubstr("s3cret")));
    EXPECT_THAT(Profile(), HasSubstr("Password=s3cret\n"));
}

TEST_F(PasswordPrompt, TerminalIsRestoredWhenASignalEndsTheProgram) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        Terminal terminal;
        terminal.Expect("Password: ");
        EXPECT_FALSE(terminal.HasEcho());
        terminal.Send(signal);
        const int status = terminal.Wait();
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << signal;
        EXPECT_TRUE(terminal.HasEcho()) << signal;
    }
    EXPECT_THAT(Profile(), Not(HasSubstr("Password")));
}

TEST_F(PasswordPrompt, InterruptKeyEndsItWithTheTerminalRestored) {
    Terminal terminal;
    terminal.Expect("Password: ");
    terminal.Type("s3c\x03");
    EXPECT_TRUE(WIFSIGNALED(terminal.Wait()));
    EXPECT_TRUE(terminal.HasEcho());
    EXPECT_THAT(terminal.Shown(), Not(HasSubstr("s3c")));
}

TEST_F(PasswordPrompt, EndOfInputIsNoPassword) {
    Terminal terminal;
    terminal.Expect("Password: ");
    terminal.Type("\x04");
    const int status = terminal.Wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1);
    EXPECT_THAT(terminal.Shown(), HasSubstr("oxc-mail: No password was given"));
    EXPECT_TRUE(terminal.HasEcho());
}

TEST_F(PasswordPrompt, PromptComesAgainAfterASuspension) {
    Terminal terminal;
    terminal.Expect("Password: ");
    // No process could resume a program that is alone at its terminal, so the kernel lets it continue at
    // once.
    terminal.Send(SIGTSTP);
    terminal.Expect("Password: ");
    terminal.Type("s3cret\n");
    const int status = terminal.Wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_TRUE(terminal.HasEcho());
    EXPECT_THAT(Profile(), HasSubstr("Password=s3cret\n"));
}
