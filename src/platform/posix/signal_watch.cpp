// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/signal_watch.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <thread>
#include <utility>

namespace {

int writeEnd = -1;

// The pipe is full only when a hundred thousand signals wait already.
void Pass(int signal) {
    const int code = errno;
    const auto number = static_cast<unsigned char>(signal);
    [[maybe_unused]] const auto written = ::write(writeEnd, &number, 1);
    errno = code;
}

}  // namespace

void WatchSignals(std::initializer_list<int> numbers, std::function<void(int number)> take) {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return;  // the kernel's own actions stay
    }
    fcntl(ends[1], F_SETFL, O_NONBLOCK);
    writeEnd = ends[1];
    std::thread([readEnd = ends[0], take = std::move(take)] {
        unsigned char number = 0;
        for (ssize_t count = 1; count > 0 || errno == EINTR;) {
            count = ::read(readEnd, &number, 1);
            if (count > 0) {
                take(number);
            }
        }
    }).detach();
    for (const int number : numbers) {
        struct sigaction action {};
        action.sa_handler = Pass;
        action.sa_flags = SA_RESTART;
        sigaction(number, &action, nullptr);
    }
}
