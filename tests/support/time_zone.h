// SPDX-License-Identifier: GPL-3.0-or-later
// The zone of the process for as long as a test needs it; then that of the machine again.
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

class TimeZone {
 public:
    // `zone` is a value of the variable TZ, such as America/St_Johns.
    explicit TimeZone(const std::string& zone) {
        if (const char* before = std::getenv("TZ")) {
            m_before = before;
        }
        setenv("TZ", zone.c_str(), 1);
        tzset();
    }
    ~TimeZone() {
        m_before ? setenv("TZ", m_before->c_str(), 1) : unsetenv("TZ");
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

 private:
    std::optional<std::string> m_before;
};
