// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/silence_watch.h"

#include <pthread.h>

#include <utility>

SilenceWatch::SilenceWatch(std::chrono::milliseconds patience, std::function<void()> onSilence)
    : m_watched(), m_onSilence(std::move(onSilence)) {
    if (pthread_getcpuclockid(pthread_self(), &m_watched) == 0) {
        m_thread = std::jthread([this, patience](const std::stop_token& stop) { Watch(stop, patience); });
    }
}

// Waits many short times. A process that was stopped for an hour, or a machine that slept, has waited for one
// of them only.
void SilenceWatch::Watch(const std::stop_token& stop, std::chrono::milliseconds patience) {
    constexpr int Waits = 100;
    std::unique_lock lock(m_mutex);
    std::chrono::nanoseconds computed = Computed();
    for (int silent = 0; silent < Waits; ++silent) {
        m_ended.wait_for(lock, stop, patience / Waits, [] { return false; });
        if (stop.stop_requested()) {
            return;
        }
        if (const std::chrono::nanoseconds now = Computed(); now != computed) {
            computed = now;
            silent = 0;
        }
    }
    m_onSilence();
}

std::chrono::nanoseconds SilenceWatch::Computed() const {
    timespec used{};
    clock_gettime(m_watched, &used);
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}
