#include "platform/clock.h"

#include <ctime>

namespace {

class MachineClock : public Clock {
 public:
    DateValue Now() const override {
        const std::time_t now = std::time(nullptr);
        std::tm local{};
        // The machine's zone may have been changed since the last call.
        tzset();
        localtime_r(&now, &local);
        const DateValue day = DateSerial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
        return DateValue::FromSeconds(day.Seconds() +
                                      TimeSerial(local.tm_hour, local.tm_min, local.tm_sec).Seconds());
    }
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

const Clock& TheClock() {
    return *Current();
}

void SetClock(const Clock* clock) {
    Current() = clock != nullptr ? clock : &MachineTime();
}
