// SPDX-License-Identifier: GPL-3.0-or-later
// Date values: local time in days since 1899-12-30, as the database holds them.
#pragma once

#include <compare>
#include <cstdint>

// A moment with a resolution of one second, in local time without a time zone. The default is 1899-12-30
// 00:00:00.
class DateValue {
 public:
    constexpr DateValue() = default;
    static constexpr DateValue FromSeconds(std::int64_t seconds) {
        DateValue value;
        value.m_seconds = seconds;
        return value;
    }
    // `days` are days since 1899-12-30 with a fraction, rounded to the second. Raises 6 outside the range of
    // dates.
    static DateValue FromDays(double days);

    double Days() const;
    constexpr std::int64_t Seconds() const { return m_seconds; }  // since 1899-12-30 00:00:00
    std::int64_t DayNumber() const;                               // whole days, rounded down
    int SecondOfDay() const;                                      // 0 to 86399
    auto operator<=>(const DateValue&) const =
        default;  // NOLINT(modernize-use-nullptr): not a comparison with 0

 private:
    std::int64_t m_seconds = 0;
};

struct DateParts {
    int year, month, day, hour, minute, second;
};

// Month and day may lie outside their range and carry over: DateSerial(2003, 14, 1) is 2004-02-01.
DateValue DateSerial(int year, int month, int day);
DateValue TimeSerial(int hour, int minute, int second);
DateParts Split(DateValue value);
int Year(DateValue value);
int Month(DateValue value);
int Day(DateValue value);
int WeekdayFromMonday(DateValue value);  // Monday 1 ... Sunday 7
DateValue DatePart(DateValue value);     // the day at midnight
DateValue TimePart(DateValue value);     // the time of day, on 1899-12-30
// Returns true if the calendar has this day.
bool IsValidDate(int year, int month, int day);

DateValue AddDays(DateValue value, std::int64_t days);
// Returns the same day of a later month, or the last day of a shorter month.
DateValue AddMonths(DateValue value, int months);
// Return the number of hour or day boundaries between two moments, negative if `to` is before `from`.
std::int64_t DiffHours(DateValue from, DateValue to);
std::int64_t DiffDays(DateValue from, DateValue to);
