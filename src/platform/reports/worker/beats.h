// SPDX-License-Identifier: GPL-3.0-or-later
// Shows the program that its report process lives while an operation takes long.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string_view>
#include <thread>

#include "platform/reports/worker/frames.h"

namespace reports::worker {

// Sends a beat in each interval of an operation. All frames of the process go through this object: beats come
// from a thread of their own, and only between Working and Send.
class Beats {
 public:
    // The caller keeps the socket open.
    Beats(int socket, std::chrono::milliseconds interval);
    Beats(const Beats&) = delete;
    Beats& operator=(const Beats&) = delete;
    ~Beats() = default;

    void Working();
    // Sends the answer of the operation; no beat follows it. Returns false if the program is gone.
    bool Send(Kind kind, std::string_view body);

 private:
    void Run(const std::stop_token& stop, std::chrono::milliseconds interval);

    const int m_socket;
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    bool m_works = false;
    std::jthread m_thread;  // the last member: it uses the others
};

}  // namespace reports::worker
