// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/service_notify.h"

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string_view>

#include "platform/base/environment.h"
#include "platform/base/one_line.h"
#include "platform/base/text.h"
#include "platform/posix/unique_fd.h"

namespace {

// A report may compute for half an hour and wait for its data for an hour, on a busy machine for longer; then
// a mail server may take its time for an answer. Every step of a run begins this time again.
constexpr std::chrono::microseconds LongestStep = std::chrono::hours(4);
constexpr timeval SendPatience{5, 0};

std::int64_t NumberIn(const std::string& text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end ? std::max<std::int64_t>(number, 0) : 0;
}

std::string Assignment(const char* name, std::chrono::microseconds value) {
    return std::string(name) + '=' + std::to_string(value.count());
}

// Returns false for a name that no socket can have.
bool SetAddress(const std::string& name, sockaddr_un& address, socklen_t& length) {
    if ((name[0] != '/' && name[0] != '@') || name.size() >= sizeof address.sun_path) {
        return false;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.data(), name.size());
    if (name[0] == '@') {
        address.sun_path[0] = '\0';  // a name of the kernel, without a file
    }
    length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size() + (name[0] == '/' ? 1 : 0));
    return true;
}

}  // namespace

ServiceManager& ServiceManager::Instance() {
    static ServiceManager manager;
    return manager;
}

ServiceManager::ServiceManager() : m_socket(EnvironmentText("NOTIFY_SOCKET")) {
    const std::string process = EnvironmentText("WATCHDOG_PID");
    if (IsThere() && (process.empty() || NumberIn(process) == ::getpid())) {
        m_patience = std::chrono::microseconds(NumberIn(EnvironmentText("WATCHDOG_USEC")));
    }
}

void ServiceManager::Notify(const std::string& assignments) const {
    sockaddr_un address{};
    socklen_t length = 0;
    if (!IsThere() || !SetAddress(m_socket, address, length)) {
        return;
    }
    const UniqueFd socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    setsockopt(socket.Get(), SOL_SOCKET, SO_SNDTIMEO, &SendPatience, sizeof SendPatience);
    [[maybe_unused]] const auto sent =
        sendto(socket.Get(), assignments.data(), assignments.size(), MSG_NOSIGNAL,
               reinterpret_cast<const sockaddr*>(&address), length);
}

void ServiceManager::NotifyReady() {
    m_isReady = true;
    Notify("READY=1");
}

void ServiceManager::NotifyStatus(const std::string& text) const {
    constexpr std::size_t Longest = 500;  // bytes; the manager shows it in one line
    Notify("STATUS=" + OnOneLine(CutText(text, Longest)));
}

void ServiceManager::NotifyAlive() const {
    if (!m_isReady) {
        if (m_hasLongSteps) {
            Notify(Assignment("EXTEND_TIMEOUT_USEC", LongestStep));
        }
    } else if (m_patience.count() > 0) {
        Notify("WATCHDOG=1");
    }
}

void ServiceManager::BeginLongSteps() {
    m_hasLongSteps = true;
    if (m_isReady && m_patience.count() > 0) {
        Notify(Assignment("WATCHDOG_USEC", std::max(LongestStep, m_patience)));
    }
    NotifyAlive();
}

void ServiceManager::EndLongSteps() {
    m_hasLongSteps = false;
    if (m_isReady && m_patience.count() > 0) {
        Notify(Assignment("WATCHDOG_USEC", m_patience));
        NotifyAlive();
    }
}
