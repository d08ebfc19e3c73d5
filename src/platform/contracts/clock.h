// The clock on the wall.
#pragma once

#include <cstdint>

#include "platform/contracts/dates.h"

// A moment that no clock change makes ambiguous.
struct ZonedMoment {
    std::int64_t seconds = 0;  // since 1970-01-01 00:00 UTC
    int offset = 0;            // of the local time at that moment from UTC, in seconds
};
// With the offset that the machine's zone has then.
ZonedMoment InMachineZone(std::int64_t seconds);

class Clock {
 public:
    virtual ~Clock() = default;
    virtual DateValue Now() const = 0;  // local time, whole seconds
    // The same moment. Of a clock that knows local time only it is what the machine takes that time for.
    virtual ZonedMoment Moment() const;
};

// The machine's clock, unless a test has put another in its place.
const Clock& TheClock();
// nullptr restores the machine's clock. The clock must outlive its use.
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
