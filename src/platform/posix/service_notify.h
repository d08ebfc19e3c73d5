// SPDX-License-Identifier: GPL-3.0-or-later
// Tells the service manager of the machine about this process: readiness, status and signs of life. They are
// datagrams to the socket of $NOTIFY_SOCKET; sd_notify(3) describes the assignments. Without that variable
// every call does nothing.
#pragma once

#include <chrono>
#include <string>

class ServiceManager {
 public:
    // The one object. The first call reads the environment.
    static ServiceManager& Instance();
    // Reads $NOTIFY_SOCKET, and $WATCHDOG_USEC if $WATCHDOG_PID names this process or is not set.
    ServiceManager();

    bool IsThere() const { return !m_socket.empty(); }
    // Returns after how much silence the manager takes the process for dead. Zero: it does not watch.
    std::chrono::microseconds Patience() const { return m_patience; }

    // Sends assignments with line feeds between them. Safe in any thread. Waits at most five seconds for a
    // busy manager; a failure is not reported, as nobody could act on it.
    void Notify(const std::string& assignments) const;
    void NotifyReady();  // from now on signs of life are due
    void NotifyStatus(const std::string& text) const;

    // A sign of life. Call it only where the work has moved on. Before NotifyReady it prolongs the start.
    void NotifyAlive() const;
    // Between these two calls the manager waits as long as the longest step of a run may take: a report and
    // its mail have bounds of their own, and meanwhile no event runs.
    void BeginLongSteps();
    void EndLongSteps();

 private:
    std::string m_socket;
    std::chrono::microseconds m_patience{};
    bool m_isReady = false, m_hasLongSteps = false;
};
