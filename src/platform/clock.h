// The clock on the wall.
#pragma once

#include "platform/dates.h"

class Clock {
 public:
    virtual ~Clock() = default;
    virtual DateValue Now() const = 0;  // local time, whole seconds
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
