// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/stop_gate.h"

#include <utility>

#include "platform/contracts/process.h"

StopGate::Work::Work() {
    TheStopGate().BeginWork();
}

StopGate::Work::~Work() {
    TheStopGate().Release(true);
}

void StopGate::Work::Recorded() {
    TheStopGate().Release(false);
}

void StopGate::BeginWork() {
    const std::lock_guard lock(m_mutex);
    ++m_works;
}

// Work inside of other work, which an event of a yield may begin, leaves the mail of the outer one held.
void StopGate::Release(bool isEnd) {
    std::function<void()> end;
    {
        const std::lock_guard lock(m_mutex);
        const bool isOutermost = m_works == 1;
        m_works -= isEnd ? 1 : 0;
        if (!isOutermost || !std::exchange(m_isHeld, false) || !m_isAsked) {
            return;
        }
        end = m_end;
    }
    end ? end() : EndProcess();
}

void StopGate::MailBegins() {
    std::unique_lock lock(m_mutex);
    // Another thread is ending the process.
    m_never.wait(lock, [this] { return !m_mayEnd; });
    m_isHeld = m_works > 0;
}

bool StopGate::Ask() {
    const std::lock_guard lock(m_mutex);
    m_isAsked = true;
    m_mayEnd = !m_isHeld;
    return m_mayEnd;
}

void StopGate::OnEnd(std::function<void()> end) {
    const std::lock_guard lock(m_mutex);
    m_end = std::move(end);
}

StopGate& TheStopGate() {
    static StopGate gate;
    return gate;
}
