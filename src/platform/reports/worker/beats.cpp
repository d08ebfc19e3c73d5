// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/beats.h"

namespace reports::worker {

Beats::Beats(int socket, std::chrono::milliseconds interval)
    : m_socket(socket), m_thread([this, interval](const std::stop_token& stop) { Run(stop, interval); }) {}

void Beats::Working() {
    const std::lock_guard lock(m_mutex);
    m_works = true;
}

bool Beats::Send(Kind kind, std::string_view body) {
    const std::lock_guard lock(m_mutex);
    m_works = false;
    return SendFrame(m_socket, kind, body);
}

// The thread is not woken for each operation: most are shorter than an interval.
void Beats::Run(const std::stop_token& stop, std::chrono::milliseconds interval) {
    std::unique_lock lock(m_mutex);
    while (!stop.stop_requested()) {
        m_changed.wait_for(lock, stop, interval, [] { return false; });
        if (m_works && !stop.stop_requested()) {
            SendFrame(m_socket, Kind::Beat, {});
        }
    }
}

}  // namespace reports::worker
