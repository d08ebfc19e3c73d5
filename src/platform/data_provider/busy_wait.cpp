// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/data_provider/busy_wait.h"

#include "platform/contracts/adodb.h"
#include "platform/contracts/loop.h"

namespace {

using namespace std::chrono_literals;

using SteadyClock = std::chrono::steady_clock;

// Shorter waits need no repainting.
constexpr auto NoticedWait = 200ms;
constexpr auto RepaintInterval = 50ms;

constexpr std::chrono::duration<double> UsualWait = 10s;

std::chrono::duration<double>& Wait() {
    static std::chrono::duration<double> wait = UsualWait;
    return wait;
}

}  // namespace

void ADODB::SetBusyWait(double seconds) {
    Wait() = seconds > 0 ? std::chrono::duration<double>(seconds) : UsualWait;
}

std::chrono::duration<double> LongestBusyWait() {
    return Wait();
}

void RepaintDuringWait(SteadyClock::time_point since) noexcept {
    static SteadyClock::time_point lastRepaint;
    const auto now = SteadyClock::now();
    if (now - since < NoticedWait || now - lastRepaint < RepaintInterval) {
        return;
    }
    try {
        TheLoop().Repaint();
    } catch (...) {
        // A window that cannot be painted does not end the wait.
    }
    lastRepaint = SteadyClock::now();
}
