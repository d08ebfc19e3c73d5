// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/secret_input.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <iostream>

#include "platform/contracts/runtime.h"

namespace tools {
namespace {

constexpr std::size_t LongestSecret = 4096;
constexpr std::array<int, 5> EndingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP};

volatile std::sig_atomic_t g_signal = 0;

void Note(int number) {
    g_signal = number;
}

// While an object of this class lives, the signals that end or suspend the program are blocked, and only Wait
// lets them in: no signal is lost or meets a terminal without echo.
class HeldSignals {
 public:
    HeldSignals() {
        sigset_t held;
        sigemptyset(&held);
        struct sigaction action {};
        action.sa_handler = Note;
        for (std::size_t n = 0; n < EndingSignals.size(); ++n) {
            sigaddset(&held, EndingSignals[n]);
            sigaction(EndingSignals[n], nullptr, &m_former[n]);
            if (m_former[n].sa_handler != SIG_IGN) {
                sigaction(EndingSignals[n], &action, nullptr);
            }
        }
        sigprocmask(SIG_BLOCK, &held, &m_mask);
    }
    ~HeldSignals() {
        for (std::size_t n = 0; n < EndingSignals.size(); ++n) {
            sigaction(EndingSignals[n], &m_former[n], nullptr);
        }
        sigprocmask(SIG_SETMASK, &m_mask, nullptr);
    }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    // Waits for input. Returns the signal that arrived instead, or 0.
    int Wait() const {
        g_signal = 0;
        pollfd input{STDIN_FILENO, POLLIN, 0};
        while (ppoll(&input, 1, nullptr, &m_mask) < 0 && errno == EINTR && g_signal == 0) {
        }
        return g_signal;
    }

 private:
    std::array<struct sigaction, EndingSignals.size()> m_former{};
    sigset_t m_mask{};
};

class EchoOff {
 public:
    EchoOff() {
        tcgetattr(STDIN_FILENO, &m_former);
        termios silent = m_former;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL);
        silent.c_lflag |= ICANON;
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~EchoOff() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_former); }
    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

 private:
    termios m_former{};
};

// Appends the available input, up to the longest secret. Returns false at the end of the input.
bool ReadSome(std::string& text) {
    std::array<char, LongestSecret + 2> buffer;
    const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return count > 0 || (count < 0 && errno == EINTR);
}

// Reads a line. Returns the signal that interrupted it, or 0.
int ReadTyped(const std::string& prompt, std::string& line) {
    const HeldSignals signals;
    const EchoOff echoOff;
    std::cerr << prompt << std::flush;
    const int signal = signals.Wait();
    if (signal == 0) {
        ReadSome(line);
    }
    // The typed line feed was not echoed either.
    std::cerr << std::endl;
    return signal;
}

std::string OneLine(std::string text) {
    const std::size_t end = text.find('\n');
    if (text.empty()) {
        throw RuntimeError(err::PathFileAccess, "No password was given");
    }
    if (end != std::string::npos && end + 1 != text.size()) {
        throw RuntimeError(err::PathFileAccess, "The password must be one line");
    }
    text.erase(std::min(end, text.size()));
    if (text.ends_with('\r')) {
        text.pop_back();
    }
    if (text.size() > LongestSecret) {
        throw RuntimeError(err::PathFileAccess, "The password is too long");
    }
    return text;
}

}  // namespace

std::string ReadSecret(const std::string& prompt) {
    std::string text;
    if (isatty(STDIN_FILENO) == 0) {
        while (text.size() <= LongestSecret + 1 && ReadSome(text)) {
        }
        return OneLine(text);
    }
    // A user who suspends the program and resumes it is asked again.
    while (const int signal = ReadTyped(prompt, text)) {
        raise(signal);
        if (signal != SIGTSTP) {
            throw RuntimeError(err::MailUserCancel, "No password was given");
        }
    }
    return OneLine(text);
}

}  // namespace tools
