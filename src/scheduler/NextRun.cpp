// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/NextRun.h"

#include "scheduler/Frequencies.h"

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

void NextSingleRun(const std::string& frequency, DateValue stored, DateValue& NextDate) {
    if (frequency == frequencies::Daily) {
        NextDate = AddDays(stored, 1);
    } else if (frequency == frequencies::Weekly) {
        NextDate = AddDays(stored, 7);
    } else if (frequency == frequencies::Monthly) {
        NextDate = AddMonths(stored, 1);
    } else if (frequency == frequencies::Weekdays) {
        NextDate = AddDays(stored, 1);
        while (WeekdayFromMonday(NextDate) > Friday) {
            NextDate = AddDays(NextDate, 1);
        }
    } else if (frequency == frequencies::Weekends) {
        NextDate = AddDays(stored, 1);
        while (WeekdayFromMonday(NextDate) < Saturday) {
            NextDate = AddDays(NextDate, 1);
        }
    }
}

DateValue NextPackageRun(const std::string& frequency, DateValue stored) {
    if (frequency == frequencies::Monthly) {
        return FirstMondayOfNextMonth(stored);
    }
    if (frequency == frequencies::Weekly) {
        return AddDays(stored, 7);
    }
    if (frequency == frequencies::Daily) {
        return AddDays(stored, 1);
    }
    if (frequency == frequencies::Quarterly) {
        return AddMonths(stored, 3);
    }
    return AddMonths(stored, 1);
}

}  // namespace Global
