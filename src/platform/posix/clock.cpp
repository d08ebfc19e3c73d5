// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/clock.h"

#include <ctime>

namespace {

// The machine's time zone may have changed since the last call.
void ReadLocal(std::time_t moment, std::tm& local) {
    tzset();
    localtime_r(&moment, &local);
}

class MachineClock : public Clock {
 public:
    DateValue Now() const override {
        const std::time_t now = std::time(nullptr);
        std::tm local{};
        ReadLocal(now, local);
        const DateValue day = DateSerial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
        return DateValue::FromSeconds(day.Seconds() +
                                      TimeSerial(local.tm_hour, local.tm_min, local.tm_sec).Seconds());
    }
    ZonedMoment Moment() const override { return InMachineZone(std::time(nullptr)); }
};

const Clock& MachineTime() {
    static const MachineClock machine;
    return machine;
}

const Clock*& Current() {
    static const Clock* current = &MachineTime();
    return current;
}

}  // namespace

ZonedMoment InMachineZone(std::int64_t seconds) {
    std::tm local{};
    ReadLocal(seconds, local);
    return {seconds, static_cast<int>(local.tm_gmtoff)};
}

ZonedMoment Clock::Moment() const {
    const DateParts now = Split(Now());
    std::tm local{};
    local.tm_year = now.year - 1900;
    local.tm_mon = now.month - 1;
    local.tm_mday = now.day;
    local.tm_hour = now.hour;
    local.tm_min = now.minute;
    local.tm_sec = now.second;
    local.tm_isdst = -1;
    return InMachineZone(std::mktime(&local));
}

const Clock& TheClock() {
    return *Current();
}

void SetClock(const Clock* clock) {
    Current() = clock != nullptr ? clock : &MachineTime();
}
