// SPDX-License-Identifier: GPL-3.0-or-later
// A watch over a call that may wait for ever for somebody else.
#pragma once

#include <ctime>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

// Calls `onSilence` in a thread of its own when the thread that made the watch has computed nothing for the
// patience. A slow partner is not silent: each of its answers is computed on. Never after the destructor, and
// at most once.
class SilenceWatch {
 public:
    SilenceWatch(std::chrono::milliseconds patience, std::function<void()> onSilence);
    SilenceWatch(const SilenceWatch&) = delete;
    SilenceWatch& operator=(const SilenceWatch&) = delete;
    ~SilenceWatch() = default;

 private:
    void Watch(const std::stop_token& stop, std::chrono::milliseconds patience);
    std::chrono::nanoseconds Computed() const;

    clockid_t m_watched;
    std::function<void()> m_onSilence;
    std::mutex m_mutex;
    std::condition_variable_any m_ended;
    std::jthread m_thread;  // the last member: it uses the others
};
