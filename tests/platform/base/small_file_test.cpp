// SPDX-License-Identifier: GPL-3.0-or-later
// The reading of small files.
#include "platform/posix/small_file.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <atomic>
#include <fstream>
#include <iterator>
#include <thread>

namespace {

std::atomic<int> handled{0};

void Handle(int) {
    ++handled;
}

// Whether the thread waits in the system.
bool IsAsleep(pid_t thread) {
    std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
    const std::string facts{std::istreambuf_iterator<char>(file), {}};
    const std::size_t name = facts.rfind(')');
    return name != std::string::npos && facts.substr(name, 3) == ") S";
}

TEST(SmallFile, ASignalDoesNotEndTheReading) {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    UniqueFd from(ends[0]), to(ends[1]);
    struct sigaction action {};
    struct sigaction former {};
    action.sa_handler = Handle;  // without SA_RESTART: a read that waits ends with EINTR
    ASSERT_EQ(sigaction(SIGUSR1, &action, &former), 0);
    handled = 0;
    std::thread writer([&to, reader = gettid(), thread = pthread_self()] {
        for (int sent = 1; sent <= 3; ++sent) {
            while (!IsAsleep(reader)) {
                std::this_thread::yield();
            }
            pthread_kill(thread, SIGUSR1);
            while (handled < sent) {
                std::this_thread::yield();
            }
        }
        EXPECT_EQ(write(to.Get(), "text", 4), 4);
        to.Close();
    });
    const std::optional<std::string> text = ReadToEnd(from.Get(), 100);
    writer.join();
    sigaction(SIGUSR1, &former, nullptr);
    EXPECT_EQ(text.value_or("nothing"), "text");
}

}  // namespace
