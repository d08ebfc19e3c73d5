// SPDX-License-Identifier: GPL-3.0-or-later
// The wall clock.
#pragma once

#include <cstdint>

#include "platform/contracts/dates.h"

// A moment that stays unique when the clock is changed for summer time.
struct ZonedMoment {
    std::int64_t seconds = 0;  // since 1970-01-01 00:00 UTC
    int offset = 0;            // of local time from UTC at that moment, in seconds
};
// Returns the moment with the offset of the machine's time zone.
ZonedMoment InMachineZone(std::int64_t seconds);

class Clock {
 public:
    virtual ~Clock() = default;
    virtual DateValue Now() const = 0;  // local time, whole seconds
    // Returns the moment of Now. A clock that knows only local time converts it in the machine's time zone.
    virtual ZonedMoment Moment() const;
};

// Returns the machine's clock, unless a test has set another one.
const Clock& TheClock();
// Null restores the machine's clock. The caller owns the clock, which must outlive its use.
void SetClock(const Clock* clock);

inline DateValue Now() {
    return TheClock().Now();
}
inline DateValue Today() {
    return DatePart(TheClock().Now());
}
inline DateValue TimeOfDay() {
    return TimePart(TheClock().Now());
}
