#include "scheduler/NextRun.h"

namespace Global {

namespace {

constexpr int Friday = 5;
constexpr int Saturday = 6;

DateValue FirstMondayOfNextMonth(DateValue stored) {
    const DateValue month = AddMonths(stored, 1);
    DateValue day = DateSerial(Year(month), Month(month), 1);
    while (WeekdayFromMonday(day) != 1) {
        day = AddDays(day, 1);
    }
    return day;
}

}  // namespace

void NextSingleRun(const std::string& frequency, DateValue stored, DateValue& nextDate) {
    if (frequency == "Daily") {
        nextDate = AddDays(stored, 1);
    } else if (frequency == "Weekly") {
        nextDate = AddDays(stored, 7);
    } else if (frequency == "Monthly") {
        nextDate = AddMonths(stored, 1);
    } else if (frequency == "Weekdays") {
        nextDate = AddDays(stored, 1);
        while (WeekdayFromMonday(nextDate) > Friday) {
            nextDate = AddDays(nextDate, 1);
        }
    } else if (frequency == "Weekends") {
        nextDate = AddDays(stored, 1);
        while (WeekdayFromMonday(nextDate) < Saturday) {
            nextDate = AddDays(nextDate, 1);
        }
    }
}

DateValue NextPackageRun(const std::string& frequency, DateValue stored) {
    if (frequency == "Monthly") {
        return FirstMondayOfNextMonth(stored);
    }
    if (frequency == "Weekly") {
        return AddDays(stored, 7);
    }
    if (frequency == "Daily") {
        return AddDays(stored, 1);
    }
    if (frequency == "Quartely") {
        return AddMonths(stored, 3);
    }
    return AddMonths(stored, 1);
}

}  // namespace Global
